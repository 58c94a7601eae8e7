// Evaluation of a track at a time: values, points, matrix interpolation,
// scale, rotation, translation along paths, the sun, and their product.
#include "kovAnimationTestValues.h"

#include "animation/kovAnimationTrack.h"
#include "animation/kovSolarPosition.h"

#include "Ge/OdGeNurbCurve3d.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

using Item = kovAnimationItem;
const double kPi = 3.14159265358979323846;
const double kNaN = std::numeric_limits<double>::quiet_NaN();

Item& addItem(kovAnimationTrack& track, Item::AnimationType type, const QMap<int, QVariant>& values)
{
  track.addElement();
  Item& item = track.elementAt(track.numElements() - 1);
  item.setAnimationType(type, OdGePoint3d::kOrigin);
  item.setValues(values);
  return item;
}

Item& addNumber(kovAnimationTrack& track, const char* name, const QMap<int, QVariant>& values)
{
  Item& item = addItem(track, Item::CustomParameter, values);
  item.setCustomParameterName(str(name));
  return item;
}

OdGeMatrix3d frame(const OdGePoint3d& origin, const OdGeVector3d& x, const OdGeVector3d& y, const OdGeVector3d& z)
{
  OdGeMatrix3d m;
  m.setCoordSystem(origin, x, y, z);
  return m;
}

TEST(TrackValues, averageByIndexNotByMatchCount)
{
  kovAnimationTrack track;
  track.setStartMillisecond(1000);
  addNumber(track, "Fov", { { 0, 10.0 }, { 1000, 20.0 } });
  addNumber(track, "FOV", { { 0, 30.0 }, { 1000, 50.0 } });
  EXPECT_DOUBLE_EQ(track.computeValueAtMillisecond(str("fov"), 1500, -1.0), (15.0 + 40.0) * 0.5);
  EXPECT_DOUBLE_EQ(track.computeValueAtMillisecond(str("fov"), 9000, -1.0), (20.0 + 50.0) * 0.5);

  kovAnimationTrack third;
  addItem(third, Item::Scale, { { 0, 3.0 } });
  addNumber(third, "Other", { { 0, 7.0 } });
  addNumber(third, "Fov", { { 0, 8.0 }, { 100, 8.0 } });
  EXPECT_DOUBLE_EQ(third.computeValueAtMillisecond(str("Fov"), 50, 2.0), (2.0 + 8.0) * 0.5)
      << "a single match at index 2 is averaged with the default";
}

TEST(TrackValues, keepTheDefaultWhereNoItemTakesPart)
{
  kovAnimationTrack track;
  EXPECT_EQ(track.computeValueAtMillisecond(str("Fov"), 0, 4.0), 4.0);
  addNumber(track, "Fov", {});
  addNumber(track, "Fov", { { 1000, 5.0 } }).setParamsType(Item::Point);
  EXPECT_EQ(track.computeValueAtMillisecond(str("Fov"), 2000, 4.0), 4.0);

  kovAnimationTrack late;
  addNumber(late, "Fov", { { 1000, 5.0 }, { 2000, 6.0 } });
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), 999, 4.0), 4.0) << "before the first key";
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), 1000, 4.0), 5.0);
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), INT_MAX, 4.0), 6.0);
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), INT_MIN, 4.0), 4.0);
  late.setStartMillisecond(INT_MIN);
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), INT_MAX, 4.0), 6.0) << "times far past the start clamp";
}

TEST(TrackPoints, averageLocationsWithPointParametersAndReadTangents)
{
  kovAnimationTrack track;
  EXPECT_EQ(track.computePointAtMillisecond(0), OdGePoint3d::kOrigin);
  addItem(track, Item::LocationByPoints, { { 0, sixValue(0, 0, 0, 1, 1, 1) }, { 100, sixValue(10, 0, 0, 3, 3, 3) } });
  addItem(track, Item::Scale, { { 0, 2.0 } });
  addItem(track, Item::CustomParameter, { { 0, pointValue(0, 8, 0) } }).setParamsType(Item::Point);
  addNumber(track, "n", { { 0, pointValue(9, 9, 9) } });
  expectPointNear(track.computePointAtMillisecond(50), OdGePoint3d(2.5, 4, 0));
  // The parameter's three elements carry no tangent: it reads as the origin.
  expectPointNear(track.computePoint2AtMillisecond(50), OdGePoint3d(1, 1, 1));
}

TEST(MatrixInterpolation, blendsOriginsAndDirectionsAndMakesTheScaleUniform)
{
  const OdGeMatrix3d m1 = frame({ 1, 2, 3 }, { 2, 0, 0 }, { 0, 3, 0 }, { 0, 0, 5 });
  const OdGeMatrix3d m2 = frame({ 11, 2, -7 }, { 0, 1, 0 }, { -1, 0, 0 }, { 0, 0, 1 });
  const OdGeMatrix3d at0 = kovAnimationTrack::interpolateMatrices(m1, m2, 0);
  const OdGeMatrix3d at100 = kovAnimationTrack::interpolateMatrices(m1, m2, 100);
  expectPointNear(at0.getCsOrigin(), { 1, 2, 3 });
  expectPointNear(at100.getCsOrigin(), { 11, 2, -7 });
  // Every axis takes the largest length; Y and Z follow from X.
  expectMatrixNear(at0, frame({ 1, 2, 3 }, { 5, 0, 0 }, { 0, 5, 0 }, { 0, 0, 5 }));
  expectMatrixNear(at100, m2);

  const OdGeMatrix3d half = kovAnimationTrack::interpolateMatrices(m1, m2, 50);
  const double r = std::sqrt(0.5);
  const double len = 0.5 * 5 + 0.5 * 1; // Z is the longest blend of lengths
  expectMatrixNear(half, frame({ 6, 2, -2 }, OdGeVector3d(r, r, 0) * len, OdGeVector3d(-r, r, 0) * len,
                               OdGeVector3d(0, 0, len)));
}

TEST(MatrixInterpolation, derivesYFromThePerpendicularOfTheUnnormalisedBlend)
{
  // X points up: its perpendicular is Y x X, so the roll of m's Y is lost.
  const OdGeMatrix3d up = frame({ 0, 0, 0 }, { 0, 0, 1 }, { 0, -1, 0 }, { 1, 0, 0 });
  expectMatrixNear(kovAnimationTrack::interpolateMatrices(up, up, 0),
                   frame({ 0, 0, 0 }, { 0, 0, 1 }, { 1, 0, 0 }, { 0, 1, 0 }));

  // Nearly opposite X axes blend to a short vector whose x and y are below
  // 1/64: the perpendicular is taken as for a vertical direction.
  const OdGeVector3d x2 = OdGeVector3d(-1, 0.02, 0).normal();
  const OdGeMatrix3d a = frame({ 0, 0, 0 }, { 1, 0, 0 }, { 0, 1, 0 }, { 0, 0, 1 });
  const OdGeMatrix3d b = frame({ 0, 0, 0 }, x2, OdGeVector3d::kZAxis.crossProduct(x2), { 0, 0, 1 });
  const OdGeMatrix3d half = kovAnimationTrack::interpolateMatrices(a, b, 50);
  const OdGeVector3d blend = (OdGeVector3d(1, 0, 0) + x2) * 0.5;
  const OdGeVector3d y = OdGeVector3d(0, 1, 0).crossProduct(blend).normal(); // (0, 0, -1) direction
  expectVectorNear(half.getCsYAxis(), y);
}

TEST(TrackTranslation, movesInWholePercentSteps)
{
  kovAnimationTrack track;
  addItem(track, Item::LocationByPoints, { { 0, pointValue(0, 0, 0) }, { 1000, pointValue(100, 0, 0) } });
  const struct {
    int ms;
    double x;
  } steps[] = { { -1, 0 }, { 0, 0 }, { 5, 0 }, { 15, 1 }, { 999, 99 }, { 1000, 100 }, { INT_MAX, 100 } };
  for (const auto& step : steps)
    expectPointNear(track.computeTranslationAtMillisecond(step.ms).getCsOrigin(), { step.x, 0, 0 });
}

TEST(TrackScale, interpolatesUniformScalesAndMultipliesItems)
{
  kovAnimationTrack track;
  expectMatrixNear(track.computeScaleAtMillisecond(0), OdGeMatrix3d::kIdentity);
  addItem(track, Item::Scale, { { 0, 1.0 }, { 100, 3.0 } });
  expectMatrixNear(track.computeScaleAtMillisecond(50), OdGeMatrix3d::scaling(2.0));
  addItem(track, Item::Scale, { { 0, 1.5 }, { 100, 1.5 } });
  expectMatrixNear(track.computeScaleAtMillisecond(50), OdGeMatrix3d::scaling(3.0));
}

// Right-handed turns about the axes, written out entry by entry.
OdGeMatrix3d turn(int axis, double degrees)
{
  const double c = std::cos(degrees * kPi / 180.0), s = std::sin(degrees * kPi / 180.0);
  const int i = (axis + 1) % 3, j = (axis + 2) % 3;
  OdGeMatrix3d m;
  m(i, i) = c;
  m(i, j) = -s;
  m(j, i) = s;
  m(j, j) = c;
  return m;
}

TEST(TrackRotation, turnsAboutXThenYThenZAfterMovingToTheKeyframesPoint)
{
  Item item;
  item.setAnimationType(Item::RotationByAngles, OdGePoint3d::kOrigin);
  item.setValue(0, sixValue(1, 2, 3, 30, 45, 60));
  OdGeMatrix3d move;
  move(0, 3) = 1;
  move(1, 3) = 2;
  move(2, 3) = 3;
  expectMatrixNear(item.tranformAtMillisecond(0, OdGePoint3d::kOrigin), turn(2, 60) * turn(1, 45) * turn(0, 30) * move);
  expectMatrixNear(item.tranformAtMillisecond(1, OdGePoint3d::kOrigin), OdGeMatrix3d::kIdentity);

  // The track carries the turned X axis; the roll about it is not carried.
  kovAnimationTrack track;
  addItem(track, Item::RotationByAngles, { { 0, sixValue(0, 0, 0, 30, 45, 60) } });
  const OdGeMatrix3d r = track.computeRotationAtMillisecond(0, OdGePoint3d::kOrigin);
  const OdGeMatrix3d expected = turn(2, 60) * turn(1, 45) * turn(0, 30);
  expectVectorNear(r.getCsXAxis(), expected.getCsXAxis());
}

TEST(TrackRotation, looksFromTheBaseTowardTheTarget)
{
  kovAnimationTrack track;
  addItem(track, Item::RotationToTarget, { { 0, sixValue(0, 0, 0, 5, 5, 0) } });
  expectMatrixNear(track.computeRotationAtMillisecond(0, { 5, 5, 0 }), OdGeMatrix3d::kIdentity);
  const OdGeMatrix3d r = track.computeRotationAtMillisecond(0, { 5, 0, 0 });
  expectVectorNear(r.getCsXAxis(), { 0, 1, 0 });
  expectVectorNear(r.getCsYAxis(), { -1, 0, 0 });

  Item moved;
  moved.setAnimationType(Item::RotationToTarget, OdGePoint3d::kOrigin);
  moved.setValue(0, sixValue(2, 0, 0, 0, 4, 0));
  // T(-p) x R x T(p) with p = (2, 0, 0) and R a quarter turn about Z: the
  // origin goes to R p - p = (0, 2, 0) - (2, 0, 0).
  expectPointNear(moved.tranformAtMillisecond(0, OdGePoint3d::kOrigin) * OdGePoint3d(0, 0, 0), { -2, 2, 0 });
}

struct Path {
  OdGePoint3dArray points { { 0, 0, 0 }, { 10, 5, 0 }, { 20, 0, 2 }, { 30, 5, 0 } };
  int times[4] = { 0, 1000, 2000, 3000 };

  QMap<int, QVariant> values() const
  {
    QMap<int, QVariant> map;
    for (int i = 0; i < 4; ++i)
      map.insert(times[i], sixValue(points[i].x, points[i].y, points[i].z, 0, 0, 0));
    return map;
  }
  // The curve through the points, parameterised by chord length.
  OdGeNurbCurve3d curve() const
  {
    OdGeNurbCurve3d c;
    c.setFitData(points, OdGeVector3dArray(4, OdGeVector3d()), 3, 0.0);
    return c;
  }
};

TEST(TrackTranslation, followsTheSplineThroughItsFitPoints)
{
  const Path path;
  kovAnimationTrack track;
  addItem(track, Item::LocationBySpline, path.values()).setFaceDirection(true);
  for (int i = 0; i < 4; ++i)
    expectPointNear(track.computeTranslationAtMillisecond(path.times[i]).getCsOrigin(), path.points[i]);

  const OdGeNurbCurve3d curve = path.curve();
  const double u1 = path.points[0].distanceTo(path.points[1]);
  const double u2 = u1 + path.points[1].distanceTo(path.points[2]);
  const struct {
    int ms;
    double u;
  } samples[] = { { 250, 0.25 * u1 }, { 1500, 0.5 * (u1 + u2) }, { 1900, 0.1 * u1 + 0.9 * u2 } };
  for (const auto& sample : samples) {
    OdGePoint3d expected;
    OdGeVector3d tangent;
    ASSERT_EQ(curve.getPointAtParam(sample.u, expected), eOk);
    ASSERT_EQ(curve.getFirstDeriv(sample.u, tangent), eOk);
    const OdGeMatrix3d m = track.computeTranslationAtMillisecond(sample.ms);
    expectPointNear(m.getCsOrigin(), expected, 1e-7);
    expectVectorNear(m.getCsXAxis(), tangent.normal(), 1e-7);
    expectVectorNear(m.getCsYAxis(), tangent.normal().perpVector().normal(), 1e-7);
  }
}

TEST(TrackTranslation, honoursStoredTangentsAndFallsBackToTheMidpoint)
{
  kovAnimationTrack track;
  Item& item = addItem(track, Item::LocationBySpline,
                       { { 0, sixValue(0, 0, 0, 0, 1, 0) }, { 1000, sixValue(10, 0, 0, 0, 0, 0) },
                         { 2000, sixValue(20, 0, 0, 0, 0, 0) }, { 3000, sixValue(30, 0, 0, 0, 0, 0) } });
  item.setFaceDirection(true);
  expectVectorNear(track.computeTranslationAtMillisecond(0).getCsXAxis(), { 0, 1, 0 }, 1e-9);

  item.setValue(3000, sixValue(kNaN, 0, 0, 0, 0, 0));
  const OdGeMatrix3d fallback = track.computeTranslationAtMillisecond(500);
  // No spline through a NaN: the middle of the bracket, whatever the fraction.
  expectPointNear(fallback.getCsOrigin(), { 5, 0, 0 });
  expectVectorNear(fallback.getCsXAxis(), { 1, 0, 0 });
}

TEST(TrackTransform, isTranslationTimesSunTimesRotationTimesScale)
{
  kovAnimationTrack track;
  addItem(track, Item::Scale, { { 0, 2.0 } });
  addItem(track, Item::RotationByAngles, { { 0, sixValue(0, 0, 0, 0, 0, 90) } });
  addItem(track, Item::LocationByPoints, { { 0, pointValue(5, 0, 0) } });
  addItem(track, Item::LocationBySplineAndRotation, { { 0, sixValue(50, 50, 50, 0, 0, 0) } });
  const OdGeMatrix3d m = track.computeTransformAtMillisecond(0);
  // Scaled by 2, then a quarter turn about Z, then moved by (5, 0, 0).
  expectPointNear(m * OdGePoint3d(1, 0, 0), { 5, 2, 0 });
  expectPointNear(m * OdGePoint3d(0, 1, 0), { 3, 0, 0 });
  expectPointNear(m * OdGePoint3d(0, 0, 1), { 5, 0, 2 });

  // The sun of an invalid date stands at (0, -25, 0): it moves what the
  // rotation turned, before the translation.
  track.setEntityUniqueName(nullptr, str("Environment"));
  track.insertElement(0);
  Item::setSpecialCustomParamType(track.elementAt(0), str("Month"));
  track.elementAt(0).setValue(0, 13.0);
  expectPointNear(track.computeTransformAtMillisecond(0) * OdGePoint3d(1, 0, 0), { 5, -23, 0 });
}

TEST(TrackTransform, isIdentityWithoutContributingItems)
{
  kovAnimationTrack track;
  expectMatrixNear(track.computeTransformAtMillisecond(0), OdGeMatrix3d::kIdentity);
  addItem(track, Item::LocationBySplineAndRotation,
          { { 0, sixValue(1, 2, 3, 0, 0, 0) }, { 100, sixValue(4, 5, 6, 0, 0, 0) } });
  addItem(track, Item::LocationByPoints, {});
  addItem(track, Item::Scale, { { 1000, 3.0 } });
  for (int ms : { INT_MIN, 0, 50, 100, 999 })
    expectMatrixNear(track.computeTransformAtMillisecond(ms), OdGeMatrix3d::kIdentity);
}

TEST(TrackTransform, neverThrowsOnBadKeyframes)
{
  kovAnimationTrack track;
  track.setEntityUniqueName(nullptr, str("Environment"));
  const double inf = std::numeric_limits<double>::infinity();
  const QMap<int, QVariant> bad { { INT_MIN, pointValue(kNaN, inf, -inf) },
                                  { -5, QVariantList { 1.0 } },
                                  { 0, str("text") },
                                  { 7, QVariant() },
                                  { 8, sixValue(inf, 0, 0, kNaN, 0, 0) },
                                  { INT_MAX, 0.0 } };
  for (int type = Item::CustomParameter; type <= Item::LocationBySplineAndRotation; ++type)
    addItem(track, static_cast<Item::AnimationType>(type), bad);
  for (const char* name : { "Day", "Month", "Year", "Time", "Longitude", "Latitude", "North" })
    addNumber(track, name, bad);
  for (int ms : { INT_MIN, INT_MIN + 1, -6, -5, 0, 3, 7, 8, 1000, INT_MAX - 1, INT_MAX })
    EXPECT_NO_THROW(track.computeTransformAtMillisecond(ms)) << ms;
}

// The sun's direction as elevation and azimuth (degrees), read back from the
// translation by undoing the documented construction: the horizontal part
// points along -(sin A, cos A) and z is sin(elevation).
void sunAngles(const OdGeMatrix3d& sun, double& elevation, double& azimuth)
{
  const OdGeVector3d w = sun.translation() / 25.0;
  elevation = std::asin(w.z) * 180.0 / kPi;
  azimuth = std::atan2(-w.x, -w.y) * 180.0 / kPi;
}

// Elevation and azimuth straight from the algorithm with the inputs the
// environment evaluation documents.
void spaAngles(int month, int hour, int minute, double second, double longitude, double latitude, double& elevation,
               double& azimuth)
{
  kovSpaData spa;
  spa.year = 2023;
  spa.month = month;
  spa.day = 21;
  spa.hour = hour;
  spa.minute = minute;
  spa.second = second;
  spa.timezone = 1.0;
  spa.longitude = static_cast<float>(longitude);
  spa.latitude = static_cast<float>(latitude);
  spa.pressure = 1.0;
  spa.temperature = 18.0;
  spa.atmosRefract = 0.0;
  spa.deltaT = 0.0;
  spa.function = kovSpaAll;
  ASSERT_EQ(kovSpaCalculate(spa), kovSpaOk);
  elevation = 90.0 - spa.zenith;
  azimuth = spa.azimuth >= 180.0 ? spa.azimuth - 360.0 : spa.azimuth;
}

// The present that fills unset environment values in these tests.
const QDateTime kNow(QDate(2000, 3, 21), QTime(10, 0, 0));

// An environment track whose values come out as the given targets: the first
// parameter is read as it is, every later one is averaged with its default,
// so it holds 2 x target - default.
void fillEnvironment(kovAnimationTrack& track, double month, double north)
{
  track.setEntityUniqueName(nullptr, str("Environment"));
  const struct {
    const char* name;
    double value;
  } values[] = { { "Day", 21 },
                 { "Month", 2 * month - 3 },
                 { "Year", 2 * 2023 - 2000 },
                 { "Time", 2 * 14.5125 - 10 },
                 { "Longitude", 2 * 2.35 - 12.4964 },
                 { "Latitude", 2 * 48.85 - 41.9028 },
                 { "North", 2 * north } };
  for (const auto& v : values) {
    track.addElement();
    Item::setSpecialCustomParamType(track.elementAt(track.numElements() - 1), str(v.name));
    track.elementAt(track.numElements() - 1).setValue(0, v.value);
  }
}

TEST(TrackSun, standsWhereTheSolarPositionAlgorithmPutsIt)
{
  double expectedElevation = 0, expectedAzimuth = 0, elevation = 0, azimuth = 0;
  spaAngles(6, 14, 30, 45.0, 2.35, 48.85, expectedElevation, expectedAzimuth); // 14.5125 h
  kovAnimationTrack track;
  fillEnvironment(track, 6, 0);
  sunAngles(track.computeSunPositionAtMillisecond(0, kNow), elevation, azimuth);
  EXPECT_NEAR(elevation, expectedElevation, 1e-6);
  EXPECT_NEAR(azimuth, expectedAzimuth, 1e-6);
  EXPECT_NEAR(track.computeSunPositionAtMillisecond(0, kNow).translation().length(), 25.0, 1e-9);

  kovAnimationTrack turned;
  fillEnvironment(turned, 6, 30);
  sunAngles(turned.computeSunPositionAtMillisecond(0, kNow), elevation, azimuth);
  EXPECT_NEAR(azimuth, expectedAzimuth + 30.0, 1e-6) << "north turns the azimuth";

  turned.setEntityUniqueName(nullptr, str("Camera"));
  expectMatrixNear(turned.computeSunPositionAtMillisecond(0, kNow), OdGeMatrix3d::kIdentity);
}

TEST(TrackSun, fillsUnsetValuesFromThePresent)
{
  double expectedElevation = 0, expectedAzimuth = 0, elevation = 0, azimuth = 0;
  spaAngles(6, 14, 30, 45.0, 12.4964, 41.9028, expectedElevation, expectedAzimuth);
  kovAnimationTrack bare;
  bare.setEntityUniqueName(nullptr, str("Environment"));
  sunAngles(bare.computeSunPositionAtMillisecond(0, QDateTime(QDate(2023, 6, 21), QTime(14, 30, 45))), elevation,
            azimuth);
  EXPECT_NEAR(elevation, expectedElevation, 1e-6);
  EXPECT_NEAR(azimuth, expectedAzimuth, 1e-6);
}

TEST(TrackSun, anInvalidDateGivesTheHorizonDueNorthTurnedByNorth)
{
  kovAnimationTrack track;
  fillEnvironment(track, 13, 0);
  expectPointNear(track.computeSunPositionAtMillisecond(0, kNow).getCsOrigin(), { 0, -25, 0 });
  kovAnimationTrack turned;
  fillEnvironment(turned, 13, 90);
  expectPointNear(turned.computeSunPositionAtMillisecond(0, kNow).getCsOrigin(), { -25, 0, 0 });
}

} // namespace
