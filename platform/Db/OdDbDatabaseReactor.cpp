#include "Db/OdDbDatabaseReactor.h"

void OdDbDatabaseReactor::objectAppended(const OdDbDatabase*, const OdDbObject*) {}
void OdDbDatabaseReactor::objectModified(const OdDbDatabase*, const OdDbObject*) {}
void OdDbDatabaseReactor::objectErased(const OdDbDatabase*, const OdDbObject*, bool) {}
void OdDbDatabaseReactor::goodbye(const OdDbDatabase*) {}
