#ifndef OD_DB_DATABASE_REACTOR_H
#define OD_DB_DATABASE_REACTOR_H

#include "Rx/OdRxObject.h"

class OdDbDatabase;
class OdDbObject;

// Told about the changes of a database's objects, once it is added to the
// database with OdDbDatabase::addReactor. Drawing systems use it to redraw
// only what changed. The calls come on the thread that changed the object.
class OdDbDatabaseReactor : public OdRxObject {
public:
  // The object was just added; it may still be filled in before it closes,
  // which reports it modified.
  virtual void objectAppended(const OdDbDatabase* pDb, const OdDbObject* pDbObj);
  // The object was closed after being open for write.
  virtual void objectModified(const OdDbDatabase* pDb, const OdDbObject* pDbObj);
  // The object was erased (pErased) or unerased.
  virtual void objectErased(const OdDbDatabase* pDb, const OdDbObject* pDbObj, bool pErased = true);
  // The database is going away.
  virtual void goodbye(const OdDbDatabase* pDb);
};

#endif
