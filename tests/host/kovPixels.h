#ifndef KOV_PIXELS_H
#define KOV_PIXELS_H

// Reading the engine's pictures in tests: the red of a red (colour 1) entity
// under any of the styles' lighting, and where it is.
#include <QImage>
#include <QPointF>
#include <QRect>

namespace kovPixels {

inline bool isRed(QRgb c)
{
  return qRed(c) > 60 && qRed(c) > 2 * qGreen(c) && qRed(c) > 2 * qBlue(c);
}

// The red pixels inside region (the whole picture when empty): how many, and
// their centre, (-1, -1) when there are none.
struct Red {
  int count = 0;
  QPointF centre { -1.0, -1.0 };
};

inline Red red(const QImage& image, QRect region = QRect())
{
  region = region.isEmpty() ? image.rect() : region & image.rect();
  double x = 0.0, y = 0.0;
  Red found;
  for (int j = region.top(); j <= region.bottom(); ++j) {
    for (int i = region.left(); i <= region.right(); ++i) {
      if (isRed(image.pixel(i, j))) {
        x += i + 0.5;
        y += j + 0.5;
        ++found.count;
      }
    }
  }
  if (found.count)
    found.centre = QPointF(x / found.count, y / found.count);
  return found;
}

inline QPointF redCentroid(const QImage& image)
{
  return red(image).centre;
}

} // namespace kovPixels

#endif
