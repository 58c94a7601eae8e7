#ifndef KOV_RASTER_SERVICES_H
#define KOV_RASTER_SERVICES_H

#include "Rx/OdRxRasterServices.h"

// Registers the raster services as a built-in module under
// RX_RASTER_SERVICES_APPNAME (the host does, at start), and takes them away.
void kovRegisterRasterServices();
void kovUnregisterRasterServices();

#endif
