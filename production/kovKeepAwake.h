#ifndef KOV_KEEP_AWAKE_H
#define KOV_KEEP_AWAKE_H

#include <QString>

#include <memory>

// Keeps the machine and its display from sleeping while it lives, so that a
// long production is not stopped by an idle timeout: on Windows through the
// thread's execution state; on Linux through logind's inhibitor lock, else
// the desktop's screen saver, over D-Bus where either runs; elsewhere it
// does nothing.
class kovKeepAwake {
public:
  kovKeepAwake();
  ~kovKeepAwake();
  kovKeepAwake(const kovKeepAwake&) = delete;
  kovKeepAwake& operator=(const kovKeepAwake&) = delete;

  // Whether some instance holds the system awake now.
  static bool isHeld();
  // Who keeps it awake ("logind", "screensaver", "windows"); empty when nobody could.
  QString inhibitor() const { return m_inhibitor; }

private:
  struct Hold;
  std::unique_ptr<Hold> m_hold;
  QString m_inhibitor;
};

#endif
