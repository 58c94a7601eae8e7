#ifndef OD_DB_USER_IO_H
#define OD_DB_USER_IO_H

#include "Db/OdDbObjectId.h"
#include "Ed/OdEdBaseUserIO.h"

class OdDbDatabase;

// User input of commands that work on a drawing: adds picking objects.
class OdDbUserIO : public OdEdBaseUserIO {
  ODRX_DECLARE_MEMBERS(OdDbUserIO);

public:
  // Asks the user to pick objects until an empty answer (or, with
  // OdEd::kSelSingleEntity, one object). Returns them in the order picked,
  // each once; empty when the user picked none. Cancelling raises OdEdCancel.
  virtual OdDbObjectIdArray select(const OdString& prompt = OdString::kEmpty, int options = OdEd::kSelDefault) = 0;

protected:
  // Selection typed as object handles in hexadecimal, one per answer, until an
  // empty answer; adds to ids. "Last" (or "L") takes the newest model space
  // entity not taken yet. Unknown handles are reported and asked again.
  OdDbObjectIdArray selectByHandles(OdDbDatabase* database, const OdString& prompt, int options,
                                    OdDbObjectIdArray ids = OdDbObjectIdArray());
};

typedef OdSmartPtr<OdDbUserIO> OdDbUserIOPtr;

#endif
