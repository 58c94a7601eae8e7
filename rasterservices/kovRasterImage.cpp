#include "rasterservices/kovRasterImage.h"

#include <cstring>

// QImage's ARGB32 holds each pixel as a native 0xAARRGGBB word, which on
// little-endian machines is the bytes blue, green, red, alpha: the raster
// image's own order, so rows copy as they are.
static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "rows are copied as blue, green, red, alpha bytes");

OdGiRasterImagePtr kovRasterImageFromQImage(const QImage& image)
{
  const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
  OdGiRasterImagePtr raster(new OdGiRasterImage(static_cast<OdUInt32>(argb.width()), static_cast<OdUInt32>(argb.height())));
  const size_t rowBytes = 4u * static_cast<size_t>(argb.width());
  for (int y = 0; y < argb.height(); ++y)
    std::memcpy(raster->bgraPixels() + rowBytes * static_cast<size_t>(y), argb.constScanLine(y), rowBytes);
  return raster;
}

QImage kovRasterImageToQImage(const OdGiRasterImage& image)
{
  QImage argb(static_cast<int>(image.pixelWidth()), static_cast<int>(image.pixelHeight()), QImage::Format_ARGB32);
  const size_t rowBytes = 4u * image.pixelWidth();
  for (int y = 0; y < argb.height(); ++y)
    std::memcpy(argb.scanLine(y), image.bgraPixels() + rowBytes * static_cast<size_t>(y), rowBytes);
  return argb;
}
