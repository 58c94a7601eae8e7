#ifndef KOV_TIMELINE_PAN_H
#define KOV_TIMELINE_PAN_H

#include <QWheelEvent>

// The wheel delta that pans the timeline: a sideways wheel, or the vertical
// wheel held with Shift (some platforms already turn that into a sideways
// delta). Zero when the event does not pan.
inline int panDelta(const QWheelEvent* event)
{
  if (event->angleDelta().x() != 0)
    return event->angleDelta().x();
  return event->modifiers() & Qt::ShiftModifier ? event->angleDelta().y() : 0;
}

#endif
