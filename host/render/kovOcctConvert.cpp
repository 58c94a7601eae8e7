#include "host/render/kovOcctConvert.h"

#include "Gi/OdGiRasterImage.h"

#include <cmath>

namespace kovOcct {

namespace {

const OdUInt32 kNeutral = 0xC8C8C4;

} // namespace

OdUInt32 packedColor(const OdCmEntityColor& c)
{
  if (c.isByColor() || (c.isByACI() && c.colorIndex() != OdCmEntityColor::kACIforeground))
    return (OdUInt32(c.red()) << 16) | (OdUInt32(c.green()) << 8) | c.blue();
  return kNeutral;
}

Quantity_Color unpackedColor(OdUInt32 rgb)
{
  return Quantity_Color(((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0,
                        Quantity_TOC_sRGB);
}

Quantity_Color color(const OdCmEntityColor& c)
{
  return unpackedColor(packedColor(c));
}

Handle(Image_PixMap) pixMap(const OdGiRasterImage& image)
{
  Handle(Image_PixMap) pixels = new Image_PixMap();
  if (!pixels->InitZero(Image_Format_RGBA, image.pixelWidth(), image.pixelHeight()))
    return pixels;
  pixels->SetTopDown(false);
  for (OdUInt32 y = 0; y < image.pixelHeight(); ++y) {
    for (OdUInt32 x = 0; x < image.pixelWidth(); ++x) {
      const OdUInt32 argb = image.pixel(x, y);
      Standard_Byte* out = pixels->ChangeRawValue(image.pixelHeight() - 1 - y, x);
      out[0] = static_cast<Standard_Byte>(argb >> 16);
      out[1] = static_cast<Standard_Byte>(argb >> 8);
      out[2] = static_cast<Standard_Byte>(argb);
      out[3] = static_cast<Standard_Byte>(argb >> 24);
    }
  }
  return pixels;
}

bool similarity(const OdGeMatrix3d& m, gp_Trsf& trsf)
{
  const OdGeVector3d x = m.getCsXAxis();
  const OdGeVector3d y = m.getCsYAxis();
  const OdGeVector3d z = m.getCsZAxis();
  const double s = x.length();
  const double tol = 1e-9 * std::max(1.0, s);
  if (s <= 1e-12 || std::fabs(y.length() - s) > tol || std::fabs(z.length() - s) > tol
      || std::fabs(x.dotProduct(y)) > tol * s || std::fabs(y.dotProduct(z)) > tol * s
      || std::fabs(z.dotProduct(x)) > tol * s || x.crossProduct(y).dotProduct(z) <= 0.0)
    return false;
  const OdGePoint3d o = m.getCsOrigin();
  trsf.SetValues(m(0, 0), m(0, 1), m(0, 2), o.x, m(1, 0), m(1, 1), m(1, 2), o.y, m(2, 0), m(2, 1), m(2, 2), o.z);
  return true;
}

} // namespace kovOcct
