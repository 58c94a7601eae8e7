#ifndef KOV_SCENE_PAINTER_H
#define KOV_SCENE_PAINTER_H

#include "Gi/OdGiPrimitiveRecord.h"

#include <QColor>
#include <QPointF>

class kovViewProjection;
class QPainter;

// Draws recorded primitives as wireframe through a projection, and measures
// how far a pixel is from what they draw, for picking.
class kovScenePainter {
public:
  // The colour a record is drawn in on the viewport's dark background:
  // inherited colours and the foreground colour come out light.
  static QColor colorOf(const OdGiPrimitiveRecord& record);

  // Draws the record with pen (its colour unless the pen overrides it).
  static void draw(QPainter& painter, const kovViewProjection& projection, const OdGiPrimitiveRecord& record,
                   const QColor* highlight = nullptr);

  // The distance in pixels from pixel to the drawn record; 0 inside an image
  // or polygon, infinity when nothing of it is in front of the eye.
  static double distance(const kovViewProjection& projection, const OdGiPrimitiveRecord& record,
                         const QPointF& pixel);
};

#endif
