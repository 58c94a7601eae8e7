#include "Ed/OdEdCommandContext.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdEdCommandContext, OdRxObject, RXIMPL_CONSTR)

OdSmartPtr<OdEdCommandContext> OdEdCommandContext::createObject(OdEdUserIO* pIO, OdRxObject* pDatabase)
{
  OdSmartPtr<OdEdCommandContext> context = createObject();
  context->init(pIO, pDatabase);
  return context;
}

void OdEdCommandContext::init(OdEdUserIO* pIO, OdRxObject* pDatabase)
{
  if (!pIO)
    throw OdError(eNullPtr, OdString(L"A command context needs user input"));
  m_pIO = pIO;
  m_pDatabase = pDatabase;
}

OdEdUserIO* OdEdCommandContext::userIO()
{
  return m_pIO.get();
}

OdRxObject* OdEdCommandContext::baseDatabase()
{
  return m_pDatabase.get();
}
