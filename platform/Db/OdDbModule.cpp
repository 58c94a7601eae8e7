#include "Db/OdDbModule.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbMemoryFiler.h"
#include "Db/OdDbSpline.h"
#include "Db/OdDbViewTable.h"
#include "Db/OdDbViewTableRecord.h"
#include "Rx/OdError.h"
#include "Rx/OdRxDynamicLinker.h"

namespace {

const OdChar* const kModuleName = L"TD_Db";

// The database classes are registered by odInitialize, not by loading the
// module: the module lets code that loads "TD_Db.dll" by name take a load on
// the database services and find them present.
class OdDbModuleObject : public OdRxModule {
public:
  void initApp() override {}
  void uninitApp() override {}
  OdString moduleName() const override { return OdString(kModuleName); }
};

OdRxModulePtr createDbModule()
{
  return OdRxModulePtr(new OdDbModuleObject);
}

struct ClassEntry {
  void (*init)();
  void (*uninit)();
};

// Parents before children.
const ClassEntry kClasses[] = {
  { OdDbFiler::rxInit, OdDbFiler::rxUninit },
  { OdDbDwgFiler::rxInit, OdDbDwgFiler::rxUninit },
  { OdDbMemoryFiler::rxInit, OdDbMemoryFiler::rxUninit },
  { OdDbObjectIterator::rxInit, OdDbObjectIterator::rxUninit },
  { OdDbSymbolTableIterator::rxInit, OdDbSymbolTableIterator::rxUninit },
  { OdDbObject::rxInit, OdDbObject::rxUninit },
  { OdDbEntity::rxInit, OdDbEntity::rxUninit },
  { OdDbCurve::rxInit, OdDbCurve::rxUninit },
  { OdDbSpline::rxInit, OdDbSpline::rxUninit },
  { OdDbBlockReference::rxInit, OdDbBlockReference::rxUninit },
  { OdDbLight::rxInit, OdDbLight::rxUninit },
  { OdDbSymbolTable::rxInit, OdDbSymbolTable::rxUninit },
  { OdDbBlockTable::rxInit, OdDbBlockTable::rxUninit },
  { OdDbViewTable::rxInit, OdDbViewTable::rxUninit },
  { OdDbSymbolTableRecord::rxInit, OdDbSymbolTableRecord::rxUninit },
  { OdDbBlockTableRecord::rxInit, OdDbBlockTableRecord::rxUninit },
  { OdDbViewTableRecord::rxInit, OdDbViewTableRecord::rxUninit },
  { OdDbDatabase::rxInit, OdDbDatabase::rxUninit },
};
const int kClassCount = static_cast<int>(sizeof(kClasses) / sizeof(kClasses[0]));

int g_initCount = 0;

void unregisterFrom(int last)
{
  for (int i = last; i >= 0; --i)
    kClasses[i].uninit();
}

} // namespace

void odInitialize()
{
  if (g_initCount++ > 0)
    return;
  int i = 0;
  try {
    for (; i < kClassCount; ++i)
      kClasses[i].init();
  } catch (...) {
    // Leave nothing half-registered: a later odInitialize starts afresh.
    unregisterFrom(i - 1);
    --g_initCount;
    throw;
  }
  odrxDynamicLinker()->registerStaticModule(OdString(kModuleName), createDbModule);
}

void odUninitialize()
{
  if (g_initCount == 0)
    throw OdError(eNotInitializedYet, OdString(L"odUninitialize without a matching odInitialize"));
  if (--g_initCount > 0)
    return;
  odrxDynamicLinker()->unregisterStaticModule(OdString(kModuleName));
  unregisterFrom(kClassCount - 1);
}

bool odIsInitialized()
{
  return g_initCount > 0;
}
