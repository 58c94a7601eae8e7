#include "Db/OdDbFiler.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbFiler, OdRxObject)
