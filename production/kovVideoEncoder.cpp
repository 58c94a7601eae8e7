#include "production/kovVideoEncoder.h"

#include "production/kovEncoderCommand.h"
#include "production/kovFrameCleanup.h"

#include "host/api/IkovApplication.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTextStream>
#include <QUrl>

#include <algorithm>

kovVideoEncoder::kovVideoEncoder(QObject* parent)
  : QObject(parent)
{
}

QString kovVideoEncoder::ffmpegExecutable()
{
#ifdef Q_OS_WIN
  const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/ffmpeg/bin/ffmpeg.exe");
#else
  const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/ffmpeg/bin/ffmpeg");
#endif
  if (QFileInfo(beside).isExecutable())
    return beside;
  return QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
}

QString kovVideoEncoder::missingFfmpegMessage()
{
  return tr("ffmpeg was not found, so no video can be made. Put it in %1 or on the PATH "
            "(on Debian: apt-get install ffmpeg).")
      .arg(QDir::toNativeSeparators(QCoreApplication::applicationDirPath() + QStringLiteral("/ffmpeg/bin")));
}

int kovVideoEncoder::timeoutMs()
{
  const IkovApplication* app = kovApp();
  const int asked = app ? app->setting(timeoutKey(), kDefaultTimeoutMs).toInt() : kDefaultTimeoutMs;
  return std::max(asked, kDefaultTimeoutMs);
}

bool kovVideoEncoder::encodeAnimation(const Job& job, QString& message)
{
  const QString dir = QFileInfo(job.outputPath).absolutePath();
  m_logPath = dir + QLatin1Char('/') + logName();
  const QString listPath = dir + QLatin1Char('/') + kovEncoderCommand::framesListName();
  QString output = job.outputPath;
  if (!output.endsWith(job.extension))
    output += QLatin1Char('.') + job.extension;
  QFile::remove(m_logPath);
  QFile::remove(output);

  QFile list(listPath);
  if (!list.open(QIODevice::WriteOnly | QIODevice::Truncate)
      || list.write(kovEncoderCommand::framesList(job.frames)) < 0 || !list.flush()) {
    message = tr("The frame list %1 can't be written: %2").arg(listPath, list.errorString());
    return false;
  }
  list.close();

  const QStringList arguments = kovEncoderCommand::arguments(job.framesPerSecond, job.codec, job.bitRateKbps, output);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  // -report writes ffmpeg's own account into the log, at the level of its
  // informational messages.
  environment.insert(QStringLiteral("FFREPORT"), QStringLiteral("file=%1:level=32").arg(logName()));
  m_runner.setEnvironment(environment);
  m_runner.setWorkingDirectory(dir);
  const kovProcessRunner::Result result = m_runner.run(job.ffmpegPath, arguments, job.timeoutMs);
  appendToLog(job, arguments, result);

  message.clear();
  if (!result.succeeded()) {
    message = tr("%1 (See log file for more info.)\n%2")
                  .arg(failureText(job, result), QDir::toNativeSeparators(m_logPath));
    // What an encoder that did not finish left is no clip.
    QFile::remove(output);
    return false;
  }
  if (!QFileInfo::exists(output)) {
    message = tr("Animation not produced see log file for more info.\n%1").arg(QDir::toNativeSeparators(m_logPath));
    return false;
  }
  // Only a clip that exists takes the place of its frames.
  if (job.deleteImages)
    m_cleanup = kovFrameCleanup::schedule(listPath, job.frames);
  if (job.openClip)
    QDesktopServices::openUrl(QUrl::fromLocalFile(output));
  return true;
}

QString kovVideoEncoder::failureText(const Job& job, const kovProcessRunner::Result& result) const
{
  switch (result.status) {
  case kovProcessRunner::Status::FailedToStart:
    return tr("ffmpeg could not be started: %1.").arg(result.startError);
  case kovProcessRunner::Status::Crashed:
    return tr("ffmpeg crashed after %1 s.").arg(result.elapsedMs / 1000.0, 0, 'f', 1);
  case kovProcessRunner::Status::TimedOut:
    return tr("ffmpeg did not finish within %1 s and was stopped; the host setting %2 gives it more time.")
        .arg(job.timeoutMs / 1000.0)
        .arg(timeoutKey());
  case kovProcessRunner::Status::Cancelled:
    return tr("The encoding was cancelled.");
  case kovProcessRunner::Status::Finished:
    break;
  }
  const QStringList lines = result.stderrTail.trimmed().split(QLatin1Char('\n'));
  return tr("ffmpeg failed with exit code %1: %2").arg(result.exitCode).arg(lines.last().trimmed());
}

// Under ffmpeg's report, what the host saw: the command, how it ended and the
// end of the error output, which holds the reason when ffmpeg wrote no report.
void kovVideoEncoder::appendToLog(const Job& job, const QStringList& arguments,
                                  const kovProcessRunner::Result& result) const
{
  QFile log(m_logPath);
  if (!log.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
    return;
  QTextStream out(&log);
  out << "\n== " << QCoreApplication::applicationName() << " ran: " << job.ffmpegPath << ' '
      << arguments.join(QLatin1Char(' ')) << "\n== in " << QFileInfo(m_logPath).absolutePath() << ", for " << job.frames.size() << " frames\n== "
      << (result.succeeded() ? QStringLiteral("done") : failureText(job, result)) << " (" << result.elapsedMs << " ms)\n";
  if (!result.stderrTail.isEmpty())
    out << "== error output (its end):\n" << result.stderrTail << '\n';
}
