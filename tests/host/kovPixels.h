#ifndef KOV_PIXELS_H
#define KOV_PIXELS_H

// Measures taken on rendered pictures.
#include <QImage>
#include <QPointF>
#include <QRect>

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

// The centre of the red pixels; (-1, -1) when there are none.
inline QPointF redCentroid(const QImage& image)
{
  double x = 0.0, y = 0.0;
  int n = 0;
  for (int j = 0; j < image.height(); ++j) {
    for (int i = 0; i < image.width(); ++i) {
      if (isRed(image.pixel(i, j))) {
        x += i + 0.5;
        y += j + 0.5;
        ++n;
      }
    }
  }
  return n ? QPointF(x / n, y / n) : QPointF(-1, -1);
}

// The rows from the first to the last that hold red pixels; empty for none.
inline int redHeight(const QImage& image)
{
  int top = image.height(), bottom = -1;
  for (int j = 0; j < image.height(); ++j) {
    for (int i = 0; i < image.width(); ++i) {
      if (isRed(image.pixel(i, j))) {
        top = std::min(top, j);
        bottom = std::max(bottom, j);
      }
    }
  }
  return bottom < 0 ? 0 : bottom - top + 1;
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
