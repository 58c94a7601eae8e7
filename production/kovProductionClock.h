#ifndef KOV_PRODUCTION_CLOCK_H
#define KOV_PRODUCTION_CLOCK_H

#include <QCoreApplication>
#include <QString>

#include <deque>

// How fast a production goes: frames per second so far, and the time left
// from the times the last frames took. Times are milliseconds on any
// steady clock, given by the caller.
class kovProductionClock {
  Q_DECLARE_TR_FUNCTIONS(kovProductionClock)
public:
  // The frames whose times the estimate of the time left goes by.
  static constexpr int kWindow = 10;

  void start(qint64 nowMs);
  void frameDone(qint64 nowMs);
  int framesDone() const { return m_frames; }
  // 0 until a frame is done.
  double framesPerSecond(qint64 nowMs) const;
  // -1 until a frame is done.
  qint64 msLeft(int framesLeft) const;

  // "Frame 12 of 250, 8.3 fps, 0:28 left"; the time left reads "..." while
  // it is not known.
  static QString status(int frame, int frames, double framesPerSecond, qint64 msLeft);

private:
  qint64 m_start = 0;
  qint64 m_last = 0;
  int m_frames = 0;
  std::deque<qint64> m_recent;
};

#endif
