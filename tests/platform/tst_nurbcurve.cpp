#include "Ge/OdGeExtents3d.h"
#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGeNurbCurve3d.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

typedef OdGeNurbCurve3d Curve;

const double kPi = 3.14159265358979323846;
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const OdGeVector3d kFree;

// Uneven spacing, turns both ways and a climb: a camera path through keyframes.
OdGePoint3dArray keyframes()
{
  return {{0, 0, 0}, {4, 1, 0.5}, {5, 5, 1}, {9, 6, 1}, {14, 2, 3}, {15, -3, 3}, {10, -6, 2}};
}

OdGePoint3dArray helix(int n, double r)
{
  OdGePoint3dArray pts;
  for (int i = 0; i < n; ++i)
    pts.append(OdGePoint3d(r * std::cos(0.5 * i), r * std::sin(0.5 * i), 0.3 * i));
  return pts;
}

OdGePoint3dArray ring(int n, double r)
{
  OdGePoint3dArray pts;
  for (int i = 0; i < n; ++i)
    pts.append(OdGePoint3d(r * std::cos(2 * kPi * i / n), r * std::sin(2 * kPi * i / n), 0));
  return pts;
}

Curve through(const OdGePoint3dArray& pts, int degree = 3, const OdGeVector3d& start = kFree,
              const OdGeVector3d& end = kFree, Curve::KnotParameterization kp = Curve::kChord)
{
  Curve c;
  EXPECT_EQ(c.setFitData(pts, degree, 0.0, start, end, kp), eOk);
  return c;
}

OdGePoint3d pointAt(const Curve& c, double u)
{
  OdGePoint3d p;
  EXPECT_EQ(c.getPointAtParam(u, p), eOk) << "at " << u;
  return p;
}

OdGeVector3d derivAt(const Curve& c, double u)
{
  OdGeVector3d d;
  EXPECT_EQ(c.getFirstDeriv(u, d), eOk) << "at " << u;
  return d;
}

double startOf(const Curve& c)
{
  double u = kNaN;
  EXPECT_EQ(c.getStartParam(u), eOk);
  return u;
}

double endOf(const Curve& c)
{
  double u = kNaN;
  EXPECT_EQ(c.getEndParam(u), eOk);
  return u;
}

double lengthOf(const Curve& c)
{
  double len = kNaN;
  EXPECT_EQ(c.length(len), eOk);
  return len;
}

double angleBetween(const OdGeVector3d& a, const OdGeVector3d& b) { return a.angleTo(b); }

// Length of the curve by summing many short chords, with the fit points'
// parameters among the ends of the chords so that no corner is cut: an
// independent reference for the arc-length queries (error ~1e-10 relative for
// these curves).
double chordSum(const Curve& c, double from, double to, int steps = 100000)
{
  std::vector<double> stops(1, from);
  for (int i = 0; i < c.numFitPoints(); ++i) {
    double u = kNaN;
    EXPECT_EQ(c.getFitPointParam(i, u), eOk);
    if (u > stops.back() && u < to)
      stops.push_back(u);
  }
  stops.push_back(to);
  double sum = 0.0;
  for (size_t k = 1; k < stops.size(); ++k) {
    const int n = std::max(1, static_cast<int>(steps * (stops[k] - stops[k - 1]) / (to - from)));
    OdGePoint3d prev = pointAt(c, stops[k - 1]);
    for (int i = 1; i <= n; ++i) {
      const OdGePoint3d p = pointAt(c, stops[k - 1] + (stops[k] - stops[k - 1]) * i / n);
      sum += p.distanceTo(prev);
      prev = p;
    }
  }
  return sum;
}

struct Shape {
  std::string name;
  std::function<Curve()> make;
};

std::vector<Shape> shapes()
{
  const OdGeVector3dArray perPoint = {{1, 0, 0}, {}, {0, 1, 0}, {}, {1, -1, 0}, {}, {-1, 0, 0}};
  return {
      {"ChordCubic", [] { return through(keyframes()); }},
      {"SqrtChordCubic", [] { return through(keyframes(), 3, kFree, kFree, Curve::kSqrtChord); }},
      {"UniformCubic", [] { return through(keyframes(), 3, kFree, kFree, Curve::kUniform); }},
      {"EndTangents", [] { return through(keyframes(), 3, {0, 1, 0}, {-1, 0, 0}); }},
      {"PerPointTangents",
       [perPoint] {
         Curve c;
         EXPECT_EQ(c.setFitData(keyframes(), perPoint, 3, 0.0), eOk);
         return c;
       }},
      {"Helix", [] { return through(helix(20, 7.0)); }},
      {"Polyline", [] { return through(keyframes(), 1); }},
      {"Parabola", [] { return through({{0, 0, 0}, {1, 2, 0}, {3, 0, 0}}); }},
      {"Segment", [] { return through({{1, 1, 1}, {4, 5, 1}}); }},
      {"ClosedRing",
       [] {
         Curve c = through(ring(6, 5.0));
         c.makeClosed();
         return c;
       }},
      {"ClosedPolygon",
       [] {
         Curve c = through(keyframes(), 1);
         c.makeClosed();
         return c;
       }},
      {"Duplicates", [] { return through({{0, 0, 0}, {0, 0, 0}, {3, 1, 0}, {3, 1, 0}, {6, 0, 0}, {9, 2, 0}}); }},
  };
}

class NurbShapes : public ::testing::TestWithParam<Shape> {};

TEST_P(NurbShapes, PassesThroughEveryFitPointAtIncreasingParameters)
{
  const Curve c = GetParam().make();
  double prev = -1.0;
  for (int i = 0; i < c.numFitPoints(); ++i) {
    OdGePoint3d fit;
    double u = kNaN;
    double uFit = kNaN;
    ASSERT_EQ(c.getFitPointAt(i, fit), eOk);
    ASSERT_EQ(c.getParamAtPoint(fit, u), eOk);
    ASSERT_EQ(c.getFitPointParam(i, uFit), eOk);
    EXPECT_LE(pointAt(c, uFit).distanceTo(fit), 1e-9 * (1.0 + fit.asVector().length())) << "fit point " << i;
    EXPECT_LE(pointAt(c, u).distanceTo(fit), 1e-9 * (1.0 + fit.asVector().length())) << "fit point " << i;
    EXPECT_GE(uFit, prev) << "fit point " << i;
    prev = uFit;
  }
}

TEST_P(NurbShapes, PointsOnTheCurveGiveTheirOwnParameter)
{
  const Curve c = GetParam().make();
  const double u0 = startOf(c);
  const double u1 = endOf(c);
  for (int i = 1; i < 40; ++i) {
    const double u = u0 + (u1 - u0) * (i + 0.31) / 41.0;
    double back = kNaN;
    ASSERT_EQ(c.getParamAtPoint(pointAt(c, u), back), eOk);
    EXPECT_NEAR(back, u, 1e-8 * (u1 - u0)) << "at " << u;
  }
}

TEST_P(NurbShapes, ArcLengthQueriesAreAccurateAndInvertEachOther)
{
  const Curve c = GetParam().make();
  const double u0 = startOf(c);
  const double u1 = endOf(c);
  const double len = lengthOf(c);
  EXPECT_NEAR(len, chordSum(c, u0, u1), 1e-7 * len);
  double atEnd = kNaN;
  ASSERT_EQ(c.getDistAtParam(u1, atEnd), eOk);
  EXPECT_NEAR(atEnd, len, 1e-12 * len);
  double prevDist = 0.0;
  for (int i = 1; i < 25; ++i) {
    const double u = u0 + (u1 - u0) * (i + 0.17) / 25.0;
    double dist = kNaN;
    double back = kNaN;
    ASSERT_EQ(c.getDistAtParam(u, dist), eOk);
    ASSERT_EQ(c.getParamAtDist(dist, back), eOk);
    EXPECT_NEAR(back, u, 1e-10 * (u1 - u0));
    EXPECT_GT(dist, prevDist);
    prevDist = dist;
    if (i % 6 == 0) {
      EXPECT_NEAR(dist, chordSum(c, u0, u, 20000), 1e-7 * len) << "at " << u;
    }
  }
}

TEST_P(NurbShapes, ReversingKeepsTheShapeAndFlipsTheDirection)
{
  const Curve c = GetParam().make();
  Curve r = c;
  ASSERT_EQ(r.reverseCurve(), eOk);
  EXPECT_NEAR(lengthOf(r), lengthOf(c), 1e-9 * lengthOf(c));
  const double u0 = startOf(c);
  const double u1 = endOf(c);
  for (int i = 0; i <= 20; ++i) {
    const double u = u0 + (u1 - u0) * (i + 0.4) / 21.0;
    const OdGePoint3d p = pointAt(c, u);
    double v = kNaN;
    ASSERT_EQ(r.getParamAtPoint(p, v), eOk);
    EXPECT_LE(pointAt(r, v).distanceTo(p), 1e-8 * (1.0 + p.asVector().length())) << "at " << u;
    EXPECT_NEAR(angleBetween(derivAt(r, v), -derivAt(c, u)), 0.0, 1e-6) << "at " << u;
  }
}

TEST_P(NurbShapes, ControlPointsAndKnotsDescribeAClampedSpline)
{
  const Curve c = GetParam().make();
  ASSERT_GT(c.numControlPoints(), 0);
  EXPECT_EQ(c.numKnots(), c.numControlPoints() + c.degree() + 1);
  double prev = -std::numeric_limits<double>::infinity();
  for (int i = 0; i < c.numKnots(); ++i) {
    double k = kNaN;
    ASSERT_EQ(c.knotAt(i, k), eOk);
    EXPECT_GE(k, prev);
    prev = k;
  }
  OdGePoint3d first;
  ASSERT_EQ(c.getControlPointAt(0, first), eOk);
  EXPECT_LE(first.distanceTo(pointAt(c, startOf(c))), 1e-9);
  OdGePoint3d pole;
  EXPECT_EQ(c.getControlPointAt(c.numControlPoints(), pole), eInvalidIndex);
  double knot = 0.0;
  EXPECT_EQ(c.knotAt(-1, knot), eInvalidIndex);
}

TEST_P(NurbShapes, ExtentsHoldTheCurveTightly)
{
  const Curve c = GetParam().make();
  OdGeExtents3d ext;
  ASSERT_EQ(c.getGeomExtents(ext), eOk);
  OdGeExtents3d sampled;
  for (int i = 0; i < c.numFitPoints(); ++i) {
    OdGePoint3d fit;
    ASSERT_EQ(c.getFitPointAt(i, fit), eOk);
    sampled.addPoint(fit);
  }
  for (int i = 0; i <= 4000; ++i)
    sampled.addPoint(pointAt(c, startOf(c) + (endOf(c) - startOf(c)) * i / 4000.0));
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_LE(ext.minPoint()[axis], sampled.minPoint()[axis] + 1e-9);
    EXPECT_GE(ext.maxPoint()[axis], sampled.maxPoint()[axis] - 1e-9);
    EXPECT_NEAR(ext.minPoint()[axis], sampled.minPoint()[axis], 1e-4);
    EXPECT_NEAR(ext.maxPoint()[axis], sampled.maxPoint()[axis], 1e-4);
  }
}

INSTANTIATE_TEST_SUITE_P(Ge, NurbShapes, ::testing::ValuesIn(shapes()),
                         [](const ::testing::TestParamInfo<Shape>& info) { return info.param.name; });

// --- parameters ---------------------------------------------------------------

TEST(NurbCurve, FitPointParametersFollowTheKnotParameterization)
{
  const OdGePoint3dArray pts = {{0, 0, 0}, {4, 0, 0}, {4, 9, 0}, {4, 9, 1}};
  const struct {
    Curve::KnotParameterization kp;
    std::vector<double> params;
  } cases[] = {
      {Curve::kChord, {0, 4, 13, 14}},
      {Curve::kSqrtChord, {0, 2, 5, 6}},
      {Curve::kUniform, {0, 1, 2, 3}},
  };
  for (const auto& tc : cases) {
    const Curve c = through(pts, 3, kFree, kFree, tc.kp);
    EXPECT_EQ(c.knotParameterization(), tc.kp);
    EXPECT_DOUBLE_EQ(startOf(c), 0.0);
    EXPECT_NEAR(endOf(c), tc.params.back(), 1e-12);
    for (int i = 0; i < 4; ++i) {
      double u = kNaN;
      ASSERT_EQ(c.getFitPointParam(i, u), eOk);
      EXPECT_NEAR(u, tc.params[i], 1e-12) << "kind " << tc.kp << " point " << i;
    }
  }
}

TEST(NurbCurve, TwoFitPointsMakeAStraightSegment)
{
  const Curve c = through({{1, 2, 3}, {4, 6, 3}});
  EXPECT_EQ(c.degree(), 1);
  EXPECT_NEAR(lengthOf(c), 5.0, 1e-12);
  EXPECT_NEAR(endOf(c), 5.0, 1e-12);
  const OdGePoint3d mid = pointAt(c, 2.5);
  EXPECT_NEAR(mid.x, 2.5, 1e-12);
  EXPECT_NEAR(mid.y, 4.0, 1e-12);
}

TEST(NurbCurve, QuarterCircleThroughFitPointsHasItsLength)
{
  const double r = 10.0;
  OdGePoint3dArray pts;
  for (int i = 0; i <= 8; ++i)
    pts.append(OdGePoint3d(r * std::cos(kPi / 16 * i), r * std::sin(kPi / 16 * i), 0));
  const Curve c = through(pts, 3, {0, 1, 0}, {-1, 0, 0});
  EXPECT_NEAR(lengthOf(c), kPi * r / 2, 1e-5 * r);
  for (int i = 0; i <= 20; ++i)
    EXPECT_NEAR(pointAt(c, endOf(c) * i / 20).asVector().length(), r, 1e-4 * r);
}

TEST(NurbCurve, ParamAtPointOffTheCurveFindsTheNearestPoint)
{
  const Curve c = through(keyframes());
  for (double u : {1.0, 7.3, 12.9, 20.5}) {
    // Off the curve along a normal (within the radius of curvature).
    const OdGeVector3d d1 = derivAt(c, u);
    const OdGeVector3d normal = d1.crossProduct(OdGeVector3d::kZAxis).normal();
    double back = kNaN;
    ASSERT_EQ(c.getParamAtPoint(pointAt(c, u) + normal * 0.3, back), eOk);
    EXPECT_NEAR(back, u, 1e-7) << "at " << u;
  }
  double back = kNaN;
  ASSERT_EQ(c.getParamAtPoint(OdGePoint3d(-5, -1, 0), back), eOk);
  EXPECT_DOUBLE_EQ(back, startOf(c));
}

TEST(NurbCurve, ParametersOutsideTheRangeOfAnOpenCurveAreRejected)
{
  const Curve c = through(keyframes());
  OdGePoint3d p;
  OdGeVector3d v;
  double d = 0.0;
  EXPECT_EQ(c.getPointAtParam(-0.1, p), eOutOfRange);
  EXPECT_EQ(c.getPointAtParam(endOf(c) + 0.1, p), eOutOfRange);
  EXPECT_EQ(c.getFirstDeriv(endOf(c) + 0.1, v), eOutOfRange);
  EXPECT_EQ(c.getDistAtParam(-1.0, d), eOutOfRange);
  EXPECT_EQ(c.getParamAtDist(lengthOf(c) * 1.01, d), eOutOfRange);
  EXPECT_EQ(c.getPointAtParam(kNaN, p), eInvalidInput);
  EXPECT_EQ(c.getParamAtDist(kNaN, d), eInvalidInput);
}

// --- tangents -----------------------------------------------------------------

TEST(NurbCurve, EndTangentsSetTheDirectionAtTheEnds)
{
  const struct {
    const char* name;
    OdGePoint3dArray pts;
    OdGeVector3d start;
    OdGeVector3d end;
  } cases[] = {
      {"both", keyframes(), {0, 1, 0}, {-1, -1, 0}},
      {"start only", keyframes(), {0, 0, 1}, kFree},
      {"end only", keyframes(), kFree, {1, 0, 0}},
      {"long tangents", keyframes(), {0, 50, 0}, {-30, 0, 0}},
      {"three points", {{0, 0, 0}, {2, 2, 0}, {4, 0, 0}}, {1, -1, 0}, {1, 1, 0}},
      {"two points, both", {{0, 0, 0}, {5, 0, 0}}, {0, 1, 0}, {0, -1, 0}},
      {"two points, start only", {{0, 0, 0}, {5, 0, 0}}, {1, 1, 0}, kFree},
  };
  for (const auto& tc : cases) {
    const Curve c = through(tc.pts, 3, tc.start, tc.end);
    if (!tc.start.isZeroLength()) {
      EXPECT_NEAR(angleBetween(derivAt(c, startOf(c)), tc.start), 0.0, 1e-9) << tc.name;
    }
    if (!tc.end.isZeroLength()) {
      EXPECT_NEAR(angleBetween(derivAt(c, endOf(c)), tc.end), 0.0, 1e-9) << tc.name;
    }
    // A free end does not stop the curve; a tangent bends it without a loop.
    EXPECT_GT(derivAt(c, startOf(c)).length(), 0.1) << tc.name;
    EXPECT_GT(derivAt(c, endOf(c)).length(), 0.1) << tc.name;
    EXPECT_LT(lengthOf(c), 2.0 * chordSum(through(tc.pts, 1), 0.0, endOf(c), 100)) << tc.name;
    OdGeVector3d s;
    OdGeVector3d e;
    ASSERT_EQ(c.getFitTangents(s, e), eOk);
    EXPECT_EQ(s, tc.start);
    EXPECT_EQ(e, tc.end);
  }
}

TEST(NurbCurve, PerPointTangentsSetTheDirectionAtTheirFitPoints)
{
  const OdGeVector3dArray tangents = {{1, 0, 0}, {0, 1, 0}, {}, {1, 0, 0.2}, {}, {-1, -1, 0}, {-1, 0, 0}};
  for (bool closed : {false, true}) {
    Curve c;
    ASSERT_EQ(c.setFitData(keyframes(), tangents, 3, 0.0), eOk);
    c.setClosed(closed);
    for (int i = 0; i < 7; ++i) {
      double u = kNaN;
      ASSERT_EQ(c.getFitPointParam(i, u), eOk);
      OdGeVector3d t;
      ASSERT_EQ(c.getFitTangentAt(i, t), eOk);
      EXPECT_EQ(t, tangents[i]);
      if (!t.isZeroLength()) {
        EXPECT_NEAR(angleBetween(derivAt(c, u), t), 0.0, 1e-9) << "point " << i << " closed " << closed;
      }
    }
  }
  Curve c;
  EXPECT_EQ(c.setFitData(keyframes(), OdGeVector3dArray(3), 3, 0.0), eInvalidInput);
}

TEST(NurbCurve, TangentsStayWithTheirPointsWhenPointsAreInserted)
{
  Curve perPoint;
  ASSERT_EQ(perPoint.setFitData(keyframes(), OdGeVector3dArray(7, OdGeVector3d(0, 1, 0)), 3, 0.0), eOk);
  ASSERT_EQ(perPoint.addFitPointAt(0, OdGePoint3d(-3, 0, 0)), eOk);
  OdGeVector3d t;
  ASSERT_EQ(perPoint.getFitTangentAt(0, t), eOk);
  EXPECT_TRUE(t.isZeroLength());
  ASSERT_EQ(perPoint.getFitTangentAt(1, t), eOk);
  EXPECT_EQ(t, OdGeVector3d(0, 1, 0));

  Curve ends = through(keyframes(), 3, {0, 1, 0}, kFree);
  ASSERT_EQ(ends.addFitPointAt(0, OdGePoint3d(-3, 0, 0)), eOk);
  ASSERT_EQ(ends.getFitTangentAt(0, t), eOk);
  EXPECT_EQ(t, OdGeVector3d(0, 1, 0));
  EXPECT_NEAR(angleBetween(derivAt(ends, 0.0), t), 0.0, 1e-9);
}

// --- closed curves ------------------------------------------------------------

TEST(NurbCurve, ClosingMakesAPeriodicCurveThroughTheFitPoints)
{
  const OdGePoint3dArray pts = ring(6, 5.0);
  Curve c = through(pts);
  EXPECT_FALSE(c.isClosed());
  ASSERT_EQ(c.makeClosed(), eOk);
  EXPECT_TRUE(c.isClosed());
  // The period adds the chord back to the first point.
  EXPECT_NEAR(endOf(c), 6 * pts[0].distanceTo(pts[1]), 1e-12);
  const double period = endOf(c);
  EXPECT_LE(pointAt(c, 0.0).distanceTo(pointAt(c, period)), 1e-12);
  EXPECT_NEAR(angleBetween(derivAt(c, 0.0), derivAt(c, period)), 0.0, 1e-9);
  EXPECT_LE(pointAt(c, 1.3).distanceTo(pointAt(c, 1.3 + period)), 1e-9);
  EXPECT_LE(pointAt(c, 1.3).distanceTo(pointAt(c, 1.3 - 2 * period)), 1e-9);
  // The join answers the start; a symmetric ring stays round.
  double u = kNaN;
  ASSERT_EQ(c.getParamAtPoint(pts[0], u), eOk);
  EXPECT_DOUBLE_EQ(u, 0.0);
  for (int i = 0; i < 30; ++i)
    EXPECT_NEAR(pointAt(c, period * i / 30).asVector().length(), 5.0, 0.05);

  ASSERT_EQ(c.setClosed(false), eOk);
  EXPECT_FALSE(c.isClosed());
  EXPECT_LT(endOf(c), period);
}

TEST(NurbCurve, ALastFitPointOnTheFirstIsTheJoin)
{
  OdGePoint3dArray pts = ring(6, 5.0);
  pts.append(pts.first());
  Curve open = through(pts);
  EXPECT_TRUE(open.isClosed()); // ends meet without being periodic
  Curve closed = open;
  closed.makeClosed();
  Curve ring6 = through(ring(6, 5.0));
  ring6.makeClosed();
  EXPECT_NEAR(endOf(closed), endOf(ring6), 1e-12);
  double u = kNaN;
  ASSERT_EQ(closed.getFitPointParam(6, u), eOk);
  EXPECT_NEAR(u, endOf(closed), 1e-12);
  for (int i = 0; i <= 10; ++i)
    EXPECT_LE(pointAt(closed, endOf(closed) * i / 10).distanceTo(pointAt(ring6, endOf(ring6) * i / 10)), 1e-12);
}

TEST(NurbCurve, FewerThanThreeDistinctPointsStayOpen)
{
  Curve c = through({{0, 0, 0}, {3, 0, 0}, {3, 0, 0}});
  c.makeClosed();
  EXPECT_FALSE(c.isClosed());
  EXPECT_NEAR(lengthOf(c), 3.0, 1e-12);
}

// --- degenerate input ---------------------------------------------------------

// Runs every query and returns the results that were not eOk.
std::vector<OdResult> failedQueries(const Curve& c)
{
  OdGePoint3d p;
  OdGeVector3d v;
  OdGeExtents3d ext;
  double d = 0.0;
  const OdResult all[] = {
      c.getStartParam(d),        c.getEndParam(d),          c.getPointAtParam(0.0, p), c.getFirstDeriv(0.0, v),
      c.getSecondDeriv(0.0, v),  c.getParamAtPoint(p, d),   c.getDistAtParam(0.0, d),  c.getParamAtDist(0.0, d),
      c.length(d),               c.getGeomExtents(ext),     c.getControlPointAt(0, p), c.knotAt(0, d),
      c.getFitPointParam(0, d),
  };
  std::vector<OdResult> failed;
  for (OdResult r : all) {
    if (r != eOk)
      failed.push_back(r);
  }
  return failed;
}

TEST(NurbCurve, WithoutFitPointsEveryQueryFails)
{
  const Curve c;
  const std::vector<OdResult> failed = failedQueries(c);
  EXPECT_EQ(failed.size(), 13u);
  for (OdResult r : failed)
    EXPECT_TRUE(r == eDegenerateGeometry || r == eInvalidIndex) << r;
  EXPECT_FALSE(c.hasFitData());
  EXPECT_FALSE(c.isClosed());
  EXPECT_EQ(c.numControlPoints(), 0);
  EXPECT_EQ(c.numKnots(), 0);
  OdGeVector3d s;
  OdGeVector3d e;
  EXPECT_EQ(c.getFitTangents(s, e), eNotApplicable);
}

TEST(NurbCurve, CoincidentFitPointsMakeAPointCurve)
{
  for (const OdGePoint3dArray& pts : {OdGePoint3dArray{{1, 2, 3}}, OdGePoint3dArray{{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}}) {
    const Curve c = through(pts);
    EXPECT_EQ(pointAt(c, 0.0), OdGePoint3d(1, 2, 3));
    EXPECT_NEAR(lengthOf(c), 0.0, 0.0);
    double u = kNaN;
    ASSERT_EQ(c.getParamAtPoint(OdGePoint3d(7, 7, 7), u), eOk);
    EXPECT_EQ(u, 0.0);
    OdGePoint3d p;
    OdGeVector3d v;
    EXPECT_EQ(c.getPointAtParam(1.0, p), eOutOfRange);
    EXPECT_EQ(c.getFirstDeriv(0.0, v), eDegenerateGeometry);
    EXPECT_EQ(c.numControlPoints(), 0);
    EXPECT_FALSE(c.isClosed());
  }
}

TEST(NurbCurve, DuplicateFitPointsShareAParameterAndDoNotChangeTheShape)
{
  const OdGePoint3dArray dup = {{0, 0, 0}, {3, 1, 0}, {3, 1, 0}, {6, 0, 0}, {9, 2, 0}, {9, 2, 0}};
  const Curve c = through(dup);
  const Curve plain = through({{0, 0, 0}, {3, 1, 0}, {6, 0, 0}, {9, 2, 0}});
  double u1 = kNaN;
  double u2 = kNaN;
  ASSERT_EQ(c.getFitPointParam(1, u1), eOk);
  ASSERT_EQ(c.getFitPointParam(2, u2), eOk);
  EXPECT_EQ(u1, u2);
  EXPECT_EQ(c.numFitPoints(), 6);
  EXPECT_NEAR(endOf(c), endOf(plain), 0.0);
  for (int i = 0; i <= 10; ++i)
    EXPECT_LE(pointAt(c, endOf(c) * i / 10).distanceTo(pointAt(plain, endOf(c) * i / 10)), 1e-12);
}

TEST(NurbCurve, NonFiniteOrInvalidInputIsRejectedAndKeepsTheCurve)
{
  Curve c = through(keyframes());
  const double len = lengthOf(c);
  const OdGePoint3d nanPoint(1, kNaN, 0);
  const OdGePoint3d infPoint(std::numeric_limits<double>::infinity(), 0, 0);
  const OdGePoint3dArray withNaN = {{0, 0, 0}, nanPoint, {2, 0, 0}};
  const OdGePoint3dArray withInf = {{0, 0, 0}, infPoint, {2, 0, 0}};
  EXPECT_EQ(c.setFitData(withNaN, 3, 0.0, kFree, kFree), eInvalidInput);
  EXPECT_EQ(c.setFitData(withInf, 3, 0.0, kFree, kFree), eInvalidInput);
  EXPECT_EQ(c.setFitData(keyframes(), 3, 0.0, OdGeVector3d(kNaN, 0, 0), kFree), eInvalidInput);
  EXPECT_EQ(c.setFitData(keyframes(), 3, kNaN, kFree, kFree), eInvalidInput);
  EXPECT_EQ(c.setFitData(keyframes(), 3, -1.0, kFree, kFree), eInvalidInput);
  for (int degree : {0, 2, 4, -1})
    EXPECT_EQ(c.setFitData(keyframes(), degree, 0.0, kFree, kFree), eInvalidInput) << degree;
  EXPECT_EQ(c.setFitPointAt(1, nanPoint), eInvalidInput);
  EXPECT_EQ(c.addFitPointAt(1, infPoint), eInvalidInput);
  EXPECT_EQ(c.setFitTangents(OdGeVector3d(kNaN, 0, 0), kFree), eInvalidInput);
  OdGeMatrix3d nanMatrix;
  nanMatrix[0][0] = kNaN;
  EXPECT_EQ(c.transformBy(nanMatrix), eInvalidInput);
  double u = 0.0;
  EXPECT_EQ(c.getParamAtPoint(nanPoint, u), eInvalidInput);
  EXPECT_EQ(c.numFitPoints(), 7);
  EXPECT_NEAR(lengthOf(c), len, 1e-12 * len);

  Curve fresh;
  EXPECT_EQ(fresh.setFitData(withNaN, 3, 0.0, kFree, kFree), eInvalidInput);
  EXPECT_EQ(failedQueries(fresh).size(), 13u);
}

TEST(NurbCurve, FitPointIndicesAreChecked)
{
  Curve c = through(keyframes());
  OdGePoint3d p;
  double u = 0.0;
  for (int bad : {-1, 7}) {
    EXPECT_EQ(c.getFitPointAt(bad, p), eInvalidIndex);
    EXPECT_EQ(c.setFitPointAt(bad, p), eInvalidIndex);
    EXPECT_EQ(c.deleteFitPointAt(bad), eInvalidIndex);
    EXPECT_EQ(c.getFitPointParam(bad, u), eInvalidIndex);
  }
  EXPECT_EQ(c.addFitPointAt(8, p), eInvalidIndex);
  EXPECT_EQ(c.addFitPointAt(7, OdGePoint3d(5, -9, 2)), eOk);
  EXPECT_EQ(c.numFitPoints(), 8);
}

// --- editing, copying, transforming -------------------------------------------

TEST(NurbCurve, EditingFitPointsRebuildsTheCurve)
{
  Curve c = through(keyframes());
  lengthOf(c); // builds the curve and its caches before the edits
  const OdGePoint3d moved(6, 7, 2);
  ASSERT_EQ(c.setFitPointAt(2, moved), eOk);
  ASSERT_EQ(c.addFitPointAt(4, OdGePoint3d(12, 6, 2)), eOk);
  ASSERT_EQ(c.deleteFitPointAt(0), eOk);
  OdGePoint3dArray fit;
  int degree = 0;
  double tol = -1.0;
  bool tangents = true;
  OdGeVector3d s;
  OdGeVector3d e;
  ASSERT_EQ(c.getFitData(fit, degree, tol, tangents, s, e), eOk);
  ASSERT_EQ(fit.size(), 7u);
  EXPECT_EQ(fit[1], moved);
  EXPECT_EQ(degree, 3);
  EXPECT_FALSE(tangents);
  EXPECT_FALSE(c.isClosed());
  for (int i = 0; i < 7; ++i) {
    double u = kNaN;
    ASSERT_EQ(c.getFitPointParam(i, u), eOk);
    EXPECT_LE(pointAt(c, u).distanceTo(fit[i]), 1e-9);
  }
  EXPECT_NEAR(lengthOf(c), chordSum(c, startOf(c), endOf(c)), 1e-7 * lengthOf(c));
}

TEST(NurbCurve, CopiesAreIndependent)
{
  Curve original = through(keyframes());
  const double len = lengthOf(original);
  Curve copy(original);
  Curve assigned;
  assigned = original;
  ASSERT_EQ(original.setFitPointAt(3, OdGePoint3d(9, 20, 1)), eOk);
  EXPECT_GT(lengthOf(original), len + 1.0);
  EXPECT_NEAR(lengthOf(copy), len, 1e-12 * len);
  EXPECT_NEAR(lengthOf(assigned), len, 1e-12 * len);
  copy.makeClosed();
  EXPECT_FALSE(assigned.isClosed());
  OdGePoint3d p;
  ASSERT_EQ(assigned.getFitPointAt(3, p), eOk);
  EXPECT_EQ(p, keyframes()[3]);
}

TEST(NurbCurve, TransformMovesFitPointsAndTangents)
{
  const double scale = 2.5;
  const OdGeMatrix3d xform = OdGeMatrix3d::translation(OdGeVector3d(10, -4, 7)) *
                             OdGeMatrix3d::rotation(0.7, OdGeVector3d(1, 2, 3)) * OdGeMatrix3d::scaling(scale);
  const Curve c = through(keyframes(), 3, {0, 1, 0}, {1, 0, 0});
  Curve moved = c;
  ASSERT_EQ(moved.transformBy(xform), eOk);
  EXPECT_NEAR(endOf(moved), scale * endOf(c), 1e-9);
  EXPECT_NEAR(lengthOf(moved), scale * lengthOf(c), 1e-9);
  for (int i = 0; i <= 20; ++i) {
    const double u = endOf(c) * i / 20;
    EXPECT_LE(pointAt(moved, scale * u).distanceTo(xform * pointAt(c, u)), 1e-9);
  }
  EXPECT_NEAR(angleBetween(derivAt(moved, 0.0), xform * OdGeVector3d(0, 1, 0)), 0.0, 1e-9);
}

TEST(NurbCurve, ConcurrentFirstQueriesAgree)
{
  const Curve c = through(helix(200, 7.0));
  std::vector<double> lengths(4, kNaN);
  std::vector<std::thread> threads;
  for (size_t t = 0; t < lengths.size(); ++t)
    threads.emplace_back([&c, &lengths, t] { c.length(lengths[t]); });
  for (std::thread& th : threads)
    th.join();
  for (double len : lengths)
    EXPECT_EQ(len, lengths[0]);
}

} // namespace
