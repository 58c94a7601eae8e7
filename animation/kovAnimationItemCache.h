#ifndef KOV_ANIMATION_ITEM_CACHE_H
#define KOV_ANIMATION_ITEM_CACHE_H

#include "Ge/OdGeNurbCurve3d.h"
#include "Ge/OdGePoint3d.h"

#include <QMap>
#include <QVariant>

#include <vector>

// Derived data of one sub-track's keyframes, decoded once so that evaluation
// at a time costs a binary search and a few reads instead of walking and
// converting the variant map on every call. Immutable once built, so any
// number of threads may read it; the item drops it on every change of its
// keyframes or its type.
class kovAnimationItemCache {
public:
  // withPath also builds the spline through the keyframes' points.
  kovAnimationItemCache(const QMap<int, QVariant>& values, bool withPath);

  int size() const { return static_cast<int>(m_keys.size()); }
  const std::vector<int>& keys() const { return m_keys; }
  int key(int index) const { return m_keys[static_cast<size_t>(index)]; }

  // Elements 0..2 of the keyframe's list, or the origin when it has fewer.
  const OdGePoint3d& point(int index) const { return m_points[static_cast<size_t>(index)]; }
  bool hasPoint(int index) const { return m_hasPoint[static_cast<size_t>(index)] != 0; }
  // Elements 3..5, or the origin when the list has fewer than six.
  const OdGePoint3d& tangent(int index) const { return m_tangents[static_cast<size_t>(index)]; }
  bool hasTangent(int index) const { return m_hasTangent[static_cast<size_t>(index)] != 0; }
  // The value as a double, when it converts to one.
  bool scalar(int index, double& value) const;

  // The spline through the keyframes' points with their non-zero tangents
  // (the curve getValuesAsSpline builds), and the parameter of each
  // keyframe's point on it. Null / false when it was not asked for or no
  // curve can be built.
  const OdGeNurbCurve3d* path() const { return m_pathValid ? &m_path : nullptr; }
  bool pathParam(int index, double& param) const;
  // The point of the path at param, and its first derivative; false where
  // the path has none (no path, a path that is a single point).
  bool pathPoint(double param, OdGePoint3d& point) const;
  bool pathFirstDeriv(double param, OdGeVector3d& deriv) const;

  // The bracket of keyframes around ms, as kovAnimationItem::findKeyFrame
  // documents it, found by binary search.
  bool findKeyFrame(int ms, int& prevIndex, int& prevTime, int& nextIndex, int& nextTime,
                    double& fraction) const;

  // The weight and the answer of a bracket: the rules every bracket search
  // ends with, so that two searches can differ only in how they find it.
  static bool finishBracket(int ms, int firstKey, int lastKey, int prevTime, int nextTime, double& fraction);

  // Decoding rules shared with the item's exact-key reads.
  static bool decodePoint(const QVariant& value, int first, OdGePoint3d& point);
  static bool decodeScalar(const QVariant& value, double& result);
  // The fit data of a path through these keyframes.
  static void pathFitData(const QMap<int, QVariant>& values, OdGePoint3dArray& points,
                          OdGeVector3dArray& tangents);

private:
  void buildPath(const QMap<int, QVariant>& values);
  void takeBasis();
  void deBoor(double param, OdGePoint3d& point, OdGeVector3d& deriv) const;

  std::vector<int> m_keys;
  std::vector<OdGePoint3d> m_points;
  std::vector<OdGePoint3d> m_tangents;
  std::vector<double> m_scalars;
  std::vector<char> m_hasPoint;
  std::vector<char> m_hasTangent;
  std::vector<char> m_hasScalar;

  bool m_pathValid = false;
  OdGeNurbCurve3d m_path;
  std::vector<double> m_params;
  std::vector<char> m_hasParam;

  // The path's B-spline (clamped knots and control points), evaluated here:
  // a curve query costs several times a whole track evaluation. Empty when
  // the curve does not offer one that reproduces it.
  int m_degree = 0;
  std::vector<double> m_knots;
  std::vector<OdGePoint3d> m_poles;
};

#endif
