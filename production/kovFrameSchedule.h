#ifndef KOV_FRAME_SCHEDULE_H
#define KOV_FRAME_SCHEDULE_H

// The frames of a video cut in time. A frame comes every step milliseconds
// (the integer part of 1000 / frame rate) from one step after the start; the
// last frame is the first one at or after the end. The picture at the start
// itself is never a frame: the engine settles on it first. A frame's number,
// which names its file, is its time divided by the step.
class kovFrameSchedule {
public:
  kovFrameSchedule(int startMs, int endMs, double framesPerSecond);

  // 0 when the rate gives no whole millisecond (0 or less, above 1000, not a number).
  static int stepMs(double framesPerSecond);

  // A step of at least 1 ms and an end not before the start.
  bool isValid() const { return m_step > 0 && m_end >= m_start; }
  int step() const { return m_step; }
  int startMs() const { return m_start; }
  int endMs() const { return m_end; }
  // Frames 1 to frameCount(); 0 when the schedule is not valid.
  int frameCount() const;
  // Frame k (1-based) is shown at start + k * step.
  int timeOfFrame(int k) const { return m_start + k * m_step; }
  int frameNumber(int k) const { return timeOfFrame(k) / m_step; }
  // How far ms lies from the start toward the end, 0 to 1.
  double progressAt(int ms) const;

private:
  int m_start;
  int m_end;
  int m_step;
};

#endif
