#include "Ed/OdEdUserIO.h"

#include "Ed/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdEdUserIO, OdRxObject, ODRX_NULL_CONSTR)
