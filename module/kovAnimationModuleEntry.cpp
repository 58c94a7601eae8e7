#include "module/kovAnimationModule.h"

ODRX_DEFINE_DYNAMIC_MODULE(kovAnimationModule)
