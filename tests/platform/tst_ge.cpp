#include "Ge/OdGeExtents3d.h"
#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeVector3d.h"
#include "kovChecks.h"

#include <cmath>
#include <string>

namespace {

const double kTight = 1e-12;

} // namespace

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
  expectPointNear(world, origin + xAxis * local.x + yAxis * local.y + zAxis * local.z, kTight);
  expectPointNear(m.inverse() * world, local, kTight);
  EXPECT_DOUBLE_EQ(m.scale(), zAxis.length());
  EXPECT_FALSE(m.isUniScaledOrtho());
}
