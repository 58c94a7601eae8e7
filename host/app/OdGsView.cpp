#include "host/app/OdGsView.h"

#include "Ed/OdEdPointTracker.h"

void OdGsView::attachTracker(OdEdPointTracker* tracker)
{
  if (!tracker || tracker == m_tracker)
    return;
  tracker->addDrawables(this);
  m_tracker = tracker;
  m_invalidate();
}

void OdGsView::detachTracker(OdEdPointTracker* tracker)
{
  if (!tracker || tracker != m_tracker)
    return;
  m_tracker = nullptr;
  tracker->removeDrawables(this);
  m_invalidate();
}

void OdGsView::trackCursor(const OdGePoint3d& point)
{
  if (!m_tracker)
    return;
  m_tracker->setValue(point);
  m_invalidate();
}

void OdGsView::drawTracker(OdGiWorldDraw* worldDraw) const
{
  if (m_tracker)
    m_tracker->worldDraw(worldDraw);
}
