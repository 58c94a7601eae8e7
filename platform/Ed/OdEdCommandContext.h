#ifndef OD_ED_COMMAND_CONTEXT_H
#define OD_ED_COMMAND_CONTEXT_H

#include "Ed/OdEdUserIO.h"
#include "Rx/OdRxClass.h"

// What a running command works with: the user's input and output, and the
// document it runs in. Commands that need a drawing take an
// OdDbCommandContext from it (OdDbCommandContextPtr ctx(pCmdCtx)), which
// raises OdError_NotThatKindOfClass for a context of this class.
class OdEdCommandContext : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdEdCommandContext);

public:
  // A context over pIO (required: a null one raises OdError(eNullPtr)) and
  // an optional document. Both are held for the context's lifetime.
  static OdSmartPtr<OdEdCommandContext> createObject(OdEdUserIO* pIO, OdRxObject* pDatabase = nullptr);

  virtual OdEdUserIO* userIO();
  // The document, or null when the command runs without one.
  virtual OdRxObject* baseDatabase();

protected:
  OdEdCommandContext() = default;
  void init(OdEdUserIO* pIO, OdRxObject* pDatabase);

private:
  OdEdUserIOPtr m_pIO;
  OdRxObjectPtr m_pDatabase;
};

typedef OdSmartPtr<OdEdCommandContext> OdEdCommandContextPtr;

#endif
