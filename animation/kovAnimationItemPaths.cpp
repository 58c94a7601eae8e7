// Changing a sub-track's type, laying out spline paths, and re-timing
// keyframes by the distance travelled.
#include "animation/kovAnimationItem.h"

#include "animation/kovAnimationItemCache.h"
#include "animation/kovAnimationTrack.h"

#include "db/kovDbAnimation.h"

#include <QVariantList>

#include <climits>
#include <cmath>

namespace {

// A path laid out from a single place runs this far along +X.
const double kDefaultPathLength = 10.0;
// ...and takes this long, at one drawing unit per second.
const int kDefaultPathDurationMs = 10000;
// Objects that walk their path by speed move at one drawing unit per second.
const double kObjectSpeed = 1.0;

QVariant pathValue(const OdGePoint3d& p, const OdGePoint3d& tangent)
{
  return QVariantList { p.x, p.y, p.z, tangent.x, tangent.y, tangent.z };
}

int clampToInt(double ms)
{
  if (!(ms > INT_MIN))
    return INT_MIN;
  if (!(ms < INT_MAX))
    return INT_MAX;
  return static_cast<int>(ms);
}

} // namespace

void kovAnimationItem::setAnimationType(const AnimationType& type, const OdGePoint3d& point)
{
  if (type == m_animationType)
    return;
  m_animationType = type;
  m_values.detach();
  invalidateCache();
  if (type != LocationBySpline) {
    emit valueChanged(this);
    return;
  }

  // Every keyframe becomes a fit point with its tangent (free where none).
  OdGePoint3dArray points;
  OdGeVector3dArray tangents;
  kovAnimationItemCache::pathFitData(m_values, points, tangents);
  QMap<int, QVariant> rebuilt;
  int i = 0;
  for (auto it = m_values.cbegin(); it != m_values.cend(); ++it, ++i) {
    const OdGeVector3d& t = tangents[static_cast<unsigned>(i)];
    rebuilt.insert(it.key(), pathValue(points[static_cast<unsigned>(i)], OdGePoint3d(t.x, t.y, t.z)));
  }
  m_values = rebuilt;
  if (m_values.size() < 4)
    layOutSplinePath(point);
  else
    emit valueChanged(this);
}

// Widens a path of fewer than four keyframes to four, so that the spline has
// a shape: the first and last points stay, two inner points swing out to
// either side. Without two distinct points the path starts at the first one
// (or at point) and runs along +X.
void kovAnimationItem::layOutSplinePath(const OdGePoint3d& point)
{
  OdGePoint3d p0 = point;
  OdGePoint3d p1;
  int t0 = 0;
  int t3 = kDefaultPathDurationMs;
  if (!m_values.isEmpty()) {
    p0 = valueAsPoint(m_values.firstKey(), point);
    p1 = valueAsPoint(m_values.lastKey(), point);
    t0 = m_values.firstKey();
    t3 = m_values.lastKey();
  }
  if (m_values.size() < 2 || p0.isEqualTo(p1))
    p1 = p0 + OdGeVector3d(kDefaultPathLength, 0.0, 0.0);
  // Four distinct times; a span too short for that gets the default duration.
  if (static_cast<double>(t3) - t0 < 3.0)
    t3 = clampToInt(static_cast<double>(t0) + kDefaultPathDurationMs);
  if (static_cast<double>(t3) - t0 < 3.0)
    t0 = t3 - kDefaultPathDurationMs;

  if (m_parentTrack && m_parentTrack->trackTypeIdentifier() == QLatin1String("Camera")) {
    p0.z = 2.0;
    p1.z = 2.0;
  }
  const OdGeVector3d d = p1 - p0;
  const OdGeVector3d q = d.normal().perpVector().normal();
  const double s = 0.25 * d.length();
  const OdGePoint3d inner1 = p0 + d * 0.33 + q * s;
  const OdGePoint3d inner2 = p0 + d * 0.66 - q * s;
  const double span = static_cast<double>(t3) - t0;
  const int t1 = clampToInt(t0 + span * 0.33);
  const int t2 = clampToInt(t0 + span * 0.66);

  m_values.clear();
  invalidateCache();
  const OdGePoint3d noTangent;
  setValue(t0, pathValue(p0, noTangent));
  setValue(t1, pathValue(inner1, noTangent));
  setValue(t2, pathValue(inner2, noTangent));
  setValue(t3, pathValue(p1, noTangent));
}

bool kovAnimationItem::recalcKFTimesByDistance(kovDbAnimation* animation, kovAnimationTrack* track, double speed)
{
  Q_UNUSED(track);
  if (animation)
    animation->assertWriteEnabled();
  if (!(speed > 0.0) || !std::isfinite(speed) || m_values.size() < 2)
    return false;
  if (m_animationType != LocationByPoints && m_animationType != LocationBySpline)
    return false;

  // Distance travelled from the start to each keyframe.
  const kovAnimationItemCache& keys = cache();
  const int n = keys.size();
  std::vector<double> travelled(static_cast<size_t>(n), 0.0);
  if (m_animationType == LocationByPoints) {
    for (int i = 1; i < n; ++i) {
      const double d = keys.point(i).distanceTo(keys.point(i - 1));
      travelled[static_cast<size_t>(i)] = travelled[static_cast<size_t>(i - 1)] + (std::isfinite(d) ? d : 0.0);
    }
  } else {
    const OdGeNurbCurve3d* path = keys.path();
    if (!path)
      return false;
    for (int i = 1; i < n; ++i) {
      double param = 0.0;
      double dist = travelled[static_cast<size_t>(i - 1)];
      const bool last = i == n - 1;
      if (last ? path->getEndParam(param) == eOk : keys.pathParam(i, param))
        path->getDistAtParam(param, dist);
      travelled[static_cast<size_t>(i)] = std::isfinite(dist) ? dist : travelled[static_cast<size_t>(i - 1)];
    }
  }

  QMap<int, QVariant> retimed;
  auto it = m_values.cbegin();
  int time = it.key();
  retimed.insert(time, it.value());
  for (int i = 1; i < n; ++i) {
    ++it;
    const double d = travelled[static_cast<size_t>(i)] - travelled[static_cast<size_t>(i - 1)];
    int next = d > 0.0 ? clampToInt(time + d / speed * 1000.0) : time;
    // A keyframe never lands on its predecessor's time: the map would drop it.
    // Past the last representable time the path keeps the times it had.
    if (next <= time && time == INT_MAX)
      return false;
    if (next <= time)
      next = time + 1;
    time = next;
    retimed.insert(time, it.value());
  }
  if (retimed.keys() == m_values.keys())
    return false;
  setValues(retimed);
  return true;
}

bool kovAnimationItem::recalcConstrainedValues(kovDbAnimation* animation, kovAnimationTrack* track)
{
  // Objects that walk their path by speed keep their keyframe times tied to
  // the path's length: a moved point re-times the walk. Cameras, lights and
  // entities keep the times the user gave.
  if (!track || !m_durationByAnimationSpeed)
    return false;
  const QString kind = track->trackTypeIdentifier();
  if (kind != QLatin1String("Object") && kind != QLatin1String("SpawnedObject"))
    return false;
  return recalcKFTimesByDistance(animation, track, kObjectSpeed);
}
