#include "animation/kovAnimationItemCache.h"

#include "Ge/OdGeVector3d.h"

#include <QVariantList>

#include <algorithm>
#include <cmath>

namespace {

// Highest degree whose basis the cache evaluates itself.
const int kMaxDegree = 7;

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
  takeBasis();
}

void kovAnimationItemCache::takeBasis()
{
  const int poles = m_path.numControlPoints();
  const int degree = m_path.degree();
  if (poles < 2 || degree < 1 || degree > kMaxDegree || m_path.numKnots() != poles + degree + 1)
    return;
  m_degree = degree;
  m_poles.resize(static_cast<size_t>(poles));
  m_knots.resize(static_cast<size_t>(m_path.numKnots()));
  bool ok = true;
  for (int i = 0; i < poles; ++i)
    ok = ok && m_path.getControlPointAt(i, m_poles[static_cast<size_t>(i)]) == eOk;
  for (int i = 0; i < m_path.numKnots(); ++i)
    ok = ok && m_path.knotAt(i, m_knots[static_cast<size_t>(i)]) == eOk;
  // The basis must reproduce the curve, else the curve answers itself.
  double start = 0.0, end = 0.0;
  ok = ok && m_path.getStartParam(start) == eOk && m_path.getEndParam(end) == eOk;
  for (int i = 0; ok && i <= 2; ++i) {
    const double u = start + (end - start) * 0.5 * i;
    OdGePoint3d expected, point;
    OdGeVector3d deriv;
    ok = m_path.getPointAtParam(u, expected) == eOk;
    if (ok)
      deBoor(u, point, deriv);
    ok = ok && point.isEqualTo(expected);
  }
  if (!ok) {
    m_degree = 0;
    m_poles.clear();
    m_knots.clear();
  }
}

// De Boor's triangle in the span of param. The difference of the two points
// left before its last step, scaled by degree over the span, is the derivative.
void kovAnimationItemCache::deBoor(double param, OdGePoint3d& point, OdGeVector3d& deriv) const
{
  const int p = m_degree;
  const int n = static_cast<int>(m_poles.size()) - 1;
  const double* t = m_knots.data();
  const double u = std::min(std::max(param, t[p]), t[n + 1]);
  const int k = static_cast<int>(std::upper_bound(t + p + 1, t + n + 1, u) - t) - 1;
  OdGePoint3d d[kMaxDegree + 1];
  for (int j = 0; j <= p; ++j)
    d[j] = m_poles[static_cast<size_t>(j + k - p)];
  OdGeVector3d lastStep;
  for (int r = 1; r <= p; ++r) {
    if (r == p)
      lastStep = d[p] - d[p - 1];
    for (int j = p; j >= r; --j) {
      const double alpha = (u - t[j + k - p]) / (t[j + 1 + k - r] - t[j + k - p]);
      d[j] = d[j - 1] + (d[j] - d[j - 1]) * alpha;
    }
  }
  point = d[p];
  deriv = lastStep * (p / (t[k + 1] - t[k]));
}

bool kovAnimationItemCache::pathPoint(double param, OdGePoint3d& point) const
{
  if (!m_pathValid || !std::isfinite(param))
    return false;
  if (!m_degree)
    return m_path.getPointAtParam(param, point) == eOk;
  OdGeVector3d deriv;
  deBoor(param, point, deriv);
  return true;
}

bool kovAnimationItemCache::pathFirstDeriv(double param, OdGeVector3d& deriv) const
{
  if (!m_pathValid || !std::isfinite(param))
    return false;
  if (!m_degree)
    return m_path.getFirstDeriv(param, deriv) == eOk;
  OdGePoint3d point;
  deBoor(param, point, deriv);
  return true;
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

