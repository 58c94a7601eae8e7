#include "animation/kovOdDbEx.h"

#include "Rx/OdRxDictionary.h"

kovOdDbEx* kovOdDbEx::service()
{
  // Services are typed by their id: whatever the host registers under it is
  // its entity library. A static cast keeps the look-up independent of the
  // type information of the module file and the host being merged.
  return static_cast<kovOdDbEx*>(odrxSysRegistry()->getAt(OdString(serviceId())).get());
}
