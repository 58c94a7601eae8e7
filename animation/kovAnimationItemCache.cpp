#include "animation/kovAnimationItemCache.h"

#include "Ge/OdGeVector3d.h"

#include <QVariantList>

#include <algorithm>

namespace {

bool asList(const QVariant& value, QVariantList& list)
{
  // A text converts to a list of one element; it is not a point.
  if (value.userType() == QMetaType::QString || !value.canConvert<QVariantList>())
    return false;
  list = value.toList();
  return true;
}

} // namespace

kovAnimationItemCache::kovAnimationItemCache(const QMap<int, QVariant>& values, bool withPath)
{
  const size_t n = static_cast<size_t>(values.size());
  m_keys.reserve(n);
  m_points.reserve(n);
  m_tangents.reserve(n);
  m_scalars.reserve(n);
  m_hasPoint.reserve(n);
  m_hasTangent.reserve(n);
  m_hasScalar.reserve(n);
  for (auto it = values.cbegin(); it != values.cend(); ++it) {
    m_keys.push_back(it.key());
    OdGePoint3d point, tangent;
    m_hasPoint.push_back(decodePoint(it.value(), 0, point) ? 1 : 0);
    m_hasTangent.push_back(decodePoint(it.value(), 3, tangent) ? 1 : 0);
    m_points.push_back(point);
    m_tangents.push_back(tangent);
    double scalar = 0.0;
    m_hasScalar.push_back(decodeScalar(it.value(), scalar) ? 1 : 0);
    m_scalars.push_back(scalar);
  }
  if (withPath)
    buildPath(values);
}

bool kovAnimationItemCache::scalar(int index, double& value) const
{
  if (!m_hasScalar[static_cast<size_t>(index)])
    return false;
  value = m_scalars[static_cast<size_t>(index)];
  return true;
}

bool kovAnimationItemCache::pathParam(int index, double& param) const
{
  if (!m_pathValid || !m_hasParam[static_cast<size_t>(index)])
    return false;
  param = m_params[static_cast<size_t>(index)];
  return true;
}

bool kovAnimationItemCache::decodePoint(const QVariant& value, int first, OdGePoint3d& point)
{
  QVariantList list;
  if (!asList(value, list) || list.size() < first + 3)
    return false;
  point.set(list.at(first).toDouble(), list.at(first + 1).toDouble(), list.at(first + 2).toDouble());
  return true;
}

bool kovAnimationItemCache::decodeScalar(const QVariant& value, double& result)
{
  bool ok = false;
  const double d = value.toDouble(&ok);
  if (ok)
    result = d;
  return ok;
}

void kovAnimationItemCache::pathFitData(const QMap<int, QVariant>& values, OdGePoint3dArray& points,
                                        OdGeVector3dArray& tangents)
{
  points.clear();
  tangents.clear();
  points.reserve(static_cast<size_t>(values.size()));
  tangents.reserve(static_cast<size_t>(values.size()));
  for (const QVariant& value : values) {
    OdGePoint3d point, tangent;
    decodePoint(value, 0, point);
    decodePoint(value, 3, tangent);
    points.append(point);
    tangents.append(tangent.asVector());
  }
}

void kovAnimationItemCache::buildPath(const QMap<int, QVariant>& values)
{
  OdGePoint3dArray points;
  OdGeVector3dArray tangents;
  pathFitData(values, points, tangents);
  m_pathValid = m_path.setFitData(points, tangents, 3, 0.0) == eOk;
  double start = 0.0;
  m_pathValid = m_pathValid && m_path.getStartParam(start) == eOk;
  if (!m_pathValid)
    return;
  m_params.resize(points.size());
  m_hasParam.resize(points.size());
  for (size_t i = 0; i < points.size(); ++i)
    m_hasParam[i] = m_path.getParamAtPoint(points[i], m_params[i]) == eOk ? 1 : 0;
}

bool kovAnimationItemCache::finishBracket(int ms, int firstKey, int lastKey, int prevTime, int nextTime,
                                          double& fraction)
{
  if (ms == prevTime || ms < firstKey)
    fraction = 0.0;
  else if (ms == nextTime || ms > lastKey)
    fraction = 1.0;
  else
    fraction = (static_cast<double>(ms) - prevTime) / (static_cast<double>(nextTime) - prevTime);
  return ms == nextTime || ms == prevTime;
}

bool kovAnimationItemCache::findKeyFrame(int ms, int& prevIndex, int& prevTime, int& nextIndex, int& nextTime,
                                         double& fraction) const
{
  prevIndex = prevTime = nextIndex = nextTime = 0;
  fraction = 0.0;
  const std::vector<int>& keys = m_keys;
  const int n = static_cast<int>(keys.size());
  if (n == 0)
    return false;

  // The walk stops at the first key greater than ms.
  const int stop = static_cast<int>(std::upper_bound(keys.begin(), keys.end(), ms) - keys.begin());
  if (stop == 0) {
    prevIndex = nextIndex = 0;
    prevTime = nextTime = keys[0];
  } else if (stop < n) {
    prevIndex = stop - 1;
    prevTime = keys[static_cast<size_t>(stop - 1)];
    nextIndex = stop;
    nextTime = keys[static_cast<size_t>(stop)];
  } else {
    // A walk that never stops leaves the last key as next and the one before
    // it as prev; with a single key prev keeps its initial zeros.
    nextIndex = n - 1;
    nextTime = keys[static_cast<size_t>(n - 1)];
    if (n >= 2) {
      prevIndex = n - 2;
      prevTime = keys[static_cast<size_t>(n - 2)];
    }
    if (ms > nextTime) {
      prevIndex = nextIndex;
      prevTime = nextTime;
    }
  }
  return finishBracket(ms, keys.front(), keys.back(), prevTime, nextTime, fraction);
}

