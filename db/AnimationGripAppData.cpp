#include "db/AnimationGripAppData.h"

ODRX_CONS_DEFINE_MEMBERS(AnimationGripAppData, OdRxObject, RXIMPL_CONSTR)
