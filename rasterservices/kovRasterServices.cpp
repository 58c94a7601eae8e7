#include "rasterservices/kovRasterServices.h"

#include "rasterservices/kovRasterImage.h"

#include "Rx/OdRxDynamicLinker.h"

#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>

namespace {

class kovRasterServicesModule : public OdRxRasterServices {
public:
  void initApp() override {}
  void uninitApp() override {}
  OdString moduleName() const override { return OdString(RX_RASTER_SERVICES_APPNAME); }

  OdGiRasterImagePtr loadRasterImage(const OdString& filename) override
  {
    QImageReader reader(odToQString(filename));
    const QImage image = reader.read();
    return image.isNull() ? OdGiRasterImagePtr() : kovRasterImageFromQImage(image);
  }

  OdResult saveRasterImage(const OdGiRasterImage& image, const OdString& filename) override
  {
    if (image.isEmpty())
      return eInvalidInput;
    const QString path = odToQString(filename);
    const QByteArray format = QFileInfo(path).suffix().toLower().toLatin1();
    if (!QImageWriter::supportedImageFormats().contains(format))
      return eNotApplicable;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
      return eFileAccessErr;
    QImageWriter writer(&file, format);
    QImage picture = kovRasterImageToQImage(image);
    // Formats without alpha get the colours, not a black fill behind them.
    if (format == "jpg" || format == "jpeg" || format == "bmp")
      picture = picture.convertToFormat(QImage::Format_RGB32);
    // QSaveFile's commit does not see a failure of the last buffered write
    // (a full disk): flushing first does, and the temporary file is dropped.
    return writer.write(picture) && file.flush() && file.commit() ? eOk : eFileAccessErr;
  }

  bool isRasterImageTypeSupported(const OdString& extension) const override
  {
    return QImageWriter::supportedImageFormats().contains(odToQString(extension).toLower().toLatin1());
  }
};

OdRxModulePtr createRasterServices()
{
  return OdRxModulePtr(new kovRasterServicesModule);
}

} // namespace

void kovRegisterRasterServices()
{
  odrxDynamicLinker()->registerStaticModule(OdString(RX_RASTER_SERVICES_APPNAME), createRasterServices);
}

void kovUnregisterRasterServices()
{
  odrxDynamicLinker()->unloadModule(OdString(RX_RASTER_SERVICES_APPNAME));
  odrxDynamicLinker()->unregisterStaticModule(OdString(RX_RASTER_SERVICES_APPNAME));
}
