#include "db/kovDbTempBlockReference.h"

ODRX_DEFINE_MEMBERS_EX(kovDbTempBlockReference, OdDbBlockReference, DBOBJECT_CONSTR, 33, 55, 0,
                       OdString(L"kovDbTempBlockReference"), OdString(L"kovDbTempBlockReference"),
                       OdString(L"kovDbTempBlockReference"), 0)
