// A module that leaves a visible trace of its start-up and shut-down in the
// service registry, so that tests can tell when the linker runs them.
#include "Rx/OdRxDictionary.h"
#include "Rx/OdRxModule.h"

namespace {

class TraceObject : public OdRxObject {
};

class kovTestModule : public OdRxModule {
public:
  void initApp() override { odrxSysRegistry()->putAt(OdString(L"kovTestModule.running"), new TraceObject); }
  void uninitApp() override { odrxSysRegistry()->remove(OdString(L"kovTestModule.running")); }
};

} // namespace

ODRX_DEFINE_DYNAMIC_MODULE(kovTestModule)
