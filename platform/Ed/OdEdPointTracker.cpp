#include "Ed/OdEdPointTracker.h"

#include "Ed/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdEdPointTracker, OdRxObject, ODRX_NULL_CONSTR)
