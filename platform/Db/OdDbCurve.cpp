#include "Db/OdDbCurve.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbCurve, OdDbEntity)
