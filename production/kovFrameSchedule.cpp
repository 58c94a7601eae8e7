#include "production/kovFrameSchedule.h"

#include <algorithm>
#include <cmath>

kovFrameSchedule::kovFrameSchedule(int startMs, int endMs, double framesPerSecond)
  : m_start(startMs)
  , m_end(endMs)
  , m_step(stepMs(framesPerSecond))
{
}

int kovFrameSchedule::stepMs(double framesPerSecond)
{
  if (!(framesPerSecond > 0.0) || !std::isfinite(framesPerSecond))
    return 0;
  return static_cast<int>(std::min(1000.0 / framesPerSecond, 1e9));
}

int kovFrameSchedule::frameCount() const
{
  if (!isValid())
    return 0;
  // Enough steps to reach the end, and one frame even for a cut of no length.
  const long long span = static_cast<long long>(m_end) - m_start;
  return static_cast<int>(std::max(1LL, (span + m_step - 1) / m_step));
}

double kovFrameSchedule::progressAt(int ms) const
{
  if (m_end <= m_start)
    return ms >= m_end ? 1.0 : 0.0;
  return std::clamp(static_cast<double>(ms - m_start) / (m_end - m_start), 0.0, 1.0);
}
