#ifndef OD_DB_STUB_H
#define OD_DB_STUB_H

#include "Db/OdDbHandle.h"
#include "Rx/OdSmartPtr.h"

class OdDbDatabase;
class OdDbObject;

// The database's record of one handle, which object ids point to. Owned by
// the database, at a fixed address for the database's lifetime. A stub may
// exist without an object: a handle referenced before (or without) its object.
// Internal to the database classes.
struct OdDbStub {
  OdDbHandle handle;
  OdDbDatabase* database = nullptr;
  // The database's own reference to the object.
  OdSmartPtr<OdDbObject> object;
  bool erased = false;
  // The undo step that last kept the object's state.
  OdUInt32 undoStep = 0;
};

#endif
