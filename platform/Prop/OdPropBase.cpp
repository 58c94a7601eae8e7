#include "Prop/OdPropBase.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdPropBase, OdRxObject, ODRX_NULL_CONSTR)

bool OdPropBase::getPropertyPossibleValues(const OdString&, OdStringArray&, OdStringArray&)
{
  return false;
}
