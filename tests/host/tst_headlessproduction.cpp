// kovhost --headless --produce as a user runs it: a small cut made into a
// clip with the progress on one line and the clip's path at the end; the
// exit code and message of a cut that can't be made; and Ctrl+C while
// frames render, which keeps them for a second run that finishes the clip
// with each frame once.
#include "kovClipProbe.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

const QString kHost = QStringLiteral(KOV_BIN_DIR "/kovhost");

// A box and a camera animation with one cut, 64x48 at 25 fps from 0 to endMs.
QStringList sceneLines(int endMs)
{
  return { QStringLiteral("box 0,0,0 4,4,4 1"),
           QStringLiteral("createcameraanimation -10,-20,5 10,-25,6 30,-10,8 Finish"),
           QStringLiteral("animationcut 1 0 %1 Take").arg(endMs),
           QStringLiteral("animationcutset 1 Size 64x48"),
           QStringLiteral("animationcutset 1 FrameRate 25"),
           QStringLiteral("animationcutset 1 Encoding H264") };
}

struct Run {
  int exitCode = -1;
  QString out;
  QString err;
};

Run finish(QProcess& host)
{
  Run run;
  if (!host.waitForFinished(120000))
    qFatal("kovhost did not finish");
  run.exitCode = host.exitStatus() == QProcess::NormalExit ? host.exitCode() : -1;
  run.out = QString::fromUtf8(host.readAllStandardOutput());
  run.err = QString::fromUtf8(host.readAllStandardError());
  return run;
}

void start(QProcess& host, const QTemporaryDir& dir, const QStringList& arguments)
{
  host.setWorkingDirectory(dir.path());
  host.start(kHost, QStringList { QStringLiteral("--settings"), dir.filePath(QStringLiteral("settings.ini")) }
                        + arguments);
}

Run runHost(const QTemporaryDir& dir, const QStringList& arguments)
{
  QProcess host;
  start(host, dir, arguments);
  return finish(host);
}

// Saves the scene of sceneLines as drawing.kdw in dir.
bool makeDrawing(const QTemporaryDir& dir, int endMs)
{
  QStringList arguments { QStringLiteral("--headless") };
  for (const QString& line : sceneLines(endMs))
    arguments << QStringLiteral("-c") << line;
  arguments << QStringLiteral("-c") << QStringLiteral("save drawing.kdw");
  return runHost(dir, arguments).exitCode == 0;
}

QStringList producing(const QString& out, const QStringList& more = QStringList())
{
  return QStringList { QStringLiteral("--produce"), QStringLiteral("--output"), out } + more
         + QStringList { QStringLiteral("drawing.kdw") };
}

} // namespace

class tst_HeadlessProduction : public QObject {
  Q_OBJECT

private slots:
  void initTestCase()
  {
    if (!kovClipProbe::available())
      QSKIP("ffmpeg and ffprobe are not installed (scripts/install-deps.sh installs them)");
  }

  void producesTheCutAndSaysWhere()
  {
    QTemporaryDir dir;
    QVERIFY(makeDrawing(dir, 400));
    const Run run = runHost(dir, producing(dir.filePath(QStringLiteral("out"))));
    QVERIFY2(run.exitCode == 0, qPrintable(run.out + run.err));
    const QString clip = dir.filePath(QStringLiteral("out/Camera Track Take.mp4"));
    QVERIFY2(run.out.endsWith(QStringLiteral("Produced ") + clip + QLatin1Char('\n')), qPrintable(run.out));
    // One line of progress, overwritten frame by frame.
    QVERIFY2(run.out.contains(QStringLiteral("\rFrame 10 of 10, ")), qPrintable(run.out));
    QVERIFY(run.out.contains(QStringLiteral(" left\rEncoding the clip with ffmpeg...")));
    const kovClipProbe probe = kovClipProbe::of(clip);
    QCOMPARE(probe.codec, QStringLiteral("h264"));
    QCOMPARE(probe.frames, 10);
  }

  void aCutThatCannotBeMadeEndsWithExitCode1_data()
  {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("no such cut") << QStringList { QStringLiteral("--cut"), QStringLiteral("2") }
                                 << "has no camera cut 2; its cuts are 1 to 1.";
    QTest::newRow("not a cut number") << QStringList { QStringLiteral("--cut"), QStringLiteral("first") }
                                      << "--cut takes a camera cut's number, 1 for the first: first is none";
    QTest::newRow("no such animation") << QStringList { QStringLiteral("--animation"), QStringLiteral("Tour") }
                                       << "No animation is named \"Tour\"";
  }
  void aCutThatCannotBeMadeEndsWithExitCode1()
  {
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    QTemporaryDir dir;
    QVERIFY(makeDrawing(dir, 400));
    const Run run = runHost(dir, producing(dir.filePath(QStringLiteral("out")), arguments));
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.err.contains(message), qPrintable(run.err));
    QVERIFY(!QDir(dir.filePath(QStringLiteral("out/Camera Track Take"))).exists());
  }

  void ctrlCKeepsTheFramesAndASecondRunFinishesTheClip()
  {
    QTemporaryDir dir;
    QVERIFY(makeDrawing(dir, 8000));
    const QString out = dir.filePath(QStringLiteral("out"));
    const QDir frames(out + QStringLiteral("/Camera Track Take"));
    QProcess host;
    start(host, dir, producing(out));
    QTRY_VERIFY_WITH_TIMEOUT(frames.entryList(QDir::Files).size() >= 10, 60000);
    ::kill(static_cast<pid_t>(host.processId()), SIGINT);
    const Run cancelled = finish(host);
    QCOMPARE(cancelled.exitCode, 1);
    QVERIFY2(cancelled.err.contains(QStringLiteral("The production was cancelled; the ")), qPrintable(cancelled.err));
    const int kept = frames.entryList(QDir::Files).size();
    QVERIFY2(kept >= 10 && kept < 200, qPrintable(QString::number(kept)));

    const Run resumed = runHost(dir, producing(out));
    QVERIFY2(resumed.exitCode == 0, qPrintable(resumed.out + resumed.err));
    QVERIFY2(resumed.out.contains(QStringLiteral("Keeping the %1 frames an earlier run left").arg(kept)),
             qPrintable(resumed.out));
    QCOMPARE(frames.entryList(QDir::Files).size(), 200);
    QCOMPARE(kovClipProbe::of(out + QStringLiteral("/Camera Track Take.mp4")).frames, 200);
  }
};

QTEST_GUILESS_MAIN(tst_HeadlessProduction)

#include "tst_headlessproduction.moc"
