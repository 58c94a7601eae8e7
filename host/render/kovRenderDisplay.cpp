#include "host/render/kovRenderDisplay.h"

#include "host/render/kovRenderLog.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

#include <memory>

namespace {

constexpr int kStartTimeoutMs = 10000;

// The server started for this process; it stops with the application
// object, while Qt can still wait for it.
struct PrivateServer {
  std::unique_ptr<QProcess> process;
  QString display;
};

PrivateServer& privateServer()
{
  static PrivateServer server;
  return server;
}

void stopPrivateServer()
{
  PrivateServer& server = privateServer();
  if (server.process && server.process->state() != QProcess::NotRunning) {
    server.process->terminate();
    if (!server.process->waitForFinished(2000))
      server.process->kill();
    server.process->waitForFinished(1000);
  }
  server.process.reset();
}

} // namespace

QString kovRenderDisplay::ensure(QString& message)
{
  const QString own = qEnvironmentVariable("DISPLAY");
  if (!own.isEmpty())
    return own;
  PrivateServer& server = privateServer();
  if (!server.display.isEmpty())
    return server.display;

  const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
  if (xvfb.isEmpty()) {
    message = QCoreApplication::translate(
        "kovRenderDisplay",
        "Rendering needs an X display, and there is none (DISPLAY is not set) and no Xvfb to start one. "
        "Install Xvfb (apt-get install xvfb) or run under one: xvfb-run -a kovhost ...");
    return QString();
  }
  auto process = std::make_unique<QProcess>();
  process->setProgram(xvfb);
  // -displayfd 1: the server picks a free display and writes its number to
  // standard output once it accepts connections.
  process->setArguments({ QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                          QStringLiteral("0"), QStringLiteral("1920x1080x24"), QStringLiteral("-nolisten"),
                          QStringLiteral("tcp"), QStringLiteral("-noreset") });
  process->setProcessChannelMode(QProcess::SeparateChannels);
  process->start();
  QByteArray number;
  if (process->waitForStarted(kStartTimeoutMs)) {
    while (!number.contains('\n') && process->waitForReadyRead(kStartTimeoutMs))
      number += process->readAllStandardOutput();
  }
  number = number.trimmed();
  if (number.isEmpty()) {
    const QString why = QString::fromLocal8Bit(process->readAllStandardError()).trimmed();
    process->kill();
    process->waitForFinished(1000);
    message = QCoreApplication::translate("kovRenderDisplay",
                                          "Rendering needs an X display; starting Xvfb failed%1. "
                                          "Run under one instead: xvfb-run -a kovhost ...")
                  .arg(why.isEmpty() ? QString() : QStringLiteral(": ") + why.right(300));
    return QString();
  }
  server.display = QLatin1Char(':') + QString::fromLatin1(number);
  server.process = std::move(process);
  qAddPostRoutine(stopPrivateServer);
  qputenv("DISPLAY", server.display.toLocal8Bit());
  qCInfo(lcRender) << "started a private X server on display" << server.display;
  return server.display;
}
