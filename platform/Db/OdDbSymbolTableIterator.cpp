#include "Db/OdDbSymbolTableIterator.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbSymbolTableIterator, OdDbObjectIterator)

OdSmartPtr<OdDbSymbolTableIterator> OdDbSymbolTableIterator::newIterator(const OdDbObjectIdArray& ids,
                                                                         bool atBeginning, bool skipErased)
{
  OdSmartPtr<OdDbSymbolTableIterator> it(new OdDbSymbolTableIterator);
  it->setIds(ids);
  it->start(atBeginning, skipErased);
  return it;
}

OdDbSymbolTableRecordPtr OdDbSymbolTableIterator::getRecord(OdDb::OpenMode mode, bool openErased) const
{
  return OdDbSymbolTableRecord::cast(getRecordId().openObject(mode, openErased).get());
}
