#ifndef OD_GE_CURVE_PROJECTOR_H
#define OD_GE_CURVE_PROJECTOR_H

#include "Ge/OdGePoint3d.h"

#include <vector>

class Geom_BSplineCurve;

// Finds the point of a B-spline nearest to a given point, over the curve's
// whole parameter range. Samples along every knot span are taken once; a
// query bounds the distance by the nearest sample and searches locally (OCCT's
// extremum search) every sample interval whose arc could come nearer. An
// internal helper of OdGeNurbCurve3d.
class OdGeCurveProjector {
public:
  // curve must stay alive, owned by a handle, for the projector's lifetime.
  // OCCT exceptions pass through.
  explicit OdGeCurveProjector(const Geom_BSplineCurve& curve);

  // The parameter of the nearest point of the curve; an end parameter when
  // an end is nearest.
  double nearestParam(const OdGePoint3d& point) const;

private:
  const Geom_BSplineCurve* m_curve;
  std::vector<double> m_u;
  std::vector<OdGePoint3d> m_p;
  std::vector<double> m_reach; // bound on the arc length from sample i to i + 1
};

#endif
