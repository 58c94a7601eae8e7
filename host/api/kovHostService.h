#ifndef KOV_HOST_SERVICE_H
#define KOV_HOST_SERVICE_H

#include "Rx/OdRxDictionary.h"

// The host service registered under T::serviceId(), or null.
//
// Services are typed by their id: whatever the host registers under an id
// implements that id's interface. A static cast keeps the look-up independent
// of whether the type information of the module file and of the host merge.
template <class T>
T* kovHostService()
{
  return static_cast<T*>(odrxSysRegistry()->getAt(OdString(T::serviceId())).get());
}

#endif
