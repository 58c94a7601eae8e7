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
      {"EndTangents", [] { return through(keyframes(), 3, {0, 1, 0}, {-1, 0, 0}); }},
      {"PerPointTangents",
       [perPoint] {
         Curve c;
         EXPECT_EQ(c.setFitData(keyframes(), perPoint, 3, 0.0), eOk);
         return c;
       }},
      {"Helix", [] { return through(helix(20, 7.0)); }},
      {"Segment", [] { return through({{1, 1, 1}, {4, 5, 1}}); }},
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

INSTANTIATE_TEST_SUITE_P(Ge, NurbShapes, ::testing::ValuesIn(shapes()),
                         [](const ::testing::TestParamInfo<Shape>& info) { return info.param.name; });

// --- parameters ---------------------------------------------------------------

TEST(NurbCurve, FitPointParametersAreTheSumsOfTheChords)
{
  const Curve c = through({{0, 0, 0}, {4, 0, 0}, {4, 9, 0}, {4, 9, 1}});
  EXPECT_EQ(c.knotParameterization(), Curve::kChord);
  EXPECT_DOUBLE_EQ(startOf(c), 0.0);
  EXPECT_NEAR(endOf(c), 14, 1e-12);
  const double params[] = {0, 4, 13, 14};
  for (int i = 0; i < 4; ++i) {
    double u = kNaN;
    ASSERT_EQ(c.getFitPointParam(i, u), eOk);
    EXPECT_NEAR(u, params[i], 1e-12) << "point " << i;
  }
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
      {"end only", keyframes(), kFree, {1, 0, 0}},
      {"three points", {{0, 0, 0}, {2, 2, 0}, {4, 0, 0}}, {1, -1, 0}, {1, 1, 0}},
      {"two points, both", {{0, 0, 0}, {5, 0, 0}}, {0, 1, 0}, {0, -1, 0}},
  };
  for (const auto& tc : cases) {
    const Curve c = through(tc.pts, 3, tc.start, tc.end);
    if (!tc.start.isZeroLength()) {
      EXPECT_NEAR(derivAt(c, startOf(c)).angleTo(tc.start), 0.0, 1e-9) << tc.name;
    }
    if (!tc.end.isZeroLength()) {
      EXPECT_NEAR(derivAt(c, endOf(c)).angleTo(tc.end), 0.0, 1e-9) << tc.name;
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
  {
    Curve c;
    ASSERT_EQ(c.setFitData(keyframes(), tangents, 3, 0.0), eOk);
    for (int i = 0; i < 7; ++i) {
      double u = kNaN;
      ASSERT_EQ(c.getFitPointParam(i, u), eOk);
      OdGeVector3d t;
      ASSERT_EQ(c.getFitTangentAt(i, t), eOk);
      EXPECT_EQ(t, tangents[i]);
      if (!t.isZeroLength()) {
        EXPECT_NEAR(derivAt(c, u).angleTo(t), 0.0, 1e-9) << "point " << i;
      }
    }
  }
  Curve c;
  EXPECT_EQ(c.setFitData(keyframes(), OdGeVector3dArray(3), 3, 0.0), eInvalidInput);
}

// --- closed curves ------------------------------------------------------------

// --- degenerate input ---------------------------------------------------------

// --- editing, copying, transforming -------------------------------------------

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
