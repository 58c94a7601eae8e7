#include "editor/kovTimelineScale.h"

#include <cmath>

const int kovTimelineScale::kTickSteps[kovTimelineScale::kTickStepCount] = {
  720000, 360000, 180000, 120000, 60000, 12000, 6000, 2000, 1000, 500, 200, 100, 50, 10
};

kovTimelineScale kovTimelineScale::compute(int visibleStart, double zoom, int laneWidth, double labelWidth,
                                           int currentPosition)
{
  kovTimelineScale scale;
  scale.visibleStart = visibleStart;
  scale.msPerPixel = 0.5 / zoom;
  scale.pixelsPerMs = 1.0 / scale.msPerPixel;
  scale.lastVisible = static_cast<int>(std::lround(visibleStart + laneWidth * scale.msPerPixel));
  const double minimumStep = labelWidth / 3.0 / scale.pixelsPerMs;
  scale.step = kTickSteps[0];
  for (int step : kTickSteps) {
    if (step < minimumStep)
      break;
    scale.step = step;
  }
  // The remainder of a negative start is negative: round toward the earlier tick.
  int remainder = visibleStart % scale.step;
  if (remainder < 0)
    remainder += scale.step;
  scale.firstTick = visibleStart - remainder;
  scale.cursorOffset = currentPosition - scale.firstTick;
  return scale;
}

int kovTimelineScale::xOf(int ms) const
{
  return static_cast<int>(std::lround((static_cast<double>(ms) - visibleStart) * pixelsPerMs));
}

int kovTimelineScale::timeAt(double x) const
{
  return static_cast<int>(std::lround(x / pixelsPerMs + visibleStart));
}

int kovTimelineScale::msOf(double pixels) const
{
  return static_cast<int>(std::lround(pixels / pixelsPerMs));
}

QString kovTimelineScale::label(int ms) const
{
  const int major = majorInterval();
  if (major >= 60000)
    return QString::number(ms / 60000.0, 'f', 0) + QLatin1Char('m');
  if (major >= 10000)
    return QString::number(ms / 1000.0, 'f', 1) + QLatin1Char('s');
  if (major >= 250)
    return QString::number(ms / 1000.0, 'f', 2) + QLatin1Char('s');
  return QString::number(ms) + QStringLiteral("ms");
}
