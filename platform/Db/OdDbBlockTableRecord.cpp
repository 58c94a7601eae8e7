#include "Db/OdDbBlockTableRecord.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbDwgFiler.h"
#include "Rx/OdError.h"

ODRX_DEFINE_MEMBERS_EX(OdDbBlockTableRecord, OdDbSymbolTableRecord, DBOBJECT_CONSTR, 0, 0, 0,
                       OdString(L"OdDbBlockTableRecord"), OdString::kEmpty, OdString::kEmpty, 0)

namespace {

const OdUInt64 kHandleBytes = 8;

} // namespace

OdDbObjectId OdDbBlockTableRecord::appendOdDbEntity(OdDbEntity* entity)
{
  assertWriteEnabled();
  if (!entity)
    throw OdError(eNullObjectPointer, OdString(L"No entity given to append to a block"));
  OdDbDatabase* db = database();
  if (!db)
    throw OdError(eNoDatabase, OdString(L"Entities can be appended only to a block in a database"));
  if (entity->isDBRO()) {
    if (entity->database() != db)
      throw OdError(eWrongDatabase, OdString(L"Entity ") + entity->handle().ascii()
                                        + L" belongs to another database");
    if (!entity->ownerId().isNull() && entity->ownerId() != objectId())
      throw OdError(eAlreadyInDb, OdString(L"Entity ") + entity->handle().ascii() + L" belongs to another block");
    if (m_entities.contains(entity->objectId()))
      return entity->objectId();
    entity->setOwnerId(objectId());
  } else {
    db->addOdDbObject(entity, objectId());
  }
  m_entities.append(entity->objectId());
  return entity->objectId();
}

OdDbObjectIteratorPtr OdDbBlockTableRecord::newIterator(bool atBeginning, bool skipErased) const
{
  assertReadEnabled();
  return OdDbObjectIterator::newIterator(m_entities, atBeginning, skipErased);
}

OdResult OdDbBlockTableRecord::dwgInFields(OdDbDwgFiler* pFiler)
{
  const OdResult res = OdDbSymbolTableRecord::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  const OdUInt32 count = static_cast<OdUInt32>(pFiler->rdInt32());
  if (count > pFiler->bytesLeft() / kHandleBytes)
    return eInvalidInput;
  m_entities.clear();
  m_entities.reserve(count);
  for (OdUInt32 i = 0; i < count; ++i) {
    // An entity that was erased when the data was written resolves to null.
    const OdDbObjectId id = pFiler->rdSoftPointerId();
    if (id.isNull())
      continue;
    if (!id.objectClass()->isDerivedFrom(OdDbEntity::desc()))
      return eWrongObjectType;
    m_entities.append(id);
  }
  return pFiler->filerStatus();
}

void OdDbBlockTableRecord::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  OdDbSymbolTableRecord::dwgOutFields(pFiler);
  // A file holds no erased objects, so it lists none either.
  const bool live = pFiler->filerType() == OdDb::kFileFiler;
  OdInt32 count = 0;
  for (const OdDbObjectId& id : m_entities)
    count += live && id.isErased() ? 0 : 1;
  pFiler->wrInt32(count);
  for (const OdDbObjectId& id : m_entities) {
    if (!(live && id.isErased()))
      pFiler->wrSoftPointerId(id);
  }
}
