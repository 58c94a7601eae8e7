#ifndef OD_DB_VIEW_TABLE_H
#define OD_DB_VIEW_TABLE_H

#include "Db/OdDbSymbolTable.h"

// The table of named views (OdDbViewTableRecord).
class OdDbViewTable : public OdDbSymbolTable {
  ODDB_DECLARE_MEMBERS(OdDbViewTable);

public:
  OdDbViewTable() = default;

protected:
  OdRxClass* recordClass() const override;
};

typedef OdSmartPtr<OdDbViewTable> OdDbViewTablePtr;

#endif
