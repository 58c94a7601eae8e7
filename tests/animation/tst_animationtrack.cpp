// Tracks: what they animate, the span of their keyframes, re-timing, the
// change signal, and the block reference that shows a spawned subject.
#include "kovAnimationTestValues.h"

#include "animation/kovAnimationTrack.h"
#include "db/kovDbTempBlockReference.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbLight.h"
#include "kovDbFixture.h"
#include "kovSampleDrawing.h"

#include <climits>
#include <limits>

namespace {

using Item = kovAnimationItem;

Item& addItem(kovAnimationTrack& track, Item::AnimationType type, const QMap<int, QVariant>& values)
{
  track.addElement();
  Item& item = track.elementAt(track.numElements() - 1);
  item.setAnimationType(type, OdGePoint3d::kOrigin);
  item.setValues(values);
  return item;
}

QMap<int, QVariant> keysAt(std::initializer_list<int> keys)
{
  QMap<int, QVariant> values;
  for (int key : keys)
    values.insert(key, static_cast<double>(key));
  return values;
}

class TrackWithDrawing : public kovDbFixture {
protected:
  void SetUp() override
  {
    kovDbFixture::SetUp();
    kovDbTempBlockReference::rxInit();
    drawing = kovBuildSampleDrawing();
    db = drawing.db.get();
  }
  void TearDown() override
  {
    drawing = kovSampleDrawing();
    kovDbTempBlockReference::rxUninit();
    kovDbFixture::TearDown();
  }

  OdDbObjectId addBlock(const char* name)
  {
    OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
    OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::createObject();
    block->setName(odFromQString(str(name)));
    const OdDbObjectId id = blocks->add(block);
    block->appendOdDbEntity(OdDbLight::createObject());
    return id;
  }

  OdDbObjectId addReference(const OdDbObjectId& block)
  {
    OdDbBlockReferencePtr reference = OdDbBlockReference::createObject();
    reference->setBlockTableRecord(block);
    OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    return modelSpace->appendOdDbEntity(reference);
  }

  static OdDbObjectId blockOf(const OdDbObjectId& reference)
  {
    OdDbBlockReferencePtr opened = reference.safeOpenObject();
    return opened->blockTableRecord();
  }

  kovSampleDrawing drawing;
  OdDbDatabase* db = nullptr;
};

TEST_F(TrackWithDrawing, kindFollowsTheBoundEntity)
{
  const struct {
    OdDbObjectId id;
    const char* kind;
  } cases[] = { { drawing.light, "ArtificialLight" },
                { drawing.spline, "Entity" },
                { drawing.chairRef, "Entity" },
                { addReference(addBlock("Garden_xBlOcK_Oak")), "Object" },
                { addReference(addBlock("XBLOCK")), "Object" },
                { addReference(addBlock("X Block")), "Entity" },
                { drawing.erased, "" } };
  for (const auto& c : cases) {
    kovAnimationTrack track;
    track.setEntityUniqueName(nullptr, str("Camera")); // the entity wins over the name
    track.setEntityId(c.id);
    EXPECT_EQ(track.trackTypeIdentifier(), str(c.kind)) << c.kind;
  }
  kovAnimationTrack notAnEntity;
  notAnEntity.setEntityId(drawing.chairBlock);
  EXPECT_THROW(notAnEntity.trackTypeIdentifier(), OdError_NotThatKindOfClass);
}

TEST_F(TrackWithDrawing, evaluationLeavesTheBoundObjectAlone)
{
  // Evaluation may run on several threads; opening objects may not.
  kovAnimationTrack track;
  track.setEntityId(drawing.chairBlock);
  track.addElement();
  track.elementAt(0).setValue(0, QVariantList { 1.0, 2.0, 3.0 });
  OdGeMatrix3d m;
  EXPECT_NO_THROW(m = track.computeTransformAtMillisecond(0));
  expectPointNear(m.getCsOrigin(), { 1, 2, 3 });
}

TEST(TrackKind, followsTheUniqueNameWithoutAnEntity)
{
  const struct {
    const char* name;
    const char* kind;
  } cases[] = { { "Camera", "Camera" },           { "Environment", "Environment" }, { "camera", "SpawnedObject" },
                { "Camera ", "SpawnedObject" },   { "Oak", "SpawnedObject" },       { "", "" } };
  for (const auto& c : cases) {
    kovAnimationTrack track;
    track.setEntityUniqueName(nullptr, str(c.name));
    EXPECT_EQ(track.trackTypeIdentifier(), str(c.kind)) << c.name;
  }
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

TEST_F(TrackWithDrawing, spawnedObjectShowsItsNamesakeBlockUntilDestroyed)
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

  track.destroyBlock();
  EXPECT_TRUE(track.blockId().isNull());
  EXPECT_TRUE(first.isErased());
  EXPECT_TRUE(oak.isErased()) << "a spawned subject's block goes with its reference";
  EXPECT_NO_THROW(track.destroyBlock());
}

TEST_F(TrackWithDrawing, regeneratingReplacesTheReferenceButKeepsTheBlock)
{
  const OdDbObjectId oak = addBlock("Oak");
  BlockTrack track;
  track.setEntityUniqueName(db, str("Oak"));
  const OdDbObjectId first = track.blockId();
  track.regenerateBlock(db, true);
  ASSERT_FALSE(track.blockId().isNull());
  EXPECT_NE(track.blockId(), first);
  EXPECT_TRUE(first.isErased());
  EXPECT_EQ(blockOf(track.blockId()), oak);
  EXPECT_FALSE(oak.isErased()) << "the new reference shows a live block";

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
