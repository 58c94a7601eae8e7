// The animation entity's filing: tracks and camera cuts in every entity
// layout, against an independent writer of the layouts.

#include "kovAnimationDbFixture.h"
#include "kovFilingCompare.h"
#include "kovFilingSamples.h"
#include "kovLegacyFiling.h"
#include "kovSampleDrawing.h"

#include "Db/OdDbMemoryFiler.h"
#include "Rx/OdError.h"

#include <functional>

namespace {

using Bytes = std::vector<OdUInt8>;

Bytes filed(const std::function<void(OdDbDwgFiler*)>& write)
{
  OdDbMemoryFiler filer;
  write(&filer);
  return Bytes(filer.data(), filer.data() + filer.size());
}

kovDbAnimationPtr readAnimation(const Bytes& bytes, OdDbDatabase* db = nullptr)
{
  OdDbMemoryFiler filer(db);
  filer.setExternalBuffer(bytes.data(), bytes.size());
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  try {
    EXPECT_EQ(animation->dwgInFields(&filer), eOk);
  } catch (const OdError& error) {
    ADD_FAILURE() << error.description().toUtf8();
  }
  EXPECT_EQ(filer.bytesLeft(), 0u);
  return animation;
}

kovFiledTrack namedTrack(const char* name)
{
  kovFiledTrack track;
  track.name = QString::fromUtf8(name);
  track.entityUniqueName = QStringLiteral("Camera");
  kovFiledItem item;
  item.keyframes = { { 0, QVariantList { 0.0, 0.0, 1.8 } }, { 4000, QVariantList { 10.0, 0.0, 1.8 } } };
  track.items.push_back(item);
  return track;
}

// Three tracks and a cut on the last with every field away from its default.
kovFiledAnimation threeTrackAnimation()
{
  kovFiledAnimation animation;
  animation.colorIndex = 3;
  animation.name = QString::fromUtf8("Fly-through \xF0\x9F\x8E\xAC");
  animation.description = QStringLiteral("north side");
  animation.selectedTrackIndex = 2;
  animation.selectedElementIndex = 0;
  animation.currentPositionMs = 1234;
  animation.tracks = { namedTrack("Camera"), namedTrack("Camera 1"), namedTrack("Camera 2") };
  kovFiledCut cut;
  cut.trackIndex = 2;
  cut.name = QStringLiteral("Approach");
  cut.startMs = 100;
  cut.endMs = 3900;
  cut.imageWidth = 3840;
  cut.imageHeight = 2160;
  cut.frameRate = 60;
  cut.encoding = 2;
  cut.outputFormat = 1;
  cut.quality = 3;
  cut.stillImage = true;
  cut.pathTracing = true;
  cut.maxIterations = 400;
  animation.cuts = { cut, cut };
  animation.cuts[1].trackIndex = 0;
  animation.cuts[1].name = QString();
  animation.gizmosHidden = true;
  return animation;
}

class AnimationFiling : public kovAnimationDbFixture {};

TEST_F(AnimationFiling, randomAnimationsWriteTheDocumentedBytesAndReadBackUnchanged)
{
  std::mt19937 rng(7113);
  for (int round = 0; round < 150; ++round) {
    const kovFiledAnimation record = kovSamples::animation(rng);
    const kovDbAnimationPtr animation = kovSamples::makeAnimation(record);
    const Bytes written = filed([&](OdDbDwgFiler* f) { animation->dwgOutFields(f); });
    ASSERT_EQ(written, filed([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); })) << "round " << round;
    ASSERT_EQ(kovSamples::animationDifference(*readAnimation(written), record), "") << "round " << round;
  }
}

TEST_F(AnimationFiling, everyEntityLayoutReadsWithTheDefaultsOfWhatItLacks)
{
  const kovFiledAnimation record = threeTrackAnimation();
  for (OdInt32 version : { 106, 107, 108, 109, 110, 111, 112, 113 }) {
    const kovDbAnimationPtr read = readAnimation(filed([&](OdDbDwgFiler* f) { kovWriteAnimation(f, record, version); }));
    EXPECT_EQ(kovSamples::animationDifference(*read, record, version), "") << "version " << version;
  }
}

TEST_F(AnimationFiling, readsVersion110CutsAsSceneWithoutPathTracingOrGizmoFlag)
{
  const kovDbAnimationPtr read =
    readAnimation(filed([](OdDbDwgFiler* f) { kovWriteAnimation(f, threeTrackAnimation(), 110); }));
  ASSERT_EQ(read->sceneCuts().size(), 2);
  const kovCameraCut& cut = read->sceneCuts().front();
  EXPECT_EQ(cut.name, QStringLiteral("Scene"));
  EXPECT_FALSE(cut.pathTracing);
  EXPECT_EQ(cut.maxIterations, 400) << "iterations are filed from 108";
  EXPECT_FALSE(read->areGizmosHidden());
}

TEST_F(AnimationFiling, layoutWithoutCutsKeepsTheCutsTheEntityHad)
{
  const kovFiledAnimation record = threeTrackAnimation();
  const Bytes bytes = filed([&](OdDbDwgFiler* f) { kovWriteAnimationV106(f, record); });
  OdDbMemoryFiler filer;
  filer.setExternalBuffer(bytes.data(), bytes.size());
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  kovCameraCut kept;
  kept.name = QStringLiteral("kept");
  animation->sceneCuts().append(kept);
  ASSERT_EQ(animation->dwgInFields(&filer), eOk);
  ASSERT_EQ(animation->sceneCuts().size(), 1);
  EXPECT_EQ(animation->sceneCuts().front().name, QStringLiteral("kept"));
}

TEST_F(AnimationFiling, cutWithATrackIndexOutOfRangeBindsToTheFirstTrack)
{
  for (OdInt32 index : { 7, 3, -1, INT_MIN }) {
    kovFiledAnimation record = threeTrackAnimation();
    record.cuts[0].trackIndex = index;
    const kovDbAnimationPtr read = readAnimation(filed([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); }));
    ASSERT_EQ(read->sceneCuts().size(), 2) << index;
    EXPECT_EQ(read->sceneCuts().front().track.get(), read->constTracks().front().get()) << index;
  }
}

TEST_F(AnimationFiling, cutsOfAnAnimationWithoutTracksAreDropped)
{
  kovFiledAnimation record = threeTrackAnimation();
  record.tracks.clear();
  const kovDbAnimationPtr read = readAnimation(filed([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); }));
  EXPECT_TRUE(read->sceneCuts().isEmpty());
  EXPECT_TRUE(read->areGizmosHidden()) << "the fields after the cuts are still read";
}

TEST_F(AnimationFiling, cutWhoseTrackIsNotInTheAnimationFilesIndexMinusOne)
{
  kovDbAnimationPtr animation = kovSamples::makeAnimation(threeTrackAnimation());
  animation->sceneCuts()[0].track = kovAnimationTrackPtr(new kovAnimationTrack);
  const Bytes bytes = filed([&](OdDbDwgFiler* f) { animation->dwgOutFields(f); });
  kovFiledAnimation record = threeTrackAnimation();
  record.cuts[0].trackIndex = -1;
  EXPECT_EQ(bytes, filed([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); }));
}

TEST_F(AnimationFiling, frameRatesAreFiledAsWholeFramesPerSecond)
{
  const struct {
    double rate;
    double read;
  } cases[] = { { 29.97, 29.0 }, { 23.976, 23.0 }, { 24.0, 24.0 }, { 0.5, 0.0 }, { -1.5, -1.0 },
                { 1e300, double(INT_MAX) }, { std::numeric_limits<double>::quiet_NaN(), 0.0 } };
  for (const auto& c : cases) {
    kovDbAnimationPtr animation = kovSamples::makeAnimation(threeTrackAnimation());
    animation->sceneCuts()[0].frameRate = c.rate;
    const kovDbAnimationPtr read = readAnimation(filed([&](OdDbDwgFiler* f) { animation->dwgOutFields(f); }));
    EXPECT_EQ(read->sceneCuts().front().frameRate, c.read) << c.rate;
  }
}

TEST_F(AnimationFiling, newerFormatVersionReadsAsTheCurrentOne)
{
  const kovFiledAnimation record = threeTrackAnimation();
  const kovDbAnimationPtr read = readAnimation(filed([&](OdDbDwgFiler* f) { kovWriteAnimation(f, record, 200); }));
  EXPECT_EQ(kovSamples::animationDifference(*read, record), "");
}

TEST_F(AnimationFiling, cutViewsResolveInTheDrawingAndMissingOnesReadAsNull)
{
  const kovSampleDrawing drawing = kovBuildSampleDrawing();
  kovFiledAnimation record = threeTrackAnimation();
  record.cuts[0].viewHandle = drawing.view.getHandle();
  record.cuts[1].viewHandle = OdDbHandle(0xABCDEF);
  const kovDbAnimationPtr read =
    readAnimation(filed([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); }), drawing.db.get());
  ASSERT_EQ(read->sceneCuts().size(), 2);
  EXPECT_EQ(read->sceneCuts()[0].viewId, drawing.view);
  EXPECT_TRUE(read->sceneCuts()[1].viewId.isNull());
}

TEST_F(AnimationFiling, readTracksAreConnectedToTheAnimationsRecalculation)
{
  kovFiledAnimation record = threeTrackAnimation();
  record.tracks[1].entityUniqueName = QStringLiteral("Tree"); // a spawned object walks by speed
  record.tracks[1].items[0].durationByAnimationSpeed = true;
  const kovDbAnimationPtr read = readAnimation(filed([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); }));
  ASSERT_EQ(read->constTracks()[1]->trackTypeIdentifier(), QStringLiteral("SpawnedObject"));
  kovAnimationItem& walk = read->constTracks()[1]->elementAt(0);
  walk.setValue(4000, QVariantList { 20.0, 0.0, 1.8 });
  EXPECT_NE(walk.values().lastKey(), 4000) << "moving the far point re-timed the walk";
  kovAnimationItem& fixed = read->constTracks()[0]->elementAt(0);
  fixed.setValue(4000, QVariantList { 20.0, 0.0, 1.8 });
  EXPECT_EQ(fixed.values().lastKey(), 4000) << "a camera keeps its times";
}

} // namespace
