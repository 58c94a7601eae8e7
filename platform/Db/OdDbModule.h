#ifndef OD_DB_MODULE_H
#define OD_DB_MODULE_H

// Starts the database classes: registers every Db class (parents first) and
// the built-in module "TD_Db", which odrxDynamicLinker()->loadModule(L"TD_Db.dll")
// then loads. Calls nest: only the first call registers, and only the
// odUninitialize() that balances it unregisters (children first). An
// odUninitialize() without a matching odInitialize() raises
// OdError(eNotInitializedYet).
void odInitialize();
void odUninitialize();

// True between the first odInitialize() and the odUninitialize() balancing it.
bool odIsInitialized();

#endif
