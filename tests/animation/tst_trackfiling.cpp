// A track's filing inside its animation: what it writes, byte for byte
// against an independent writer of the layout; what it reads from every
// older layout; and how it refuses damaged data.

#include "kovAllocationLimit.h"
#include "kovAnimationDbFixture.h"
#include "kovFilingCompare.h"
#include "kovFilingSamples.h"
#include "kovLegacyFiling.h"
#include "kovSampleDrawing.h"

#include "animation/kovKeyframeCodec.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbMemoryFiler.h"
#include "Rx/OdError.h"

#include <QDataStream>

#include <functional>

namespace {

using Bytes = std::vector<OdUInt8>;

Bytes bytesOf(const OdDbMemoryFiler& filer)
{
  return Bytes(filer.data(), filer.data() + filer.size());
}

Bytes filed(const std::function<void(OdDbDwgFiler*)>& write, OdDbDatabase* db = nullptr)
{
  OdDbMemoryFiler filer(db);
  write(&filer);
  return bytesOf(filer);
}

// Reads bytes into a new track; raises what the reader raises, and insists
// that the reader took every byte.
kovAnimationTrackPtr readTrack(const Bytes& bytes, OdDbDatabase* db = nullptr)
{
  OdDbMemoryFiler filer(db);
  filer.setExternalBuffer(bytes.data(), bytes.size());
  kovAnimationTrackPtr track(new kovAnimationTrack);
  EXPECT_EQ(track->dwgInFields(&filer), eOk);
  EXPECT_EQ(filer.bytesLeft(), 0u);
  return track;
}

// The error a read of bytes raises; eOk when it reads.
OdError readError(const Bytes& bytes, OdDbDatabase* db = nullptr)
{
  OdDbMemoryFiler filer(db);
  filer.setExternalBuffer(bytes.data(), bytes.size());
  kovAnimationTrack track;
  try {
    track.dwgInFields(&filer);
  } catch (const OdError& error) {
    return error;
  }
  return OdError(eOk);
}

std::string message(const OdError& error)
{
  return error.description().toUtf8();
}

// A track with a value in every field, none of them at its default.
kovFiledTrack fullTrack()
{
  kovFiledTrack track;
  track.name = QString::fromUtf8("Fl\xC3\xBCgel \xF0\x9F\x9A\x81");
  track.description = QStringLiteral("over the roof");
  track.entityUniqueName = QStringLiteral("Camera");
  track.startMillisecond = -250;
  kovFiledItem item;
  item.paramsType = kovAnimationItem::Text;
  item.animationType = kovAnimationItem::CustomParameter;
  item.customParameterName = QStringLiteral("Sky Sequence");
  item.faceDirection = true;
  item.durationByAnimationSpeed = false;
  item.isFactoryParameter = true;
  item.minValue = -0.0;
  item.maxValue = 12.5;
  item.decimals = 7;
  item.valueList = QStringList { QStringLiteral("Cirrus"), QStringLiteral("Rainy") };
  item.keyframes = { { INT_MIN, QStringLiteral("Rainy") }, { 0, QStringLiteral("Cirrus") } };
  track.items.push_back(item);
  kovFiledItem path;
  path.animationType = kovAnimationItem::LocationBySpline;
  path.faceDirection = true;
  path.durationByAnimationSpeed = false;
  path.keyframes = { { 10, QVariantList { 1.0, 2.0, 3.0, 0.0, 0.0, 0.0 } } };
  track.items.push_back(path);
  return track;
}

class TrackFiling : public kovAnimationDbFixture {};

TEST_F(TrackFiling, randomTracksWriteTheDocumentedBytesAndReadBackUnchanged)
{
  std::mt19937 rng(20240611);
  for (int round = 0; round < 300; ++round) {
    const kovFiledTrack record = kovSamples::track(rng);
    const kovAnimationTrackPtr track = kovSamples::makeTrack(record);
    const Bytes written = filed([&](OdDbDwgFiler* f) { track->dwgOutFields(f); });
    ASSERT_EQ(written, filed([&](OdDbDwgFiler* f) { kovWriteTrackV113(f, record); })) << "round " << round;
    const kovAnimationTrackPtr read = readTrack(written);
    ASSERT_EQ(kovSamples::trackDifference(*read, record), "") << "round " << round;
  }
}

TEST_F(TrackFiling, readItemsBelongToTheReadingTrack)
{
  const kovAnimationTrackPtr read = readTrack(filed([](OdDbDwgFiler* f) { kovWriteTrackV113(f, fullTrack()); }));
  for (int i = 0; i < read->numElements(); ++i)
    EXPECT_EQ(read->elementAt(i).parentTrack(), read.get());
  int reported = -1;
  QObject::connect(read.get(), &kovAnimationTrack::onTrackItemChanged,
                   [&reported](kovAnimationTrack*, int index) { reported = index; });
  read->elementAt(1).setValue(20, QVariantList { 0.0, 0.0, 0.0, 0.0, 0.0, 0.0 });
  EXPECT_EQ(reported, 1);
}

TEST_F(TrackFiling, trackWithoutItemsTemplateOrBlockFilesTheBareMinimum)
{
  kovAnimationTrack track;
  track.setName(QStringLiteral("T"));
  track.setStartMillisecond(-2);
  const Bytes expected { 0x71, 0, 0, 0,                            // version 113
                         1, 0, 0, 0, 'T', 0,                        // name
                         0, 0, 0, 0,                                // description
                         0, 0, 0, 0, 0, 0, 0, 0,                    // no entity
                         0, 0, 0, 0,                                // unique name
                         0xFE, 0xFF, 0xFF, 0xFF,                    // start -2
                         0, 0, 0, 0,                                // no items
                         0, 0, 0, 0,                                // no template
                         0 };                                       // no block
  EXPECT_EQ(filed([&](OdDbDwgFiler* f) { track.dwgOutFields(f); }), expected);
}

TEST_F(TrackFiling, templateOfABlockReferenceKindIsNotFiled)
{
  kovAnimationTrack track;
  track.setTemplate(QStringLiteral("Chair"), OdDbBlockReference::createObject());
  const Bytes bytes = filed([&](OdDbDwgFiler* f) { track.dwgOutFields(f); });
  const Bytes tail(bytes.end() - 5, bytes.end());
  EXPECT_EQ(tail, Bytes({ 0, 0, 0, 0, 0 })) << "an empty template name and no block";
  EXPECT_TRUE(readTrack(bytes)->templateObject().isNull());
}

TEST_F(TrackFiling, olderLayoutsReadWithTheDefaultsOfWhatTheyLack)
{
  const kovFiledTrack record = fullTrack();
  for (OdInt32 version : { 101, 102, 103, 104, 105, 109, 110, 111, 112, 113 }) {
    const kovAnimationTrackPtr read =
      readTrack(filed([&](OdDbDwgFiler* f) { kovWriteTrack(f, record, version); }));
    EXPECT_EQ(kovSamples::trackDifference(*read, record, version), "") << "version " << version;
  }
}

TEST_F(TrackFiling, version101ItemsKeepTheItemDefaults)
{
  const kovAnimationTrackPtr read = readTrack(filed([](OdDbDwgFiler* f) { kovWriteTrackV101(f, fullTrack()); }));
  ASSERT_EQ(read->numElements(), 2);
  const kovAnimationItem& item = read->elementAt(0);
  EXPECT_FALSE(item.faceDirection());
  EXPECT_TRUE(item.durationByAnimationSpeed());
  EXPECT_FALSE(item.isFactoryParameter());
  EXPECT_EQ(item.minValue(), -999999.0);
  EXPECT_EQ(item.maxValue(), 999999.0);
  EXPECT_EQ(item.decimals(), 3);
  EXPECT_TRUE(item.valueList().isEmpty());
  EXPECT_EQ(item.customParameterName(), QStringLiteral("Sky Sequence"));
  EXPECT_EQ(item.values().size(), 2);
}

TEST_F(TrackFiling, newerLayoutVersionReadsAsTheCurrentOne)
{
  const kovFiledTrack record = fullTrack();
  const kovAnimationTrackPtr read = readTrack(filed([&](OdDbDwgFiler* f) { kovWriteTrackAs(f, record, 200); }));
  EXPECT_EQ(kovSamples::trackDifference(*read, record), "");
}

TEST_F(TrackFiling, blockReferenceAndEntityResolveInTheDrawing)
{
  const kovSampleDrawing drawing = kovBuildSampleDrawing();
  kovFiledTrack record = fullTrack();
  record.entityHandle = drawing.light.getHandle();
  record.hasBlock = true;
  record.blockHandle = drawing.chairRef.getHandle();
  record.blockMatrix[0][3] = 5.0;
  record.blockMatrix[2][2] = -1.0;
  const Bytes bytes = filed([&](OdDbDwgFiler* f) { kovWriteTrackV113(f, record); });
  const kovAnimationTrackPtr read = readTrack(bytes, drawing.db.get());
  EXPECT_EQ(read->entityId(), drawing.light);
  EXPECT_EQ(read->blockId(), drawing.chairRef);
  EXPECT_EQ(kovSamples::trackDifference(*read, record), "");
  EXPECT_EQ(filed([&](OdDbDwgFiler* f) { read->dwgOutFields(f); }, drawing.db.get()), bytes);

  const kovAnimationTrackPtr alone = readTrack(bytes);
  EXPECT_TRUE(alone->entityId().isNull()) << "without a drawing no handle resolves";
  EXPECT_TRUE(alone->blockId().isNull());
}

TEST_F(TrackFiling, unknownHandlesReadAsNoObject)
{
  const kovSampleDrawing drawing = kovBuildSampleDrawing();
  kovFiledTrack record = fullTrack();
  record.entityHandle = OdDbHandle(0x7FFFFF);
  record.hasBlock = true;
  record.blockHandle = drawing.erased.getHandle() + 0x100000;
  const kovAnimationTrackPtr read = readTrack(filed([&](OdDbDwgFiler* f) { kovWriteTrackV113(f, record); }),
                                              drawing.db.get());
  EXPECT_TRUE(read->entityId().isNull());
  EXPECT_TRUE(read->blockId().isNull());
  EXPECT_FALSE(drawing.db->getOdDbObjectId(OdDbHandle(0x7FFFFF)).isValid()) << "reading creates no ids";
}

TEST_F(TrackFiling, olderBlockHandleNamesADefinitionThatGetsANewReference)
{
  const kovSampleDrawing drawing = kovBuildSampleDrawing();
  for (OdInt32 version : { 104, 105, 109 }) {
    kovFiledTrack record = fullTrack();
    record.hasBlock = true;
    record.blockHandle = drawing.chairBlock.getHandle();
    record.blockMatrix[1][3] = 7.5;
    const kovAnimationTrackPtr read =
      readTrack(filed([&](OdDbDwgFiler* f) { kovWriteTrack(f, record, version); }), drawing.db.get());
    kovDbTempBlockReferencePtr reference = kovDbTempBlockReference::cast(read->blockId().openObject().get());
    ASSERT_FALSE(reference.isNull()) << "version " << version;
    EXPECT_EQ(reference->blockTableRecord(), drawing.chairBlock);
    EXPECT_EQ(reference->ownerId(), drawing.db->getModelSpaceId());
    EXPECT_EQ(reference->visibility(), OdDb::kVisible);
    EXPECT_EQ(reference->blockTransform().entry[1][3], 7.5);
    EXPECT_EQ(read->blockMatrix().entry[1][3], 7.5);
  }
}

TEST_F(TrackFiling, layoutsBeforeTheBlockFlagMakeTheSpawnedObjectsBlockAnew)
{
  const kovSampleDrawing drawing = kovBuildSampleDrawing();
  kovFiledTrack record = fullTrack();
  record.entityUniqueName = QStringLiteral("Chair");
  const kovAnimationTrackPtr read =
    readTrack(filed([&](OdDbDwgFiler* f) { kovWriteTrackV103(f, record); }), drawing.db.get());
  OdDbBlockReferencePtr reference = OdDbBlockReference::cast(read->blockId().openObject().get());
  ASSERT_FALSE(reference.isNull());
  EXPECT_EQ(reference->blockTableRecord(), drawing.chairBlock);
}

TEST_F(TrackFiling, templateObjectIsCreatedByItsClassAndReadsItsOwnFields)
{
  kovFiledTrack record = fullTrack();
  record.templateName = QStringLiteral("Tree \xF0\x9F\x8C\xB3");
  OdDbSplinePtr spline = OdDbSpline::createObject();
  spline->setFitData({ OdGePoint3d(0, 0, 0), OdGePoint3d(1, 1, 0), OdGePoint3d(2, 0, 1) }, 3, 0.0,
                     OdGeVector3d(1, 0, 0), OdGeVector3d(1, 0, 0));
  record.templateObject = OdDbObjectPtr(spline.get());
  for (OdInt32 version : { 103, 105, 113 }) {
    const kovAnimationTrackPtr read = readTrack(filed([&](OdDbDwgFiler* f) { kovWriteTrack(f, record, version); }));
    EXPECT_EQ(kovSamples::trackDifference(*read, record, version), "") << "version " << version;
    EXPECT_TRUE(OdDbSpline::cast(read->templateObject().get()).get()) << "version " << version;
  }
}

// Rewrites the template class name of a filed track with one template.
Bytes withTemplateClass(const OdString& className)
{
  kovFiledTrack record;
  record.name = QStringLiteral("Spawner");
  record.templateName = QStringLiteral("Tree");
  record.templateObject = OdDbObjectPtr(OdDbSpline::createObject().get());
  OdDbMemoryFiler filer;
  kovWriteTrackV101(&filer, record); // everything up to the template
  filer.wrString(odFromQString(record.templateName));
  filer.wrString(className);
  record.templateObject->dwgOutFields(&filer);
  filer.wrBool(false);
  Bytes bytes = bytesOf(filer);
  bytes[0] = 113;
  return bytes;
}

TEST_F(TrackFiling, templateOfAnUnknownOrForeignClassIsRefusedNamingTheTrack)
{
  ASSERT_EQ(readError(withTemplateClass(OdString(L"OdDbSpline"))).code(), eOk);
  const OdError unknown = readError(withTemplateClass(OdString(L"kovNoSuchClass")));
  EXPECT_NE(unknown.code(), eOk);
  EXPECT_NE(message(unknown).find("Spawner"), std::string::npos) << message(unknown);
  EXPECT_NE(message(unknown).find("kovNoSuchClass"), std::string::npos) << message(unknown);
  const OdError foreign = readError(withTemplateClass(OdString(L"OdDbMemoryFiler")));
  EXPECT_EQ(foreign.code(), eNotThatKindOfClass);
  EXPECT_NE(message(foreign).find("Spawner"), std::string::npos) << message(foreign);
}

} // namespace
