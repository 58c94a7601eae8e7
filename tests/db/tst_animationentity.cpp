// The animation entity's own rules: unique track names, total duration,
// copying an animation, the selection accessors, and erasing.
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "kovDbFixture.h"

#include <QVariantList>

#include <climits>

namespace {

QString str(const char* text)
{
  return QString::fromUtf8(text);
}

class AnimationEntity : public kovDbFixture {
protected:
  void SetUp() override
  {
    kovDbFixture::SetUp();
    kovDbAnimation::rxInit();
    kovDbTempBlockReference::rxInit();
    animation = kovDbAnimation::createObject();
  }
  void TearDown() override
  {
    animation = nullptr;
    kovDbTempBlockReference::rxUninit();
    kovDbAnimation::rxUninit();
    kovDbFixture::TearDown();
  }

  kovAnimationTrackPtr addTrack(kovDbAnimation* owner, const char* name, int start = 0)
  {
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(str(name));
    track->setStartMillisecond(start);
    owner->editTracks().push_back(track);
    return track;
  }

  kovDbAnimationPtr animation;
};

TEST_F(AnimationEntity, uniqueNamesCountUpFromTheOriginalName)
{
  const struct {
    std::initializer_list<const char*> others;
    const char* name;
    const char* expected;
  } cases[] = {
    { {}, "Sun", "Sun" },
    { { "Sun" }, "Sun", "Sun 1" },
    { { "Sun", "Sun 1" }, "Sun", "Sun 2" },
    { { "Sun 1", "Sun" }, "Sun", "Sun 2" },
    { { "Sun", "Sun 2" }, "Sun", "Sun 1" },
    { { "Sun 1" }, "Sun 1", "Sun 1 1" },
    { { "sun", "Sun " }, "Sun", "Sun" },
    { { "" }, "", " 1" },
  };
  for (const auto& c : cases) {
    kovDbAnimationPtr owner = kovDbAnimation::createObject();
    for (const char* other : c.others)
      addTrack(owner.get(), other);
    const kovAnimationTrackPtr track = addTrack(owner.get(), c.name);
    owner->makeTrackNameUnique(track.get());
    EXPECT_EQ(track->trackName(), str(c.expected)) << c.name << " among " << c.others.size();
  }
}

TEST_F(AnimationEntity, totalDurationIsTheLatestTrackEnd)
{
  struct Track {
    int start;
    std::vector<std::vector<int>> items;
  };
  const struct {
    std::vector<Track> tracks;
    int expected;
  } cases[] = {
    { {}, 0 },
    { { { 1000, { { 0, 4000 } } } }, 5000 },
    { { { 1000, { { 0, 4000 } } }, { 0, { {}, { 6000 } } } }, 6000 },
    { { { 2000, { {} } }, { 3000, {} } }, 3000 },
    { { { 1000, { { -500 } } } }, 500 },
    { { { -5000, { { 100 } } } }, 0 },
    { { { INT_MAX, { { INT_MAX } } } }, INT_MAX },
  };
  for (const auto& c : cases) {
    kovDbAnimationPtr owner = kovDbAnimation::createObject();
    for (const Track& t : c.tracks) {
      const kovAnimationTrackPtr track = addTrack(owner.get(), "T", t.start);
      for (const auto& keys : t.items) {
        track->addElement();
        for (int key : keys)
          track->elementAt(track->numElements() - 1).setValue(key, 1.0);
      }
    }
    EXPECT_EQ(owner->totalDurationMs(), c.expected);
  }
}

TEST_F(AnimationEntity, copyingOntoItselfChangesNothing)
{
  animation->setName(str("Walk"));
  animation->setDescription(str("Around the house"));
  const kovAnimationTrackPtr track = addTrack(animation.get(), "Camera Track");
  kovCameraCut cut;
  cut.track = track;
  animation->sceneCuts().append(cut);
  animation->copyContent(animation.get());
  ASSERT_EQ(animation->constTracks().size(), 1u);
  EXPECT_EQ(animation->constTracks()[0].get(), track.get());
  ASSERT_EQ(animation->sceneCuts().size(), 1);
  EXPECT_EQ(animation->sceneCuts()[0].track.get(), track.get());
  EXPECT_EQ(animation->animationDescription(), str("Around the house"));
}

TEST_F(AnimationEntity, copyingDuplicatesTracksAndRebindsCuts)
{
  animation->setName(str("Source"));
  animation->setDescription(str("Described"));
  animation->setCurrentPosition(500);
  animation->setSelectedTrackIndex(1);
  animation->setSelectedElementIndex(0);
  animation->hideAnimationGizmos() = true;
  const kovAnimationTrackPtr first = addTrack(animation.get(), "Camera Track", 1000);
  first->setEntityUniqueName(nullptr, str("Camera"));
  first->setDescription(str("eye"));
  first->setBlockMatrix(OdGeMatrix3d::scaling(2.0));
  first->addElement();
  first->elementAt(0).setValue(10, 2.5);
  const kovAnimationTrackPtr second = addTrack(animation.get(), "Second");
  animation->editTracks().push_back(kovAnimationTrackPtr());
  kovCameraCut cut;
  cut.name = str("Cut");
  cut.track = second;
  cut.startMs = 7;
  cut.frameRate = 29.97;
  cut.quality = 3;
  animation->sceneCuts().append(cut);

  kovDbAnimationPtr target = kovDbAnimation::createObject();
  target->setName(str("Target"));
  addTrack(target.get(), "Old");
  target->sceneCuts().append(kovCameraCut());
  animation->copyContent(target.get());

  EXPECT_EQ(target->animationName(), str("Target"));
  EXPECT_EQ(target->animationDescription(), str("Described"));
  EXPECT_EQ(target->currentPositionMs(), -1);
  EXPECT_EQ(target->selectedTrackIndex(), -1);
  EXPECT_EQ(target->selectedElementIndex(), -1);
  EXPECT_FALSE(target->areGizmosHidden());

  ASSERT_EQ(target->constTracks().size(), 2u);
  const kovAnimationTrackPtr copy = target->constTracks()[0];
  EXPECT_NE(copy.get(), first.get());
  EXPECT_EQ(copy->trackName(), str("Camera Track"));
  EXPECT_EQ(copy->trackDescription(), str("eye"));
  EXPECT_EQ(copy->entityUniqueName(), str("Camera"));
  EXPECT_EQ(copy->startMillisecond(), 1000);
  EXPECT_TRUE(copy->blockMatrix().isEqualTo(OdGeMatrix3d::scaling(2.0)));
  ASSERT_EQ(copy->numElements(), 1);
  EXPECT_EQ(copy->elementAt(0).values(), first->elementAt(0).values());
  EXPECT_EQ(copy->elementAt(0).parentTrack(), copy.get());

  ASSERT_EQ(target->sceneCuts().size(), 1);
  const kovCameraCut& copied = target->sceneCuts()[0];
  EXPECT_EQ(copied.track.get(), target->constTracks()[1].get());
  EXPECT_EQ(copied.name, str("Cut"));
  EXPECT_EQ(copied.startMs, 7);
  EXPECT_EQ(copied.frameRate, 29.97);
  EXPECT_EQ(copied.quality, 3);
}

TEST_F(AnimationEntity, copiedTracksKeepTheirDependentKeyframesUpToDate)
{
  const kovAnimationTrackPtr walker = addTrack(animation.get(), "Walker");
  walker->setEntityUniqueName(nullptr, str("Oak"));
  walker->addElement();
  walker->elementAt(0).setValues({ { 0, QVariantList { 0.0, 0.0, 0.0 } }, { 10, QVariantList { 1.0, 0.0, 0.0 } } });
  kovDbAnimationPtr target = kovDbAnimation::createObject();
  animation->copyContent(target.get());
  // An object walking by speed is re-timed by its path as soon as it changes.
  target->editTracks()[0]->elementAt(0).setValue(10, QVariantList { 3.0, 4.0, 0.0 });
  EXPECT_EQ(target->constTracks()[0]->elementAt(0).values().lastKey(), 5000);
}

TEST_F(AnimationEntity, selectionOutOfRangeGivesNull)
{
  const kovAnimationTrackPtr first = addTrack(animation.get(), "A");
  first->addElement();
  first->addElement();
  addTrack(animation.get(), "B");
  const struct {
    int track, element;
    bool hasTrack;
    int expectedElement;
  } cases[] = { { -1, 0, false, -1 },     { 2, 0, false, -1 },  { INT_MAX, 0, false, -1 }, { INT_MIN, 0, false, -1 },
                { 0, -1, true, -1 },      { 0, 2, true, -1 },   { 0, INT_MIN, true, -1 },  { 0, 1, true, 1 },
                { 1, 0, true, -1 } };
  for (const auto& c : cases) {
    animation->setSelectedTrackIndex(c.track);
    animation->setSelectedElementIndex(c.element);
    EXPECT_EQ(!animation->selectedTrack().isNull(), c.hasTrack) << c.track;
    kovAnimationItem* expected =
        c.expectedElement < 0 ? nullptr : &animation->selectedTrack()->elementAt(c.expectedElement);
    EXPECT_EQ(animation->selectedElement(), expected) << c.track << ", " << c.element;
  }
}

TEST_F(AnimationEntity, erasingTakesTheTracksBlocksWithIt)
{
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  {
    OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
    OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::createObject();
    block->setName(OdString(L"Oak"));
    blocks->add(block);
    block->appendOdDbEntity(OdDbLight::createObject());
  }
  OdDbObjectId id;
  {
    OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    id = modelSpace->appendOdDbEntity(animation);
  }
  const kovAnimationTrackPtr oak = addTrack(animation.get(), "Oak");
  oak->setEntityUniqueName(db, str("Oak"));
  const OdDbObjectId reference = oak->blockId();
  ASSERT_FALSE(reference.isNull());
  animation = nullptr;

  kovDbAnimationPtr opened = id.safeOpenObject(OdDb::kForWrite);
  ASSERT_EQ(opened->erase(), eOk);
  EXPECT_TRUE(reference.isErased());
  EXPECT_TRUE(oak->blockId().isNull());
  ASSERT_EQ(opened->erase(false), eOk);
  EXPECT_TRUE(oak->blockId().isNull()) << "un-erasing only restores the entity";
  opened = nullptr;
  db = nullptr;
}

} // namespace
