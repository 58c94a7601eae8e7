#ifndef KOV_HOST_CONSOLE_H
#define KOV_HOST_CONSOLE_H

#include "host/api/IkovConsole.h"

#include "Ed/OdEdBaseUserIO.h"

#include <functional>

// The host's command line output: every message and echoed prompt goes to the
// sink the front end installs (standard output, or the command line widget).
// Also serves as the console the command-line runner echoes to.
class kovHostConsole : public IkovConsole {
public:
  void setSink(std::function<void(const QString&)> sink) { m_sink = std::move(sink); }
  // Where progress lines go; without one they are not shown.
  void setProgressSink(std::function<void(const QString&)> sink) { m_progressSink = std::move(sink); }
  void putString(const QString& text) override;
  void putProgress(const QString& text) override;

  // An Ed console that forwards to this one.
  OdEdUserIOPtr edConsole();

private:
  std::function<void(const QString&)> m_sink;
  std::function<void(const QString&)> m_progressSink;
};

#endif
