// Committed bytes of every track and entity layout (tests/data/filing): what
// drawings of each version hold must keep reading to the same values, and
// today's writer must keep writing the current layout byte for byte.
//
// The files are written once by the disabled test writeGoldenFiles (see
// tests/data/filing/README.md); no test here ever rewrites them.

#include "kovAnimationDbFixture.h"
#include "kovAnimationDrawing.h"
#include "kovFilingCompare.h"
#include "kovLegacyFiling.h"

#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"

#include <QFile>

#include <functional>

namespace {

using Bytes = std::vector<OdUInt8>;
using Writer = std::function<void(OdDbDwgFiler*)>;

QString goldenPath(const char* name)
{
  return QStringLiteral(KOV_TEST_DATA_DIR "/filing/") + QString::fromUtf8(name);
}

Bytes golden(const char* name)
{
  QFile file(goldenPath(name));
  if (!file.open(QIODevice::ReadOnly)) {
    ADD_FAILURE() << "missing " << name;
    return Bytes();
  }
  const QByteArray bytes = file.readAll();
  return Bytes(bytes.begin(), bytes.end());
}

Bytes filed(const Writer& write)
{
  OdDbMemoryFiler filer;
  write(&filer);
  return Bytes(filer.data(), filer.data() + filer.size());
}

// Every field away from its default, texts beyond the basic plane, and the
// doubles that only survive bit for bit.
kovFiledTrack goldenTrack(bool withBlock)
{
  kovFiledTrack track;
  track.name = QString::fromUtf8("Dolly \xF0\x9F\x8E\xA5");
  track.description = QStringLiteral("along the facade");
  track.entityUniqueName = QStringLiteral("Camera");
  track.startMillisecond = 1500;
  kovFiledItem path;
  path.animationType = kovAnimationItem::LocationBySpline;
  path.faceDirection = true;
  path.durationByAnimationSpeed = false;
  path.keyframes = { { INT_MIN, QVariantList { -0.0, 1.0, 2.0, 0.0, 0.0, 0.0 } },
                     { 0, QVariantList { 3.0, std::numeric_limits<double>::infinity(), 1.8, 1.0, 0.0, 0.0 } },
                     { INT_MAX, QVariantList { std::numeric_limits<double>::quiet_NaN(), 4.0, 1.8, 0.0, 0.0, 0.0 } } };
  kovFiledItem fov;
  fov.animationType = kovAnimationItem::CustomParameter;
  fov.customParameterName = QStringLiteral("Fov");
  fov.isFactoryParameter = true;
  fov.minValue = 1;
  fov.maxValue = 179;
  fov.decimals = 2;
  fov.keyframes = { { 250, 45.5 } };
  kovFiledItem sky;
  sky.animationType = kovAnimationItem::CustomParameter;
  sky.paramsType = kovAnimationItem::Text;
  sky.customParameterName = QStringLiteral("Sky Sequence");
  sky.isFactoryParameter = true;
  sky.minValue = 0;
  sky.maxValue = 0;
  sky.decimals = 0;
  sky.valueList = QStringList { QStringLiteral("Cirrus"), QString::fromUtf8("R\xC3\xA4iny \xF0\x9F\x8C\xA7") };
  sky.keyframes = { { 0, QString::fromUtf8("R\xC3\xA4iny \xF0\x9F\x8C\xA7") } };
  kovFiledItem lamp;
  lamp.animationType = kovAnimationItem::CustomParameter;
  lamp.paramsType = kovAnimationItem::OnOff;
  lamp.customParameterName = QStringLiteral("Visibility");
  lamp.keyframes = { { 10, true }, { 20, false } };
  kovFiledItem target;
  target.animationType = kovAnimationItem::RotationToEntity;
  target.keyframes = { { 5, QVariantList { 1.0, 2.0, 3.0, QStringLiteral("Chair") } } };
  track.items = { path, fov, sky, lamp, target, kovFiledItem() };
  track.templateName = QStringLiteral("Tree");
  OdDbSplinePtr spline = OdDbSpline::createObject();
  spline->setFitData({ OdGePoint3d(0, 0, 0), OdGePoint3d(1, 2, 0), OdGePoint3d(3, 3, 1) }, 3, 0.0,
                     OdGeVector3d(1, 0, 0), OdGeVector3d(0, 1, 0));
  track.templateObject = OdDbObjectPtr(spline.get());
  track.hasBlock = withBlock;
  track.blockHandle = OdDbHandle(0x2A);
  track.blockMatrix[0][3] = 12.5;
  track.blockMatrix[1][3] = -3.0;
  track.blockMatrix[0][0] = 2.0;
  return track;
}

kovFiledAnimation goldenAnimation()
{
  kovFiledAnimation animation;
  animation.colorIndex = 5;
  animation.name = QString::fromUtf8("Tour \xF0\x9F\x8F\xA0");
  animation.description = QStringLiteral("for the client");
  animation.selectedTrackIndex = 1;
  animation.selectedElementIndex = 2;
  animation.currentPositionMs = 4321;
  kovFiledTrack environment;
  environment.name = QStringLiteral("Environment");
  environment.entityUniqueName = QStringLiteral("Environment");
  animation.tracks = { goldenTrack(false), environment, kovFiledTrack() };
  kovFiledCut first;
  first.trackIndex = 0;
  first.name = QStringLiteral("Opening");
  first.startMs = 0;
  first.endMs = 8000;
  first.imageWidth = 1280;
  first.imageHeight = 720;
  first.frameRate = 30;
  first.encoding = 2;
  first.outputFormat = 0;
  first.quality = 2;
  first.stillImage = false;
  first.pathTracing = true;
  first.maxIterations = 120;
  kovFiledCut stray = first;
  stray.trackIndex = 7;
  stray.name = QStringLiteral("Stray");
  stray.stillImage = true;
  stray.maxIterations = 9;
  animation.cuts = { first, stray };
  animation.gizmosHidden = true;
  return animation;
}

struct Golden {
  const char* file;
  OdInt32 version;
  Writer write;
};

std::vector<Golden> trackGoldens()
{
  return { { "track_v101.bin", 101, [](OdDbDwgFiler* f) { kovWriteTrackV101(f, goldenTrack(true)); } },
           { "track_v105.bin", 105, [](OdDbDwgFiler* f) { kovWriteTrackV105(f, goldenTrack(true)); } },
           { "track_v110.bin", 110, [](OdDbDwgFiler* f) { kovWriteTrackV110(f, goldenTrack(true)); } },
           { "track_v113.bin", 113, [](OdDbDwgFiler* f) { kovWriteTrackV113(f, goldenTrack(false)); } } };
}

std::vector<Golden> animationGoldens()
{
  return { { "animation_v106.bin", 106, [](OdDbDwgFiler* f) { kovWriteAnimationV106(f, goldenAnimation()); } },
           { "animation_v107.bin", 107, [](OdDbDwgFiler* f) { kovWriteAnimationV107(f, goldenAnimation()); } },
           { "animation_v110.bin", 110, [](OdDbDwgFiler* f) { kovWriteAnimation(f, goldenAnimation(), 110); } },
           { "animation_v112.bin", 112, [](OdDbDwgFiler* f) { kovWriteAnimationV112(f, goldenAnimation()); } },
           { "animation_v113.bin", 113, [](OdDbDwgFiler* f) { kovWriteAnimationV113(f, goldenAnimation()); } } };
}

class FilingGolden : public kovAnimationDbFixture {};

TEST_F(FilingGolden, committedTracksReadToTheirValuesAndDefaults)
{
  for (const Golden& g : trackGoldens()) {
    const Bytes bytes = golden(g.file);
    OdDbMemoryFiler filer;
    filer.setExternalBuffer(bytes.data(), bytes.size());
    kovAnimationTrack track;
    ASSERT_EQ(track.dwgInFields(&filer), eOk) << g.file;
    EXPECT_EQ(filer.bytesLeft(), 0u) << g.file;
    kovFiledTrack expected = goldenTrack(g.version >= 104 && g.version < 113);
    EXPECT_EQ(kovSamples::trackDifference(track, expected, g.version), "") << g.file;
    EXPECT_TRUE(track.blockId().isNull()) << g.file << ": no drawing, so no block";
  }
}

TEST_F(FilingGolden, version101TrackKeepsTheItemDefaults)
{
  const Bytes bytes = golden("track_v101.bin");
  OdDbMemoryFiler filer;
  filer.setExternalBuffer(bytes.data(), bytes.size());
  kovAnimationTrack track;
  ASSERT_EQ(track.dwgInFields(&filer), eOk);
  ASSERT_EQ(track.numElements(), 6);
  for (const kovAnimationItem& item : track.animationElements()) {
    EXPECT_FALSE(item.faceDirection());
    EXPECT_TRUE(item.durationByAnimationSpeed());
    EXPECT_EQ(item.minValue(), -999999.0);
    EXPECT_EQ(item.maxValue(), 999999.0);
    EXPECT_EQ(item.decimals(), 3);
    EXPECT_FALSE(item.isFactoryParameter());
  }
  EXPECT_TRUE(track.templateName().isEmpty());
}

TEST_F(FilingGolden, committedAnimationsReadToTheirValuesAndDefaults)
{
  for (const Golden& g : animationGoldens()) {
    const Bytes bytes = golden(g.file);
    OdDbMemoryFiler filer;
    filer.setExternalBuffer(bytes.data(), bytes.size());
    kovDbAnimationPtr animation = kovDbAnimation::createObject();
    ASSERT_EQ(animation->dwgInFields(&filer), eOk) << g.file;
    EXPECT_EQ(filer.bytesLeft(), 0u) << g.file;
    EXPECT_EQ(kovSamples::animationDifference(*animation, goldenAnimation(), g.version), "") << g.file;
  }
}

TEST_F(FilingGolden, version107CutsHaveNoNameNoIterationsAndNoPathTracing)
{
  const Bytes bytes = golden("animation_v107.bin");
  OdDbMemoryFiler filer;
  filer.setExternalBuffer(bytes.data(), bytes.size());
  kovDbAnimationPtr opened = kovDbAnimation::createObject();
  ASSERT_EQ(opened->dwgInFields(&filer), eOk);
  const kovDbAnimation& animation = *opened;
  ASSERT_EQ(animation.sceneCuts().size(), 2);
  for (const kovCameraCut& cut : animation.sceneCuts()) {
    EXPECT_EQ(cut.name, QStringLiteral("Scene"));
    EXPECT_EQ(cut.maxIterations, 50);
    EXPECT_FALSE(cut.pathTracing);
    EXPECT_EQ(cut.track.get(), animation.constTracks().front().get()) << "index 0, and 7 falls back to 0";
  }
  EXPECT_FALSE(animation.areGizmosHidden());
}

TEST_F(FilingGolden, todaysWriterReproducesTheCurrentFilesByteForByte)
{
  const Bytes track = golden("track_v113.bin");
  OdDbMemoryFiler in;
  in.setExternalBuffer(track.data(), track.size());
  kovAnimationTrack read;
  ASSERT_EQ(read.dwgInFields(&in), eOk);
  EXPECT_EQ(filed([&](OdDbDwgFiler* f) { read.dwgOutFields(f); }), track);
  EXPECT_EQ(filed([](OdDbDwgFiler* f) { kovWriteTrackV113(f, goldenTrack(false)); }), track);

  kovFiledAnimation record = goldenAnimation();
  record.cuts[1].trackIndex = 0; // what a stray index reads as
  const Bytes animation = golden("animation_v113.bin");
  in.setExternalBuffer(animation.data(), animation.size());
  kovDbAnimationPtr readAnimation = kovDbAnimation::createObject();
  ASSERT_EQ(readAnimation->dwgInFields(&in), eOk);
  EXPECT_EQ(filed([&](OdDbDwgFiler* f) { readAnimation->dwgOutFields(f); }),
            filed([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); }));
  EXPECT_EQ(filed([](OdDbDwgFiler* f) { kovWriteAnimationV113(f, goldenAnimation()); }), animation);
}

TEST_F(FilingGolden, committedDrawingLoadsWithItsAnimation)
{
  const Bytes bytes = golden("drawing_animation.kdb");
  OdDbDatabasePtr db = OdDbFileReader::readBuffer(bytes.data(), bytes.size(), OdString(L"drawing_animation.kdb"));
  const kovAnimationDrawing expected = kovBuildAnimationDrawing();
  kovDbAnimationPtr animation = db->getOdDbObjectId(expected.animation.getHandle()).safeOpenObject();
  EXPECT_EQ(kovSamples::animationDifference(*animation, expected.record), "");
}

// Writes the files above from the layouts. Run only by hand, after a layout
// change that is meant to be one (see tests/data/filing/README.md).
TEST_F(FilingGolden, DISABLED_writeGoldenFiles)
{
  std::vector<Golden> all = trackGoldens();
  for (const Golden& g : animationGoldens())
    all.push_back(g);
  const kovAnimationDrawing drawing = kovBuildAnimationDrawing();
  all.push_back({ "drawing_animation.kdb", 0, [&](OdDbDwgFiler* f) {
                   const std::vector<OdUInt8> image = OdDbFileWriter::fileImage(drawing.sample.db.get());
                   f->wrBytes(image.data(), OdUInt32(image.size()));
                 } });
  for (const Golden& g : all) {
    const Bytes bytes = filed(g.write);
    QFile file(goldenPath(g.file));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << g.file;
    ASSERT_EQ(file.write(reinterpret_cast<const char*>(bytes.data()), qint64(bytes.size())), qint64(bytes.size()));
  }
}

} // namespace
