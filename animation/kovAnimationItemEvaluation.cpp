// Keyframe brackets, the transformation of one keyframe, and the path spline.
#include "animation/kovAnimationItem.h"

#include "animation/kovAnimationItemCache.h"
#include "animation/kovAnimationTrack.h"
#include "animation/kovOdDbEx.h"

#include "Db/OdDbEntity.h"
#include "Ge/OdGeExtents3d.h"

#include <algorithm>
#include <cmath>

namespace {

const double kDegreesToRadians = 3.14159265358979323846 / 180.0;

OdGeMatrix3d eulerRotation(double a, double b, double c)
{
  return OdGeMatrix3d::rotation(c, OdGeVector3d::kZAxis) * OdGeMatrix3d::rotation(b, OdGeVector3d::kYAxis)
         * OdGeMatrix3d::rotation(a, OdGeVector3d::kXAxis);
}

// The turn of a subject standing at p that looks from base toward target.
OdGeMatrix3d lookAt(const OdGePoint3d& p, const OdGePoint3d& target, const OdGePoint3d& base)
{
  if (target.isEqualTo(base))
    return OdGeMatrix3d::kIdentity;
  const OdGeVector3d x = (target - base).normal();
  const OdGeVector3d y = x.perpVector().normal();
  const OdGeVector3d z = x.crossProduct(y).normal();
  OdGeMatrix3d frame;
  frame.setCoordSystem(OdGePoint3d::kOrigin, x, y, z);
  return OdGeMatrix3d::translation(-p.asVector()) * frame * OdGeMatrix3d::translation(p.asVector());
}

bool entityCentre(const kovAnimationItem& item, const QString& name, OdGePoint3d& centre)
{
  const kovOdDbEx* library = kovOdDbEx::service();
  if (name.isEmpty() || !library)
    return false;
  const kovAnimationTrack* track = item.parentTrack();
  OdDbDatabase* db = track ? track->entityId().database() : nullptr;
  const OdDbObjectId id = library->entityByName(db, name);
  OdDbObjectPtr object = id.openObject(OdDb::kForRead);
  const OdDbEntity* entity = object.isNull() ? nullptr : OdDbEntity::cast(object.get()).get();
  OdGeExtents3d extents;
  if (!entity || entity->getGeomExtents(extents) != eOk || !extents.isValidExtents())
    return false;
  centre = extents.minPoint() + (extents.maxPoint() - extents.minPoint()) * 0.5;
  return true;
}

} // namespace

bool kovAnimationItem::findKeyFrame(int ms, int& prevIndex, int& prevTime, int& nextIndex, int& nextTime,
                                    double& fraction) const
{
  return cache().findKeyFrame(ms, prevIndex, prevTime, nextIndex, nextTime, fraction);
}

bool kovAnimationItem::findKeyFrameByWalk(int ms, int& prevIndex, int& prevTime, int& nextIndex, int& nextTime,
                                          double& fraction) const
{
  prevIndex = prevTime = nextIndex = nextTime = 0;
  fraction = 0.0;
  if (m_values.isEmpty())
    return false;
  int i = 0;
  for (auto it = m_values.cbegin(); it != m_values.cend(); ++it, ++i) {
    prevIndex = nextIndex;
    prevTime = nextTime;
    nextIndex = i;
    nextTime = it.key();
    if (it.key() > ms) {
      if (i == 0) {
        prevIndex = 0;
        prevTime = it.key();
      }
      break;
    }
  }
  if (ms > nextTime) {
    prevIndex = nextIndex;
    prevTime = nextTime;
  }
  return kovAnimationItemCache::finishBracket(ms, m_values.firstKey(), m_values.lastKey(), prevTime, nextTime, fraction);
}

OdGeMatrix3d kovAnimationItem::tranformAtMillisecond(int ms, const OdGePoint3d& base) const
{
  const kovAnimationItemCache& keys = cache();
  const auto it = std::lower_bound(keys.keys().begin(), keys.keys().end(), ms);
  if (it == keys.keys().end() || *it != ms)
    return OdGeMatrix3d::kIdentity;
  return transformAtIndex(keys, static_cast<int>(it - keys.keys().begin()), base);
}

OdGeMatrix3d kovAnimationItem::transformAtIndex(const kovAnimationItemCache& keys, int index,
                                                const OdGePoint3d& base) const
{
  switch (m_animationType) {
  case Scale: {
    double factor = 1.0;
    keys.scalar(index, factor);
    return OdGeMatrix3d::scaling(factor);
  }
  case LocationByPoints:
  case LocationBySpline:
    return OdGeMatrix3d::translation(keys.point(index).asVector());
  case RotationByAngles: {
    const OdGePoint3d& angles = keys.tangent(index);
    return eulerRotation(angles.x * kDegreesToRadians, angles.y * kDegreesToRadians, angles.z * kDegreesToRadians)
           * OdGeMatrix3d::translation(keys.point(index).asVector());
  }
  case RotationToTarget:
    return lookAt(keys.point(index), keys.tangent(index), base);
  case RotationToEntity: {
    const QVariantList list = m_values.value(keys.key(index)).toList();
    OdGePoint3d centre;
    if (list.size() < 4 || !entityCentre(*this, list.at(3).toString(), centre))
      return OdGeMatrix3d::kIdentity;
    return lookAt(keys.point(index), centre, base);
  }
  default:
    return OdGeMatrix3d::kIdentity;
  }
}

OdDbSplinePtr kovAnimationItem::getValuesAsSpline() const
{
  OdGePoint3dArray points;
  OdGeVector3dArray tangents;
  kovAnimationItemCache::pathFitData(m_values, points, tangents);
  OdDbSplinePtr spline = OdDbSpline::createObject();
  spline->setFitData(points, tangents, 3, 0.0);
  spline->setType(OdDbSpline::kFitPoints);
  return spline;
}
