// Evaluation of a track at a time: the bracket of keyframes around it (the
// binary search must answer exactly what the walk over the keys answers),
// values, points, matrix interpolation, scale, rotation, translation along
// paths, the sun, and their product.
#include "kovAnimationTestValues.h"

#include "animation/kovAnimationTrack.h"

#include "Ge/OdGeNurbCurve3d.h"

#include <climits>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using Item = kovAnimationItem;
const double kPi = 3.14159265358979323846;
const double kNaN = std::numeric_limits<double>::quiet_NaN();

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

TEST(TrackValues, averageByIndexAndKeepTheDefaultWhereNoItemTakesPart)
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

  kovAnimationTrack none;
  EXPECT_EQ(none.computeValueAtMillisecond(str("Fov"), 0, 4.0), 4.0);
  addNumber(none, "Fov", {});
  addNumber(none, "Fov", { { 1000, 5.0 } }).setParamsType(Item::Point);
  EXPECT_EQ(none.computeValueAtMillisecond(str("Fov"), 2000, 4.0), 4.0);

  kovAnimationTrack late;
  addNumber(late, "Fov", { { 1000, 5.0 }, { 2000, 6.0 } });
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), 999, 4.0), 4.0) << "before the first key";
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), 1000, 4.0), 5.0);
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), INT_MAX, 4.0), 6.0);
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), INT_MIN, 4.0), 4.0);
  late.setStartMillisecond(INT_MIN);
  EXPECT_EQ(late.computeValueAtMillisecond(str("Fov"), INT_MAX, 4.0), 6.0) << "times far past the start clamp";
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

TEST(TrackRotation, turnsByAnglesOrLooksFromTheBaseTowardTheTarget)
{
  Item item;
  item.setAnimationType(Item::RotationByAngles, OdGePoint3d::kOrigin);
  item.setValue(0, sixValue(1, 2, 3, 30, 45, 60));
  const OdGeMatrix3d turned = turn(2, 60) * turn(1, 45) * turn(0, 30);
  expectMatrixNear(item.tranformAtMillisecond(0, OdGePoint3d::kOrigin),
                   turned * OdGeMatrix3d::translation(OdGeVector3d(1, 2, 3)));
  expectMatrixNear(item.tranformAtMillisecond(1, OdGePoint3d::kOrigin), OdGeMatrix3d::kIdentity);

  // The track carries the turned X axis; the roll about it is not carried.
  kovAnimationTrack track;
  addItem(track, Item::RotationByAngles, { { 0, sixValue(0, 0, 0, 30, 45, 60) } });
  expectVectorNear(track.computeRotationAtMillisecond(0, OdGePoint3d::kOrigin).getCsXAxis(), turned.getCsXAxis());

  // Turning toward a target.
  kovAnimationTrack aiming;
  addItem(aiming, Item::RotationToTarget, { { 0, sixValue(0, 0, 0, 5, 5, 0) } });
  expectMatrixNear(aiming.computeRotationAtMillisecond(0, { 5, 5, 0 }), OdGeMatrix3d::kIdentity);
  const OdGeMatrix3d r = aiming.computeRotationAtMillisecond(0, { 5, 0, 0 });
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

// The sun of an invalid date (month 13) stands on the horizon due north,
// turned by the north angle; the second parameter is averaged with its
// default of 0, so it holds twice the angle.
TEST(TrackSun, anInvalidDateGivesTheHorizonDueNorthTurnedByNorth)
{
  const QDateTime now(QDate(2000, 3, 21), QTime(10, 0, 0));
  const struct {
    const char* subject;
    double north;
    OdGePoint3d sun;
  } cases[] = { { "Environment", 0, { 0, -25, 0 } }, { "Environment", 90, { -25, 0, 0 } }, { "Camera", 90, { 0, 0, 0 } } };
  for (const auto& c : cases) {
    kovAnimationTrack track;
    track.setEntityUniqueName(nullptr, str(c.subject));
    addNumber(track, "Month", { { 0, 13.0 } });
    addNumber(track, "North", { { 0, 2 * c.north } });
    expectPointNear(track.computeSunPositionAtMillisecond(0, now).getCsOrigin(), c.sun);
  }
}

} // namespace

namespace {

struct Bracket {
  bool onKey = false;
  int prevIndex = -1, prevTime = -1, nextIndex = -1, nextTime = -1;
  double fraction = -1.0;
  bool operator==(const Bracket& o) const
  {
    return onKey == o.onKey && prevIndex == o.prevIndex && prevTime == o.prevTime && nextIndex == o.nextIndex
           && nextTime == o.nextTime && fraction == o.fraction;
  }
};

std::ostream& operator<<(std::ostream& os, const Bracket& b)
{
  return os << "{on " << b.onKey << ", prev " << b.prevIndex << "@" << b.prevTime << ", next " << b.nextIndex << "@"
            << b.nextTime << ", f " << b.fraction << "}";
}

Bracket searched(const kovAnimationItem& item, int ms)
{
  Bracket b;
  b.onKey = item.findKeyFrame(ms, b.prevIndex, b.prevTime, b.nextIndex, b.nextTime, b.fraction);
  return b;
}

Bracket walked(const kovAnimationItem& item, int ms)
{
  Bracket b;
  b.onKey = item.findKeyFrameByWalk(ms, b.prevIndex, b.prevTime, b.nextIndex, b.nextTime, b.fraction);
  return b;
}

kovAnimationItem itemWithKeys(const std::vector<int>& keys)
{
  kovAnimationItem item;
  QMap<int, QVariant> values;
  for (int key : keys)
    values.insert(key, 1.0);
  item.setValues(values);
  return item;
}

TEST(KeyframeBracket, followsTheDocumentedCases)
{
  struct Case {
    std::vector<int> keys;
    int ms;
    Bracket expected;
  };
  const Case cases[] = {
    { {}, 5, { false, 0, 0, 0, 0, 0.0 } },
    { { 100, 200, 400 }, 50, { false, 0, 100, 0, 100, 0.0 } },   // before the first key
    { { 100, 200, 400 }, 100, { true, 0, 100, 1, 200, 0.0 } },   // on the first key
    { { 100, 200, 400 }, 150, { false, 0, 100, 1, 200, 0.5 } },  // between
    { { 100, 200, 400 }, 200, { true, 1, 200, 2, 400, 0.0 } },   // on an inner key
    { { 100, 200, 400 }, 250, { false, 1, 200, 2, 400, 0.25 } }, // between
    { { 100, 200, 400 }, 400, { true, 1, 200, 2, 400, 1.0 } },   // on the last key
    { { 100, 200, 400 }, 401, { false, 2, 400, 2, 400, 1.0 } },  // after the last
    { { 300 }, 300, { true, 0, 0, 0, 300, 1.0 } },               // the only key keeps prev at zero
    { { 300 }, 200, { false, 0, 300, 0, 300, 0.0 } },
    { { 300 }, 301, { false, 0, 300, 0, 300, 1.0 } },
    { { 0 }, 0, { true, 0, 0, 0, 0, 0.0 } },
    { { -300 }, -300, { true, 0, 0, 0, -300, 1.0 } },
    { { INT_MIN, INT_MAX }, 0, { false, 0, INT_MIN, 1, INT_MAX, 2147483648.0 / 4294967295.0 } },
    { { INT_MIN, INT_MAX }, INT_MIN, { true, 0, INT_MIN, 1, INT_MAX, 0.0 } },
    { { INT_MIN, INT_MAX }, INT_MAX, { true, 0, INT_MIN, 1, INT_MAX, 1.0 } },
    { { INT_MIN + 1 }, INT_MIN, { false, 0, INT_MIN + 1, 0, INT_MIN + 1, 0.0 } },
    { { INT_MAX - 1 }, INT_MAX, { false, 0, INT_MAX - 1, 0, INT_MAX - 1, 1.0 } },
  };
  for (const Case& c : cases) {
    const kovAnimationItem item = itemWithKeys(c.keys);
    EXPECT_EQ(searched(item, c.ms), c.expected) << "at " << c.ms << " over " << c.keys.size() << " keys";
    EXPECT_EQ(walked(item, c.ms), c.expected) << "at " << c.ms << " over " << c.keys.size() << " keys";
  }
}

TEST(KeyframeBracket, binarySearchAgreesWithTheWalkOnRandomKeys)
{
  std::mt19937 random(20240611u);
  const int specials[] = { INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX - 1, INT_MAX };
  int compared = 0;
  for (int set = 0; set < 2000; ++set) {
    // Narrow ranges make times fall on keys and next to them often.
    const int span = set % 3 == 0 ? 20 : set % 3 == 1 ? 1000 : INT_MAX;
    std::uniform_int_distribution<int> keyAt(-span, span);
    std::vector<int> keys(static_cast<size_t>(1 + random() % 12));
    for (int& key : keys)
      key = random() % 8 == 0 ? specials[random() % 7] : keyAt(random);
    const kovAnimationItem item = itemWithKeys(keys);

    std::vector<int> times(std::begin(specials), std::end(specials));
    for (int key : item.values().keys()) {
      times.push_back(key);
      if (key > INT_MIN)
        times.push_back(key - 1);
      if (key < INT_MAX)
        times.push_back(key + 1);
    }
    for (int i = 0; i < 10; ++i)
      times.push_back(keyAt(random));
    for (int ms : times) {
      ASSERT_EQ(searched(item, ms), walked(item, ms)) << "set " << set << " at " << ms;
      ++compared;
    }
  }
  EXPECT_GT(compared, 50000);
}

TEST(KeyframeBracket, followsEveryChangeOfTheKeys)
{
  kovAnimationItem item = itemWithKeys({ 0, 100 });
  EXPECT_EQ(searched(item, 50).fraction, 0.5);
  item.setValue(200, 1.0);
  EXPECT_EQ(searched(item, 150), walked(item, 150));
  EXPECT_EQ(searched(item, 150).nextTime, 200);
  item.removeValue(200);
  EXPECT_EQ(searched(item, 150).prevTime, 100);
  item.clearValues();
  EXPECT_FALSE(searched(item, 0).onKey);
  EXPECT_EQ(searched(item, 0).nextTime, 0);
}

} // namespace
