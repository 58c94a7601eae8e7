#include "db/kovAnimationIcons.h"

#include <cmath>
#include <memory>

namespace {

std::unique_ptr<OdGiRasterImage>& cameraIcon()
{
  static std::unique_ptr<OdGiRasterImage> icon;
  return icon;
}

std::unique_ptr<OdGiRasterImage>& subjectIcon()
{
  static std::unique_ptr<OdGiRasterImage> icon;
  return icon;
}

void fillRect(OdGiRasterImage& image, int x0, int y0, int x1, int y1, OdUInt8 r, OdUInt8 g, OdUInt8 b)
{
  for (int y = y0; y <= y1; ++y)
    for (int x = x0; x <= x1; ++x)
      image.setPixel(static_cast<OdUInt32>(x), static_cast<OdUInt32>(y), r, g, b);
}

void fillDisc(OdGiRasterImage& image, double cx, double cy, double radius, OdUInt8 r, OdUInt8 g, OdUInt8 b)
{
  for (int y = 0; y < kovAnimationIcons::kSize; ++y)
    for (int x = 0; x < kovAnimationIcons::kSize; ++x)
      if (std::hypot(x + 0.5 - cx, y + 0.5 - cy) <= radius)
        image.setPixel(static_cast<OdUInt32>(x), static_cast<OdUInt32>(y), r, g, b);
}

// A film camera seen from the side: two reels on a body, the lens to the right.
std::unique_ptr<OdGiRasterImage> drawCamera()
{
  auto image = std::make_unique<OdGiRasterImage>(kovAnimationIcons::kSize, kovAnimationIcons::kSize);
  fillDisc(*image, 9.0, 9.0, 6.0, 40, 40, 48);
  fillDisc(*image, 20.0, 9.0, 6.0, 40, 40, 48);
  fillDisc(*image, 9.0, 9.0, 2.0, 200, 200, 210);
  fillDisc(*image, 20.0, 9.0, 2.0, 200, 200, 210);
  fillRect(*image, 3, 15, 24, 27, 40, 40, 48);
  fillRect(*image, 25, 18, 30, 24, 40, 40, 48);
  fillRect(*image, 6, 18, 10, 20, 230, 60, 50);
  return image;
}

// A diamond with a bright rim: the place of an animated object.
std::unique_ptr<OdGiRasterImage> drawSubject()
{
  auto image = std::make_unique<OdGiRasterImage>(kovAnimationIcons::kSize, kovAnimationIcons::kSize);
  const double c = kovAnimationIcons::kSize / 2.0;
  for (int y = 0; y < kovAnimationIcons::kSize; ++y) {
    for (int x = 0; x < kovAnimationIcons::kSize; ++x) {
      const double d = std::fabs(x + 0.5 - c) + std::fabs(y + 0.5 - c);
      if (d <= 13.0)
        image->setPixel(static_cast<OdUInt32>(x), static_cast<OdUInt32>(y), 250, 160, 30);
      if (d <= 10.0)
        image->setPixel(static_cast<OdUInt32>(x), static_cast<OdUInt32>(y), 60, 90, 200);
    }
  }
  return image;
}

} // namespace

void kovAnimationIcons::create()
{
  cameraIcon() = drawCamera();
  subjectIcon() = drawSubject();
}

void kovAnimationIcons::destroy()
{
  cameraIcon().reset();
  subjectIcon().reset();
}

const OdGiRasterImage* kovAnimationIcons::camera()
{
  return cameraIcon().get();
}

const OdGiRasterImage* kovAnimationIcons::subject()
{
  return subjectIcon().get();
}
