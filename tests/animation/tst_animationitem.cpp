// Sub-tracks: names of their enumerations, copying and equality, change
// signals, exact-key reads, special parameters, spline paths and re-timing by
// distance. Tracks: what they animate, the span of their keyframes,
// re-timing, the change signal, and the block reference that shows a spawned
// subject.
#include "kovAnimationTestValues.h"

#include "animation/kovAnimationTrack.h"
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Ge/OdGeNurbCurve3d.h"
#include "kovDbFixture.h"
#include "kovSampleDrawing.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

using Item = kovAnimationItem;
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(AnimationItemNames, convertEveryTypeBothWaysAndUnknownTextsToTheDefaults)
{
  const char* const animationTypes[] = { "Custom Parameter", "Location By Points", "Location By Spline", "Scale",
                                         "Rotation By Angles", "Rotation To Target", "Rotation To Entity",
                                         "Location By Spline and Rotation" };
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(Item::animationType2String(i), str(animationTypes[i]));
    EXPECT_EQ(Item::string2AnimationType(str(animationTypes[i])), i);
  }
  const char* const paramTypes[] = { "Point", "Number", "On/Off", "Text" };
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(Item::paramType2String(i), str(paramTypes[i]));
    EXPECT_EQ(Item::string2ParamType(str(paramTypes[i])), i);
  }
  for (int bad : { -1, 8, INT_MIN, INT_MAX })
    EXPECT_TRUE(Item::animationType2String(bad).isEmpty()) << bad;
  for (int bad : { -1, 4, INT_MIN, INT_MAX })
    EXPECT_TRUE(Item::paramType2String(bad).isEmpty()) << bad;
  for (const char* unknown : { "whatever", "", "scale", "Location By Spline " }) {
    EXPECT_EQ(Item::string2AnimationType(str(unknown)), Item::CustomParameter) << unknown;
    EXPECT_EQ(Item::string2ParamType(str(unknown)), Item::Number) << unknown;
  }
}

Item richItem(kovAnimationTrack* track)
{
  Item item(track);
  item.setAnimationType(Item::CustomParameter, OdGePoint3d::kOrigin);
  item.setCustomParameterName(str("Fov"));
  item.setParamsType(Item::Text);
  item.setRange(-5, 5, 1);
  item.setValueList(strs({ "a", "b" }));
  item.setTransientWord(0x1234567890ULL);
  item.setValue(100, str("a"));
  return item;
}

TEST(AnimationItemCopies, keepTheSourcesTrackAndAnyDifferingFieldMakesThemUnequal)
{
  kovAnimationTrack first, second;
  const Item source = richItem(&first);
  const Item copy(source);
  EXPECT_EQ(copy.parentTrack(), &first);
  EXPECT_EQ(copy.transientWord(), 0x1234567890ULL);
  EXPECT_TRUE(copy == source);
  Item loose;
  loose = source;
  EXPECT_EQ(loose.parentTrack(), &first) << "a parentless item adopts the source's track";
  EXPECT_TRUE(loose == source);

  Item target(&second);
  EXPECT_EQ(countSignals(&target, &Item::valueChanged, [&] { target = source; }), 0);
  EXPECT_EQ(target.parentTrack(), &second);
  EXPECT_EQ(target.parent(), &second);
  EXPECT_FALSE(target == source) << "equal fields, different tracks";
  EXPECT_EQ(target.values(), source.values());

  kovAnimationTrack track;
  const std::function<void(Item&)> changes[] = {
    [](Item& i) { i.setAnimationType(Item::Scale, OdGePoint3d::kOrigin); },
    [](Item& i) { i.setCustomParameterName(str("fov")); },
    [](Item& i) { i.setDurationByAnimationSpeed(false); },
    [](Item& i) { i.setFaceDirection(true); },
    [](Item& i) { i.setIsFactoryParameter(true); },
    [](Item& i) { i.setParamsType(Item::Point); },
    [](Item& i) { i.setRange(-5, 6, 1); },
    [](Item& i) { i.setRange(-4, 5, 1); },
    [](Item& i) { i.setRange(-5, 5, 2); },
    [](Item& i) { i.setValueList(strs({ "a", "c" })); },
    [](Item& i) { i.setValues({ { 101, str("a") } }); },
    [](Item& i) { i.setValue(100, str("b")); },
    [](Item& i) { i.setTransientWord(1); },
    [](Item& i) { i.setRange(kNaN, 5, 1); },
    [](Item& i) { i.setRange(-5, kNaN, 1); },
  };
  const Item reference = richItem(&track);
  int n = 0;
  for (const auto& change : changes) {
    Item changed(reference);
    change(changed);
    EXPECT_FALSE(changed == reference) << "change " << n;
    EXPECT_FALSE(reference == changed) << "change " << n;
    ++n;
  }
  Item nan(reference);
  nan.setRange(kNaN, 5, 1);
  EXPECT_FALSE(nan == Item(nan)) << "a NaN bound is unequal even to its own copy";
}

TEST(AnimationItemSignals, writersEmitAsDocumentedAndRemoversStaySilent)
{
  Item item;
  const auto emitted = [&item](const std::function<void()>& action) {
    return countSignals(&item, &Item::valueChanged, action);
  };
  EXPECT_EQ(emitted([&] { item.setValue(0, 1.0); }), 1);
  EXPECT_EQ(emitted([&] { item.setValue(0, 1.0); }), 1) << "the same value again still emits";
  EXPECT_EQ(emitted([&] { item.setValue(0, 2.0); }), 1);
  EXPECT_EQ(item.values().size(), 1);
  EXPECT_EQ(emitted([&] { item.setValues(item.values()); }), 1);
  EXPECT_EQ(emitted([&] { item.setDurationByAnimationSpeed(true); }), 1);
  EXPECT_EQ(emitted([&] {
              item.setParamsType(Item::Text);
              item.setFaceDirection(true);
              item.setCustomParameterName(str("x"));
            }),
            0);
  EXPECT_EQ(emitted([&] { item.setAnimationType(Item::LocationByPoints, OdGePoint3d::kOrigin); }), 0);
  EXPECT_EQ(emitted([&] { item.setAnimationType(Item::Scale, OdGePoint3d::kOrigin); }), 1);
  EXPECT_EQ(item.values().value(0), QVariant(2.0)) << "non-spline types keep their keyframes";
  int removed = -1;
  EXPECT_EQ(emitted([&] { removed = item.removeValue(5); }), 0);
  EXPECT_EQ(removed, 0);
  EXPECT_EQ(emitted([&] { removed = item.removeValue(0); }), 0);
  EXPECT_EQ(removed, 1);
  item.setValue(7, 1.0);
  EXPECT_EQ(emitted([&] { item.clearValues(); }), 0);
  EXPECT_TRUE(item.values().isEmpty());
}

TEST(AnimationItemSignals, reachTheTrackOnceHoweverTheItemWasCopied)
{
  kovAnimationTrack track;
  for (int i = 0; i < 20; ++i)
    track.addElement(); // reallocations copy every item into its new place
  const auto trackSignals = [&track](const std::function<void()>& action) {
    return countSignals(&track, &kovAnimationTrack::onTrackItemChanged, action);
  };
  EXPECT_EQ(trackSignals([&] { track.elementAt(0).setValue(1, 1.0); }), 1);

  // The track finds a changed item by value: each copy below rewrites a
  // keyframe unchanged, so that it still equals element 0 and is reported.
  Item copy(track.elementAt(0));
  EXPECT_EQ(trackSignals([&] { copy.setValue(1, 1.0); }), 1);

  Item loose;
  loose = track.elementAt(0);
  loose = track.elementAt(0);
  Item copyOfCopy(loose);
  EXPECT_EQ(trackSignals([&] { loose.setValue(1, 1.0); }), 1);
  EXPECT_EQ(trackSignals([&] { copyOfCopy.setValue(1, 1.0); }), 1);
}

TEST(AnimationItemReads, exactKeysOnlyAndTheDefaultForWrongShapes)
{
  Item item;
  item.setValues({ { 0, 2.5 },
                   { 1, QVariantList { 1.0, 2.0 } },
                   { 2, QVariantList { 1.0, 2.0, 3.0, 4.0, 5.0 } },
                   { 3, sixValue(1, 2, 3, 4, 5, 6) },
                   { 4, str("abc") },
                   { 5, QVariant() },
                   { INT_MIN, true },
                   { INT_MAX, str("end") } });
  const OdGePoint3d def(-1, -1, -1);
  EXPECT_EQ(item.valueAsScalar(0, 9.0), 2.5);
  EXPECT_EQ(item.valueAsScalar(-1, 9.0), 9.0) << "no interpolation between keys";
  for (int wrong : { 1, 3, 4, 5 })
    EXPECT_EQ(item.valueAsScalar(wrong, 9.0), 9.0) << wrong;
  expectPointNear(item.valueAsPoint(1, def), def);
  expectPointNear(item.valueAsPoint(2, def), OdGePoint3d(1, 2, 3));
  expectPointNear(item.valueAsPointGetTanget(2, def), def);
  expectPointNear(item.valueAsPointGetTanget(3, def), OdGePoint3d(4, 5, 6));
  for (int wrong : { 0, 4, 5, 6 }) {
    expectPointNear(item.valueAsPoint(wrong, def), def);
    expectPointNear(item.valueAsPointGetTanget(wrong, def), def);
  }
  EXPECT_TRUE(item.valueAsBool(INT_MIN, false));
  EXPECT_EQ(item.valueAsString(INT_MAX, str("def")), str("end"));
  EXPECT_EQ(item.valueAsString(7, str("def")), str("def"));
  EXPECT_FALSE(item.valueAsBool(1, false)) << "a list is no bool";
  EXPECT_EQ(item.valueAsString(3, str("def")), str("def")) << "a list is no text";
}

TEST(AnimationItemSpecialParameters, takeTheirRangesAndListsFromTheTable)
{
  struct Row {
    const char* name;
    Item::ParameterType type;
    double min, max;
    int decimals;
  };
  // A row of each type and of each number of decimals; a field of view
  // stays short of a half-space.
  const Row rows[] = { { "Time", Item::Number, 0, 24, 2 },       { "Month", Item::Number, 1, 12, 0 },
                       { "Latitude", Item::Number, -90, 90, 3 }, { "Visibility", Item::OnOff, 0, 1, 0 },
                       { "Sky Sequence", Item::Text, 0, 0, 0 },  { "Fov", Item::Number, 1, 179, 2 },
                       { "Object Animation", Item::Text, 0, 0, 0 } };
  for (const Row& row : rows) {
    Item item;
    item.setValueList(strs({ "stale" }));
    Item::setSpecialCustomParamType(item, str(row.name));
    EXPECT_EQ(item.animationType(), Item::CustomParameter) << row.name;
    EXPECT_EQ(item.customParameterName(), str(row.name));
    EXPECT_EQ(item.paramsType(), row.type) << row.name;
    EXPECT_TRUE(item.isFactoryParameter()) << row.name;
    EXPECT_EQ(item.minValue(), row.min) << row.name;
    EXPECT_EQ(item.maxValue(), row.max) << row.name;
    EXPECT_EQ(item.decimals(), row.decimals) << row.name;
    if (qstrcmp(row.name, "Sky Sequence") != 0) {
      EXPECT_TRUE(item.valueList().isEmpty()) << row.name << " (no library service: no animation names)";
    }
  }
  Item sky;
  Item::setSpecialCustomParamType(sky, str("Sky Sequence"));
  EXPECT_EQ(sky.valueList(), strs({ "Altocumulus", "Cirrus", "Clear_Sky", "Cumulus", "Multi-Layer",
                                           "Nimbo-stratus", "Strato-cumulus", "Stratus", "Towering_Cumulus",
                                           "TrueSkySequenceCumulus", "TrueSkySequenceStratus", "Rainy" }));

  Item plain;
  plain.setRange(2, 3, 4);
  plain.setParamsType(Item::OnOff);
  Item::setSpecialCustomParamType(plain, str("time")); // names match exactly
  EXPECT_EQ(plain.animationType(), Item::CustomParameter);
  EXPECT_EQ(plain.customParameterName(), str("time"));
  EXPECT_FALSE(plain.isFactoryParameter());
  EXPECT_EQ(plain.paramsType(), Item::OnOff);
  EXPECT_EQ(plain.minValue(), 2);
  EXPECT_EQ(plain.decimals(), 4);
}

// The four fit points a path of two keyframes p0, p1 widens to, worked out
// in the plane: the perpendicular of a horizontal direction (dx, dy) is
// (-dy, dx) turned to unit length.
void expectWidenedPath(const Item& item, const OdGePoint3d& p0, const OdGePoint3d& p1)
{
  ASSERT_EQ(item.values().size(), 4);
  const OdGeVector3d d = p1 - p0;
  const OdGeVector3d q = OdGeVector3d(-d.y, d.x, 0) / std::hypot(d.x, d.y);
  const double s = 0.25 * d.length();
  const OdGePoint3d expected[] = { p0, p0 + d * 0.33 + q * s, p0 + d * 0.66 - q * s, p1 };
  int i = 0;
  for (auto it = item.values().cbegin(); it != item.values().cend(); ++it, ++i) {
    ASSERT_EQ(it.value().toList().size(), 6);
    expectPointNear(item.valueAsPoint(it.key(), OdGePoint3d(kNaN, 0, 0)), expected[i]);
    expectPointNear(item.valueAsPointGetTanget(it.key(), OdGePoint3d(kNaN, 0, 0)), OdGePoint3d::kOrigin);
  }
}

TEST(AnimationItemSplinePaths, widenTwoKeyframesToFourSwingingOutToEitherSide)
{
  Item item;
  item.setValues({ { 200, pointValue(1, 1, 0) }, { 1200, pointValue(9, 5, 0) } });
  int emitted = countSignals(&item, &Item::valueChanged,
                             [&] { item.setAnimationType(Item::LocationBySpline, OdGePoint3d::kOrigin); });
  EXPECT_EQ(emitted, 4) << "one signal per laid out keyframe";
  expectWidenedPath(item, OdGePoint3d(1, 1, 0), OdGePoint3d(9, 5, 0));
  EXPECT_EQ(item.values().firstKey(), 200);
  EXPECT_EQ(item.values().lastKey(), 1200);

  kovAnimationTrack camera;
  camera.setEntityUniqueName(nullptr, str("Camera"));
  Item eye(&camera);
  eye.setValues({ { 0, pointValue(1, 1, 7) }, { 500, pointValue(3, 6, 3) }, { 1000, pointValue(9, 5, -4) } });
  eye.setAnimationType(Item::LocationBySpline, OdGePoint3d::kOrigin);
  expectWidenedPath(eye, OdGePoint3d(1, 1, 2), OdGePoint3d(9, 5, 2));
}

TEST(AnimationItemSplinePaths, rebuildLongPathsAsFitPointsWithTangents)
{
  Item item;
  item.setValues({ { 0, pointValue(0, 0, 0) },
                   { 10, sixValue(1, 2, 0, 0, 1, 0) },
                   { 20, pointValue(3, 2, 1) },
                   { 30, 4.5 },
                   { 40, pointValue(6, 0, 1) } });
  EXPECT_EQ(countSignals(&item, &Item::valueChanged,
                         [&] { item.setAnimationType(Item::LocationBySpline, OdGePoint3d::kOrigin); }),
            1);
  ASSERT_EQ(item.values().keys(), QList<int>({ 0, 10, 20, 30, 40 }));
  EXPECT_EQ(item.values().value(10), sixValue(1, 2, 0, 0, 1, 0));
  EXPECT_EQ(item.values().value(20), sixValue(3, 2, 1, 0, 0, 0));
  EXPECT_EQ(item.values().value(30), sixValue(0, 0, 0, 0, 0, 0)) << "a value of the wrong shape reads as the origin";
}

// Re-timing reads the speed's unit from an animation.
class AnimationItemRetiming : public kovDbFixtureWith<kovDbAnimation> {
protected:
  void SetUp() override
  {
    kovDbFixtureWith::SetUp();
    animation = kovDbAnimation::createObject();
  }
  void TearDown() override
  {
    animation = nullptr;
    kovDbFixtureWith::TearDown();
  }
  kovDbAnimationPtr animation;
};

TEST_F(AnimationItemRetiming, pointsTruncateEachSumAndValuesMoveWithTheirKeys)
{
  Item item;
  item.setValues({ { 100, pointValue(0, 0, 0) },
                   { 200, pointValue(2, 0, 0) },
                   { 300, pointValue(4, 0, 0) },
                   { 400, pointValue(4, 0, 0) },
                   { 500, pointValue(4, 3, 4) } });
  const QList<QVariant> values = item.values().values();
  EXPECT_TRUE(item.recalcKFTimesByDistance(animation.get(), nullptr, 3.0));
  // 2 / 3 s = 666.67 ms, truncated at every keyframe; the standing still
  // keyframe is kept 1 ms after its predecessor; 5 / 3 s = 1666.67 ms.
  EXPECT_EQ(item.values().keys(), QList<int>({ 100, 766, 1432, 1433, 3099 }));
  EXPECT_EQ(item.values().values(), values);
}

TEST_F(AnimationItemRetiming, splinesMeasureAlongThePath)
{
  Item line;
  line.setValues({ { 0, sixValue(0, 0, 0, 0, 0, 0) },
                   { 1, sixValue(1, 0, 0, 0, 0, 0) },
                   { 2, sixValue(3, 0, 0, 0, 0, 0) },
                   { 3, sixValue(6, 0, 0, 0, 0, 0) } });
  line.setAnimationType(Item::LocationBySpline, OdGePoint3d::kOrigin);
  EXPECT_TRUE(line.recalcKFTimesByDistance(animation.get(), nullptr, 2.0));
  const QList<int> keys = line.values().keys();
  const int expected[] = { 0, 500, 1500, 3000 }; // collinear fit points: the path is the line
  for (int i = 0; i < 4; ++i)
    EXPECT_NEAR(keys[i], expected[i], 1) << i;
}

TEST_F(AnimationItemRetiming, badSpeedsAndOtherTypesChangeNothingAndNoKeyframeIsMergedAway)
{
  Item item;
  const QMap<int, QVariant> values { { 0, pointValue(0, 0, 0) }, { 10, pointValue(5, 0, 0) } };
  item.setValues(values);
  for (double speed : { 0.0, -1.0, kNaN, kInf, -kInf }) {
    EXPECT_FALSE(item.recalcKFTimesByDistance(animation.get(), nullptr, speed)) << speed;
    EXPECT_EQ(item.values(), values);
  }
  item.setAnimationType(Item::RotationByAngles, OdGePoint3d::kOrigin);
  EXPECT_FALSE(item.recalcKFTimesByDistance(animation.get(), nullptr, 1.0));
  EXPECT_EQ(item.values(), values);

  // Keyframes near the end of time are never merged away.
  Item late;
  late.setValues({ { INT_MAX - 2, pointValue(0, 0, 0) }, { INT_MAX - 1, pointValue(1, 0, 0) },
                   { INT_MAX, pointValue(2, 0, 0) } });
  EXPECT_NO_THROW(late.recalcKFTimesByDistance(animation.get(), nullptr, 1.0));
  EXPECT_EQ(late.values().size(), 3);
  expectPointNear(late.valueAsPoint(late.values().lastKey(), OdGePoint3d::kOrigin), OdGePoint3d(2, 0, 0));
}

} // namespace

namespace {

QMap<int, QVariant> keysAt(std::initializer_list<int> keys)
{
  QMap<int, QVariant> values;
  for (int key : keys)
    values.insert(key, static_cast<double>(key));
  return values;
}

class TrackWithDrawing : public kovDbFixtureWith<kovDbTempBlockReference> {
protected:
  void SetUp() override
  {
    kovDbFixtureWith::SetUp();
    drawing = kovBuildSampleDrawing();
    db = drawing.db;
  }
  void TearDown() override
  {
    drawing = kovSampleDrawing();
    kovDbFixtureWith::TearDown();
  }

  // A block of one light.
  OdDbObjectId addBlock(const char* name) { return kovAddBlock(db, OdString(name), OdDbLight::createObject()); }
  OdDbObjectId addReference(const OdDbObjectId& block) { return kovAddReference(db, block); }

  static OdDbObjectId blockOf(const OdDbObjectId& reference)
  {
    OdDbBlockReferencePtr opened = reference.safeOpenObject();
    return opened->blockTableRecord();
  }

  kovSampleDrawing drawing;
};

// The entity wins over the name.
TEST_F(TrackWithDrawing, kindFollowsTheBoundEntityOrElseTheUniqueName)
{
  const struct {
    OdDbObjectId id;
    const char* name;
    const char* kind;
  } cases[] = { { drawing.light, "Camera", "ArtificialLight" },
                { drawing.spline, "Camera", "Entity" },
                { drawing.chairRef, "Camera", "Entity" },
                { addReference(addBlock("Garden_xBlOcK_Oak")), "Camera", "Object" },
                { addReference(addBlock("XBLOCK")), "Camera", "Object" },
                { addReference(addBlock("X Block")), "Camera", "Entity" },
                { drawing.erased, "Camera", "" },
                { OdDbObjectId(), "Camera", "Camera" },
                { OdDbObjectId(), "Environment", "Environment" },
                { OdDbObjectId(), "camera", "SpawnedObject" },
                { OdDbObjectId(), "Camera ", "SpawnedObject" },
                { OdDbObjectId(), "Oak", "SpawnedObject" },
                { OdDbObjectId(), "", "" } };
  for (const auto& c : cases) {
    kovAnimationTrack track;
    track.setEntityUniqueName(nullptr, str(c.name));
    track.setEntityId(c.id);
    EXPECT_EQ(track.trackTypeIdentifier(), str(c.kind)) << c.name << " " << c.kind;
  }
  kovAnimationTrack notAnEntity;
  notAnEntity.setEntityId(drawing.chairBlock);
  EXPECT_THROW(notAnEntity.trackTypeIdentifier(), OdError_NotThatKindOfClass);
}

TEST(TrackSpan, startsFromZeroForLastAndFromLastForFirst)
{
  const struct {
    std::vector<QMap<int, QVariant>> items;
    int first, last;
  } cases[] = {
    { {}, 0, 0 },
    { { {}, {} }, 0, 0 },
    { { keysAt({ -500, 300 }), {}, keysAt({ 100, 900 }) }, -500, 900 },
    { { keysAt({ -800, -200 }) }, -800, 0 },
    { { keysAt({ 200, 700 }) }, 200, 700 },
    { { keysAt({ INT_MIN }), keysAt({ INT_MAX }) }, INT_MIN, INT_MAX },
  };
  for (const auto& c : cases) {
    kovAnimationTrack track;
    for (const auto& values : c.items)
      addItem(track, Item::Scale, values);
    EXPECT_EQ(track.firstKeyframeTime(), c.first);
    EXPECT_EQ(track.lastKeyframeTime(), c.last);
  }
}

TEST(TrackResize, stretchesAndShiftsEveryKeyTruncatingTowardZero)
{
  const struct {
    std::initializer_list<int> keys;
    int newStart, newEnd;
    std::initializer_list<int> expected;
  } cases[] = {
    { { 100, 250, 900 }, 100, 900, { 100, 250, 900 } },
    { { 0, 50, 100, 200 }, 1000, 1400, { 1000, 1100, 1200, 1400 } },
    { { 0, 1, 3 }, 0, 100, { 0, 33, 100 } },
    { { 0, 1, 3 }, -100, 0, { -100, -66, 0 } },
    { { 0, 1, 3 }, 0, 0, { 0 } }, // everything meets at one time
    { { 500 }, 0, 1000, { 500 } },
    { { 0, 10 }, INT_MIN, INT_MAX, { INT_MIN, INT_MAX } },
    { { INT_MIN, INT_MAX }, 0, 10, { 0, 10 } },
  };
  for (const auto& c : cases) {
    kovAnimationTrack track;
    addItem(track, Item::Scale, keysAt(c.keys));
    track.resize(c.newStart, c.newEnd);
    EXPECT_EQ(track.elementAt(0).values().keys(), QList<int>(c.expected)) << c.newStart << ".." << c.newEnd;
  }
  kovAnimationTrack moved;
  addItem(moved, Item::Scale, keysAt({ 0, 10 }));
  moved.resize(20, 40);
  EXPECT_EQ(moved.elementAt(0).valueAsScalar(40, -1.0), 10.0) << "values move with their keys";
}

TEST(TrackResize, leavesSpeedTimedPathsOfObjectsAlone)
{
  for (const char* name : { "Oak", "Camera" }) {
    kovAnimationTrack track;
    track.setEntityUniqueName(nullptr, str(name));
    addItem(track, Item::LocationByPoints, keysAt({ 0, 100 }));
    addItem(track, Item::LocationBySpline, keysAt({ 0, 100 }));
    addItem(track, Item::LocationByPoints, keysAt({ 0, 100 })).setDurationByAnimationSpeed(false);
    addItem(track, Item::Scale, keysAt({ 0, 100 }));
    track.resize(0, 200);
    const bool object = QLatin1String(name) == QLatin1String("Oak");
    const QList<int> untouched { 0, 100 }, stretched { 0, 200 };
    EXPECT_EQ(track.elementAt(0).values().keys(), object ? untouched : stretched) << name;
    EXPECT_EQ(track.elementAt(1).values().keys(), object ? untouched : stretched) << name;
    EXPECT_EQ(track.elementAt(2).values().keys(), stretched) << name;
    EXPECT_EQ(track.elementAt(3).values().keys(), stretched) << name;
  }
}

TEST(TrackSignal, reportsTheFirstEqualItemsIndex)
{
  kovAnimationTrack track;
  for (int i = 0; i < 3; ++i)
    track.addElement();
  std::vector<int> reported;
  QObject::connect(&track, &kovAnimationTrack::onTrackItemChanged, [&](kovAnimationTrack* sender, int index) {
    EXPECT_EQ(sender, &track);
    reported.push_back(index);
  });
  track.elementAt(2).setValue(0, 5.0);
  track.elementAt(0).setValue(0, 5.0);
  track.elementAt(1).setValue(0, 5.0); // now equal to item 0
  track.elementAt(1).setValue(1, 6.0);
  track.insertElement(0);
  track.elementAt(2).setValue(1, 7.0); // the former item 1, moved by the insertion
  track.onItemValuesChanged(nullptr);
  track.elementAt(3).setRange(std::numeric_limits<double>::quiet_NaN(), 1, 1);
  track.elementAt(3).setValue(2, 1.0); // equal to nothing, itself included
  EXPECT_EQ(reported, std::vector<int>({ 2, 0, 0, 1, 2 }));
}

// Exposes the block management that the tracks' owners drive.
class BlockTrack : public kovAnimationTrack {
public:
  using kovAnimationTrack::hideBlock;
  using kovAnimationTrack::regenerateBlock;
};

TEST_F(TrackWithDrawing, spawnedObjectShowsItsNamesakeBlockAnewWhenForcedUntilDestroyed)
{
  const OdDbObjectId oak = addBlock("Oak");
  BlockTrack track;
  track.setBlockMatrix(OdGeMatrix3d::translation(OdGeVector3d(1, 2, 3)));
  track.setEntityUniqueName(db, str("Oak"));
  const OdDbObjectId first = track.blockId();
  ASSERT_FALSE(first.isNull());
  {
    OdDbObjectPtr opened = first.safeOpenObject();
    ASSERT_FALSE(kovDbTempBlockReference::cast(opened.get()).isNull());
    kovDbTempBlockReferencePtr reference = opened;
    EXPECT_EQ(reference->blockTableRecord(), oak);
    EXPECT_EQ(reference->ownerId(), db->getModelSpaceId());
    expectMatrixNear(reference->blockTransform(), OdGeMatrix3d::translation(OdGeVector3d(1, 2, 3)));
  }
  track.regenerateBlock(db, false);
  EXPECT_EQ(track.blockId(), first) << "an existing block is kept unless forced";
  track.regenerateBlock(db, true);
  const OdDbObjectId second = track.blockId();
  ASSERT_FALSE(second.isNull());
  EXPECT_NE(second, first);
  EXPECT_TRUE(first.isErased());
  EXPECT_EQ(blockOf(second), oak);
  EXPECT_FALSE(oak.isErased()) << "the new reference shows a live block";

  track.destroyBlock();
  EXPECT_TRUE(track.blockId().isNull());
  EXPECT_TRUE(second.isErased());
  EXPECT_TRUE(oak.isErased()) << "a spawned subject's block goes with its reference";
  EXPECT_NO_THROW(track.destroyBlock());
}

TEST_F(TrackWithDrawing, onlyASpawnedSubjectWithANamesakeBlockHasOne)
{
  addBlock("Oak");
  BlockTrack track;
  track.setEntityUniqueName(db, str("Oak"));
  ASSERT_FALSE(track.blockId().isNull());
  track.setEntityUniqueName(db, str("Camera"));
  EXPECT_TRUE(track.blockId().isNull());

  BlockTrack missing;
  missing.setEntityUniqueName(db, str("No such block"));
  EXPECT_TRUE(missing.blockId().isNull());
}

TEST_F(TrackWithDrawing, blockLibraryObjectHidesItsEntityWhileTheStandInShows)
{
  const OdDbObjectId block = addBlock("Shed_XBlock");
  const OdDbObjectId entity = addReference(block);
  BlockTrack track;
  track.setEntityId(entity);
  track.regenerateBlock(db, false);
  ASSERT_FALSE(track.blockId().isNull());
  EXPECT_EQ(blockOf(track.blockId()), block);
  const auto visibility = [](const OdDbObjectId& id) {
    OdDbEntityPtr opened = id.safeOpenObject();
    return opened->visibility();
  };
  EXPECT_EQ(visibility(entity), OdDb::kInvisible);
  track.hideBlock(true);
  EXPECT_EQ(visibility(track.blockId()), OdDb::kInvisible);

  track.destroyBlock();
  EXPECT_EQ(visibility(entity), OdDb::kVisible);
  EXPECT_FALSE(block.isErased()) << "the entity's own block stays";
}

} // namespace
