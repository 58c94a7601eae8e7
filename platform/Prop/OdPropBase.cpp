#include "Prop/OdPropBase.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdPropBase, OdRxObject, ODRX_NULL_CONSTR)

bool OdPropBase::getPropertyPossibleValues(const OdString&, OdStringArray&, OdStringArray&)
{
  return false;
}

bool OdPropBase::getPropertyValue(const OdString& path, OdString&)
{
  return setLastError(eKeyNotFound, OdString(L"There is no property ") + path + L".");
}

bool OdPropBase::setLastError(OdResult code, const OdString& message)
{
  m_lastError = code;
  m_lastErrorMessage = message;
  return false;
}
