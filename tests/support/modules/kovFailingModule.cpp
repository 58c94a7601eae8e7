// A module whose start-up fails, as one does when what it needs is missing.
#include "Rx/OdError.h"
#include "Rx/OdRxModule.h"

namespace {

class kovFailingModule : public OdRxModule {
public:
  void initApp() override { throw OdError(eNotInitializedYet, OdString(L"a required class is not registered")); }
  void uninitApp() override {}
};

} // namespace

ODRX_DEFINE_DYNAMIC_MODULE(kovFailingModule)
