// Object ids, the open/close model, erasing, and the database's bookkeeping.

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbViewTable.h"
#include "Db/OdDbViewTableRecord.h"
#include "kovDbFixture.h"

#include <unordered_map>

namespace {

// An entity that counts its closes and can refuse to be erased.
class CountingEntity : public OdDbEntity {
  ODDB_DECLARE_MEMBERS(CountingEntity);

public:
  int closes = 0;
  bool refuseErase = false;

protected:
  OdResult subErase(bool) override { return refuseErase ? eNotApplicable : eOk; }
  void subClose() override { ++closes; }
};

ODRX_DEFINE_MEMBERS_EX(CountingEntity, OdDbEntity, DBOBJECT_CONSTR, OdDb::kDHL_CURRENT, OdDb::kMReleaseCurrent, 0,
                       OdString(L"CountingEntity"), OdString::kEmpty, OdString::kEmpty, 0)

typedef OdSmartPtr<CountingEntity> CountingEntityPtr;

class DbObjects : public kovDbFixture {
protected:
  void SetUp() override
  {
    kovDbFixture::SetUp();
    CountingEntity::rxInit();
    db = OdDbDatabase::createObject();
  }
  void TearDown() override
  {
    db = nullptr;
    CountingEntity::rxUninit();
    kovDbFixture::TearDown();
  }

  // A closed entity in model space; the raw pointer stays valid while db lives.
  CountingEntity* addClosedEntity(OdDbObjectId& id)
  {
    CountingEntityPtr entity = CountingEntity::createObject();
    OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    id = modelSpace->appendOdDbEntity(entity);
    return entity.get();
  }

  OdDbDatabasePtr db;
};

template <class Fn>
OdResult raisedCode(Fn fn)
{
  try {
    fn();
  } catch (const OdError& error) {
    return error.code();
  }
  return eOk;
}

TEST(DbHandle, PrintsAndParsesUpperCaseHex)
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
}

TEST(DbHandle, MalformedTextGivesTheNullHandle)
{
  for (const OdChar* text : { L"", L"G1", L"-1", L"1 ", L"0x1A", L"10000000000000000" })
    EXPECT_TRUE(OdDbHandle(OdString(text)).isNull()) << OdString(text).toUtf8();
}

TEST(DbHandle, CountsAndComparesWithNumbers)
{
  OdDbHandle h = 0;
  EXPECT_TRUE(h.isNull());
  EXPECT_EQ(h++, 0u);
  EXPECT_EQ(++h, 2u);
  EXPECT_TRUE(OdDbHandle(1) < OdDbHandle(2));
  EXPECT_FALSE(h.isNull());
}

TEST_F(DbObjects, NewDrawingHasModelSpaceAndTables)
{
  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject();
  EXPECT_EQ(blocks->getAt(OdString(L"*MODEL_SPACE")), db->getModelSpaceId());
  EXPECT_EQ(db->getModelSpaceId().safeOpenObject()->ownerId(), db->getBlockTableId());
  EXPECT_TRUE(db->getViewTableId().objectClass()->isDerivedFrom(OdDbViewTable::desc()));
  EXPECT_GT(db->handseed(), db->getModelSpaceId().getHandle());
  EXPECT_EQ(db->getOdDbObjectId(db->getModelSpaceId().getHandle()), db->getModelSpaceId());
}

TEST_F(DbObjects, ObjectOutsideDatabaseIsReadAndWriteEnabled)
{
  CountingEntityPtr entity = CountingEntity::createObject();
  EXPECT_FALSE(entity->isDBRO());
  EXPECT_TRUE(entity->isReadEnabled());
  EXPECT_TRUE(entity->isWriteEnabled());
  EXPECT_TRUE(entity->objectId().isNull());
  EXPECT_EQ(entity->erase(), eNoDatabase);
}

TEST_F(DbObjects, AddedObjectStaysOpenUntilTheCallerLetsGo)
{
  CountingEntity* raw = nullptr;
  OdDbObjectId id;
  {
    CountingEntityPtr entity = CountingEntity::createObject();
    raw = entity.get();
    id = db->addOdDbObject(entity);
    EXPECT_TRUE(entity->isWriteEnabled());
    EXPECT_EQ(entity->closes, 0);
  }
  EXPECT_FALSE(raw->isReadEnabled());
  EXPECT_EQ(raw->closes, 1);
  EXPECT_EQ(raw->objectId(), id);
}

TEST_F(DbObjects, ObjectNobodyHoldsIsClosedWhenAdded)
{
  auto* raw = new CountingEntity;
  db->addOdDbObject(raw);
  EXPECT_EQ(raw->openMode(), OdDb::kNotOpen);
}

TEST_F(DbObjects, ClosedObjectRefusesReadAndWrite)
{
  OdDbObjectId id;
  CountingEntity* closed = addClosedEntity(id);
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
}

TEST_F(DbObjects, ClosesWhenTheLastOpenerGoes)
{
  OdDbObjectId id;
  CountingEntity* raw = addClosedEntity(id);
  const int closesBefore = raw->closes;
  OdDbObjectPtr first = id.openObject();
  {
    OdDbObjectPtr second = id.openObject(OdDb::kForWrite);
    EXPECT_TRUE(first->isWriteEnabled()) << "opening for write upgrades every opener";
  }
  EXPECT_TRUE(raw->isReadEnabled());
  EXPECT_EQ(raw->closes, closesBefore);
  first = nullptr;
  EXPECT_FALSE(raw->isReadEnabled());
  EXPECT_EQ(raw->closes, closesBefore + 1);
  EXPECT_EQ(raw->numRefs(), 1) << "only the database's reference is left";
}

TEST_F(DbObjects, OpeningAsTheWrongClassRaisesAndLeavesTheObjectClosed)
{
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

TEST_F(DbObjects, RefusingSubEraseKeepsTheObject)
{
  OdDbObjectId id;
  addClosedEntity(id);
  OdSmartPtr<CountingEntity> entity = id.safeOpenObject(OdDb::kForWrite);
  entity->refuseErase = true;
  EXPECT_EQ(entity->erase(), eNotApplicable);
  EXPECT_FALSE(entity->isErased());
  EXPECT_TRUE(id.isValid());
}

TEST_F(DbObjects, NullAndObjectlessIdsSayWhyTheyDoNotOpen)
{
  const OdDbObjectId null;
  OdDbObjectPtr object;
  EXPECT_TRUE(null.openObject().isNull());
  EXPECT_EQ(null.openObject(object), eNullObjectId);
  EXPECT_EQ(raisedCode([&] { null.safeOpenObject(); }), eNullObjectId);
  EXPECT_FALSE(null.isValid());
  EXPECT_EQ(null.database(), nullptr);
  EXPECT_TRUE(null.getHandle().isNull());
  EXPECT_EQ(null.objectClass(), nullptr);

  EXPECT_TRUE(db->getOdDbObjectId(OdDbHandle(0x500)).isNull());
  const OdDbObjectId future = db->getOdDbObjectId(OdDbHandle(0x500), true);
  EXPECT_EQ(future.openObject(object), ePermanentlyErased);
  EXPECT_EQ(raisedCode([&] { future.safeOpenObject(); }), ePermanentlyErased);
  EXPECT_GT(db->handseed(), OdDbHandle(0x500));
  const OdDbObjectId added = db->addOdDbObject(OdDbLight::createObject(), OdDbObjectId::kNull, OdDbHandle(0x500));
  EXPECT_EQ(added, future);
  EXPECT_TRUE(future.isValid());
}

TEST_F(DbObjects, AddingRefusesTakenObjectsAndHandles)
{
  OdDbObjectId id;
  CountingEntity* inDb = addClosedEntity(id);
  EXPECT_EQ(raisedCode([&] { db->addOdDbObject(inDb); }), eAlreadyInDb);
  EXPECT_EQ(raisedCode([&] { db->addOdDbObject(nullptr); }), eNullObjectPointer);
  EXPECT_EQ(raisedCode([&] { db->addOdDbObject(OdDbLight::createObject(), OdDbObjectId::kNull, id.getHandle()); }),
            eDuplicateKey);
}

TEST_F(DbObjects, IdsOfAnotherDatabaseAreRefused)
{
  OdDbDatabasePtr other = OdDbDatabase::createObject();
  OdDbBlockTableRecordPtr otherSpace = other->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  OdDbLightPtr foreign = OdDbLight::createObject();
  otherSpace->appendOdDbEntity(foreign);

  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  EXPECT_EQ(raisedCode([&] { modelSpace->appendOdDbEntity(foreign); }), eWrongDatabase);

  OdDbBlockTableRecordPtr foreignBlock = OdDbBlockTableRecord::createObject();
  foreignBlock->setName(OdString(L"Foreign"));
  OdDbBlockTablePtr otherBlocks = other->getBlockTableId().safeOpenObject(OdDb::kForWrite);
  const OdDbObjectId foreignBlockId = otherBlocks->add(foreignBlock);
  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
  EXPECT_EQ(raisedCode([&] { blocks->add(foreignBlock); }), eWrongDatabase);

  OdDbBlockReferencePtr reference = OdDbBlockReference::createObject();
  modelSpace->appendOdDbEntity(reference);
  EXPECT_EQ(reference->setBlockTableRecord(foreignBlockId), eWrongDatabase);
  EXPECT_EQ(reference->setBlockTableRecord(OdDbObjectId::kNull), eNullObjectId);
  EXPECT_EQ(reference->setBlockTableRecord(db->getViewTableId()), eWrongObjectType);
}

TEST_F(DbObjects, IdsKeyHashMapsAndSortByHandle)
{
  OdDbObjectId a, b;
  addClosedEntity(a);
  addClosedEntity(b);
  std::unordered_map<OdDbObjectId, int> byId { { a, 1 }, { b, 2 } };
  EXPECT_EQ(byId[a], 1);
  EXPECT_EQ(byId[b], 2);
  EXPECT_TRUE(a < b);
  EXPECT_FALSE(b < a);
  EXPECT_TRUE(OdDbObjectId::kNull < a);
}

TEST_F(DbObjects, ObjectsHeldPastTheDatabaseBecomeFreeObjects)
{
  OdDbObjectId id;
  addClosedEntity(id);
  OdDbEntityPtr kept = id.safeOpenObject();
  db = nullptr;
  EXPECT_FALSE(kept->isDBRO());
  EXPECT_TRUE(kept->isWriteEnabled());
  EXPECT_EQ(kept->database(), nullptr);
  EXPECT_EQ(kept->setColorIndex(2), eOk);
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

TEST_F(DbObjects, BlockIteratesItsLiveEntitiesInOrder)
{
  OdDbObjectId a, b, c;
  addClosedEntity(a);
  addClosedEntity(b);
  addClosedEntity(c);
  b.safeOpenObject(OdDb::kForWrite)->erase();
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject();

  std::vector<OdDbObjectId> forward, backward, all;
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(); !it->done(); it->step())
    forward.push_back(it->objectId());
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(false); !it->done(); it->step(false))
    backward.push_back(it->entity()->objectId());
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(true, false); !it->done(); it->step(true, false))
    all.push_back(it->objectId());
  EXPECT_EQ(forward, (std::vector<OdDbObjectId> { a, c }));
  EXPECT_EQ(backward, (std::vector<OdDbObjectId> { c, a }));
  EXPECT_EQ(all, (std::vector<OdDbObjectId> { a, b, c }));
}

TEST_F(DbObjects, AppendingSetsOwnerAndRefusesAnotherBlocksEntity)
{
  OdDbObjectId id;
  addClosedEntity(id);
  EXPECT_EQ(id.safeOpenObject()->ownerId(), db->getModelSpaceId());

  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
  OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::createObject();
  block->setName(OdString(L"B"));
  blocks->add(block);
  OdDbEntityPtr owned = id.safeOpenObject();
  EXPECT_EQ(raisedCode([&] { block->appendOdDbEntity(owned); }), eAlreadyInDb);

  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  EXPECT_EQ(modelSpace->appendOdDbEntity(owned), id);
  int count = 0;
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(); !it->done(); it->step())
    ++count;
  EXPECT_EQ(count, 1) << "appending an entity twice lists it once";

  OdDbBlockTableRecordPtr freeBlock = OdDbBlockTableRecord::createObject();
  EXPECT_EQ(raisedCode([&] { freeBlock->appendOdDbEntity(CountingEntity::createObject()); }), eNoDatabase);
}

TEST_F(DbObjects, EntityTakesTheDatabaseDefaults)
{
  db->setCurrentColorIndex(4);
  CountingEntityPtr entity = CountingEntity::createObject();
  EXPECT_EQ(entity->colorIndex(), 256);
  entity->setDatabaseDefaults(db);
  EXPECT_EQ(entity->colorIndex(), 4);
  entity->setDatabaseDefaults();
  EXPECT_EQ(entity->colorIndex(), 256) << "no database: the built-in default";
  EXPECT_EQ(entity->setColorIndex(257), eOutOfRange);
  EXPECT_EQ(entity->setVisibility(static_cast<OdDb::Visibility>(7)), eInvalidInput);
  OdGeExtents3d extents;
  EXPECT_EQ(entity->getGeomExtents(extents), eInvalidExtents);
}

} // namespace
