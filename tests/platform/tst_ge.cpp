#include "Ge/OdGeExtents3d.h"
#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeVector3d.h"
#include "Rx/OdError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace {

const double kPi = 3.14159265358979323846;
const double kTight = 1e-12;

void expectPointNear(const OdGePoint3d& actual, const OdGePoint3d& expected, double tol = kTight)
{
  EXPECT_NEAR(actual.x, expected.x, tol);
  EXPECT_NEAR(actual.y, expected.y, tol);
  EXPECT_NEAR(actual.z, expected.z, tol);
}

void expectVectorNear(const OdGeVector3d& actual, const OdGeVector3d& expected, double tol = kTight)
{
  EXPECT_NEAR(actual.x, expected.x, tol);
  EXPECT_NEAR(actual.y, expected.y, tol);
  EXPECT_NEAR(actual.z, expected.z, tol);
}

// Rotation about a random axis, non-uniform scale in [0.5, 2] and a translation
// within 100 units: invertible with a condition number of at most 4.
OdGeMatrix3d randomAffine(std::mt19937& rng)
{
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  std::uniform_real_distribution<double> scale(0.5, 2.0);
  OdGeVector3d axis;
  while (axis.length() < 0.1)
    axis.set(unit(rng), unit(rng), unit(rng));
  OdGeMatrix3d s;
  s[0][0] = scale(rng);
  s[1][1] = scale(rng);
  s[2][2] = scale(rng);
  const OdGeVector3d move(100.0 * unit(rng), 100.0 * unit(rng), 100.0 * unit(rng));
  return OdGeMatrix3d::translation(move) * OdGeMatrix3d::rotation(kPi * unit(rng), axis) * s;
}

// A general (projective) matrix kept invertible by a dominant diagonal.
OdGeMatrix3d randomDiagonallyDominant(std::mt19937& rng)
{
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  OdGeMatrix3d m;
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j)
      m[i][j] = unit(rng) + (i == j ? 4.0 : 0.0);
  }
  return m;
}

} // namespace

TEST(GeTolerance, PointsAreEqualWithinEqualPointOnly)
{
  struct Case { double offset; bool equal; };
  const Case cases[] = {{0.0, true}, {1e-11, true}, {9e-11, true}, {1e-9, false}, {1.0, false}};
  const OdGePoint3d base(1000.0, -2000.0, 3.0);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.offset);
    const OdGePoint3d other = base + OdGeVector3d(0.0, c.offset, 0.0);
    EXPECT_EQ(base.isEqualTo(other), c.equal);
    EXPECT_EQ(base == other, c.equal);
    EXPECT_EQ(base != other, !c.equal);
    EXPECT_EQ(base.asVector().isEqualTo(other.asVector()), c.equal);
  }
  EXPECT_TRUE(base.isEqualTo(base + OdGeVector3d(1e-9, 0.0, 0.0), OdGeTol(1e-8)));
  EXPECT_FALSE(base.isEqualTo(base + OdGeVector3d(1e-9, 0.0, 0.0), OdGeTol(1e-10, 1.0)));
  EXPECT_TRUE(OdGeVector3d::kXAxis.isEqualTo(OdGeVector3d(1.0, 1e-9, 0.0), OdGeTol(1e-10, 1e-8)));
}

TEST(GeVector, NormalisingAZeroOrTinyVectorLeavesItUnchanged)
{
  const OdGeVector3d vectors[] = {OdGeVector3d(), OdGeVector3d(1e-12, 0.0, -1e-12), OdGeVector3d(0.0, 0.0, -0.0)};
  for (const OdGeVector3d& v : vectors) {
    SCOPED_TRACE(v.x);
    const OdGeVector3d n = v.normal();
    EXPECT_FALSE(std::isnan(n.x) || std::isnan(n.y) || std::isnan(n.z));
    EXPECT_EQ(n.x, v.x);
    EXPECT_EQ(n.z, v.z);
    OdGeVector3d inPlace = v;
    EXPECT_EQ(inPlace.normalize().x, v.x);
    EXPECT_TRUE(v.isZeroLength());
  }
  EXPECT_DOUBLE_EQ(OdGeVector3d(3.0, -4.0, 12.0).normal().length(), 1.0);
  EXPECT_DOUBLE_EQ(OdGeVector3d(1e-12, 0.0, 0.0).normal(OdGeContext::gZeroTol).x, 1.0);
}

struct PerpCase { OdGeVector3d in; OdGeVector3d expected; const char* name; };

class GePerpVector : public ::testing::TestWithParam<PerpCase> {};

TEST_P(GePerpVector, FollowsTheArbitraryAxisRule)
{
  const PerpCase& c = GetParam();
  const OdGeVector3d perp = c.in.perpVector();
  expectVectorNear(perp, c.expected, 0.0);
  EXPECT_NEAR(perp.dotProduct(c.in), 0.0, kTight);
}

// Y x (a, b, c) = (c, 0, -a); Z x (a, b, c) = (-b, a, 0).
const double kEdge = 1.0 / 64.0;
const double kBelowEdge = std::nextafter(kEdge, 0.0);
INSTANTIATE_TEST_SUITE_P(
    Branches, GePerpVector,
    ::testing::Values(PerpCase{{0, 0, 1}, {1, 0, 0}, "ZUsesY"},
                      PerpCase{{0, 0, -2}, {-2, 0, 0}, "NotNormalised"},
                      PerpCase{{0.01, -0.01, 1}, {1, 0, -0.01}, "NearZUsesY"},
                      PerpCase{{kBelowEdge, kBelowEdge, 1}, {1, 0, -kBelowEdge}, "JustBelowEdgeUsesY"},
                      PerpCase{{kEdge, 0, 1}, {0, kEdge, 0}, "XAtEdgeUsesZ"},
                      PerpCase{{0, -kEdge, 1}, {kEdge, 0, 0}, "YAtEdgeUsesZ"},
                      PerpCase{{1, 0, 0}, {0, 1, 0}, "XAxisUsesZ"},
                      PerpCase{{1, 2, 3}, {-2, 1, 0}, "GeneralUsesZ"}),
    [](const ::testing::TestParamInfo<PerpCase>& info) { return std::string(info.param.name); });

TEST(GeVector, ParallelAndCodirectional)
{
  struct Case { OdGeVector3d a, b; bool parallel, codirectional; };
  const Case cases[] = {{{1, 0, 0}, {2, 0, 0}, true, true},     {{1, 1, 0}, {-3, -3, 0}, true, false},
                        {{1, 0, 0}, {0, 1, 0}, false, false},   {{1, 0, 0}, {1, 1e-3, 0}, false, false},
                        {{1, 0, 0}, {0, 0, 0}, false, false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.b.x << "," << c.b.y);
    EXPECT_EQ(c.a.isParallelTo(c.b), c.parallel);
    EXPECT_EQ(c.a.isCodirectionalTo(c.b), c.codirectional);
  }
  EXPECT_NEAR(OdGeVector3d::kXAxis.angleTo(OdGeVector3d(-1, 1, 0)), 0.75 * kPi, kTight);
  EXPECT_NEAR(OdGeVector3d::kXAxis.angleTo(-OdGeVector3d::kXAxis), kPi, kTight);
}

TEST(GeRotation, PositiveAnglesAreRightHanded)
{
  struct Case { OdGeVector3d axis, from, to; };
  const Case cases[] = {{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},  {{0, 0, 5}, {0, 1, 0}, {-1, 0, 0}},
                        {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},  {{0.1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
                        {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}},  {{0, 2, 0}, {1, 0, 0}, {0, 0, -1}}};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "axis " << c.axis.x << "," << c.axis.y << "," << c.axis.z);
    expectVectorNear(OdGeMatrix3d::rotation(kPi / 2, c.axis) * c.from, c.to);
    expectVectorNear(OdGeVector3d(c.from).rotateBy(kPi / 2, c.axis), c.to);
    expectPointNear((OdGePoint3d::kOrigin + c.from).rotateBy(kPi / 2, c.axis), OdGePoint3d::kOrigin + c.to);
  }
}

TEST(GeRotation, AboutAnAxisThroughAPointKeepsThatPointFixed)
{
  const OdGePoint3d center(1.0, 1.0, 5.0);
  const OdGeMatrix3d m = OdGeMatrix3d::rotation(kPi / 2, OdGeVector3d::kZAxis, center);
  expectPointNear(m * center, center);
  expectPointNear(m * OdGePoint3d(2.0, 1.0, 0.0), OdGePoint3d(1.0, 2.0, 0.0));
  expectPointNear(OdGePoint3d(2.0, 1.0, 0.0).rotateBy(kPi / 2, OdGeVector3d::kZAxis, center), OdGePoint3d(1.0, 2.0, 0.0));
  EXPECT_TRUE(m.isUniScaledOrtho());
  EXPECT_NEAR(m.det(), 1.0, kTight);
}

TEST(GeRotation, AZeroAxisGivesTheIdentity)
{
  EXPECT_TRUE(OdGeMatrix3d::rotation(1.0, OdGeVector3d(), OdGePoint3d(3, 4, 5)).isEqualTo(OdGeMatrix3d::kIdentity, 0.0));
  expectVectorNear(OdGeVector3d(1, 2, 3).rotateBy(1.0, OdGeVector3d()), OdGeVector3d(1, 2, 3), 0.0);
}

TEST(GeMatrix, ProductAppliesTheRightOperandFirst)
{
  const OdGeMatrix3d move = OdGeMatrix3d::translation(OdGeVector3d(10.0, 0.0, 0.0));
  const OdGeMatrix3d turn = OdGeMatrix3d::rotation(kPi / 2, OdGeVector3d::kZAxis);
  const OdGePoint3d p(1.0, 0.0, 0.0);
  expectPointNear((turn * move) * p, OdGePoint3d(0.0, 11.0, 0.0));
  expectPointNear((move * turn) * p, OdGePoint3d(10.0, 1.0, 0.0));

  OdGeMatrix3d pre = turn;
  EXPECT_TRUE(pre.preMultBy(move) == move * turn);
  OdGeMatrix3d post = turn;
  EXPECT_TRUE(post.postMultBy(move) == turn * move);
  OdGeMatrix3d times = turn;
  times *= move;
  EXPECT_TRUE(times == turn * move);
  EXPECT_TRUE(move * turn != turn * move);
  expectPointNear(OdGePoint3d(p).transformBy(turn * move), OdGePoint3d(0.0, 11.0, 0.0));
}

TEST(GeMatrix, InverseUndoesRandomMatrices)
{
  std::mt19937 rng(20240116u);
  const OdGeTol tol(1e-9);
  for (int i = 0; i < 200; ++i) {
    SCOPED_TRACE(i);
    const OdGeMatrix3d m = (i % 2) ? randomAffine(rng) : randomDiagonallyDominant(rng);
    const OdGeMatrix3d inv = m.inverse();
    EXPECT_TRUE((m * inv).isEqualTo(OdGeMatrix3d::kIdentity, tol));
    EXPECT_TRUE((inv * m).isEqualTo(OdGeMatrix3d::kIdentity, tol));
    EXPECT_NEAR(m.det() * inv.det(), 1.0, 1e-9);
    OdGeMatrix3d inPlace = m;
    EXPECT_TRUE(inPlace.invert().isEqualTo(inv, 0.0));
    const OdGePoint3d p(3.0, -1.0, 0.5);
    expectPointNear(inv * (m * p), p, 1e-9);
  }
}

TEST(GeMatrix, SingularMatricesRaiseInvalidInput)
{
  OdGeMatrix3d zero;
  zero.entry[0][0] = zero.entry[1][1] = zero.entry[2][2] = zero.entry[3][3] = 0.0;
  OdGeMatrix3d flatten;
  flatten[2][2] = 0.0;
  OdGeMatrix3d rankTwo;
  const double rows[3][3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j)
      rankTwo[i][j] = rows[i][j];
  }
  OdGeMatrix3d sameRows;
  sameRows[3][0] = sameRows[3][3] = 1.0;
  sameRows[0][3] = 1.0;
  // Singular only within tolerance: a pivot of about 1e-12, not exactly zero.
  OdGeMatrix3d thin;
  thin[1][1] = 1e-12;
  const OdGeMatrix3d turnedThin = OdGeMatrix3d::rotation(0.3, OdGeVector3d(1, 2, 3)) * thin;
  EXPECT_FALSE(thin.isSingular(OdGeTol(1e-14)));
  const OdGeMatrix3d cases[] = {zero, flatten, rankTwo, sameRows, OdGeMatrix3d::scaling(0.0, OdGePoint3d(1, 2, 3)),
                                thin, turnedThin};
  for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i) {
    SCOPED_TRACE(i);
    EXPECT_TRUE(cases[i].isSingular());
    try {
      cases[i].inverse();
      ADD_FAILURE() << "no OdError raised";
    } catch (const OdError& e) {
      EXPECT_EQ(e.code(), eInvalidInput);
    }
    OdGeMatrix3d copy = cases[i];
    EXPECT_THROW(copy.invert(), OdError);
  }
}

TEST(GeMatrix, ProjectiveMatricesDivideByW)
{
  OdGeMatrix3d m;
  m[3][2] = 0.5;
  expectPointNear(m * OdGePoint3d(2, 4, 2), OdGePoint3d(1, 2, 1));
  expectVectorNear(m * OdGeVector3d(2, 4, 2), OdGeVector3d(2, 4, 2));
}

TEST(GeMatrix, EqualityUsesPointToleranceForTranslationOnly)
{
  const OdGeTol tol(1e-8, 1e-12);
  const OdGeMatrix3d base = OdGeMatrix3d::rotation(0.5, OdGeVector3d::kZAxis, OdGePoint3d(4, 5, 6));
  OdGeMatrix3d moved = base;
  moved[1][3] += 1e-9;
  EXPECT_TRUE(base.isEqualTo(moved, tol));
  EXPECT_FALSE(base.isEqualTo(moved, OdGeTol(1e-10, 1.0)));
  OdGeMatrix3d sheared = base;
  sheared[1][0] += 1e-9;
  EXPECT_FALSE(base.isEqualTo(sheared, tol));
  EXPECT_TRUE(base != sheared);
}

TEST(GeMatrix, UniScaledOrthoNeedsEqualPerpendicularAxes)
{
  struct Case { OdGeVector3d x, y, z; bool expected; const char* name; };
  const Case cases[] = {{{0, 2, 0}, {-2, 0, 0}, {0, 0, 2}, true, "turned and scaled"},
                        {{1, 0, 0}, {0, 1, 0}, {0, 0, -1}, true, "mirrored"},
                        {{1, 0, 0}, {0, 1, 0}, {0, 0, 1.001}, false, "stretched"},
                        {{1, 0, 0}, {0.6, 0.8, 0}, {0, 0, 1}, false, "sheared"},
                        {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, false, "collapsed"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(OdGeMatrix3d().setCoordSystem(OdGePoint3d(1, 2, 3), c.x, c.y, c.z).isUniScaledOrtho(), c.expected);
  }
}

TEST(GeMatrix, InvertingAQuarterTurnPivotsPastItsZeroDiagonal)
{
  const OdGeMatrix3d m = OdGeMatrix3d::rotation(kPi / 2, OdGeVector3d(0, 0, 1), OdGePoint3d(5, 0, 0)) *
                         OdGeMatrix3d::rotation(kPi / 2, OdGeVector3d(1, 0, 0));
  EXPECT_FALSE(m.isSingular());
  EXPECT_TRUE((m * m.inverse()).isEqualTo(OdGeMatrix3d::kIdentity));
}

TEST(GeMatrix, SmallButRegularScalesStillInvert)
{
  const OdGeMatrix3d m = OdGeMatrix3d::scaling(1e-6, OdGePoint3d(5, 5, 5));
  EXPECT_FALSE(m.isSingular());
  expectPointNear(m.inverse() * (m * OdGePoint3d(7, -3, 2)), OdGePoint3d(7, -3, 2), 1e-9);
}

TEST(GeMatrix, CoordSystemRoundTripsAndMapsCoordinates)
{
  const OdGePoint3d origin(10, 20, 30);
  const OdGeVector3d xAxis(2, 0, 0), yAxis(1, 1, 0), zAxis(0, 0.5, 3);
  OdGeMatrix3d m;
  m[3][1] = 0.5; // whatever was there before is replaced
  m.setCoordSystem(origin, xAxis, yAxis, zAxis);

  OdGePoint3d o;
  OdGeVector3d x, y, z;
  m.getCoordSystem(o, x, y, z);
  expectPointNear(o, origin, 0.0);
  expectVectorNear(x, xAxis, 0.0);
  expectVectorNear(y, yAxis, 0.0);
  expectVectorNear(z, zAxis, 0.0);
  expectPointNear(m.getCsOrigin(), origin, 0.0);
  expectVectorNear(m.getCsZAxis(), zAxis, 0.0);
  expectVectorNear(m.translation(), origin.asVector(), 0.0);

  const OdGePoint3d local(1.5, -2, 4);
  const OdGePoint3d world = m * local;
  expectPointNear(world, origin + xAxis * local.x + yAxis * local.y + zAxis * local.z);
  expectPointNear(m.inverse() * world, local);
  EXPECT_DOUBLE_EQ(m.scale(), zAxis.length());
  EXPECT_FALSE(m.isUniScaledOrtho());
}

TEST(GeMatrix, ScalingKeepsTheCentreFixed)
{
  const OdGePoint3d center(1, 2, 3);
  const OdGeMatrix3d m = OdGeMatrix3d::scaling(3.0, center);
  expectPointNear(m * center, center);
  expectPointNear(m * OdGePoint3d(2, 2, 2), OdGePoint3d(4, 2, 0));
  expectPointNear(OdGePoint3d(2, 2, 2).scaleBy(3.0, center), OdGePoint3d(4, 2, 0));
  EXPECT_DOUBLE_EQ(m.scale(), 3.0);
  EXPECT_DOUBLE_EQ(m.det(), 27.0);
  EXPECT_TRUE((OdGeMatrix3d::rotation(0.3, OdGeVector3d(1, 2, 3)) * m).isUniScaledOrtho());
}

TEST(GeMatrix, VectorsIgnoreTranslation)
{
  const OdGeVector3d v(1, 2, 3);
  expectVectorNear(OdGeMatrix3d::translation(OdGeVector3d(5, 6, 7)) * v, v, 0.0);
  const OdGeMatrix3d aboutPoint = OdGeMatrix3d::rotation(kPi / 2, OdGeVector3d::kZAxis, OdGePoint3d(100, 0, 0));
  expectVectorNear(OdGeVector3d(v).transformBy(aboutPoint), OdGeVector3d(-2, 1, 3));
}

TEST(GeMatrix, TransposeOfARotationIsItsInverse)
{
  const OdGeMatrix3d r = OdGeMatrix3d::rotation(0.7, OdGeVector3d(1, -1, 2));
  EXPECT_TRUE(r.transpose().isEqualTo(r.inverse(), OdGeTol(1e-14)));
  std::mt19937 rng(7u);
  OdGeMatrix3d m = randomDiagonallyDominant(rng);
  const OdGeMatrix3d t = m.transpose();
  EXPECT_EQ(t[1][3], m[3][1]);
  EXPECT_TRUE(m.transposeIt().transposeIt().isEqualTo(t.transpose(), 0.0));
}

TEST(GeExtents, InvalidUntilAPointIsAdded)
{
  OdGeExtents3d ext;
  EXPECT_FALSE(ext.isValidExtents());
  EXPECT_FALSE(ext.contains(OdGePoint3d::kOrigin));
  ext.addExt(OdGeExtents3d());
  EXPECT_FALSE(ext.isValidExtents());
  ext.transformBy(OdGeMatrix3d::scaling(2.0));
  EXPECT_FALSE(ext.isValidExtents());

  ext.addPoint(OdGePoint3d(1, 2, 3));
  EXPECT_TRUE(ext.isValidExtents());
  expectPointNear(ext.minPoint(), OdGePoint3d(1, 2, 3), 0.0);
  ext.addExt(OdGeExtents3d(OdGePoint3d(-1, 5, 0), OdGePoint3d(0, 6, 1)));
  expectPointNear(ext.minPoint(), OdGePoint3d(-1, 2, 0), 0.0);
  expectPointNear(ext.maxPoint(), OdGePoint3d(1, 6, 3), 0.0);
  expectPointNear(ext.center(), OdGePoint3d(0, 4, 1.5), 0.0);
  EXPECT_TRUE(ext.contains(OdGePoint3d(1 + 1e-11, 6, 3)));
  EXPECT_FALSE(ext.contains(OdGePoint3d(1 + 1e-9, 6, 3)));
}

TEST(GeExtents, TransformingARotatedBoxBoundsItsCorners)
{
  OdGeExtents3d box(OdGePoint3d(0, 0, 0), OdGePoint3d(1, 1, 1));
  box.transformBy(OdGeMatrix3d::translation(OdGeVector3d(0, 0, 10)) * OdGeMatrix3d::rotation(kPi / 4, OdGeVector3d::kZAxis));
  const double h = std::sqrt(0.5);
  expectPointNear(box.minPoint(), OdGePoint3d(-h, 0, 10));
  expectPointNear(box.maxPoint(), OdGePoint3d(h, 2 * h, 11));
}

TEST(GePoint, ArithmeticTheModuleReliesOn)
{
  const OdGePoint3d a(1, 2, 3), b(3, 6, -1);
  expectPointNear((a + b.asVector()) * 0.5, OdGePoint3d(2, 4, 1), 0.0);
  expectPointNear(2.0 * a, OdGePoint3d(2, 4, 6), 0.0);
  expectVectorNear(b - a, OdGeVector3d(2, 4, -4), 0.0);
  EXPECT_DOUBLE_EQ(a.distanceTo(b), 6.0);
  OdGePoint3d p = a;
  p += OdGeVector3d(1, 1, 1);
  p -= OdGeVector3d(0, 0, 2);
  expectPointNear(p, OdGePoint3d(2, 3, 2), 0.0);
  p[2] = 9.0;
  EXPECT_EQ(p[0] + p[1] + p[2], 14.0);
}
