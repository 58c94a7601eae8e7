#ifndef KOV_TIMELINE_SCALE_H
#define KOV_TIMELINE_SCALE_H

#include <QString>

// The time scale of the editor's timeline, computed from the editor's visible
// start, zoom and current position and the width of the lane: how many pixels
// a millisecond takes, which ticks show and where a time lies. Pure, so that
// the tree, the header and the lanes agree and tests need no widget.
class kovTimelineScale {
public:
  static constexpr double kMinZoom = 1e-5;
  static constexpr double kMaxZoom = 1.0;
  static constexpr double kInitialZoom = 0.03;
  static constexpr int kTickStepCount = 14;
  // Largest first, in milliseconds.
  static const int kTickSteps[kTickStepCount];

  // labelWidth: the pixel width of the widest label ("-250.0s" in the
  // application font); a tick step must leave a third of it between ticks.
  // When even the largest step is finer than that, the largest is taken: a
  // finer one kept from an earlier zoom would put a tick on every pixel.
  static kovTimelineScale compute(int visibleStart, double zoom, int laneWidth, double labelWidth,
                                  int currentPosition);

  int visibleStart = 0;
  double pixelsPerMs = 0.06;
  double msPerPixel = 1.0 / 0.06;
  int firstTick = 0;
  int lastVisible = 0;
  int step = kTickSteps[0];
  int cursorOffset = 0;

  // x of a time from the lane's left edge (the visible start's x is 0, as in
  // timeAt, so that what is drawn at x is what a click at x takes).
  int xOf(int ms) const;
  // The time under x from the lane's left edge, as the header reads it.
  int timeAt(double x) const;
  // A pixel distance in whole milliseconds.
  int msOf(double pixels) const;
  int majorInterval() const { return 5 * step; }
  // The tick label of ms: minutes, seconds or milliseconds by the major
  // interval ("2m", "1.5s", "1.50s", "250ms").
  QString label(int ms) const;
};

#endif
