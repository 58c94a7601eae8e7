#include "module/kovAnimationModule.h"

kovAnimationModule::kovAnimationModule()
{
  instance() = this;
}

kovAnimationModule::~kovAnimationModule()
{
  instance() = nullptr;
}

void kovAnimationModule::initApp()
{
}

void kovAnimationModule::uninitApp()
{
}

kovAnimationModule*& kovAnimationModule::instance()
{
  static kovAnimationModule* module = nullptr;
  return module;
}
