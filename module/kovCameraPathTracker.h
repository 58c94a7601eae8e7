#ifndef KOV_CAMERA_PATH_TRACKER_H
#define KOV_CAMERA_PATH_TRACKER_H

#include "Db/OdDbSpline.h"
#include "Ed/OdEdPointTracker.h"

// The rubber band of the camera path input: the spline as it would be with
// the cursor's position as its next point.
class kovCameraPathTracker : public OdEdPointTracker {
public:
  void setPoints(const OdGePoint3dArray& points);
  void setValue(const OdGePoint3d& value) override;
  int addDrawables(OdGsView* pView) override;
  void removeDrawables(OdGsView* pView) override;
  void worldDraw(OdGiWorldDraw* pWd) const override;

  // The spline through the picked points and the cursor.
  const OdDbSpline* preview() const { return m_preview.get(); }
  bool isShown() const { return m_shown; }

private:
  void rebuild();

  OdGePoint3dArray m_points;
  OdGePoint3d m_cursor;
  bool m_hasCursor = false;
  bool m_shown = false;
  OdDbSplinePtr m_preview = OdDbSpline::createObject();
};

#endif
