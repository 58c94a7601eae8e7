#include "host/app/kovViewProjection.h"

#include "Ge/OdGeMatrix3d.h"

#include <algorithm>
#include <cmath>

namespace {

// Nearer than this, points are not drawn: their projection explodes.
constexpr double kNear = 0.01;
constexpr double kPi = 3.14159265358979323846;
// Pitch stops short of looking straight down or up, where up is undefined.
constexpr double kMaxPitch = 89.0 * kPi / 180.0;

OdGeVector3d forwardOf(const kovViewCamera& camera)
{
  const OdGeVector3d forward = camera.target - camera.eye;
  return forward.isZeroLength() ? OdGeVector3d(0.0, 1.0, 0.0) : forward.normal();
}

// A right axis even when up is along the view direction.
OdGeVector3d rightOf(const OdGeVector3d& forward, const OdGeVector3d& up)
{
  OdGeVector3d right = forward.crossProduct(up);
  if (right.isZeroLength())
    right = forward.crossProduct(std::fabs(forward.z) < 0.9 ? OdGeVector3d::kZAxis : OdGeVector3d::kYAxis);
  return right.normal();
}

double halfFieldTangent(const kovViewCamera& camera)
{
  const double fov = std::clamp(camera.fieldOfView, 1.0, 170.0);
  return std::tan(fov * kPi / 360.0);
}

} // namespace

kovViewProjection::kovViewProjection(const kovViewCamera& camera, const QSizeF& size)
  : m_eye(camera.eye)
  , m_forward(forwardOf(camera))
  , m_right(rightOf(m_forward, camera.up))
  , m_up(m_right.crossProduct(m_forward))
  , m_size(size)
  , m_focal(std::max(size.height(), 1.0) * 0.5 / halfFieldTangent(camera))
{
}

double kovViewProjection::depthOf(const OdGePoint3d& point) const
{
  return (point - m_eye).dotProduct(m_forward);
}

bool kovViewProjection::project(const OdGePoint3d& point, QPointF& pixel) const
{
  const OdGeVector3d d = point - m_eye;
  const double depth = d.dotProduct(m_forward);
  if (depth < kNear)
    return false;
  pixel.setX(m_size.width() * 0.5 + m_focal * d.dotProduct(m_right) / depth);
  pixel.setY(m_size.height() * 0.5 - m_focal * d.dotProduct(m_up) / depth);
  return true;
}

bool kovViewProjection::projectSegment(const OdGePoint3d& a, const OdGePoint3d& b, QPointF& pa, QPointF& pb) const
{
  const double da = depthOf(a);
  const double db = depthOf(b);
  if (da < kNear && db < kNear)
    return false;
  OdGePoint3d ca = a;
  OdGePoint3d cb = b;
  // Cut the segment where it crosses the near plane.
  if (da < kNear)
    ca = a + (b - a) * ((kNear - da) / (db - da));
  else if (db < kNear)
    cb = b + (a - b) * ((kNear - db) / (da - db));
  return project(ca, pa) && project(cb, pb);
}

bool kovViewProjection::pointOnPlane(const QPointF& pixel, double z, OdGePoint3d& point) const
{
  const double sx = (pixel.x() - m_size.width() * 0.5) / m_focal;
  const double sy = (m_size.height() * 0.5 - pixel.y()) / m_focal;
  const OdGeVector3d ray = m_forward + m_right * sx + m_up * sy;
  if (std::fabs(ray.z) < 1e-12)
    return false;
  const double t = (z - m_eye.z) / ray.z;
  if (t <= 0.0)
    return false;
  point = m_eye + ray * t;
  return true;
}

double kovViewProjection::pixelsPerUnitAt(double depth) const
{
  return m_focal / std::max(depth, kNear);
}

kovViewCamera kovViewProjection::orbit(const kovViewCamera& camera, double yaw, double pitch)
{
  kovViewCamera moved = camera;
  OdGeVector3d offset = camera.eye - camera.target;
  offset.rotateBy(yaw, OdGeVector3d::kZAxis);
  const double length = offset.length();
  if (length > 0.0) {
    const double current = std::asin(std::clamp(offset.z / length, -1.0, 1.0));
    const double wanted = std::clamp(current + pitch, -kMaxPitch, kMaxPitch);
    const OdGeVector3d axis = OdGeVector3d::kZAxis.crossProduct(offset);
    if (!axis.isZeroLength())
      offset.rotateBy(current - wanted, axis.normal());
  }
  moved.eye = camera.target + offset;
  moved.up = OdGeVector3d::kZAxis;
  return moved;
}

kovViewCamera kovViewProjection::pan(const kovViewCamera& camera, const QPointF& delta, const QSizeF& size)
{
  const kovViewProjection projection(camera, size);
  const double unitsPerPixel = 1.0 / projection.pixelsPerUnitAt(projection.depthOf(camera.target));
  const OdGeVector3d shift = projection.m_right * (-delta.x() * unitsPerPixel) + projection.m_up * (delta.y() * unitsPerPixel);
  kovViewCamera moved = camera;
  moved.eye += shift;
  moved.target += shift;
  return moved;
}

kovViewCamera kovViewProjection::zoom(const kovViewCamera& camera, double factor)
{
  kovViewCamera moved = camera;
  const OdGeVector3d offset = camera.eye - camera.target;
  // Never onto the target: the view direction would be lost.
  const double length = std::max(offset.length() * factor, 0.05);
  moved.eye = camera.target + offset.normal() * length;
  return moved;
}

kovViewCamera kovViewProjection::zoomAt(const kovViewCamera& camera, const OdGePoint3d& anchor, double factor)
{
  kovViewCamera moved = camera;
  moved.eye = anchor + (camera.eye - anchor) * factor;
  moved.target = anchor + (camera.target - anchor) * factor;
  // Never onto the anchor: the view direction would be lost.
  if (moved.eye.distanceTo(anchor) < 0.05)
    return camera;
  return moved;
}

kovViewCamera kovViewProjection::fit(const kovViewCamera& camera, const OdGeExtents3d& extents)
{
  if (!extents.isValidExtents())
    return camera;
  const double radius = std::max(extents.minPoint().distanceTo(extents.maxPoint()) * 0.5, 1.0);
  const double halfTangent = halfFieldTangent(camera);
  const double distance = radius * std::sqrt(1.0 + 1.0 / (halfTangent * halfTangent)) * 1.1;
  kovViewCamera moved = camera;
  moved.target = extents.center();
  moved.eye = moved.target - forwardOf(camera) * distance;
  return moved;
}
