#include "host/app/kovScenePainter.h"

#include "host/app/kovViewProjection.h"

#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace {

constexpr int kCircleSegments = 48;
constexpr double kPi = 3.14159265358979323846;
// Below this height text is unreadable: it is left out.
constexpr double kMinTextPixels = 3.0;

using Segment = std::pair<OdGePoint3d, OdGePoint3d>;

OdGePoint3dArray circlePoints(const OdGiPrimitiveRecord& record)
{
  OdGePoint3dArray points;
  if (record.points.isEmpty())
    return points;
  const OdGeVector3d normal = record.normal.isZeroLength() ? OdGeVector3d::kZAxis : record.normal.normal();
  const OdGeVector3d u = normal.perpVector().normal();
  const OdGeVector3d v = normal.crossProduct(u);
  for (int i = 0; i <= kCircleSegments; ++i) {
    const double a = 2.0 * kPi * i / kCircleSegments;
    points.append(record.points.first() + u * (record.radius * std::cos(a)) + v * (record.radius * std::sin(a)));
  }
  return points;
}

void addChain(const OdGePoint3dArray& points, bool closed, std::vector<Segment>& segments)
{
  for (unsigned i = 0; i + 1 < points.size(); ++i)
    segments.emplace_back(points[i], points[i + 1]);
  if (closed && points.size() > 2)
    segments.emplace_back(points.last(), points.first());
}

// A shell's face list: each face's count (negative for a hole), then indices.
void addShellEdges(const OdGiPrimitiveRecord& record, std::vector<Segment>& segments)
{
  const int size = static_cast<int>(record.faceList.size());
  const int vertices = static_cast<int>(record.points.size());
  int i = 0;
  while (i < size) {
    const int count = std::abs(record.faceList[i++]);
    if (count == 0 || i + count > size)
      break;
    for (int k = 0; k < count; ++k) {
      const int a = record.faceList[i + k];
      const int b = record.faceList[i + (k + 1) % count];
      if (a >= 0 && a < vertices && b >= 0 && b < vertices)
        segments.emplace_back(record.points[a], record.points[b]);
    }
    i += count;
  }
}

std::vector<Segment> wireframe(const OdGiPrimitiveRecord& record)
{
  std::vector<Segment> segments;
  switch (record.kind) {
  case OdGiPrimitiveRecord::kPolyline:
    addChain(record.points, false, segments);
    break;
  case OdGiPrimitiveRecord::kPolygon:
    addChain(record.points, true, segments);
    break;
  case OdGiPrimitiveRecord::kCircle:
    addChain(circlePoints(record), false, segments);
    break;
  case OdGiPrimitiveRecord::kShell:
    addShellEdges(record, segments);
    break;
  default:
    break;
  }
  return segments;
}

// The image's corners on screen: top left, top right, bottom left (rows run
// from the top, v from the bottom row up).
bool imageCorners(const kovViewProjection& projection, const OdGiPrimitiveRecord& record, QPointF corners[3])
{
  if (record.points.isEmpty() || record.image.isNull())
    return false;
  const OdGePoint3d& o = record.points.first();
  return projection.project(o + record.secondDirection, corners[0])
         && projection.project(o + record.direction + record.secondDirection, corners[1])
         && projection.project(o, corners[2]);
}

void drawImage(QPainter& painter, const kovViewProjection& projection, const OdGiPrimitiveRecord& record)
{
  QPointF c[3];
  if (!imageCorners(projection, record, c) || record.image->isEmpty())
    return;
  const OdGiRasterImage& raster = *record.image;
  const int w = static_cast<int>(raster.pixelWidth());
  const int h = static_cast<int>(raster.pixelHeight());
  // The platform's blue, green, red, alpha bytes are QImage's ARGB32 words.
  QImage image = QImage(raster.bgraPixels(), w, h, 4 * w, QImage::Format_ARGB32)
                     .convertToFormat(record.transparency ? QImage::Format_ARGB32_Premultiplied
                                                          : QImage::Format_RGB32);
  const QTransform transform((c[1].x() - c[0].x()) / w, (c[1].y() - c[0].y()) / w, (c[2].x() - c[0].x()) / h,
                             (c[2].y() - c[0].y()) / h, c[0].x(), c[0].y());
  painter.save();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setTransform(transform, true);
  painter.drawImage(QPointF(0.0, 0.0), image);
  painter.restore();
}

struct TextPlacement {
  QPointF anchor;
  double angle = 0.0;
  double pixelHeight = 0.0;
};

bool placeText(const kovViewProjection& projection, const OdGiPrimitiveRecord& record, TextPlacement& placement)
{
  if (record.points.isEmpty() || record.text.isEmpty())
    return false;
  const OdGePoint3d& at = record.points.first();
  const OdGeVector3d along = record.direction.normal();
  const OdGeVector3d up = record.normal.crossProduct(along).normal();
  QPointF alongPixel;
  QPointF upPixel;
  if (!projection.project(at, placement.anchor) || !projection.project(at + along * record.height, alongPixel)
      || !projection.project(at + up * record.height, upPixel))
    return false;
  const QPointF d = alongPixel - placement.anchor;
  placement.angle = std::atan2(d.y(), d.x()) * 180.0 / kPi;
  placement.pixelHeight = QLineF(placement.anchor, upPixel).length();
  return placement.pixelHeight >= kMinTextPixels;
}

QFont textFont(const QFont& base, double pixelHeight)
{
  QFont font = base;
  // The record's height is the capital height; a font's pixel size is taller.
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelHeight * 1.4))));
  return font;
}

} // namespace

void kovScenePainter::draw(QPainter& painter, const kovViewProjection& projection, const OdGiPrimitiveRecord& record,
                           const QColor& color)
{
  painter.setPen(QPen(color, 2.0));

  if (record.kind == OdGiPrimitiveRecord::kRasterImage) {
    drawImage(painter, projection, record);
    return;
  }
  if (record.kind == OdGiPrimitiveRecord::kText) {
    TextPlacement placement;
    if (!placeText(projection, record, placement))
      return;
    painter.save();
    painter.setFont(textFont(painter.font(), placement.pixelHeight));
    painter.translate(placement.anchor);
    painter.rotate(placement.angle);
    painter.drawText(QPointF(0.0, 0.0), odToQString(record.text));
    painter.restore();
    return;
  }
  for (const Segment& segment : wireframe(record)) {
    QPointF a;
    QPointF b;
    if (projection.projectSegment(segment.first, segment.second, a, b))
      painter.drawLine(a, b);
  }
}
