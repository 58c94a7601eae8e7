#ifndef OD_DB_COMMAND_CONTEXT_H
#define OD_DB_COMMAND_CONTEXT_H

#include "Ed/OdDbUserIO.h"
#include "Ed/OdEdCommandContext.h"

class OdDbDatabase;

// The context of a command that works on a drawing.
class OdDbCommandContext : public OdEdCommandContext {
  ODRX_DECLARE_MEMBERS(OdDbCommandContext);

public:
  // A context over pIO (required: a null one raises OdError(eNullPtr)) and
  // an optional drawing (or other document; database() checks).
  static OdSmartPtr<OdDbCommandContext> createObject(OdDbUserIO* pIO, OdRxObject* pDatabase = nullptr);

  // The drawing. Raises OdError(eNoDatabase) when the context has no document
  // and OdError_NotThatKindOfClass when the document is not a drawing.
  OdDbDatabase* database();
  OdDbUserIO* dbUserIO();

protected:
  OdDbCommandContext() = default;
};

typedef OdSmartPtr<OdDbCommandContext> OdDbCommandContextPtr;

#endif
