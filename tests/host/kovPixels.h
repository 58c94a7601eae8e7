#ifndef KOV_PIXELS_H
#define KOV_PIXELS_H

// Measures taken on rendered pictures: the red of a red (colour 1) entity
// under any of the styles' lighting, where it is, and how bright a place is.
#include <QImage>
#include <QPointF>
#include <QRect>

#include <algorithm>
#include <cmath>

namespace kovHostTest {

inline double luminance(QRgb c)
{
  return 0.2126 * qRed(c) + 0.7152 * qGreen(c) + 0.0722 * qBlue(c);
}

inline bool isRed(QRgb c)
{
  return qRed(c) > 60 && qRed(c) > 2 * qGreen(c) && qRed(c) > 2 * qBlue(c);
}

// The red pixels inside region (the whole picture when empty): how many,
// their centre ((-1, -1) when there are none) and the rows they span.
struct Red {
  int count = 0;
  QPointF centre { -1.0, -1.0 };
  int height = 0;
};

inline Red red(const QImage& image, QRect region = QRect())
{
  region = region.isEmpty() ? image.rect() : region & image.rect();
  double x = 0.0, y = 0.0;
  int top = region.bottom() + 1, bottom = -1;
  Red found;
  for (int j = region.top(); j <= region.bottom(); ++j) {
    for (int i = region.left(); i <= region.right(); ++i) {
      if (isRed(image.pixel(i, j))) {
        x += i + 0.5;
        y += j + 0.5;
        ++found.count;
        top = std::min(top, j);
        bottom = std::max(bottom, j);
      }
    }
  }
  if (found.count) {
    found.centre = QPointF(x / found.count, y / found.count);
    found.height = bottom - top + 1;
  }
  return found;
}

inline QPointF redCentroid(const QImage& image)
{
  return red(image).centre;
}

inline int redHeight(const QImage& image)
{
  return red(image).height;
}

// Mean luminance over a square of pixels around p.
inline double meanAround(const QImage& image, const QPointF& p, int half = 3)
{
  double sum = 0.0;
  int n = 0;
  for (int j = int(p.y()) - half; j <= int(p.y()) + half; ++j) {
    for (int i = int(p.x()) - half; i <= int(p.x()) + half; ++i) {
      if (image.rect().contains(i, j)) {
        sum += luminance(image.pixel(i, j));
        ++n;
      }
    }
  }
  return n ? sum / n : 0.0;
}

} // namespace kovHostTest

#endif
