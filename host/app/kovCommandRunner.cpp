#include "host/app/kovCommandRunner.h"

#include "host/app/kovHostApplication.h"
#include "host/app/kovHostLog.h"

#include "Ed/OdDbCommandContext.h"
#include "Ed/OdEdCancel.h"
#include "Ed/OdEdCommandStack.h"

#include <exception>

kovCommandRunner::kovCommandRunner(kovHostApplication& app, const kovInteractiveUserIOPtr& io, QObject* parent)
  : QObject(parent)
  , m_app(app)
  , m_io(io)
{
}

void kovCommandRunner::print(const QString& text)
{
  m_io->putString(odFromQString(text));
}

bool kovCommandRunner::run(const QString& line)
{
  if (m_running) {
    print(tr("A command is running: finish or cancel it first."));
    return false;
  }
  OdArray<OdEdScriptWord> words;
  OdString error;
  if (OdEdScriptWord::split(odFromQString(line), words, error) != eOk) {
    print(odToQString(error));
    return false;
  }
  if (words.isEmpty())
    return true;
  const OdEdScriptWord name = words.first();
  words.removeAt(0);

  m_running = true;
  emit runningChanged(true);
  m_io->beginCommand(m_app.currentDatabase(), words);
  const bool finished = execute(name);
  m_io->endCommand();
  m_running = false;
  emit runningChanged(false);
  m_app.raiseRefreshEvent(QStringLiteral("<event-refresh:database_changed>"));
  return finished;
}

bool kovCommandRunner::execute(const OdEdScriptWord& name)
{
  print(tr("Command: %1").arg(odToQString(name.typed)));
  qCInfo(lcHostDesktop) << "command" << odToQString(name.typed);
  try {
    if (name.isCancel())
      throw OdEdCancel();
    odedRegCmds()->executeCommand(name.text, OdDbCommandContext::createObject(m_io.get(), m_app.currentDatabase()));
  } catch (const OdEdCancel&) {
    print(QStringLiteral("*Cancel*"));
    m_io->takeUnusedWords();
    return false;
  } catch (const OdError& error) {
    print(odToQString(error.description()));
    qCWarning(lcHostDesktop) << "command" << odToQString(name.text) << "failed:" << odToQString(error.description());
    m_io->takeUnusedWords();
    return false;
  } catch (const std::exception& error) {
    // Nothing may escape into the event handler that called us.
    print(tr("The command failed: %1").arg(QString::fromLocal8Bit(error.what())));
    qCCritical(lcHostDesktop) << "command" << odToQString(name.text) << "threw" << error.what();
    m_io->takeUnusedWords();
    return false;
  }
  const QStringList unused = m_io->takeUnusedWords();
  if (!unused.isEmpty()) {
    print(tr("The command left input unused: %1").arg(unused.join(QLatin1Char(' '))));
    return false;
  }
  return true;
}

void kovCommandRunner::type(const QString& line)
{
  QString error;
  if (!m_io->typeLine(line, error))
    print(error);
}

void kovCommandRunner::cancel()
{
  m_io->cancel();
}
