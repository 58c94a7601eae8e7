#ifndef KOV_VIEW_PROJECTION_H
#define KOV_VIEW_PROJECTION_H

#include "host/api/kovViewCamera.h"

#include "Ge/OdGeExtents3d.h"

#include <QPointF>
#include <QSizeF>

// The perspective projection of a camera onto a viewport of some size in
// pixels, and the camera moves the viewport's mouse gestures make. Pixels
// count from the top left; the camera's up points up the screen.
class kovViewProjection {
public:
  kovViewProjection(const kovViewCamera& camera, const QSizeF& size);

  // False for a point behind (or too close in front of) the eye.
  bool project(const OdGePoint3d& point, QPointF& pixel) const;
  // The part of the segment in front of the eye, projected; false when none is.
  bool projectSegment(const OdGePoint3d& a, const OdGePoint3d& b, QPointF& pa, QPointF& pb) const;
  // Where the ray through the pixel meets the horizontal plane at height z;
  // false when it never does in front of the eye.
  bool pointOnPlane(const QPointF& pixel, double z, OdGePoint3d& point) const;
  // Pixels per drawing unit at a distance along the view direction.
  double pixelsPerUnitAt(double depth) const;
  // The distance along the view direction, negative behind the eye.
  double depthOf(const OdGePoint3d& point) const;

  // Turns the eye around the target: yaw about the world's up axis, pitch
  // toward or away from it (radians), never over the top.
  static kovViewCamera orbit(const kovViewCamera& camera, double yaw, double pitch);
  // Slides eye and target so that the target moves by delta pixels.
  static kovViewCamera pan(const kovViewCamera& camera, const QPointF& delta, const QSizeF& size);
  // Moves the eye toward the target: factor < 1 comes closer.
  static kovViewCamera zoom(const kovViewCamera& camera, double factor);
  // Scales eye and target about anchor, so that what lies there stays under
  // the cursor while the view comes closer (factor < 1).
  static kovViewCamera zoomAt(const kovViewCamera& camera, const OdGePoint3d& anchor, double factor);
  // Looks at the box from the same direction, close enough that it fills the view.
  static kovViewCamera fit(const kovViewCamera& camera, const OdGeExtents3d& extents);

private:
  OdGePoint3d m_eye;
  OdGeVector3d m_forward;
  OdGeVector3d m_right;
  OdGeVector3d m_up;
  QSizeF m_size;
  double m_focal;
};

#endif
