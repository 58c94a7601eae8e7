#include "host/app/kovHostConsole.h"

#include "Ed/OdEdCancel.h"

namespace {

// Output only: prompts come from the script or the command line, never from here.
class EdConsole : public OdEdBaseUserIO {
public:
  explicit EdConsole(kovHostConsole* console) : m_console(console) {}
  void putString(const OdString& text) override { m_console->putString(odToQString(text)); }

protected:
  OdString getInput(const OdString& prompt) override
  {
    putString(prompt);
    throw OdEdCancel();
  }

private:
  kovHostConsole* m_console;
};

} // namespace

void kovHostConsole::putString(const QString& text)
{
  if (m_sink)
    m_sink(text);
}

void kovHostConsole::putProgress(const QString& text)
{
  if (m_progressSink)
    m_progressSink(text);
}

OdEdUserIOPtr kovHostConsole::edConsole()
{
  return OdEdUserIOPtr(new EdConsole(this));
}
