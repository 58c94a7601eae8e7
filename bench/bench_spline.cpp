// Speed of the fit-point spline that carries camera paths: evaluation,
// nearest-point and arc-length queries on built curves, and the cost of
// building a curve (and its arc-length table) after its fit data changed.

#include "Ge/OdGeNurbCurve3d.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

volatile double g_sink = 0.0;

typedef std::chrono::steady_clock Clock;

double elapsedNs(Clock::time_point since)
{
  return std::chrono::duration<double, std::nano>(Clock::now() - since).count();
}

// A camera path: a wandering climb with uneven keyframe spacing.
OdGePoint3dArray cameraPath(int n)
{
  OdGePoint3dArray pts;
  double x = 0.0;
  for (int i = 0; i < n; ++i) {
    x += 1.0 + 0.5 * std::sin(1.7 * i);
    pts.append(OdGePoint3d(x, 8.0 * std::sin(0.31 * i), 2.0 + std::cos(0.13 * i)));
  }
  return pts;
}

OdGeNurbCurve3d curveThrough(int n)
{
  OdGeNurbCurve3d c;
  c.setFitData(cameraPath(n), 3, 0.0, OdGeVector3d(), OdGeVector3d());
  return c;
}

// Parameters spread over the whole curve in a scattered order, as a render of
// many frames would ask for them.
std::vector<double> params(const OdGeNurbCurve3d& c, int count)
{
  double end = 0.0;
  c.getEndParam(end);
  std::vector<double> us;
  for (int i = 0; i < count; ++i)
    us.push_back(end * std::fmod(0.618033988749895 * i, 1.0));
  return us;
}

void pointAtParam(const OdGeNurbCurve3d& c)
{
  const std::vector<double> us = params(c, 1 << 20);
  OdGePoint3d p;
  c.getPointAtParam(0.0, p);
  const Clock::time_point t0 = Clock::now();
  double sum = 0.0;
  for (double u : us) {
    c.getPointAtParam(u, p);
    sum += p.x;
  }
  g_sink = sum;
  std::printf("figure: spline_point_at_param_ns %.1f ns\n", elapsedNs(t0) / us.size());
}

void paramAtPoint(const OdGeNurbCurve3d& c)
{
  const std::vector<double> us = params(c, 20000);
  std::vector<OdGePoint3d> onCurve(us.size());
  for (size_t i = 0; i < us.size(); ++i)
    c.getPointAtParam(us[i], onCurve[i]);
  double u = 0.0;
  c.getParamAtPoint(onCurve[0], u);
  Clock::time_point t0 = Clock::now();
  double sum = 0.0;
  for (const OdGePoint3d& p : onCurve) {
    c.getParamAtPoint(p, u);
    sum += u;
  }
  g_sink = sum;
  std::printf("figure: spline_param_at_point_ns %.1f ns\n", elapsedNs(t0) / onCurve.size());

  OdGePoint3d fit;
  t0 = Clock::now();
  const int rounds = 2000;
  for (int r = 0; r < rounds; ++r) {
    c.getFitPointAt(r % c.numFitPoints(), fit);
    c.getParamAtPoint(fit, u);
    sum += u;
  }
  g_sink = sum;
  std::printf("figure: spline_param_at_fit_point_ns %.1f ns\n", elapsedNs(t0) / rounds);
}

void arcLength(const OdGeNurbCurve3d& c)
{
  const std::vector<double> us = params(c, 1 << 20);
  double d = 0.0;
  c.getDistAtParam(0.0, d);
  Clock::time_point t0 = Clock::now();
  double sum = 0.0;
  for (double u : us) {
    c.getDistAtParam(u, d);
    sum += d;
  }
  g_sink = sum;
  std::printf("figure: spline_dist_at_param_ns %.1f ns\n", elapsedNs(t0) / us.size());

  double len = 0.0;
  c.length(len);
  t0 = Clock::now();
  for (double u : us) {
    c.getParamAtDist(len * u / us.back(), d);
    sum += d;
  }
  g_sink = sum;
  std::printf("figure: spline_param_at_dist_ns %.1f ns\n", elapsedNs(t0) / us.size());
}

// Build = setting the fit data and the first evaluation; the arc-length table
// is built by the first distance query after that.
void build(int n)
{
  const OdGePoint3dArray pts = cameraPath(n);
  const int rounds = n >= 1000 ? 20 : 200;
  double buildNs = 0.0;
  double tableNs = 0.0;
  for (int r = 0; r < rounds; ++r) {
    OdGeNurbCurve3d c;
    OdGePoint3d p;
    double d = 0.0;
    Clock::time_point t0 = Clock::now();
    c.setFitData(pts, 3, 0.0, OdGeVector3d(), OdGeVector3d());
    c.getPointAtParam(0.0, p);
    buildNs += elapsedNs(t0);
    t0 = Clock::now();
    c.getDistAtParam(0.0, d);
    tableNs += elapsedNs(t0);
    g_sink = p.x + d;
  }
  std::printf("figure: spline_build_us_%d %.1f us\n", n, buildNs / rounds / 1000.0);
  std::printf("figure: spline_arc_table_build_us_%d %.1f us\n", n, tableNs / rounds / 1000.0);
}

} // namespace

int main()
{
  const OdGeNurbCurve3d path = curveThrough(100);
  pointAtParam(path);
  paramAtPoint(path);
  arcLength(path);
  build(100);
  build(1000);
  return 0;
}
