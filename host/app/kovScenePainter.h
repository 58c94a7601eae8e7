#ifndef KOV_SCENE_PAINTER_H
#define KOV_SCENE_PAINTER_H

#include "Gi/OdGiPrimitiveRecord.h"

#include <QColor>

class kovViewProjection;
class QPainter;

// Draws recorded primitives as wireframe through a projection: what a point
// tracker shows over the engine's picture while a prompt runs.
class kovScenePainter {
public:
  // Draws the record in color.
  static void draw(QPainter& painter, const kovViewProjection& projection, const OdGiPrimitiveRecord& record,
                   const QColor& color);
};

#endif
