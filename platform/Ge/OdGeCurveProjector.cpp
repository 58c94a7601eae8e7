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
}

double OdGeCurveProjector::nearestParam(const OdGePoint3d& point) const
{
  // An arc between samples i and i + 1 comes no nearer than
  // (d_i + d_i+1 - arc length) / 2.
  struct Candidate {
    double lowerBound;
    size_t index;
  };
  std::vector<Candidate> candidates;
  double best = std::numeric_limits<double>::infinity();
  double bestU = m_u.front();
  double prev = 0.0;
  for (size_t i = 0; i < m_p.size(); ++i) {
    const double d = point.distanceTo(m_p[i]);
    if (d < best) {
      best = d;
      bestU = m_u[i];
    }
    if (i > 0) {
      const double bound = 0.5 * (prev + d - kArcOverChord * m_p[i - 1].distanceTo(m_p[i]));
      if (bound < best)
        candidates.push_back({bound, i - 1});
    }
    prev = d;
  }
  std::sort(candidates.begin(), candidates.end(),
            [](const Candidate& l, const Candidate& r) { return l.lowerBound < r.lowerBound; });

  // A second handle on the caller's curve, which its owner keeps alive.
  const Handle(Geom_BSplineCurve) curve(m_curve);
  const gp_Pnt p(point.x, point.y, point.z);
  const double tolU = 1e-13 * std::max(1.0, std::fabs(m_u.back()));
  for (const Candidate& c : candidates) {
    if (c.lowerBound >= best)
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
