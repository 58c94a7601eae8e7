#ifndef OD_DB_SYMBOL_TABLE_ITERATOR_H
#define OD_DB_SYMBOL_TABLE_ITERATOR_H

#include "Db/OdDbObjectIterator.h"
#include "Db/OdDbSymbolTableRecord.h"

// Walks the records of a symbol table, with the rules of OdDbObjectIterator.
class OdDbSymbolTableIterator : public OdDbObjectIterator {
  ODRX_DECLARE_MEMBERS(OdDbSymbolTableIterator);

public:
  // Not an SDK call: used by the tables.
  static OdSmartPtr<OdDbSymbolTableIterator> newIterator(const OdDbObjectIdArray& ids, bool atBeginning = true,
                                                         bool skipErased = true);

  OdDbObjectId getRecordId() const { return objectId(); }
  // The current record; null when done or when it can't be opened.
  OdDbSymbolTableRecordPtr getRecord(OdDb::OpenMode mode = OdDb::kForRead, bool openErased = false) const;

protected:
  OdDbSymbolTableIterator() = default;
};

typedef OdSmartPtr<OdDbSymbolTableIterator> OdDbSymbolTableIteratorPtr;

#endif
