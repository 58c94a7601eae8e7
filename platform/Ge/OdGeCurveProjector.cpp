#include "Ge/OdGeCurveProjector.h"

#include <Extrema_LocateExtPC.hxx>
#include <Extrema_POnCurv.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Fine enough that a sample chord stays close to its arc on any sensible
// camera path.
const int kSamplesPerSpan = 8;
// How much longer than its chord a sampled arc may be, when bounding how close
// the arc can come to a point.
const double kArcOverChord = 1.5;

} // namespace

OdGeCurveProjector::OdGeCurveProjector(const Geom_BSplineCurve& curve) : m_curve(&curve)
{
  for (int k = 1; k < curve.NbKnots(); ++k) {
    const double a = curve.Knot(k);
    const double h = (curve.Knot(k + 1) - a) / kSamplesPerSpan;
    for (int j = 0; j < kSamplesPerSpan; ++j)
      m_u.push_back(a + j * h);
  }
  m_u.push_back(curve.LastParameter());
  for (double u : m_u) {
    const gp_Pnt p = curve.Value(u);
    m_p.push_back(OdGePoint3d(p.X(), p.Y(), p.Z()));
  }
  for (size_t i = 0; i + 1 < m_p.size(); ++i)
    m_reach.push_back(kArcOverChord * m_p[i].distanceTo(m_p[i + 1]));
}

double OdGeCurveProjector::nearestParam(const OdGePoint3d& point) const
{
  double bestSq = std::numeric_limits<double>::infinity();
  double bestU = m_u.front();
  for (size_t i = 0; i < m_p.size(); ++i) {
    const double dSq = (point - m_p[i]).lengthSqrd();
    if (dSq < bestSq) {
      bestSq = dSq;
      bestU = m_u[i];
    }
  }
  double best = std::sqrt(bestSq);
  if (best <= OdGeContext::gTol.equalPoint())
    return bestU;

  // The arc between samples i and i + 1 comes no nearer than
  // (d_i + d_i+1 - its length) / 2: worth a search only when that is below
  // the best distance, which needs both d_i and d_i+1 below 2 * best + length.
  struct Candidate {
    double lowerBound;
    size_t index;
  };
  std::vector<Candidate> candidates;
  for (size_t i = 0; i + 1 < m_p.size(); ++i) {
    const double limit = 2.0 * best + m_reach[i];
    const double limitSq = limit * limit;
    if ((point - m_p[i]).lengthSqrd() >= limitSq || (point - m_p[i + 1]).lengthSqrd() >= limitSq)
      continue;
    const double bound = 0.5 * (point.distanceTo(m_p[i]) + point.distanceTo(m_p[i + 1]) - m_reach[i]);
    if (bound < best)
      candidates.push_back({bound, i});
  }
  std::sort(candidates.begin(), candidates.end(),
            [](const Candidate& l, const Candidate& r) { return l.lowerBound < r.lowerBound; });

  // A second handle on the caller's curve, which its owner keeps alive.
  const Handle(Geom_BSplineCurve) curve(m_curve);
  const gp_Pnt p(point.x, point.y, point.z);
  const double tolU = 1e-13 * std::max(1.0, std::fabs(m_u.back()));
  for (const Candidate& c : candidates) {
    if (c.lowerBound >= best || best <= OdGeContext::gTol.equalPoint())
      break;
    const double lo = m_u[c.index];
    const double hi = m_u[c.index + 1];
    const GeomAdaptor_Curve piece(curve, lo, hi);
    const Extrema_LocateExtPC ext(p, piece, 0.5 * (lo + hi), lo, hi, tolU);
    if (ext.IsDone() && ext.SquareDistance() < best * best) {
      best = std::sqrt(ext.SquareDistance());
      bestU = ext.Point().Parameter();
    }
  }
  return bestU;
}
