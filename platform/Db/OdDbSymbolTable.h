#ifndef OD_DB_SYMBOL_TABLE_H
#define OD_DB_SYMBOL_TABLE_H

#include "Db/OdDbSymbolTableIterator.h"
#include "Db/OdDbSymbolTableRecord.h"

// A table of uniquely named records, which it owns. Lookups compare names
// without regard to case; tables are small, so a lookup walks the records.
class OdDbSymbolTable : public OdDbObject {
  ODDB_DECLARE_MEMBERS(OdDbSymbolTable);

public:
  // The record of that name; null when there is none (erased records count
  // only with getErasedRecord).
  OdDbObjectId getAt(const OdString& name, bool getErasedRecord = false) const;
  bool has(const OdString& name) const;
  bool has(const OdDbObjectId& id) const;

  // Adds a record to the table (and to the table's database when it is in
  // none) and returns its id. The table must be open for write and in a
  // database. Raises OdError: eWrongObjectType (not a record of this table's
  // kind), eInvalidInput (no name), eDuplicateKey (name taken), eWrongDatabase
  // (the record is in another database), eAlreadyInDb (owned by another table).
  OdDbObjectId add(OdDbSymbolTableRecord* record);

  // Walks the records, by default from the first and skipping erased ones.
  OdDbSymbolTableIteratorPtr newIterator(bool atBeginning = true, bool skipDeleted = true) const;

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

protected:
  OdDbSymbolTable() = default;
  // The class of records the table takes.
  virtual OdRxClass* recordClass() const;

private:
  OdDbObjectIdArray m_records;
};

typedef OdSmartPtr<OdDbSymbolTable> OdDbSymbolTablePtr;

#endif
