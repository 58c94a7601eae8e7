#include "module/kovCameraPathTracker.h"

#include <QtGlobal>

void kovCameraPathTracker::setPoints(const OdGePoint3dArray& points)
{
  m_points = points;
  rebuild();
}

void kovCameraPathTracker::setValue(const OdGePoint3d& value)
{
  m_cursor = value;
  m_hasCursor = true;
  rebuild();
}

int kovCameraPathTracker::addDrawables(OdGsView* pView)
{
  Q_UNUSED(pView);
  m_shown = true;
  return 1;
}

void kovCameraPathTracker::removeDrawables(OdGsView* pView)
{
  Q_UNUSED(pView);
  m_shown = false;
}

void kovCameraPathTracker::worldDraw(OdGiWorldDraw* pWd) const
{
  // Only while a view shows the tracker: the preview is the rubber band.
  if (m_shown)
    m_preview->worldDraw(pWd);
}

void kovCameraPathTracker::rebuild()
{
  OdGePoint3dArray points = m_points;
  if (m_hasCursor && (points.isEmpty() || !points.last().isEqualTo(m_cursor)))
    points.append(m_cursor);
  m_preview->setFitData(points, 3, 0.0, OdGeVector3d::kIdentity, OdGeVector3d::kIdentity);
}
