#ifndef KOV_GS_POSED_DRAW_H
#define KOV_GS_POSED_DRAW_H

#include "Ge/OdGeMatrix3d.h"

#include <QMap>
#include <QString>

class OdDbEntity;
class OdGiWorldDraw;

// Draws an entity as its worldDraw does, except that inside a block reference
// each nested block reference whose block is named in nodes stands at that
// node's transform (relative to the block it is nested in) instead of its own:
// one pose of a block's node animation.
void kovGsDrawPosed(const OdDbEntity& entity, OdGiWorldDraw& worldDraw, const QMap<QString, OdGeMatrix3d>& nodes);

#endif
