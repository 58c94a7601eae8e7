// An animation inside a whole drawing saved to a file and loaded back: its
// references resolve to the loaded objects, its tracks are live, and a
// drawing whose animation is damaged is not loaded at all.

#include "kovAllocationLimit.h"
#include "kovAnimationDbFixture.h"
#include "kovAnimationDrawing.h"
#include "kovFilingCompare.h"

#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbViewTableRecord.h"
#include "Rx/OdError.h"

#include <QTemporaryDir>

#include <algorithm>
#include <functional>

namespace {

class AnimationDrawing : public kovAnimationDbFixture {
protected:
  void SetUp() override
  {
    kovAnimationDbFixture::SetUp();
    ASSERT_TRUE(m_dir.isValid());
    m_drawing = kovBuildAnimationDrawing();
  }

  OdString path(const char* name) const { return odFromQString(m_dir.filePath(QString::fromUtf8(name))); }

  OdDbDatabasePtr saveAndLoad()
  {
    OdDbFileWriter::writeFile(m_drawing.sample.db.get(), path("tour.kdb"));
    return OdDbFileReader::readFile(path("tour.kdb"));
  }

  // The animation's fields as filed, for an image in which they are replaced.
  std::vector<OdUInt8> animationFields(const std::function<void(OdDbDwgFiler*)>& write) const
  {
    OdDbMemoryFiler filer;
    write(&filer);
    return std::vector<OdUInt8>(filer.data(), filer.data() + filer.size());
  }

  // The error loading the image raises; eOk when it loads.
  static OdError loadError(const std::vector<OdUInt8>& image)
  {
    try {
      OdDbDatabasePtr loaded = OdDbFileReader::readBuffer(image.data(), image.size(), OdString(L"tour.kdb"));
      EXPECT_FALSE(loaded.isNull());
    } catch (const OdError& error) {
      return error;
    }
    return OdError(eOk);
  }

  QTemporaryDir m_dir;
  kovAnimationDrawing m_drawing;
};

TEST_F(AnimationDrawing, animationSurvivesSaveAndLoadWithEveryField)
{
  ASSERT_TRUE(m_drawing.record.tracks.back().hasBlock) << "the spawned chair has its block";
  const OdDbDatabasePtr loaded = saveAndLoad();
  EXPECT_EQ(kovCompareDrawings(m_drawing.sample.db.get(), loaded.get()), "");
  const kovDbAnimationPtr opened = loaded->getOdDbObjectId(m_drawing.animation.getHandle()).safeOpenObject();
  const kovDbAnimation* animation = opened.get();
  EXPECT_EQ(kovSamples::animationDifference(*animation, m_drawing.record), "");
}

TEST_F(AnimationDrawing, loadedReferencesResolveToTheLoadedObjects)
{
  const OdDbDatabasePtr loaded = saveAndLoad();
  const kovDbAnimationPtr opened = loaded->getOdDbObjectId(m_drawing.animation.getHandle()).safeOpenObject();
  const kovDbAnimation* animation = opened.get();
  const std::vector<kovAnimationTrackPtr>& tracks = animation->constTracks();
  ASSERT_EQ(tracks.size(), 5u);
  EXPECT_EQ(tracks[0]->trackTypeIdentifier(), QStringLiteral("Camera"));
  EXPECT_EQ(tracks[1]->trackTypeIdentifier(), QStringLiteral("Environment"));
  EXPECT_EQ(tracks[2]->trackTypeIdentifier(), QStringLiteral("Entity"));
  EXPECT_EQ(tracks[3]->trackTypeIdentifier(), QStringLiteral("Object"));
  EXPECT_EQ(tracks[4]->trackTypeIdentifier(), QStringLiteral("SpawnedObject"));

  EXPECT_EQ(tracks[2]->entityId().database(), loaded.get());
  OdDbBlockReferencePtr chair = OdDbBlockReference::cast(tracks[2]->entityId().openObject().get());
  ASSERT_FALSE(chair.isNull());
  EXPECT_EQ(chair->blockTableRecord().getHandle(), m_drawing.sample.chairBlock.getHandle());

  kovDbTempBlockReferencePtr block = kovDbTempBlockReference::cast(tracks[4]->blockId().openObject().get());
  ASSERT_FALSE(block.isNull());
  EXPECT_EQ(block->blockTableRecord().getHandle(), m_drawing.sample.chairBlock.getHandle());
  EXPECT_EQ(block->blockTransform().entry[0][3], 4.0);

  ASSERT_EQ(animation->sceneCuts().size(), 2);
  for (const kovCameraCut& cut : animation->sceneCuts()) {
    EXPECT_EQ(cut.track.get(), tracks[0].get());
    EXPECT_EQ(cut.viewId.database(), loaded.get());
    EXPECT_FALSE(OdDbViewTableRecord::cast(cut.viewId.openObject().get()).isNull());
  }
}

TEST_F(AnimationDrawing, loadedTracksRecalculateWhenASubTrackChanges)
{
  const OdDbDatabasePtr loaded = saveAndLoad();
  kovDbAnimationPtr animation =
    loaded->getOdDbObjectId(m_drawing.animation.getHandle()).safeOpenObject(OdDb::kForWrite);
  kovAnimationItem& walk = animation->editTracks()[3]->elementAt(0);
  ASSERT_EQ(walk.values().keys(), QList<int>({ 0, 3000 }));
  // A library object walks by speed: doubling the path re-times its end.
  walk.setValue(3000, QVariantList { 6.0, 8.0, 0.0 });
  EXPECT_NE(walk.values().lastKey(), 3000);
  EXPECT_EQ(walk.values().size(), 2);
}

TEST_F(AnimationDrawing, cutWhoseViewIsGoneLoadsWithoutAView)
{
  OdDbViewTableRecordPtr view = m_drawing.sample.view.safeOpenObject(OdDb::kForWrite);
  view->erase();
  view.release();
  const OdDbDatabasePtr loaded = saveAndLoad();
  const kovDbAnimationPtr opened = loaded->getOdDbObjectId(m_drawing.animation.getHandle()).safeOpenObject();
  const kovDbAnimation* animation = opened.get();
  ASSERT_EQ(animation->sceneCuts().size(), 2);
  EXPECT_TRUE(animation->sceneCuts()[0].viewId.isNull());
}

TEST_F(AnimationDrawing, drawingWithADamagedAnimationIsNotLoaded)
{
  const std::vector<OdUInt8> image = OdDbFileWriter::fileImage(m_drawing.sample.db.get());
  ASSERT_EQ(loadError(image).code(), eOk);
  kovFiledAnimation record = m_drawing.record;
  record.tracks[1].items[0].keyframes[0].second = QVariant(QStringList { QStringLiteral("x") });
  std::vector<OdUInt8> fields = animationFields([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); });
  // A string list is no keyframe value of a number, but a value the codec
  // accepts: the drawing loads. Then the same with the list's count damaged.
  ASSERT_EQ(loadError(kovReplaceObjectFields(image, m_drawing.animation.getHandle(), fields)).code(), eOk);
  const QByteArray list = kovKeyframeBytes(QStringList { QStringLiteral("x") });
  const auto at = std::search(fields.begin(), fields.end(), list.begin(), list.end());
  ASSERT_NE(at, fields.end());
  at[5] = 0x7f; // the list's count, big-endian after the type id and null flag
  const OdError error = loadError(kovReplaceObjectFields(image, m_drawing.animation.getHandle(), fields));
  const std::string text = error.description().toUtf8();
  EXPECT_NE(error.code(), eOk);
  EXPECT_NE(text.find("tour.kdb"), std::string::npos) << text;
  EXPECT_NE(text.find("Animation \"Tour\""), std::string::npos) << text;
  EXPECT_NE(text.find("Animation track \"Environment\""), std::string::npos) << text;
  EXPECT_NE(text.find("keyframe value at 0 ms is damaged"), std::string::npos) << text;
}

TEST_F(AnimationDrawing, oldAnimationWithABlockDefinitionLoadsWithANewReference)
{
  const std::vector<OdUInt8> image = OdDbFileWriter::fileImage(m_drawing.sample.db.get());
  kovFiledAnimation record = m_drawing.record;
  record.tracks.back().hasBlock = true;
  record.tracks.back().blockHandle = m_drawing.sample.chairBlock.getHandle();
  OdDbMemoryFiler filer;
  filer.wrInt16(256);
  filer.wrInt8(0);
  filer.wrInt32(112);
  for (const QString& text : { record.name, record.description })
    filer.wrString(odFromQString(text));
  for (OdInt32 value : { record.selectedTrackIndex, record.selectedElementIndex, record.currentPositionMs,
                         OdInt32(record.tracks.size()) })
    filer.wrInt32(value);
  for (const kovFiledTrack& track : record.tracks)
    kovWriteTrackV109(&filer, track);
  filer.wrInt32(0);
  const std::vector<OdUInt8> fields(filer.data(), filer.data() + filer.size());
  OdDbDatabasePtr loaded;
  try {
    const std::vector<OdUInt8> old = kovReplaceObjectFields(image, m_drawing.animation.getHandle(), fields);
    loaded = OdDbFileReader::readBuffer(old.data(), old.size(), OdString(L"old.kdb"));
  } catch (const OdError& error) {
    FAIL() << error.description().toUtf8();
  }
  const kovDbAnimationPtr opened = loaded->getOdDbObjectId(m_drawing.animation.getHandle()).safeOpenObject();
  const kovDbAnimation* animation = opened.get();
  kovDbTempBlockReferencePtr block =
    kovDbTempBlockReference::cast(animation->constTracks().back()->blockId().openObject().get());
  ASSERT_FALSE(block.isNull());
  EXPECT_EQ(block->blockTableRecord().getHandle(), m_drawing.sample.chairBlock.getHandle());
  EXPECT_EQ(block->ownerId(), loaded->getModelSpaceId());
}

} // namespace
