#ifndef OD_GI_RASTER_IMAGE_H
#define OD_GI_RASTER_IMAGE_H

#include "Rx/OdPlatform.h"
#include "Rx/OdSharedPtr.h"

#include <cstddef>
#include <vector>

// An image handed to OdGiGeometry::rasterImageDc: width x height pixels, rows
// from the top, each pixel four bytes in the order blue, green, red, alpha.
class OdGiRasterImage {
public:
  // A transparent black image; a zero width or height gives an empty image.
  OdGiRasterImage(OdUInt32 width, OdUInt32 height);

  OdUInt32 pixelWidth() const { return m_width; }
  OdUInt32 pixelHeight() const { return m_height; }
  bool isEmpty() const { return m_width == 0 || m_height == 0; }

  // The pixel at column x, row y as 0xAARRGGBB. x and y must lie inside the
  // image (asserted; outside, pixel() gives 0 and setPixel() does nothing).
  OdUInt32 pixel(OdUInt32 x, OdUInt32 y) const;
  void setPixel(OdUInt32 x, OdUInt32 y, OdUInt8 red, OdUInt8 green, OdUInt8 blue, OdUInt8 alpha = 255);

  // The pixel bytes, 4 * width per row.
  const OdUInt8* bgraPixels() const { return m_pixels.data(); }
  OdUInt8* bgraPixels() { return m_pixels.data(); }

  bool operator==(const OdGiRasterImage& other) const
  {
    return m_width == other.m_width && m_height == other.m_height && m_pixels == other.m_pixels;
  }

private:
  bool contains(OdUInt32 x, OdUInt32 y) const;
  size_t offset(OdUInt32 x, OdUInt32 y) const;

  OdUInt32 m_width;
  OdUInt32 m_height;
  std::vector<OdUInt8> m_pixels;
};

typedef OdSharedPtr<OdGiRasterImage> OdGiRasterImagePtr;

#endif
