#include "host/render/kovSkyCubeMap.h"

#include <Graphic3d_CubeMapSeparate.hxx>
#include <Image_PixMap.hxx>
#include <NCollection_Array1.hxx>

#include <algorithm>
#include <cmath>

namespace {

// The up component of the direction of a texel of cube face f (in the
// engine's order +X, -X, +Y, -Y, +Z, -Z, up being the map's +Y), with t
// running from -1 on the top row to 1 on the bottom one.
double upComponent(int face, double s, double t, double& length)
{
  length = std::sqrt(1.0 + s * s + t * t);
  switch (face) {
  case 2:
    return 1.0;
  case 3:
    return -1.0;
  default:
    return -t;
  }
}

Standard_Byte toByte(double linear)
{
  // The map is sampled as sRGB colour.
  const double c = std::clamp(linear, 0.0, 1.0);
  const double srgb = c <= 0.0031308 ? c * 12.92 : 1.055 * std::pow(c, 1.0 / 2.4) - 0.055;
  return static_cast<Standard_Byte>(std::lround(srgb * 255.0));
}

} // namespace

kovRgb kovSkyCubeMap::colorAt(const kovSkyModel::Lighting& lighting, double elevation)
{
  if (elevation < 0.0)
    return lighting.ground;
  const double t = std::pow(std::sin(std::min(elevation, M_PI / 2.0)), 0.4);
  const kovRgb& h = lighting.skyHorizon;
  const kovRgb& z = lighting.skyZenith;
  return { h.r + (z.r - h.r) * t, h.g + (z.g - h.g) * t, h.b + (z.b - h.b) * t };
}

kovRgb kovSkyCubeMap::meanRadiance(const kovSkyModel::Lighting& lighting)
{
  // The mean over the hemisphere of L cos(theta) / pi is the integral over
  // elevation of L sin(2 el).
  constexpr int kSteps = 90;
  kovRgb sum;
  for (int i = 0; i < kSteps; ++i) {
    const double elevation = (i + 0.5) / kSteps * M_PI / 2.0;
    const double weight = std::sin(2.0 * elevation) * (M_PI / 2.0) / kSteps;
    const kovRgb c = colorAt(lighting, elevation);
    sum = { sum.r + c.r * weight, sum.g + c.g * weight, sum.b + c.b * weight };
  }
  return sum;
}

Handle(Graphic3d_CubeMap) kovSkyCubeMap::create(const kovSkyModel::Lighting& lighting, int size)
{
  NCollection_Array1<Handle(Image_PixMap)> faces(0, 5);
  for (int face = 0; face < 6; ++face) {
    Handle(Image_PixMap) image = new Image_PixMap();
    image->InitZero(Image_Format_RGB, size, size);
    image->SetTopDown(true);
    for (int row = 0; row < size; ++row) {
      for (int col = 0; col < size; ++col) {
        const double s = (col + 0.5) / size * 2.0 - 1.0;
        const double t = (row + 0.5) / size * 2.0 - 1.0;
        double length = 1.0;
        const double up = upComponent(face, s, t, length);
        const kovRgb c = colorAt(lighting, std::asin(std::clamp(up / length, -1.0, 1.0)));
        Standard_Byte* out = image->ChangeRawValue(row, col);
        out[0] = toByte(c.r);
        out[1] = toByte(c.g);
        out[2] = toByte(c.b);
      }
    }
    faces.SetValue(face, image);
  }
  return new Graphic3d_CubeMapSeparate(faces);
}
