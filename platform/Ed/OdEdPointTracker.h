#ifndef OD_ED_POINT_TRACKER_H
#define OD_ED_POINT_TRACKER_H

#include "Ge/OdGePoint3d.h"
#include "Rx/OdRxClass.h"

class OdGiWorldDraw;
class OdGsView;

// Shows what a command would do with the point under the cursor while the
// user picks one (a rubber band, the shape being drawn). The host adds the
// tracker's drawables to the view when the prompt starts, calls setValue as
// the cursor moves and removes the drawables when the prompt ends. While the
// drawables are added, the view has the tracker draw itself with worldDraw.
class OdEdPointTracker : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdEdPointTracker);

public:
  virtual void setValue(const OdGePoint3d& value) = 0;
  // Returns the number of drawables added.
  virtual int addDrawables(OdGsView* pView) = 0;
  virtual void removeDrawables(OdGsView* pView) = 0;
  // Draws what the tracker shows for the last value set. The default draws
  // nothing, for trackers that only follow the point.
  virtual void worldDraw(OdGiWorldDraw* pWd) const { static_cast<void>(pWd); }
};

typedef OdSmartPtr<OdEdPointTracker> OdEdPointTrackerPtr;

#endif
