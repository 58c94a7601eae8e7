#ifndef KOV_CAMERA_ANIMATION_BUILDER_H
#define KOV_CAMERA_ANIMATION_BUILDER_H

#include "db/kovDbAnimation.h"

#include "Db/OdDbSpline.h"

class OdDbDatabase;

// Turns a camera path into a new animation entity in model space: a "Camera
// Track" whose path sub-track follows the path's fit points at one drawing
// unit per second, looking where it goes, and a rotation sub-track that adds
// no turn of its own until the user gives it angles.
class kovCameraAnimationBuilder {
public:
  static kovDbAnimationPtr build(OdDbDatabase* db, const OdDbSpline* path);
  // The path of createanimation: through (-10,0,0), (0,10,0) and (10,0,0).
  static OdDbSplinePtr defaultPath(OdDbDatabase* db);
};

#endif
