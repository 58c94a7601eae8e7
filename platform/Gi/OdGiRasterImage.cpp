#include "Gi/OdGiRasterImage.h"

OdGiRasterImage::OdGiRasterImage(OdUInt32 width, OdUInt32 height)
  : m_width(height ? width : 0)
  , m_height(width ? height : 0)
  , m_pixels(static_cast<size_t>(m_width) * m_height * 4, 0)
{
}

bool OdGiRasterImage::contains(OdUInt32 x, OdUInt32 y) const
{
  // Asserted because a caller outside the image is a bug; checked anyway so
  // that a release build never touches memory outside the pixels.
  ODA_ASSERT(x < m_width && y < m_height);
  return x < m_width && y < m_height;
}

size_t OdGiRasterImage::offset(OdUInt32 x, OdUInt32 y) const
{
  return (static_cast<size_t>(y) * m_width + x) * 4;
}

OdUInt32 OdGiRasterImage::pixel(OdUInt32 x, OdUInt32 y) const
{
  if (!contains(x, y))
    return 0;
  const OdUInt8* p = m_pixels.data() + offset(x, y);
  return (static_cast<OdUInt32>(p[3]) << 24) | (static_cast<OdUInt32>(p[2]) << 16)
      | (static_cast<OdUInt32>(p[1]) << 8) | p[0];
}

void OdGiRasterImage::setPixel(OdUInt32 x, OdUInt32 y, OdUInt8 red, OdUInt8 green, OdUInt8 blue, OdUInt8 alpha)
{
  if (!contains(x, y))
    return;
  OdUInt8* p = m_pixels.data() + offset(x, y);
  p[0] = blue;
  p[1] = green;
  p[2] = red;
  p[3] = alpha;
}
