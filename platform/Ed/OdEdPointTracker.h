#ifndef OD_ED_POINT_TRACKER_H
#define OD_ED_POINT_TRACKER_H

#include "Ge/OdGePoint3d.h"
#include "Rx/OdRxClass.h"

class OdGsView;

// Shows what a command would do with the point under the cursor while the
// user picks one (a rubber band, the shape being drawn). The host adds the
// tracker's drawables to the view when the prompt starts, calls setValue as
// the cursor moves and removes the drawables when the prompt ends.
class OdEdPointTracker : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdEdPointTracker);

public:
  virtual void setValue(const OdGePoint3d& value) = 0;
  // Returns the number of drawables added.
  virtual int addDrawables(OdGsView* pView) = 0;
  virtual void removeDrawables(OdGsView* pView) = 0;
};

typedef OdSmartPtr<OdEdPointTracker> OdEdPointTrackerPtr;

#endif
