#ifndef OD_GS_VIEW_H
#define OD_GS_VIEW_H

#include "Ge/OdGePoint3d.h"

#include <functional>

class OdEdPointTracker;
class OdGiWorldDraw;

// The host's side of a viewport as point trackers see it: the platform only
// declares this class, so a tracker can do nothing with it but hand it back.
// The viewport keeps the tracker of the running point prompt, moves it with
// the cursor and draws it after the drawing.
class OdGsView {
public:
  explicit OdGsView(std::function<void()> invalidate) : m_invalidate(std::move(invalidate)) {}

  // Called by the user input around a point prompt with a tracker.
  void attachTracker(OdEdPointTracker* tracker);
  void detachTracker(OdEdPointTracker* tracker);
  OdEdPointTracker* tracker() const { return m_tracker; }

  // Tells the tracker the point under the cursor and asks for a repaint.
  void trackCursor(const OdGePoint3d& point);
  // Lets the tracker draw what it shows; nothing without a tracker.
  void drawTracker(OdGiWorldDraw* worldDraw) const;

private:
  std::function<void()> m_invalidate;
  OdEdPointTracker* m_tracker = nullptr;
};

#endif
