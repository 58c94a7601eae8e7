#ifndef KOV_ANIMATION_MODULE_H
#define KOV_ANIMATION_MODULE_H

#include "Rx/OdRxModule.h"

// The animation module: what the host loads from kovAnimationModule_24.1_16.tx.
class kovAnimationModule : public OdRxModule {
public:
  kovAnimationModule();
  ~kovAnimationModule() override;

  void initApp() override;
  void uninitApp() override;

  static kovAnimationModule*& instance();
};

#endif
