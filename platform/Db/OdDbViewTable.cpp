#include "Db/OdDbViewTable.h"

#include "Db/OdDbViewTableRecord.h"

ODRX_DEFINE_MEMBERS_EX(OdDbViewTable, OdDbSymbolTable, DBOBJECT_CONSTR, 0, 0, 0, OdString(L"OdDbViewTable"),
                       OdString::kEmpty, OdString::kEmpty, 0)

OdRxClass* OdDbViewTable::recordClass() const
{
  return OdDbViewTableRecord::desc();
}
