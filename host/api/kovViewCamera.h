#ifndef KOV_VIEW_CAMERA_H
#define KOV_VIEW_CAMERA_H

#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeVector3d.h"

// Where a viewport looks from and to.
struct kovViewCamera {
  OdGePoint3d eye { 0.0, -10.0, 2.0 };
  OdGePoint3d target { 0.0, 0.0, 2.0 };
  OdGeVector3d up { 0.0, 0.0, 1.0 };
  // Vertical field of view, degrees.
  double fieldOfView = 60.0;
  // Depth of field, for the engines that have it: a thin lens of lensRadius
  // (drawing units) focused at focusDistance from the eye (0: at the target).
  bool depthOfField = false;
  double focusDistance = 0.0;
  double lensRadius = 0.0;

  bool operator==(const kovViewCamera& other) const
  {
    return eye == other.eye && target == other.target && up == other.up && fieldOfView == other.fieldOfView
           && depthOfField == other.depthOfField && focusDistance == other.focusDistance
           && lensRadius == other.lensRadius;
  }
  bool operator!=(const kovViewCamera& other) const { return !(*this == other); }
};

#endif
