#include "production/kovProductionClock.h"

#include <numeric>

void kovProductionClock::start(qint64 nowMs)
{
  m_start = m_last = nowMs;
  m_frames = 0;
  m_recent.clear();
}

void kovProductionClock::frameDone(qint64 nowMs)
{
  m_recent.push_back(nowMs - m_last);
  if (m_recent.size() > static_cast<size_t>(kWindow))
    m_recent.pop_front();
  m_last = nowMs;
  ++m_frames;
}

double kovProductionClock::framesPerSecond(qint64 nowMs) const
{
  const qint64 elapsed = nowMs - m_start;
  return m_frames > 0 && elapsed > 0 ? m_frames * 1000.0 / elapsed : 0.0;
}

qint64 kovProductionClock::msLeft(int framesLeft) const
{
  if (m_recent.empty())
    return -1;
  const double mean = std::accumulate(m_recent.cbegin(), m_recent.cend(), 0.0) / m_recent.size();
  return static_cast<qint64>(mean * framesLeft + 0.5);
}

QString kovProductionClock::status(int frame, int frames, double framesPerSecond, qint64 msLeft)
{
  QString left = QStringLiteral("...");
  if (msLeft >= 0) {
    const qint64 seconds = (msLeft + 999) / 1000;
    left = seconds >= 3600 ? QStringLiteral("%1:%2:%3")
                                 .arg(seconds / 3600)
                                 .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
                                 .arg(seconds % 60, 2, 10, QLatin1Char('0'))
                           : QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
  }
  return tr("Frame %1 of %2, %3 fps, %4 left").arg(frame).arg(frames).arg(framesPerSecond, 0, 'f', 1).arg(left);
}
