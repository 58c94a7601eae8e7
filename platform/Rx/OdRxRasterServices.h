#ifndef OD_RX_RASTER_SERVICES_H
#define OD_RX_RASTER_SERVICES_H

#include "Gi/OdGiRasterImage.h"
#include "Rx/OdRxModule.h"

#define RX_RASTER_SERVICES_APPNAME L"RxRasterServices"

// Reading and writing raster images in the usual file formats (PNG, JPEG,
// BMP...; the type follows the file's extension). A module of its own, loaded
// by name, because the codecs come from the windowing layer that the core
// platform does not depend on: a host registers it.
class OdRxRasterServices : public OdRxModule {
public:
  // The image in the file; null when it can't be read.
  virtual OdGiRasterImagePtr loadRasterImage(const OdString& filename) = 0;
  // Writes the image whole or not at all: a file that exists after the call
  // is complete. eOk, else eFileAccessErr (the folder can't be written),
  // eNotApplicable (no codec for the extension) or eInvalidInput (an empty
  // image).
  virtual OdResult saveRasterImage(const OdGiRasterImage& image, const OdString& filename) = 0;
  // Whether the extension (without the dot, any case) names a type it writes.
  virtual bool isRasterImageTypeSupported(const OdString& extension) const = 0;
};

typedef OdSmartPtr<OdRxRasterServices> OdRxRasterServicesPtr;

// The raster services module, loaded on first use; null when no host
// registered it.
OdRxRasterServicesPtr odrxRasterServices();

#endif
