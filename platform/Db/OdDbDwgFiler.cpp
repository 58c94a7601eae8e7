#include "Db/OdDbDwgFiler.h"

#include "Db/OdDbDatabase.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbDwgFiler, OdDbFiler)

OdDbObjectId OdDbDwgFiler::rdSoftPointerId()
{
  const OdDbHandle handle = rdDbHandle();
  OdDbDatabase* db = database();
  if (!db || handle.isNull())
    return OdDbObjectId::kNull;
  const OdDbObjectId id = db->getOdDbObjectId(handle);
  return id.objectClass() ? id : OdDbObjectId::kNull;
}

void OdDbDwgFiler::wrSoftPointerId(const OdDbObjectId& id)
{
  wrDbHandle(id.getHandle());
}
