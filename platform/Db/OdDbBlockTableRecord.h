#ifndef OD_DB_BLOCK_TABLE_RECORD_H
#define OD_DB_BLOCK_TABLE_RECORD_H

#include "Db/OdDbEntity.h"
#include "Db/OdDbObjectIterator.h"
#include "Db/OdDbSymbolTableRecord.h"

// A block definition: a named list of entities it owns. Model space is the
// block named "*Model_Space".
class OdDbBlockTableRecord : public OdDbSymbolTableRecord {
  ODDB_DECLARE_MEMBERS(OdDbBlockTableRecord);

public:
  OdDbBlockTableRecord() = default;

  // Appends an entity and returns its id: adds it to the block's database when
  // it is in none, and makes the block its owner. The block must be open for
  // write and in a database. Raises OdError: eNullObjectPointer,
  // eNoDatabase, eWrongDatabase (entity of another database), eAlreadyInDb
  // (entity owned by another object).
  OdDbObjectId appendOdDbEntity(OdDbEntity* entity);

  // Walks the block's entities in the order they were appended, skipping
  // erased ones by default.
  OdDbObjectIteratorPtr newIterator(bool atBeginning = true, bool skipErased = true) const;

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

private:
  OdDbObjectIdArray m_entities;
};

typedef OdSmartPtr<OdDbBlockTableRecord> OdDbBlockTableRecordPtr;

#endif
