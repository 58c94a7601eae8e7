#include "production/kovKeepAwake.h"

#include <QCoreApplication>

#ifdef Q_OS_WIN
#include <windows.h>
#elif defined(Q_OS_LINUX)
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>
#endif

namespace {

int g_holders = 0;

#ifdef Q_OS_LINUX
// A missing service answers at once; a stuck one is not waited for long.
const int kCallTimeoutMs = 1000;
#endif

} // namespace

struct kovKeepAwake::Hold {
#ifdef Q_OS_LINUX
  // logind keeps its lock until this descriptor is closed.
  QDBusUnixFileDescriptor lock;
  uint screenSaverCookie = 0;
#endif
};

kovKeepAwake::kovKeepAwake()
  : m_hold(std::make_unique<Hold>())
{
  ++g_holders;
#ifdef Q_OS_WIN
  SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED | ES_AWAYMODE_REQUIRED);
  m_inhibitor = QStringLiteral("windows");
#elif defined(Q_OS_LINUX)
  const QString why = QCoreApplication::translate("kovKeepAwake", "Producing an animation");
  const QString who = QCoreApplication::applicationName();
  QDBusConnection system = QDBusConnection::systemBus();
  if (system.isConnected()) {
    QDBusInterface logind(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                          QStringLiteral("org.freedesktop.login1.Manager"), system);
    logind.setTimeout(kCallTimeoutMs);
    const QDBusReply<QDBusUnixFileDescriptor> lock =
        logind.call(QStringLiteral("Inhibit"), QStringLiteral("sleep:idle"), who, why, QStringLiteral("block"));
    if (lock.isValid() && lock.value().isValid()) {
      m_hold->lock = lock.value();
      m_inhibitor = QStringLiteral("logind");
      return;
    }
  }
  QDBusConnection session = QDBusConnection::sessionBus();
  if (session.isConnected()) {
    QDBusInterface saver(QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("/org/freedesktop/ScreenSaver"),
                         QStringLiteral("org.freedesktop.ScreenSaver"), session);
    saver.setTimeout(kCallTimeoutMs);
    const QDBusReply<uint> cookie = saver.call(QStringLiteral("Inhibit"), who, why);
    if (cookie.isValid()) {
      m_hold->screenSaverCookie = cookie.value();
      m_inhibitor = QStringLiteral("screensaver");
    }
  }
#endif
}

kovKeepAwake::~kovKeepAwake()
{
  --g_holders;
#ifdef Q_OS_WIN
  if (g_holders == 0)
    SetThreadExecutionState(ES_CONTINUOUS);
#elif defined(Q_OS_LINUX)
  if (m_inhibitor == QLatin1String("screensaver")) {
    QDBusInterface saver(QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("/org/freedesktop/ScreenSaver"),
                         QStringLiteral("org.freedesktop.ScreenSaver"), QDBusConnection::sessionBus());
    saver.setTimeout(kCallTimeoutMs);
    saver.call(QStringLiteral("UnInhibit"), m_hold->screenSaverCookie);
  }
#endif
}

bool kovKeepAwake::isHeld()
{
  return g_holders > 0;
}
