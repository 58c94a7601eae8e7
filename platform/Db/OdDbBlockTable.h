#ifndef OD_DB_BLOCK_TABLE_H
#define OD_DB_BLOCK_TABLE_H

#include "Db/OdDbSymbolTable.h"

// The table of block definitions (OdDbBlockTableRecord), "*Model_Space"
// among them.
class OdDbBlockTable : public OdDbSymbolTable {
  ODDB_DECLARE_MEMBERS(OdDbBlockTable);

public:
  OdDbBlockTable() = default;

protected:
  OdRxClass* recordClass() const override;
};

typedef OdSmartPtr<OdDbBlockTable> OdDbBlockTablePtr;

#endif
