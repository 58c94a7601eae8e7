#include "Db/OdDbBlockTable.h"

#include "Db/OdDbBlockTableRecord.h"

ODRX_DEFINE_MEMBERS_EX(OdDbBlockTable, OdDbSymbolTable, DBOBJECT_CONSTR, 0, 0, 0, OdString(L"OdDbBlockTable"),
                       OdString::kEmpty, OdString::kEmpty, 0)

OdRxClass* OdDbBlockTable::recordClass() const
{
  return OdDbBlockTableRecord::desc();
}
