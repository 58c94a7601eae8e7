#include "host/app/kovHeadlessRunner.h"

#include "host/app/kovHostApplication.h"
#include "host/app/kovHostConsole.h"
#include "host/app/kovHostServices.h"

#include "Ed/OdEdCommandLine.h"
#include "Ed/OdEdCommandStack.h"

#include <QFile>

#include <algorithm>

kovHeadlessRunner::kovHeadlessRunner(kovHostApplication& app, kovHostServices& services)
  : m_app(app)
  , m_services(services)
  , m_out(stdout)
  , m_err(stderr)
{
  m_services.console()->setSink([this](const QString& text) {
    if (m_progressWidth > 0)
      m_out << '\n';
    m_progressWidth = 0;
    m_out << text << '\n';
    m_out.flush();
  });
  // Each progress line overwrites the one before, blanks covering a longer
  // one; an empty text moves on to the next line.
  m_services.console()->setProgressSink([this](const QString& text) {
    if (text.isEmpty()) {
      if (m_progressWidth > 0)
        m_out << '\n';
      m_progressWidth = 0;
    } else {
      m_out << '\r' << text.leftJustified(m_progressWidth);
      m_progressWidth = std::max(m_progressWidth, static_cast<int>(text.size()));
    }
    m_out.flush();
  });
  m_app.setCommandRunner([this](const QString& line) { return run({ line }) == 0; });
}

bool kovHeadlessRunner::readScript(const QString& path, QStringList& lines, QString& error)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
    error = QStringLiteral("cannot read the script %1: %2").arg(path, file.errorString());
    return false;
  }
  const QStringList all = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
  for (const QString& raw : all) {
    const QString line = raw.trimmed();
    if (!line.isEmpty() && !line.startsWith(QLatin1Char('#')) && !line.startsWith(QLatin1Char(';')))
      lines << line;
  }
  return true;
}

int kovHeadlessRunner::run(const QStringList& lines)
{
  OdEdUserIOPtr console = m_services.console()->edConsole();
  for (int i = 0; i < lines.size(); ++i) {
    OdString message;
    const OdResult res = odedExecuteCommandLine(odFromQString(lines[i]), m_app.currentDatabase(), console, &message);
    m_app.raiseRefreshEvent(QStringLiteral("<event-refresh:database_changed>"));
    if (res != eOk) {
      if (res == eUserBreak)
        message = OdString(L"the command was cancelled before it finished");
      else if (message.isEmpty())
        message = OdString(odResultDescription(res));
      m_err << "kovhost: line " << (i + 1) << " \"" << lines[i] << "\" failed: " << odToQString(message) << '\n';
      m_err.flush();
      return 1;
    }
  }
  return 0;
}

void kovHeadlessRunner::describe()
{
  m_out << "kovhost (headless)\n";
  m_out << "  animation module: " << (m_app.isAnimationModuleLoaded() ? "loaded" : "not loaded") << '\n';
  m_out << "  drawing: " << (m_app.drawingPath().isEmpty() ? QStringLiteral("new") : m_app.drawingPath()) << '\n';
  m_out << "  commands:";
  QStringList names;
  for (const OdEdCommandPtr& command : odedRegCmds()->commands())
    names << odToQString(command->groupName()) + QLatin1Char('.') + odToQString(command->globalName());
  names.sort();
  for (const QString& name : names)
    m_out << ' ' << name;
  m_out << "\n  run commands with -c \"LINE\" (repeatable) or --script FILE; \"save FILE\" keeps the drawing.\n";
  m_out.flush();
}
