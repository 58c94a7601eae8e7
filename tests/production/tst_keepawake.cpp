// Keeping the system awake on Linux, against a private session bus with a
// stand-in for the desktop's screen saver (and no system bus, so no logind):
// held while a keeper lives, let go when it goes, and nothing waited for
// when nobody answers.
#include "production/kovKeepAwake.h"

#include <QDBusConnection>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <QtTest>

#include <atomic>

// The screen saver's inhibition interface, answering on its own thread.
class FakeScreenSaver : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")
public:
  std::atomic<int> held { 0 };
  QString reason;

public slots:
  uint Inhibit(const QString& application, const QString& why)
  {
    Q_UNUSED(application);
    reason = why;
    ++held;
    return 42;
  }
  void UnInhibit(uint cookie)
  {
    if (cookie == 42)
      --held;
  }
};

class tst_KeepAwake : public QObject {
  Q_OBJECT

private:
  QProcess m_bus;
  QThread m_serviceThread;
  FakeScreenSaver* m_saver = nullptr;

private slots:
  void initTestCase()
  {
    const QString daemon = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
    if (daemon.isEmpty())
      QSKIP("dbus-daemon is not installed (scripts/install-deps.sh installs it)");
    m_bus.start(daemon, { QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address") });
    QVERIFY(m_bus.waitForReadyRead(10000));
    // Before anything connects: the session bus is the private one, and
    // there is no system bus.
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/system_bus_socket");

    QDBusConnection service =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("kovFakeScreenSaver"));
    QVERIFY(service.isConnected());
    m_saver = new FakeScreenSaver;
    m_saver->moveToThread(&m_serviceThread);
    m_serviceThread.start();
    QVERIFY(service.registerObject(QStringLiteral("/org/freedesktop/ScreenSaver"), m_saver,
                                   QDBusConnection::ExportAllSlots));
    QVERIFY(service.registerService(QStringLiteral("org.freedesktop.ScreenSaver")));
  }

  void cleanupTestCase()
  {
    m_serviceThread.quit();
    m_serviceThread.wait();
    delete m_saver;
    m_bus.kill();
    m_bus.waitForFinished();
  }

  void screenSaverIsHeldWhileAKeeperLives()
  {
    {
      const kovKeepAwake awake;
      QCOMPARE(awake.inhibitor(), QStringLiteral("screensaver"));
      QVERIFY(kovKeepAwake::isHeld());
      QCOMPARE(m_saver->held.load(), 1);
      QCOMPARE(m_saver->reason, QStringLiteral("Producing an animation"));
    }
    QVERIFY(!kovKeepAwake::isHeld());
    QCOMPARE(m_saver->held.load(), 0);
  }

  void nobodyToAskIsNoWait()
  {
    QDBusConnection service = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("kovFakeScreenSaver"));
    QVERIFY(service.unregisterService(QStringLiteral("org.freedesktop.ScreenSaver")));
    QElapsedTimer clock;
    clock.start();
    const kovKeepAwake awake;
    QVERIFY(awake.inhibitor().isEmpty());
    QVERIFY(clock.elapsed() < 1000);
  }
};

QTEST_GUILESS_MAIN(tst_KeepAwake)

#include "tst_keepawake.moc"
