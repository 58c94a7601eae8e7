#include "Ed/OdEdUserIO.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdEdUserIO, OdRxObject, ODRX_NULL_CONSTR)
