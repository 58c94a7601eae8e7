#include "Ed/OdEdPointTracker.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdEdPointTracker, OdRxObject, ODRX_NULL_CONSTR)
