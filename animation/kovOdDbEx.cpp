#include "animation/kovOdDbEx.h"

#include "host/api/kovHostService.h"

kovOdDbEx* kovOdDbEx::service()
{
  return kovHostService<kovOdDbEx>();
}
