#include "Ge/OdGeArcLengthTable.h"

#include <CPnts_AbscissaPoint.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

typedef OdGeArcLengthTable::Jet Jet;

// Deep enough for any span (2^-24 of it); only a cusp, where the speed is not
// smooth, gets near it.
const int kMaxDepth = 24;
// Relative accuracy asked of OCCT's integration of each interval.
const double kIntegrationTol = 1e-12;

// Speed at u using the polynomial of knot span `span`, so that a corner of a
// polyline gives each side its own speed.
Jet speedIn(const Geom_BSplineCurve& c, int span, double u)
{
  gp_Pnt p;
  gp_Vec d1;
  gp_Vec d2;
  c.LocalD2(u, span, span + 1, p, d1, d2);
  const double v = d1.Magnitude();
  return {v, v > 0.0 ? d1.Dot(d2) / v : 0.0};
}

// Arc length at t in [0, 1] across an interval of parameter width h and
// length len, from the speeds at its ends.
double hermite(double t, double h, double len, const Jet& a, const Jet& b)
{
  const double t2 = t * t;
  const double t3 = t2 * t;
  const double t4 = t3 * t;
  const double t5 = t4 * t;
  return h * a.v * (t - 6 * t3 + 8 * t4 - 3 * t5) + 0.5 * h * h * a.w * (t2 - 3 * t3 + 3 * t4 - t5) +
         0.5 * h * h * b.w * (t3 - 2 * t4 + t5) + h * b.v * (-4 * t3 + 7 * t4 - 3 * t5) +
         len * (10 * t3 - 15 * t4 + 6 * t5);
}

// d(hermite)/dt.
double hermiteSlope(double t, double h, double len, const Jet& a, const Jet& b)
{
  const double t2 = t * t;
  const double t3 = t2 * t;
  const double t4 = t3 * t;
  return h * a.v * (1 - 18 * t2 + 32 * t3 - 15 * t4) + 0.5 * h * h * a.w * (2 * t - 9 * t2 + 12 * t3 - 5 * t4) +
         0.5 * h * h * b.w * (3 * t2 - 8 * t3 + 5 * t4) + h * b.v * (-12 * t2 + 28 * t3 - 15 * t4) +
         len * (30 * t2 - 60 * t3 + 30 * t4);
}

} // namespace

class OdGeArcLengthTableBuilder {
public:
  OdGeArcLengthTableBuilder(OdGeArcLengthTable& table, const Geom_BSplineCurve& curve, double tolerance)
      : m_table(table), m_curve(curve), m_adaptor(Handle(Geom_BSplineCurve)(&curve)), m_tol(tolerance)
  {
  }

  void run()
  {
    m_table.m_u.push_back(m_curve.FirstParameter());
    m_table.m_s.push_back(0.0);
    for (int k = 1; k < m_curve.NbKnots(); ++k) {
      const double a = m_curve.Knot(k);
      const double b = m_curve.Knot(k + 1);
      refine(k, a, b, speedIn(m_curve, k, a), speedIn(m_curve, k, b), 0);
    }
  }

private:
  // Halves [a, b] and keeps the halves once the Hermite curve over the whole
  // of [a, b] agrees with theirs at the middle and the quarters: the halves
  // are then some 64 times more accurate still. (The middle alone is blind to
  // a span symmetric about it.) Else refines each half.
  void refine(int span, double a, double b, const Jet& ja, const Jet& jb, int depth)
  {
    const double h = b - a;
    const double m = 0.5 * (a + b);
    const double left = CPnts_AbscissaPoint::Length(m_adaptor, a, m, kIntegrationTol);
    const double right = CPnts_AbscissaPoint::Length(m_adaptor, m, b, kIntegrationTol);
    const Jet jm = speedIn(m_curve, span, m);
    const double whole = left + right;
    const double error = std::max({std::fabs(hermite(0.5, h, whole, ja, jb) - left),
                                   std::fabs(hermite(0.25, h, whole, ja, jb) - hermite(0.5, 0.5 * h, left, ja, jm)),
                                   std::fabs(hermite(0.75, h, whole, ja, jb) - left -
                                             hermite(0.5, 0.5 * h, right, jm, jb))});
    if (error <= m_tol || depth >= kMaxDepth) {
      push(m, left, ja, jm);
      push(b, right, jm, jb);
      return;
    }
    refine(span, a, m, ja, jm, depth + 1);
    refine(span, m, b, jm, jb, depth + 1);
  }

  void push(double u, double len, const Jet& ja, const Jet& jb)
  {
    m_table.m_u.push_back(u);
    m_table.m_s.push_back(m_table.m_s.back() + len);
    m_table.m_a.push_back(ja);
    m_table.m_b.push_back(jb);
  }

  OdGeArcLengthTable& m_table;
  const Geom_BSplineCurve& m_curve;
  // Holds a second handle on the caller's curve, which its owner keeps alive.
  GeomAdaptor_Curve m_adaptor;
  double m_tol;
};

OdGeArcLengthTable::OdGeArcLengthTable(const Geom_BSplineCurve& curve, double tolerance)
{
  OdGeArcLengthTableBuilder(*this, curve, tolerance).run();
}

size_t OdGeArcLengthTable::intervalOf(const std::vector<double>& keys, double key) const
{
  const size_t after = std::upper_bound(keys.begin(), keys.end(), key) - keys.begin();
  return std::min(after == 0 ? 0 : after - 1, m_a.size() - 1);
}

double OdGeArcLengthTable::distAt(double u) const
{
  u = std::min(std::max(u, m_u.front()), m_u.back());
  const size_t i = intervalOf(m_u, u);
  const double h = m_u[i + 1] - m_u[i];
  return m_s[i] + hermite((u - m_u[i]) / h, h, m_s[i + 1] - m_s[i], m_a[i], m_b[i]);
}

// Inverts the Hermite length within its interval: Newton steps kept inside a
// shrinking bracket, bisecting whenever a step would leave it.
double OdGeArcLengthTable::paramAt(double dist) const
{
  dist = std::min(std::max(dist, 0.0), length());
  const size_t i = intervalOf(m_s, dist);
  const double h = m_u[i + 1] - m_u[i];
  const double len = m_s[i + 1] - m_s[i];
  const double target = dist - m_s[i];
  if (len <= 0.0)
    return m_u[i];
  const double eps = std::numeric_limits<double>::epsilon();
  double lo = 0.0;
  double hi = 1.0;
  double x = std::min(std::max(target / len, 0.0), 1.0);
  for (int iter = 0; iter < 100; ++iter) {
    const double f = hermite(x, h, len, m_a[i], m_b[i]) - target;
    if (f > 0.0)
      hi = x;
    else
      lo = x;
    const double slope = hermiteSlope(x, h, len, m_a[i], m_b[i]);
    double next = slope > 0.0 ? x - f / slope : 0.5 * (lo + hi);
    if (!(next >= lo && next <= hi))
      next = 0.5 * (lo + hi);
    const bool converged = std::fabs(next - x) <= 4.0 * eps;
    x = next;
    if (converged || hi - lo <= eps)
      break;
  }
  return m_u[i] + x * h;
}
