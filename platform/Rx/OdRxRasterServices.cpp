#include "Rx/OdRxRasterServices.h"

#include "Rx/OdRxDynamicLinker.h"

OdRxRasterServicesPtr odrxRasterServices()
{
  OdRxModulePtr module = odrxDynamicLinker()->loadModule(OdString(RX_RASTER_SERVICES_APPNAME), true);
  // Whatever is registered under the name implements the interface.
  return OdRxRasterServicesPtr(static_cast<OdRxRasterServices*>(module.get()));
}
