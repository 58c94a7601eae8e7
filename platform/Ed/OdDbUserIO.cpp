#include "Ed/OdDbUserIO.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdDbUserIO, OdEdBaseUserIO, ODRX_NULL_CONSTR)
