#include "Db/OdDbSymbolTable.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbDwgFiler.h"
#include "Rx/OdError.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbSymbolTable, OdDbObject)

namespace {

// Bytes one record reference takes in the filed data.
const OdUInt64 kHandleBytes = 8;

} // namespace

OdDbObjectId OdDbSymbolTable::getAt(const OdString& name, bool getErasedRecord) const
{
  assertReadEnabled();
  for (const OdDbObjectId& id : m_records) {
    OdDbSymbolTableRecordPtr record = OdDbSymbolTableRecord::cast(id.openObject(OdDb::kForRead, getErasedRecord).get());
    if (record.get() && record->getName().iCompare(name) == 0)
      return id;
  }
  return OdDbObjectId::kNull;
}

bool OdDbSymbolTable::has(const OdString& name) const
{
  return !getAt(name).isNull();
}

bool OdDbSymbolTable::has(const OdDbObjectId& id) const
{
  assertReadEnabled();
  return !id.isNull() && !id.isErased() && m_records.contains(id);
}

OdDbObjectId OdDbSymbolTable::add(OdDbSymbolTableRecord* record)
{
  assertWriteEnabled();
  if (!record)
    throw OdError(eNullObjectPointer, OdString(L"No record given to add to a table"));
  if (!record->isKindOf(recordClass()))
    throw OdError(eWrongObjectType, OdString(L"A ") + record->isA()->name() + L" can't be added to a "
                                        + isA()->name());
  OdDbDatabase* db = database();
  if (!db)
    throw OdError(eNoDatabase, OdString(L"Records can be added only to a table in a database"));
  const OdString name = record->getName();
  if (name.isEmpty())
    throw OdError(eInvalidInput, OdString(L"A table record needs a name"));
  if (has(name))
    throw OdError(eDuplicateKey, OdString(L"The name ") + name + L" is already in use");
  if (record->isDBRO()) {
    if (record->database() != db)
      throw OdError(eWrongDatabase, OdString(L"The record ") + name + L" belongs to another database");
    if (!record->ownerId().isNull() && record->ownerId() != objectId())
      throw OdError(eAlreadyInDb, OdString(L"The record ") + name + L" belongs to another table");
    record->setOwnerId(objectId());
  } else {
    db->addOdDbObject(record, objectId());
  }
  m_records.append(record->objectId());
  return record->objectId();
}

OdDbSymbolTableIteratorPtr OdDbSymbolTable::newIterator(bool atBeginning, bool skipDeleted) const
{
  assertReadEnabled();
  return OdDbSymbolTableIterator::newIterator(m_records, atBeginning, skipDeleted);
}

OdResult OdDbSymbolTable::dwgInFields(OdDbDwgFiler* pFiler)
{
  const OdResult res = OdDbObject::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  const OdUInt32 count = static_cast<OdUInt32>(pFiler->rdInt32());
  if (count > pFiler->bytesLeft() / kHandleBytes)
    return eInvalidInput;
  m_records.clear();
  m_records.reserve(count);
  for (OdUInt32 i = 0; i < count; ++i) {
    // A record that was erased when the data was written resolves to null.
    const OdDbObjectId id = pFiler->rdSoftPointerId();
    if (id.isNull())
      continue;
    if (!id.objectClass()->isDerivedFrom(recordClass()))
      return eWrongObjectType;
    m_records.append(id);
  }
  return pFiler->filerStatus();
}

void OdDbSymbolTable::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  OdDbObject::dwgOutFields(pFiler);
  // A file holds no erased objects, so it lists none either.
  const bool live = pFiler->filerType() == OdDb::kFileFiler;
  OdInt32 count = 0;
  for (const OdDbObjectId& id : m_records)
    count += live && id.isErased() ? 0 : 1;
  pFiler->wrInt32(count);
  for (const OdDbObjectId& id : m_records) {
    if (!(live && id.isErased()))
      pFiler->wrSoftPointerId(id);
  }
}

OdRxClass* OdDbSymbolTable::recordClass() const
{
  return OdDbSymbolTableRecord::desc();
}
