#include "production/kovProcessRunner.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

kovProcessRunner::kovProcessRunner(QObject* parent)
  : QObject(parent)
{
}

kovProcessRunner::Result kovProcessRunner::run(const QString& program, const QStringList& arguments, int timeoutMs)
{
  Result result;
  QProcess process;
  process.setWorkingDirectory(m_folder);
  process.setProcessEnvironment(m_environment);
  process.setProcessChannelMode(QProcess::SeparateChannels);
  process.setStandardOutputFile(QProcess::nullDevice());
  QByteArray tail;
  connect(&process, &QProcess::readyReadStandardError, this, [&process, &tail] {
    tail += process.readAllStandardError();
    if (tail.size() > kTailBytes)
      tail = tail.right(kTailBytes);
  });

  QEventLoop loop;
  bool timedOut = false;
  QTimer limit;
  limit.setSingleShot(true);
  limit.setTimerType(Qt::PreciseTimer);
  connect(&limit, &QTimer::timeout, &loop, [&] {
    timedOut = true;
    process.kill();
  });
  connect(&process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &loop, &QEventLoop::quit);
  connect(&process, &QProcess::errorOccurred, &loop, [&loop](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart)
      loop.quit();
  });

  m_cancelled = false;
  QElapsedTimer clock;
  clock.start();
  process.start(program, arguments);
  if (process.state() != QProcess::NotRunning || process.error() != QProcess::FailedToStart) {
    limit.start(timeoutMs);
    m_loop = &loop;
    loop.exec();
    m_loop = nullptr;
  }
  if (process.state() != QProcess::NotRunning) {
    process.kill();
    process.waitForFinished();
  }
  tail += process.readAllStandardError();
  result.elapsedMs = clock.elapsed();
  result.stderrTail = QString::fromLocal8Bit(tail.right(kTailBytes));
  if (process.error() == QProcess::FailedToStart) {
    result.status = Status::FailedToStart;
    result.startError = process.errorString();
  } else if (m_cancelled) {
    result.status = Status::Cancelled;
  } else if (timedOut) {
    result.status = Status::TimedOut;
  } else if (process.exitStatus() == QProcess::CrashExit) {
    result.status = Status::Crashed;
  } else {
    result.status = Status::Finished;
    result.exitCode = process.exitCode();
  }
  return result;
}

void kovProcessRunner::cancel()
{
  if (!m_loop)
    return;
  m_cancelled = true;
  m_loop->quit();
}
