// Initialising the database classes (it nests), object ids, the open/close
// model, erasing, and the database's bookkeeping.

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbModule.h"
#include "Db/OdDbViewTable.h"
#include "Db/OdDbViewTableRecord.h"
#include "Rx/OdRxDictionary.h"
#include "kovChecks.h"
#include "kovDbFixture.h"
#include "kovSampleDrawing.h"


namespace {

class DbObjects : public kovDbFixture {
protected:
  // A closed entity in model space; the raw pointer stays valid while db lives.
  OdDbLight* addClosedEntity(OdDbObjectId& id)
  {
    OdDbLightPtr entity = OdDbLight::createObject();
    OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    id = modelSpace->appendOdDbEntity(entity);
    return entity.get();
  }
};

TEST(DbHandle, PrintsAndParsesUpperCaseHexAndNullsMalformedText)
{
  const struct {
    OdUInt64 value;
    const OdChar* text;
  } cases[] = { { 0, L"0" }, { 0x1A, L"1A" }, { 0x10, L"10" }, { 0xFFFFFFFFFFFFFFFFull, L"FFFFFFFFFFFFFFFF" } };
  for (const auto& c : cases) {
    EXPECT_EQ(OdDbHandle(c.value).ascii(), OdString(c.text));
    EXPECT_EQ(static_cast<OdUInt64>(OdDbHandle(OdString(c.text))), c.value);
  }
  EXPECT_EQ(static_cast<OdUInt64>(OdDbHandle(OdString(L"ff"))), 0xFFu);
  for (const OdChar* text : { L"", L"G1", L"-1", L"1 ", L"0x1A", L"10000000000000000" })
    EXPECT_TRUE(OdDbHandle(OdString(text)).isNull()) << OdString(text).toUtf8();
}

TEST_F(DbObjects, ClosedObjectRefusesReadAndWrite)
{
  OdDbObjectId id;
  OdDbLight* closed = addClosedEntity(id);
  EXPECT_EQ(raisedCode([&] { closed->assertReadEnabled(); }), eNotOpenForRead);
  EXPECT_EQ(raisedCode([&] { closed->assertWriteEnabled(); }), eNotOpenForWrite);
  EXPECT_EQ(raisedCode([&] { closed->colorIndex(); }), eNotOpenForRead);
  EXPECT_EQ(raisedCode([&] { closed->upgradeOpen(); }), eNotOpenForRead);
  EXPECT_EQ(closed->erase(), eNotOpenForWrite);
}

TEST_F(DbObjects, ReadOpenRefusesWriteUntilUpgraded)
{
  OdDbObjectId id;
  addClosedEntity(id);
  OdDbEntityPtr entity = id.safeOpenObject();
  EXPECT_TRUE(entity->isReadEnabled());
  EXPECT_FALSE(entity->isWriteEnabled());
  EXPECT_EQ(raisedCode([&] { entity->setColorIndex(5); }), eNotOpenForWrite);
  EXPECT_EQ(entity->erase(), eNotOpenForWrite);
  entity->upgradeOpen();
  EXPECT_EQ(entity->setColorIndex(5), eOk);
  entity->downgradeOpen();
  EXPECT_FALSE(entity->isWriteEnabled());
  EXPECT_EQ(entity->colorIndex(), 5);

  // Opening as the wrong class raises and leaves the object closed.
  OdDbObjectId tableId = db->getBlockTableId();
  EXPECT_EQ(raisedCode([&] { OdDbEntityPtr e = tableId.safeOpenObject(OdDb::kForWrite); }), eNotThatKindOfClass);
  OdDbObjectPtr table = tableId.openObject();
  EXPECT_FALSE(table->isWriteEnabled());
}

TEST_F(DbObjects, ErasedObjectsOpenOnlyOnRequest)
{
  OdDbObjectId id;
  addClosedEntity(id);
  {
    OdDbEntityPtr entity = id.safeOpenObject(OdDb::kForWrite);
    EXPECT_EQ(entity->erase(), eOk);
    EXPECT_EQ(entity->erase(), eWasErased);
    EXPECT_TRUE(entity->isErased());
  }
  EXPECT_TRUE(id.isErased());
  EXPECT_FALSE(id.isValid());
  EXPECT_TRUE(id.openObject().isNull());
  OdDbObjectPtr object;
  EXPECT_EQ(id.openObject(object), eWasErased);
  EXPECT_EQ(raisedCode([&] { id.safeOpenObject(); }), eWasErased);

  OdDbObjectPtr erased = id.openObject(OdDb::kForWrite, true);
  ASSERT_FALSE(erased.isNull());
  EXPECT_EQ(erased->erase(false), eOk);
  EXPECT_EQ(erased->erase(false), eWasNotErased);
  EXPECT_TRUE(id.isValid());
}

TEST_F(DbObjects, SymbolTableKeepsNamesUnique)
{
  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
  OdDbBlockTableRecordPtr chair = OdDbBlockTableRecord::createObject();
  chair->setName(OdString(L"Chair"));
  const OdDbObjectId chairId = blocks->add(chair);
  EXPECT_EQ(chair->ownerId(), db->getBlockTableId());
  EXPECT_TRUE(blocks->has(OdString(L"chair")));
  EXPECT_TRUE(blocks->has(chairId));

  OdDbBlockTableRecordPtr again = OdDbBlockTableRecord::createObject();
  again->setName(OdString(L"CHAIR"));
  EXPECT_EQ(raisedCode([&] { blocks->add(again); }), eDuplicateKey);
  OdDbBlockTableRecordPtr unnamed = OdDbBlockTableRecord::createObject();
  EXPECT_EQ(raisedCode([&] { blocks->add(unnamed); }), eInvalidInput);
  OdDbViewTableRecordPtr view = OdDbViewTableRecord::createObject();
  view->setName(OdString(L"View"));
  EXPECT_EQ(raisedCode([&] { blocks->add(view); }), eWrongObjectType);

  EXPECT_EQ(chair->setName(OdString(L"*Model_Space")), eDuplicateKey);
  EXPECT_EQ(chair->setName(OdString()), eInvalidInput);
  EXPECT_EQ(chair->setName(OdString(L"Armchair")), eOk);
  EXPECT_EQ(blocks->getAt(OdString(L"Armchair")), chairId);

  std::vector<OdString> names;
  for (OdDbSymbolTableIteratorPtr it = blocks->newIterator(); !it->done(); it->step())
    names.push_back(it->getRecord()->getName());
  EXPECT_EQ(names, (std::vector<OdString> { OdString(L"*Model_Space"), OdString(L"Armchair") }));

  EXPECT_EQ(chair->erase(), eOk);
  EXPECT_TRUE(blocks->getAt(OdString(L"Armchair")).isNull());
  EXPECT_EQ(blocks->getAt(OdString(L"Armchair"), true), chairId);
}

TEST_F(DbObjects, AppendingSetsOwnerAndRefusesAnotherBlocksEntity)
{
  OdDbObjectId id;
  addClosedEntity(id);
  EXPECT_EQ(id.safeOpenObject()->ownerId(), db->getModelSpaceId());

  OdDbBlockTableRecordPtr block = kovAddBlock(db, OdString(L"B")).safeOpenObject(OdDb::kForWrite);
  OdDbEntityPtr owned = id.safeOpenObject();
  EXPECT_EQ(raisedCode([&] { block->appendOdDbEntity(owned); }), eAlreadyInDb);

  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  EXPECT_EQ(modelSpace->appendOdDbEntity(owned), id);
  int count = 0;
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(); !it->done(); it->step())
    ++count;
  EXPECT_EQ(count, 1) << "appending an entity twice lists it once";

  OdDbBlockTableRecordPtr freeBlock = OdDbBlockTableRecord::createObject();
  EXPECT_EQ(raisedCode([&] { freeBlock->appendOdDbEntity(OdDbLight::createObject()); }), eNoDatabase);
}

} // namespace

namespace {

TEST(DbModule, InitializeNestsAndUninitializeBalances)
{
  ASSERT_FALSE(odIsInitialized());
  EXPECT_EQ(OdDbEntity::desc(), nullptr);
  odInitialize();
  odInitialize();
  odUninitialize();
  EXPECT_TRUE(odIsInitialized());
  EXPECT_NE(OdDbEntity::desc(), nullptr) << "still registered after the inner uninitialize";
  odUninitialize();
  EXPECT_FALSE(odIsInitialized());
  EXPECT_EQ(OdDbEntity::desc(), nullptr);
  EXPECT_FALSE(odrxClassDictionary()->has(OdString(L"OdDbEntity")));
  EXPECT_EQ(raisedCode([] { odUninitialize(); }), eNotInitializedYet);
}

} // namespace
