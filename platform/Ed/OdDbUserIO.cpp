#include "Ed/OdDbUserIO.h"

#include "Ed/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdDbUserIO, OdEdBaseUserIO, ODRX_NULL_CONSTR)
