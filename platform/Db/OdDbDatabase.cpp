#include "Db/OdDbDatabase.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabaseReactor.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbStub.h"
#include "Db/OdDbUndoHistory.h"
#include "Db/OdDbViewTable.h"
#include "Rx/OdError.h"

#include <algorithm>

ODRX_DEFINE_MEMBERS2(OdDbDatabase, OdRxObject, OdDbDatabase::pseudoConstructor, 0, 0, 0, OdString(L"OdDbDatabase"),
                     OdString::kEmpty, OdString::kEmpty, 0)

OdRxObjectPtr OdDbDatabase::pseudoConstructor()
{
  OdSmartPtr<OdDbDatabase> db(new OdDbDatabase);
  db->createDefaultTables();
  return OdRxObjectPtr(db.get());
}

OdDbDatabase::OdDbDatabase()
  : m_undoHistory(std::make_unique<OdDbUndoHistory>(this))
{
}

OdDbDatabase::~OdDbDatabase()
{
  notify([this](OdDbDatabaseReactor* reactor) { reactor->goodbye(this); });
  m_undoHistory.reset();
  // Objects someone still holds outlive the database: they become objects
  // outside any database, writable and without an id.
  for (OdDbStub& stub : m_stubs) {
    if (OdDbObject* object = stub.object.get()) {
      object->m_pStub = nullptr;
      object->m_openMode = OdDb::kForWrite;
    }
  }
  for (OdDbStub& stub : m_stubs)
    stub.object = nullptr;
}

void OdDbDatabase::createDefaultTables()
{
  OdDbBlockTablePtr blocks = OdDbBlockTable::createObject();
  m_blockTableId = addOdDbObject(blocks);
  OdDbViewTablePtr views = OdDbViewTable::createObject();
  m_viewTableId = addOdDbObject(views);
  OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::createObject();
  modelSpace->setName(OdString(L"*Model_Space"));
  m_modelSpaceId = blocks->add(modelSpace);
}

OdDbStub* OdDbDatabase::newStub(const OdDbHandle& handle)
{
  m_stubs.emplace_back();
  OdDbStub* stub = &m_stubs.back();
  stub->handle = handle;
  stub->database = this;
  // A handle an undone added object had is free again: its stub stays for
  // the ids that point to it, but the handle names the new one.
  m_byHandle.insert_or_assign(static_cast<OdUInt64>(handle), stub);
  if (handle >= m_handseed)
    m_handseed = static_cast<OdUInt64>(handle) + 1;
  return stub;
}

OdDbObjectId OdDbDatabase::getOdDbObjectId(const OdDbHandle& handle, bool createIfNotFound)
{
  if (handle.isNull())
    return OdDbObjectId::kNull;
  const auto it = m_byHandle.find(handle);
  if (it != m_byHandle.end())
    return OdDbObjectId(it->second);
  return createIfNotFound ? OdDbObjectId(newStub(handle)) : OdDbObjectId::kNull;
}

OdDbObjectId OdDbDatabase::addOdDbObject(OdDbObject* object, OdDbObjectId ownerId, OdDbHandle handle)
{
  if (!object)
    throw OdError(eNullObjectPointer, OdString(L"No object given to add to the database"));
  if (object->isDBRO())
    throw OdError(eAlreadyInDb, OdString(L"Object ") + object->handle().ascii() + L" is already in a database");
  OdDbStub* stub = nullptr;
  if (handle.isNull()) {
    // The seed wraps to zero only after the largest handle was used.
    if (m_handseed.isNull())
      throw OdError(eOutOfRange, OdString(L"The database has no handles left"));
    stub = newStub(m_handseed);
  } else {
    stub = getOdDbObjectId(handle, true).stub();
    if (stub->object)
      throw OdError(eDuplicateKey, OdString(L"Handle ") + handle.ascii() + L" is already in use");
  }
  m_undoHistory->objectAdded();
  stub->object = object;
  object->m_pStub = stub;
  object->setOwnerId(ownerId);
  m_undoHistory->recordCreation(stub);
  // An object nobody else holds has no opener to wait for.
  if (object->numRefs() == 1)
    object->m_openMode = OdDb::kNotOpen;
  notify([this, object](OdDbDatabaseReactor* reactor) { reactor->objectAppended(this, object); });
  return OdDbObjectId(stub);
}

void OdDbDatabase::detachStub(OdDbStub* stub)
{
  stub->object->m_pStub = nullptr;
  stub->object = nullptr;
  stub->erased = true;
}

void OdDbDatabase::attachStub(OdDbStub* stub, OdDbObject* object)
{
  stub->object = object;
  object->m_pStub = stub;
  stub->erased = false;
  m_byHandle.insert_or_assign(static_cast<OdUInt64>(stub->handle), stub);
}

void OdDbDatabase::startUndoRecord()
{
  m_undoHistory->startStep();
}

bool OdDbDatabase::hasUndo() const
{
  return m_undoHistory->hasUndo();
}

void OdDbDatabase::undo()
{
  m_undoHistory->undo();
}

bool OdDbDatabase::hasRedo() const
{
  return m_undoHistory->hasRedo();
}

void OdDbDatabase::redo()
{
  m_undoHistory->redo();
}

void OdDbDatabase::disableUndoRecording(bool disable)
{
  m_undoHistory->setDisabled(disable);
}

bool OdDbDatabase::isUndoRecordingDisabled() const
{
  return m_undoHistory->isDisabled();
}

bool OdDbDatabase::isUndoStepOpen() const
{
  return m_undoHistory->isStepOpen();
}

void OdDbDatabase::setUndoLimit(int steps)
{
  m_undoHistory->setLimit(steps);
}

int OdDbDatabase::undoLimit() const
{
  return m_undoHistory->limit();
}

OdUInt64 OdDbDatabase::undoMemoryUsed() const
{
  return m_undoHistory->memoryUsed();
}

void OdDbDatabase::writeFile(const OdString& path)
{
  OdDbFileWriter::writeFile(this, path);
  m_filename = path;
}

void OdDbDatabase::addReactor(OdDbDatabaseReactor* pReactor)
{
  if (pReactor && std::find(m_reactors.begin(), m_reactors.end(), pReactor) == m_reactors.end())
    m_reactors.push_back(pReactor);
}

void OdDbDatabase::removeReactor(OdDbDatabaseReactor* pReactor)
{
  m_reactors.erase(std::remove(m_reactors.begin(), m_reactors.end(), pReactor), m_reactors.end());
}

void OdDbDatabase::notify(const std::function<void(OdDbDatabaseReactor*)>& call) const
{
  // A reactor may remove itself while it is told: walk a copy.
  const std::vector<OdDbDatabaseReactor*> reactors = m_reactors;
  for (OdDbDatabaseReactor* reactor : reactors)
    call(reactor);
}
