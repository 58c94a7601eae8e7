// Viewport drawing, grips, extents and transformation of the animation entity.
#include "db/kovDbAnimation.h"

#include "animation/kovAnimationItemCache.h"
#include "db/kovAnimationIcons.h"

#include "host/api/IkovViewSystem.h"
#include "host/api/kovHostService.h"

#include "Gi/OdGiSubEntityTraits.h"
#include "Gi/OdGiWorldDraw.h"
#include "Gi/OdGiWorldGeometry.h"

#include <QVariantList>

namespace {

// Path samples between two keyframes of a spline path.
const int kSamplesPerSpan = 16;
// Icons are this wide in drawing units.
const double kIconSize = 1.0;
// The camera's line of sight is drawn this long.
const double kSightLength = 2.0;

bool isLocation(kovAnimationItem::AnimationType type)
{
  return type == kovAnimationItem::LocationByPoints || type == kovAnimationItem::LocationBySpline
         || type == kovAnimationItem::LocationBySplineAndRotation;
}

struct GripRef {
  kovAnimationTrack* track;
  int item;
  int key;
};

// Every keyframe of a location sub-track is a grip, in track, sub-track and
// key order.
std::vector<GripRef> gripRefs(const std::vector<kovAnimationTrackPtr>& tracks)
{
  std::vector<GripRef> refs;
  for (const kovAnimationTrackPtr& track : tracks) {
    for (int i = 0; !track.isNull() && i < track->numElements(); ++i) {
      const kovAnimationItem& item = track->elementAt(i);
      if (!isLocation(item.animationType()))
        continue;
      for (int key : item.values().keys())
        refs.push_back(GripRef { track.get(), i, key });
    }
  }
  return refs;
}

// The keyframe value with its point (elements 0..2) replaced.
QVariant withPoint(const QVariant& value, const OdGePoint3d& point)
{
  QVariantList list = value.toList();
  while (list.size() < 3)
    list.append(0.0);
  list[0] = point.x;
  list[1] = point.y;
  list[2] = point.z;
  return list;
}

OdGePoint3dArray pathSamples(const kovAnimationItem& item)
{
  OdGePoint3dArray points;
  const kovAnimationItemCache& keys = item.cache();
  const OdGeNurbCurve3d* path = keys.path();
  if (item.animationType() == kovAnimationItem::LocationByPoints || !path) {
    for (int i = 0; i < keys.size(); ++i)
      points.append(keys.point(i));
    return points;
  }
  double start = 0.0, end = 0.0;
  path->getStartParam(start);
  path->getEndParam(end);
  const int samples = std::max(1, (keys.size() - 1) * kSamplesPerSpan);
  for (int i = 0; i <= samples; ++i) {
    OdGePoint3d p;
    if (path->getPointAtParam(start + (end - start) * i / samples, p) == eOk)
      points.append(p);
  }
  return points;
}

} // namespace

void kovDbAnimation::initializeGlobalObjects()
{
  kovAnimationIcons::create();
  registerAnimationPropertiesProvider();
}

void kovDbAnimation::uninitializeGlobalObjects()
{
  unregisterAnimationPropertiesProvider();
  kovAnimationIcons::destroy();
}

void kovDbAnimation::invalidateDrawings() const
{
  IkovViewSystem* views = kovHostService<IkovViewSystem>();
  if (!views)
    return;
  for (const kovAnimationTrackPtr& track : m_tracks) {
    if (!track.isNull() && track->trackTypeIdentifier() == QLatin1String("Environment")) {
      views->refresh(OdDbObjectId());
      return;
    }
  }
  views->refresh(objectId());
}

bool kovDbAnimation::subWorldDraw(OdGiWorldDraw* wd) const
{
  assertReadEnabled();
  if (m_gizmosHidden)
    return true;
  for (const kovAnimationTrackPtr& track : m_tracks) {
    if (track.isNull())
      continue;
    drawAnimatedTrack(wd, *track);
    drawAnimationIcon(wd, *track);
  }
  return true;
}

void kovDbAnimation::drawAnimatedTrack(OdGiWorldDraw* wd, const kovAnimationTrack& track) const
{
  for (const kovAnimationItem& item : track.animationElements()) {
    if (!isLocation(item.animationType()))
      continue;
    const OdGePoint3dArray points = pathSamples(item);
    if (points.size() < 2)
      continue;
    wd->subEntityTraits().setColor(static_cast<OdUInt16>(kovAnimationItem::colorIndexByAnimationType(item.animationType())));
    wd->geometry().polyline(static_cast<OdInt32>(points.size()), points.data());
  }
}

void kovDbAnimation::drawAnimationIcon(OdGiWorldDraw* wd, const kovAnimationTrack& track) const
{
  const bool camera = track.trackTypeIdentifier() == QLatin1String("Camera");
  const OdGiRasterImage* icon = camera ? kovAnimationIcons::camera() : kovAnimationIcons::subject();
  if (!icon)
    return;
  const OdGeMatrix3d placement = track.computeTransformAtMillisecond(std::max(m_currentPositionMs, 0));
  const OdGePoint3d at = placement.getCsOrigin();
  // Standing upright, turned toward the subject's heading.
  OdGeVector3d heading = placement.getCsXAxis();
  heading.z = 0.0;
  heading = heading.isZeroLength() ? OdGeVector3d::kXAxis : heading.normal();
  const OdGeVector3d u = heading * kIconSize;
  const OdGeVector3d v = OdGeVector3d::kZAxis * kIconSize;
  wd->geometry().rasterImageDc(at - u * 0.5 - v * 0.5, u, v, icon, true);
  if (camera) {
    const OdGePoint3d sight[2] = { at, at + placement.getCsXAxis().normal() * kSightLength };
    wd->subEntityTraits().setColor(1);
    wd->geometry().polyline(2, sight);
  }
}

OdResult kovDbAnimation::subGetGeomExtents(OdGeExtents3d& extents) const
{
  assertReadEnabled();
  OdGeExtents3d box;
  for (const kovAnimationTrackPtr& track : m_tracks) {
    for (int i = 0; !track.isNull() && i < track->numElements(); ++i) {
      if (isLocation(track->elementAt(i).animationType())) {
        for (const OdGePoint3d& p : pathSamples(track->elementAt(i)))
          box.addPoint(p);
      }
    }
  }
  if (!box.isValidExtents())
    return eInvalidExtents;
  extents = box;
  return eOk;
}

OdResult kovDbAnimation::subGetGripPoints(OdGePoint3dArray& gripPoints) const
{
  assertReadEnabled();
  for (const GripRef& ref : gripRefs(m_tracks))
    gripPoints.append(ref.track->elementAt(ref.item).valueAsPoint(ref.key, OdGePoint3d::kOrigin));
  return eOk;
}

OdResult kovDbAnimation::subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset)
{
  assertWriteEnabled();
  const std::vector<GripRef> refs = gripRefs(m_tracks);
  for (int index : indices) {
    if (index < 0 || index >= static_cast<int>(refs.size()))
      return eInvalidIndex;
  }
  for (int index : indices) {
    const GripRef& ref = refs[static_cast<size_t>(index)];
    kovAnimationItem& item = ref.track->elementAt(ref.item);
    const OdGePoint3d moved = item.valueAsPoint(ref.key, OdGePoint3d::kOrigin) + offset;
    item.setValue(ref.key, withPoint(item.values().value(ref.key), moved));
  }
  return eOk;
}

OdResult kovDbAnimation::subTransformBy(const OdGeMatrix3d& xform)
{
  assertWriteEnabled();
  for (const GripRef& ref : gripRefs(m_tracks)) {
    kovAnimationItem& item = ref.track->elementAt(ref.item);
    OdGePoint3d point = item.valueAsPoint(ref.key, OdGePoint3d::kOrigin);
    QVariant value = withPoint(item.values().value(ref.key), point.transformBy(xform));
    // Tangents turn with the path.
    QVariantList list = value.toList();
    if (list.size() >= 6) {
      OdGeVector3d tangent(list[3].toDouble(), list[4].toDouble(), list[5].toDouble());
      tangent.transformBy(xform);
      list[3] = tangent.x;
      list[4] = tangent.y;
      list[5] = tangent.z;
      value = list;
    }
    item.setValue(ref.key, value);
  }
  return eOk;
}
