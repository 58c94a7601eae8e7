#ifndef KOV_INTERRUPT_WATCH_H
#define KOV_INTERRUPT_WATCH_H

#include <QObject>
#include <QTimer>

// Turns Ctrl+C (SIGINT) and SIGTERM into a signal while it lives, so that a
// long command run without windows can stop cleanly instead of dying half
// way; the handlers it replaced come back when it goes. Does nothing where
// there are no such signals.
class kovInterruptWatch : public QObject {
  Q_OBJECT
public:
  kovInterruptWatch();
  ~kovInterruptWatch() override;

signals:
  void interrupted();

private:
  QTimer m_poll;
};

#endif
