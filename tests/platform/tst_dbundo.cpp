// Undo and redo of a drawing's edits: each kind of edit, undone, leaves the
// drawing file byte for byte as it was before it, and redone, as it was after;
// steps are whole, bounded, and the history survives a save.

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbLight.h"
#include "kovDbFixture.h"
#include "kovSampleDrawing.h"

#include <functional>

namespace {

using Image = std::vector<OdUInt8>;

class DbUndo : public kovDbFixture {
protected:
  void SetUp() override
  {
    kovDbFixture::SetUp();
    sample = kovBuildSampleDrawing();
    db = sample.db;
    db->startUndoRecord();
  }
  Image image() { return OdDbFileWriter::fileImage(db); }
  OdDbLightPtr openLight(OdDb::OpenMode mode) { return sample.light.safeOpenObject(mode); }

  kovSampleDrawing sample;
};

struct Edit {
  const char* name;
  std::function<void(kovSampleDrawing&)> apply;
};

void addLight(kovSampleDrawing& drawing)
{
  OdDbLightPtr light = OdDbLight::createObject();
  light->setPosition(OdGePoint3d(7, 8, 9));
  OdDbBlockTableRecordPtr modelSpace = drawing.db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  modelSpace->appendOdDbEntity(light);
}

const Edit kEdits[] = {
  { "modify", [](kovSampleDrawing& d) {
     OdDbLightPtr light = d.light.safeOpenObject(OdDb::kForWrite);
     light->setPosition(OdGePoint3d(1, 2, 3));
     light->setIntensity(4.0);
   } },
  { "modify twice in one step", [](kovSampleDrawing& d) {
     OdDbLight::cast(d.light.safeOpenObject(OdDb::kForWrite).get())->setIntensity(2.0);
     OdDbLight::cast(d.light.safeOpenObject(OdDb::kForWrite).get())->setIntensity(3.0);
   } },
  { "upgrade from read", [](kovSampleDrawing& d) {
     OdDbLightPtr light = d.light.safeOpenObject(OdDb::kForRead);
     light->upgradeOpen();
     light->setIntensity(5.0);
   } },
  { "erase", [](kovSampleDrawing& d) { d.light.safeOpenObject(OdDb::kForWrite)->erase(); } },
  { "unerase", [](kovSampleDrawing& d) { d.erased.safeOpenObject(OdDb::kForWrite, true)->erase(false); } },
  { "create", addLight },
  { "create, then modify the new one and another", [](kovSampleDrawing& d) {
     addLight(d);
     OdDbLight::cast(d.light.safeOpenObject(OdDb::kForWrite).get())->setOn(false);
   } },
};

TEST_F(DbUndo, undoAndRedoGiveTheFilesBeforeAndAfter)
{
  for (const Edit& edit : kEdits) {
    SCOPED_TRACE(edit.name);
    SetUp();
    const Image before = image();
    db->startUndoRecord();
    edit.apply(sample);
    const Image after = image();
    ASSERT_NE(before, after);
    ASSERT_TRUE(db->hasUndo());
    db->undo();
    EXPECT_EQ(image(), before);
    EXPECT_FALSE(db->hasUndo());
    db->redo();
    EXPECT_EQ(image(), after);
    db->undo();
    EXPECT_EQ(image(), before);
    TearDown();
  }
}

TEST_F(DbUndo, anUndoneCreationOpensNothingAndItsHandleIsTakenAgain)
{
  db->startUndoRecord();
  addLight(sample);
  OdDbObjectId created;
  for (OdDbObjectIteratorPtr it = OdDbBlockTableRecordPtr(db->getModelSpaceId().safeOpenObject())->newIterator();
       !it->done(); it->step())
    created = it->objectId();
  db->undo();
  EXPECT_TRUE(created.openObject(OdDb::kForRead).isNull());
  EXPECT_TRUE(created.isErased());
  db->startUndoRecord();
  addLight(sample);
  EXPECT_FALSE(db->hasRedo());
  EXPECT_EQ(db->getOdDbObjectId(created.getHandle()).openObject(OdDb::kForRead).isNull(), false);
}

TEST_F(DbUndo, stepsAreWholeAndTheHistoryIsBounded)
{
  db->setUndoLimit(3);
  for (int i = 1; i <= 5; ++i) {
    db->startUndoRecord();
    openLight(OdDb::kForWrite)->setIntensity(i);
    openLight(OdDb::kForWrite)->setIntensity(i + 0.5);
  }
  // A step with nothing in it is no step.
  db->startUndoRecord();
  db->startUndoRecord();
  std::vector<double> seen;
  while (db->hasUndo()) {
    db->undo();
    seen.push_back(openLight(OdDb::kForRead)->intensity());
  }
  EXPECT_EQ(seen, (std::vector<double> { 4.5, 3.5, 2.5 }));
  db->undo();
  EXPECT_EQ(openLight(OdDb::kForRead)->intensity(), 2.5);
}

TEST_F(DbUndo, aChangeAfterAnUndoDropsTheRedoAndIsAStepOfItsOwn)
{
  db->startUndoRecord();
  openLight(OdDb::kForWrite)->setIntensity(2.0);
  db->undo();
  openLight(OdDb::kForWrite)->setIntensity(3.0);
  EXPECT_FALSE(db->hasRedo());
  db->undo();
  EXPECT_EQ(openLight(OdDb::kForRead)->intensity(), 2.5);
}

TEST_F(DbUndo, disabledRecordingKeepsNothingAndSavingKeepsTheHistory)
{
  db->disableUndoRecording(true);
  openLight(OdDb::kForWrite)->setIntensity(2.0);
  db->disableUndoRecording(false);
  EXPECT_FALSE(db->hasUndo());
  db->startUndoRecord();
  openLight(OdDb::kForWrite)->setIntensity(3.0);
  OdDbFileWriter::fileImage(db);
  ASSERT_TRUE(db->hasUndo());
  EXPECT_GT(db->undoMemoryUsed(), 0u);
  db->undo();
  EXPECT_EQ(openLight(OdDb::kForRead)->intensity(), 2.0);
}

} // namespace
