#include "Ed/OdDbCommandContext.h"

#include "Db/OdDbDatabase.h"
#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdDbCommandContext, OdEdCommandContext, RXIMPL_CONSTR)

OdSmartPtr<OdDbCommandContext> OdDbCommandContext::createObject(OdDbUserIO* pIO, OdRxObject* pDatabase)
{
  OdSmartPtr<OdDbCommandContext> context = createObject();
  context->init(pIO, pDatabase);
  return context;
}

OdDbDatabase* OdDbCommandContext::database()
{
  OdRxObject* document = baseDatabase();
  if (!document)
    throw OdError(eNoDatabase, OdString(L"The command needs a drawing"));
  // The context keeps its own reference, so the pointer outlives this one.
  const OdDbDatabasePtr database(document);
  return database.get();
}

OdDbUserIO* OdDbCommandContext::dbUserIO()
{
  // createObject took an OdDbUserIO, so the cast cannot fail.
  return static_cast<OdDbUserIO*>(userIO());
}
