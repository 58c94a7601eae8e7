#include "Db/OdDbSymbolTableRecord.h"

#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbSymbolTable.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbSymbolTableRecord, OdDbObject)

OdString OdDbSymbolTableRecord::getName() const
{
  assertReadEnabled();
  return m_name;
}

OdResult OdDbSymbolTableRecord::setName(const OdString& name)
{
  assertWriteEnabled();
  if (name.isEmpty())
    return eInvalidInput;
  OdDbSymbolTablePtr table = OdDbSymbolTable::cast(ownerId().openObject().get());
  if (table.get()) {
    const OdDbObjectId other = table->getAt(name);
    if (!other.isNull() && other != objectId())
      return eDuplicateKey;
  }
  m_name = name;
  return eOk;
}

OdResult OdDbSymbolTableRecord::dwgInFields(OdDbDwgFiler* pFiler)
{
  const OdResult res = OdDbObject::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  m_name = pFiler->rdString();
  if (m_name.isEmpty())
    return eInvalidInput;
  return pFiler->filerStatus();
}

void OdDbSymbolTableRecord::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  OdDbObject::dwgOutFields(pFiler);
  pFiler->wrString(m_name);
}
