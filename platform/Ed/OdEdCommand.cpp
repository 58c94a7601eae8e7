#include "Ed/OdEdCommand.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdEdCommand, OdRxObject, ODRX_NULL_CONSTR)

const OdString OdEdCommand::localName() const
{
  return globalName();
}

OdInt32 OdEdCommand::flags() const
{
  return kModal;
}
