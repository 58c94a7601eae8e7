#include "Db/OdDbObject.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbDatabaseReactor.h"
#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbStub.h"
#include "Db/OdDbUndoHistory.h"
#include "Rx/OdError.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbObject, OdRxObject)

OdDbObject::~OdDbObject() = default;

OdDbObjectId OdDbObject::objectId() const
{
  return OdDbObjectId(m_pStub);
}

void OdDbObject::setOwnerId(OdDbObjectId ownerId)
{
  m_ownerId = ownerId;
}

OdDbDatabase* OdDbObject::database() const
{
  return m_pStub ? m_pStub->database : nullptr;
}

OdDbHandle OdDbObject::handle() const
{
  return m_pStub ? m_pStub->handle : OdDbHandle();
}

OdString OdDbObject::describe() const
{
  const OdRxClass* cls = isA();
  return OdString(L"Object ") + handle().ascii() + L" (" + (cls ? cls->name() : OdString(L"?")) + L")";
}

void OdDbObject::assertReadEnabled() const
{
  if (!isReadEnabled())
    throw OdError(eNotOpenForRead, describe() + L" is not open for read");
}

void OdDbObject::assertWriteEnabled() const
{
  if (!isWriteEnabled())
    throw OdError(eNotOpenForWrite, describe() + L" is not open for write");
}

void OdDbObject::upgradeOpen()
{
  assertReadEnabled();
  m_openMode = OdDb::kForWrite;
  if (m_pStub)
    keepForUndo();
}

void OdDbObject::keepForUndo()
{
  OdDbUndoHistory* history = m_pStub->database->undoHistory();
  if (history->wantsModification(m_pStub))
    history->recordModification(m_pStub);
}

void OdDbObject::downgradeOpen()
{
  assertWriteEnabled();
  // An object outside a database stays writable: it has no opener to return to.
  if (isDBRO())
    m_openMode = OdDb::kForRead;
}

OdResult OdDbObject::erase(bool erasing)
{
  if (!isWriteEnabled())
    return eNotOpenForWrite;
  if (!m_pStub)
    return eNoDatabase;
  if (m_pStub->erased == erasing)
    return erasing ? eWasErased : eWasNotErased;
  const OdResult res = subErase(erasing);
  if (res == eOk) {
    m_pStub->erased = erasing;
    const OdDbDatabase* db = m_pStub->database;
    db->notify([db, this, erasing](OdDbDatabaseReactor* reactor) { reactor->objectErased(db, this, erasing); });
  }
  return res;
}

bool OdDbObject::isErased() const
{
  return m_pStub && m_pStub->erased;
}

OdResult OdDbObject::dwgInFields(OdDbDwgFiler* pFiler)
{
  assertWriteEnabled();
  return pFiler->filerStatus();
}

void OdDbObject::dwgOutFields(OdDbDwgFiler*) const
{
  assertReadEnabled();
}

void OdDbObject::release()
{
  // Two references left means this one is the last opener's: the other is the
  // database's own.
  if (m_pStub && m_openMode != OdDb::kNotOpen && numRefs() == 2) {
    const bool written = m_openMode == OdDb::kForWrite;
    OdRxObject::release();
    m_openMode = OdDb::kNotOpen;
    subClose();
    if (written) {
      const OdDbDatabase* db = m_pStub->database;
      db->notify([db, this](OdDbDatabaseReactor* reactor) { reactor->objectModified(db, this); });
    }
    return;
  }
  OdRxObject::release();
}

OdResult OdDbObject::subErase(bool)
{
  return eOk;
}

void OdDbObject::subClose()
{
}
