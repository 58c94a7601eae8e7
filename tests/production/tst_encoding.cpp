// The rules that name a cut's files and make its clip: the frame schedule,
// the file names, the codec and bit-rate rules, ffmpeg's exact arguments and
// frame list; every encoding choice run through Debian's ffmpeg and checked
// with ffprobe; and a fake ffmpeg that fails, crashes or hangs, through the
// process runner and the encoder's messages.
#include "production/kovEncoderCommand.h"
#include "production/kovFrameSchedule.h"
#include "production/kovProductionFiles.h"
#include "production/kovProcessRunner.h"
#include "production/kovProductionClock.h"
#include "production/kovVideoEncoder.h"

#include "kovClipProbe.h"

#include <QCoreApplication>
#include <QImage>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(kovEncoding)
Q_DECLARE_METATYPE(kovOutputFormat)
Q_DECLARE_METATYPE(kovQuality)
Q_DECLARE_METATYPE(kovProcessRunner::Status)

namespace {

const QString kFakeFfmpeg = QStringLiteral(KOV_FAKE_FFMPEG_DIR "/ffmpeg");

kovCameraCut cutOf(const QString& trackName, const QString& name)
{
  kovCameraCut cut;
  cut.track = kovAnimationTrackPtr(new kovAnimationTrack);
  cut.track->setName(trackName);
  cut.name = name;
  return cut;
}

// n frames of size, each a colour of its own, in folder; their paths.
QStringList writeFrames(const QString& folder, int n, const QSize& size, const char* format)
{
  QStringList paths;
  for (int i = 1; i <= n; ++i) {
    QImage frame(size, QImage::Format_RGB32);
    frame.fill(QColor::fromHsv(i * 360 / (n + 1), 200, 220));
    paths << QStringLiteral("%1/f_%2.%3").arg(folder).arg(i).arg(QLatin1String(format));
    frame.save(paths.last());
  }
  return paths;
}

QStringList words(const char* text)
{
  return QString::fromLatin1(text).split(QLatin1Char(' '));
}

} // namespace

class tst_Encoding : public QObject {
  Q_OBJECT

private slots:
  void stepIsTheWholeMillisecondsOfAFrame_data()
  {
    QTest::addColumn<double>("fps");
    QTest::addColumn<int>("step");
    QTest::newRow("24") << 24.0 << 41;
    QTest::newRow("30") << 30.0 << 33;
    QTest::newRow("60") << 60.0 << 16;
    QTest::newRow("23.976") << 23.976 << 41;
    QTest::newRow("1000") << 1000.0 << 1;
    QTest::newRow("above 1000") << 1001.0 << 0;
    QTest::newRow("0") << 0.0 << 0;
    QTest::newRow("negative") << -25.0 << 0;
    QTest::newRow("not a number") << std::nan("") << 0;
  }
  void stepIsTheWholeMillisecondsOfAFrame()
  {
    QFETCH(double, fps);
    QFETCH(int, step);
    QCOMPARE(kovFrameSchedule::stepMs(fps), step);
  }

  void framesRunFromOneStepAfterTheStartToTheEnd_data()
  {
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<double>("fps");
    QTest::addColumn<QList<int>>("frameNumbers");
    QTest::addColumn<int>("lastTime");
    QList<int> oneToTwentyFive;
    for (int n = 1; n <= 25; ++n)
      oneToTwentyFive << n;
    QTest::newRow("0 to 1000 at 25") << 0 << 1000 << 25.0 << oneToTwentyFive << 1000;
    QTest::newRow("end between frames") << 0 << 100 << 24.0 << QList<int> { 1, 2, 3 } << 123;
    QTest::newRow("a later start") << 1000 << 1100 << 25.0 << QList<int> { 26, 27, 28 } << 1120;
    QTest::newRow("no length") << 500 << 500 << 10.0 << QList<int> { 6 } << 600;
    QTest::newRow("end before start") << 500 << 400 << 10.0 << QList<int>() << 0;
  }
  void framesRunFromOneStepAfterTheStartToTheEnd()
  {
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(double, fps);
    QFETCH(QList<int>, frameNumbers);
    QFETCH(int, lastTime);
    const kovFrameSchedule schedule(start, end, fps);
    QList<int> numbers;
    for (int k = 1; k <= schedule.frameCount(); ++k)
      numbers << schedule.frameNumber(k);
    QCOMPARE(numbers, frameNumbers);
    if (!numbers.isEmpty())
      QCOMPARE(schedule.timeOfFrame(schedule.frameCount()), lastTime);
  }

  void timeLeftGoesByTheLastFramesTimes_data()
  {
    QTest::addColumn<QList<int>>("frameTimes");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QString>("status");
    QTest::newRow("none yet") << QList<int>() << 10 << "Frame 1 of 10, 0.0 fps, ... left";
    QTest::newRow("three") << QList<int> { 100, 100, 150 } << 13 << "Frame 4 of 13, 8.6 fps, 0:02 left";
    // Only the last ten count: the first slow ones are forgotten.
    QList<int> slowThenFast { 5000, 5000 };
    for (int i = 0; i < 10; ++i)
      slowThenFast << 200;
    QTest::newRow("the last ten") << slowThenFast << 312 << "Frame 13 of 312, 1.0 fps, 1:00 left";
    QTest::newRow("hours") << QList<int> { 30000 } << 126 << "Frame 2 of 126, 0.0 fps, 1:02:30 left";
  }
  void timeLeftGoesByTheLastFramesTimes()
  {
    QFETCH(QList<int>, frameTimes);
    QFETCH(int, frames);
    QFETCH(QString, status);
    kovProductionClock clock;
    clock.start(1000);
    qint64 now = 1000;
    for (int ms : frameTimes)
      clock.frameDone(now += ms);
    const int done = clock.framesDone();
    QCOMPARE(kovProductionClock::status(done + 1, frames, clock.framesPerSecond(now), clock.msLeft(frames - done)),
             status);
  }

  void filesAreNamedAfterTheTrackAndTheCut_data()
  {
    QTest::addColumn<QString>("cutName");
    QTest::addColumn<kovOutputFormat>("format");
    QTest::addColumn<kovEncoding>("encoding");
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QString>("output");
    QTest::newRow("unsafe characters") << "a:b?.c" << kovOutputFormat::Mp4 << kovEncoding::H264
                                       << "/out/Cam a_b_.c/Cam a_b_.c_7.jpg" << "/out/Cam a_b_.c.mp4";
    QTest::newRow("all thirteen") << "<>\\/\":;?,*|=`" << kovOutputFormat::Mkv << kovEncoding::H265
                                  << "/out/Cam _____________/Cam ______________7.jpg"
                                  << "/out/Cam _____________.mkv";
    QTest::newRow("uncompressed avi") << "s" << kovOutputFormat::Avi << kovEncoding::Uncompressed
                                      << "/out/Cam s/Cam s_7.png" << "/out/Cam s.avi";
    QTest::newRow("png sequence") << "s" << kovOutputFormat::PngSequence << kovEncoding::H264
                                  << "/out/Cam s/Cam s_7.png" << "/out/Cam s.png";
    QTest::newRow("still") << "s" << kovOutputFormat::Hdr << kovEncoding::H264 << "/out/Cam s/Cam s_7.jpg"
                           << "/out/Cam s.hdr";
  }
  void filesAreNamedAfterTheTrackAndTheCut()
  {
    QFETCH(QString, cutName);
    QFETCH(kovOutputFormat, format);
    QFETCH(kovEncoding, encoding);
    QFETCH(QString, frame);
    QFETCH(QString, output);
    kovCameraCut cut = cutOf(QStringLiteral("Cam"), cutName);
    cut.outputFormat = format;
    cut.encoding = encoding;
    const kovProductionFiles files(cut, QStringLiteral("/out"));
    QCOMPARE(files.framePath(7), frame);
    QCOMPARE(files.outputPath(), output);
  }

  void codecAndBitRateFollowTheChoices_data()
  {
    QTest::addColumn<kovEncoding>("encoding");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("fps");
    QTest::addColumn<kovQuality>("quality");
    QTest::addColumn<QStringList>("codecWords");
    QTest::addColumn<QString>("bitRate");
    const QSize hd(1920, 1080);
    QTest::newRow("h264 has no bit rate") << kovEncoding::H264 << hd << 24.0 << kovQuality::Medium
                                          << words("-c:v h264") << QString();
    QTest::newRow("h265 is made as h264") << kovEncoding::H265 << hd << 24.0 << kovQuality::Extreme
                                          << words("-c:v h264") << QString();
    QTest::newRow("mjpeg medium") << kovEncoding::Mjpeg << hd << 24.0 << kovQuality::Medium
                                  << words("-c:v mjpeg") << "248832k";
    QTest::newRow("flv low") << kovEncoding::Flv << QSize(1280, 720) << 25.0 << kovQuality::Low
                             << words("-c:v flv1") << "69120k";
    QTest::newRow("xvid high, options apart") << kovEncoding::XVid << QSize(640, 480) << 30.0 << kovQuality::High
                                              << words("-c:v libxvid -vtag xvid") << "82944k";
    QTest::newRow("uncompressed: the container's codec")
        << kovEncoding::Uncompressed << QSize(640, 480) << 23.976 << kovQuality::Extreme << QStringList()
        << "110481k";
    QTest::newRow("quicktime: the container's codec")
        << kovEncoding::Quicktime << QSize(100, 100) << 10.0 << kovQuality::Low << QStringList() << "300k";
  }
  void codecAndBitRateFollowTheChoices()
  {
    QFETCH(kovEncoding, encoding);
    QFETCH(QSize, size);
    QFETCH(double, fps);
    QFETCH(kovQuality, quality);
    QFETCH(QStringList, codecWords);
    QFETCH(QString, bitRate);
    const QStringList args = kovEncoderCommand::arguments(
        int(fps), kovEncoderCommand::codec(encoding),
        kovEncoderCommand::bitRate(size.width(), size.height(), fps, quality), QStringLiteral("out.avi"));
    // The codec's words and the bit rate come between the filter and -coder.
    const int from = args.indexOf(QStringLiteral("scale = 0:0,setdar = 15 / 8")) + 1;
    const QStringList middle = args.mid(from, args.indexOf(QStringLiteral("-coder")) - from);
    QStringList expected = codecWords;
    if (!bitRate.isEmpty())
      expected << QStringLiteral("-b:v") << bitRate;
    QCOMPARE(middle, expected);
  }

  void argumentsAreExactlyTheEncodersLine()
  {
    const QStringList expected = QString::fromLatin1(
        "-report|-loglevel|warning|-r|24|-f|concat|-safe|0|-i|framesList.txt|-threads:v|12|-sws_flags|bicubic|-vf|"
        "scale = 0:0,setdar = 15 / 8|-c:v|mjpeg|-b:v|248832k|-coder|1|-flags|+loop|-cmp|chroma|-partitions|"
        "+parti8x8+parti4x4+partp8x8+partb8x8|-me_method|hex|-subq|6|-me_range|16|-g|250|-keyint_min|25|"
        "-sc_threshold|40|-i_qfactor|0.71|-b_strategy|1|-qcomp|0.6|-qmin|10|-qmax|51|-qdiff|4|-direct-pred|1|"
        "-fast-pskip|1|-an|/v/My Clip.avi").split(QLatin1Char('|'));
    QCOMPARE(kovEncoderCommand::arguments(24, QStringLiteral("MJPEG"), 248832, QStringLiteral("/v/My Clip.avi")),
             expected);
  }

  void frameListQuotesEachPathOnALineEndedByACarriageReturn()
  {
    const QByteArray list = kovEncoderCommand::framesList(
        { QStringLiteral("/v/a_1.jpg"), QString(), QStringLiteral("/v/it's/a_2.jpg"), QStringLiteral("/v/é_3.jpg") });
    QCOMPARE(list, QByteArray("file '/v/a_1.jpg' \rfile '/v/it'\\''s/a_2.jpg' \rfile '/v/\xc3\xa9_3.jpg' \r"));
  }

  void everyEncodingChoiceMakesAPlayableClip_data()
  {
    QTest::addColumn<kovOutputFormat>("format");
    QTest::addColumn<kovEncoding>("encoding");
    QTest::addColumn<QString>("codecName");
    QTest::newRow("avi h264") << kovOutputFormat::Avi << kovEncoding::H264 << "h264";
    QTest::newRow("avi h265") << kovOutputFormat::Avi << kovEncoding::H265 << "h264";
    QTest::newRow("avi mjpeg") << kovOutputFormat::Avi << kovEncoding::Mjpeg << "mjpeg";
    QTest::newRow("avi xvid") << kovOutputFormat::Avi << kovEncoding::XVid << "mpeg4";
    QTest::newRow("avi uncompressed") << kovOutputFormat::Avi << kovEncoding::Uncompressed << "mpeg4";
    QTest::newRow("mp4 h264") << kovOutputFormat::Mp4 << kovEncoding::H264 << "h264";
    QTest::newRow("mp4 h265") << kovOutputFormat::Mp4 << kovEncoding::H265 << "h264";
    QTest::newRow("mkv h264") << kovOutputFormat::Mkv << kovEncoding::H264 << "h264";
    QTest::newRow("mkv h265") << kovOutputFormat::Mkv << kovEncoding::H265 << "h264";
    QTest::newRow("mov quicktime") << kovOutputFormat::Mov << kovEncoding::Quicktime << "h264";
    QTest::newRow("flv flv") << kovOutputFormat::Flv << kovEncoding::Flv << "flv1";
  }
  void everyEncodingChoiceMakesAPlayableClip()
  {
    QFETCH(kovOutputFormat, format);
    QFETCH(kovEncoding, encoding);
    QFETCH(QString, codecName);
    if (!kovClipProbe::available())
      QSKIP("ffmpeg and ffprobe are not installed (scripts/install-deps.sh installs them)");
    QTemporaryDir dir;
    kovCameraCut cut = cutOf(QStringLiteral("Cam"), QStringLiteral("clip"));
    cut.outputFormat = format;
    cut.encoding = encoding;
    kovVideoEncoder::Job job;
    job.frames = writeFrames(dir.path(), 5, QSize(64, 48),
                             kovProductionFiles::frameExtension(cut) == QLatin1String("png") ? "png" : "jpg");
    job.outputPath = dir.filePath(QStringLiteral("clip"));
    job.extension = kovProductionFiles::extension(format);
    job.framesPerSecond = 25;
    job.codec = kovEncoderCommand::codec(encoding);
    job.bitRateKbps = kovEncoderCommand::bitRate(64, 48, 25.0, kovQuality::Medium);
    job.ffmpegPath = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    kovVideoEncoder encoder;
    QString message;
    QVERIFY2(encoder.encodeAnimation(job, message), qPrintable(message));
    QVERIFY(message.isEmpty());
    const kovClipProbe seen = kovClipProbe::of(job.outputPath + QLatin1Char('.') + job.extension);
    QCOMPARE(seen.codec, codecName);
    QCOMPARE(QSize(seen.width, seen.height), QSize(64, 48));
    QCOMPARE(seen.frames, 5);
    QVERIFY2(std::abs(seen.seconds - 0.2) < 0.05, qPrintable(QString::number(seen.seconds)));
    QVERIFY(QFileInfo(encoder.logPath()).size() > 0);
  }

  void runnerTellsHowTheProgramEnded_data()
  {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<kovProcessRunner::Status>("status");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("tail");
    QTest::newRow("success") << "success" << kovProcessRunner::Status::Finished << 0 << "";
    QTest::newRow("failure") << "failure" << kovProcessRunner::Status::Finished << 1 << "Error selecting an encoder\n";
    QTest::newRow("crash") << "crash" << kovProcessRunner::Status::Crashed << -1 << "about to crash\n";
    QTest::newRow("hang") << "hang" << kovProcessRunner::Status::TimedOut << -1 << "";
  }
  void runnerTellsHowTheProgramEnded()
  {
    QFETCH(QString, mode);
    QFETCH(kovProcessRunner::Status, status);
    QFETCH(int, exitCode);
    QFETCH(QString, tail);
    QTemporaryDir dir;
    kovProcessRunner runner;
    runner.setWorkingDirectory(dir.path());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KOV_FAKE_FFMPEG"), mode);
    runner.setEnvironment(environment);
    const kovProcessRunner::Result result = runner.run(kFakeFfmpeg, { dir.filePath(QStringLiteral("o.mp4")) }, 400);
    QCOMPARE(result.status, status);
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(tail.isEmpty() ? result.stderrTail.isEmpty() : result.stderrTail.endsWith(tail),
             qPrintable(result.stderrTail));
    QCOMPARE(result.succeeded(), mode == QLatin1String("success"));
    QVERIFY(result.elapsedMs >= (mode == QLatin1String("hang") ? 400 : 0));
    // It ran where it was told.
    QVERIFY(QFile::exists(dir.filePath(QStringLiteral("fake-ffmpeg-arguments.txt"))));
  }

  void encoderFaultsSayWhatHappenedAndKeepTheFrames_data()
  {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("reason");
    QTest::newRow("failure") << "failure" << "ffmpeg failed with exit code 1: Error selecting an encoder";
    QTest::newRow("crash") << "crash" << "ffmpeg crashed after";
    QTest::newRow("hang") << "hang" << "ffmpeg did not finish within 0.3 s and was stopped";
    QTest::newRow("missing") << "" << "ffmpeg could not be started";
  }
  void encoderFaultsSayWhatHappenedAndKeepTheFrames()
  {
    QFETCH(QString, mode);
    QFETCH(QString, reason);
    QTemporaryDir dir;
    qputenv("KOV_FAKE_FFMPEG", mode.toLatin1());
    kovVideoEncoder::Job job;
    job.frames = writeFrames(dir.path(), 2, QSize(8, 8), "jpg");
    job.outputPath = dir.filePath(QStringLiteral("clip.mp4"));
    job.extension = QStringLiteral("mp4");
    job.ffmpegPath = mode.isEmpty() ? dir.filePath(QStringLiteral("no-ffmpeg")) : kFakeFfmpeg;
    job.deleteImages = true;
    job.timeoutMs = 300;
    kovVideoEncoder encoder;
    QString message;
    QVERIFY(!encoder.encodeAnimation(job, message));
    qunsetenv("KOV_FAKE_FFMPEG");
    const QString logPath = dir.filePath(QStringLiteral("encoding.log"));
    QVERIFY2(message.startsWith(reason), qPrintable(message));
    QVERIFY2(message.endsWith(QStringLiteral(" (See log file for more info.)\n") + QDir::toNativeSeparators(logPath)),
             qPrintable(message));
    QVERIFY(QFile(logPath).open(QIODevice::ReadOnly));
    QVERIFY(!encoder.cleanup());
    for (const QString& frame : job.frames)
      QVERIFY(QFile::exists(frame));
    QVERIFY(!QFile::exists(job.outputPath));
  }

  // An encoder that ends well but leaves no clip: a clip of an earlier run
  // is removed first, so that it is not taken for the new one.
  void encoderThatMakesNoClipSaysSo()
  {
    QTemporaryDir dir;
    QFile earlier(dir.filePath(QStringLiteral("clip.avi")));
    QVERIFY(earlier.open(QIODevice::WriteOnly));
    earlier.close();
    kovVideoEncoder::Job job;
    job.frames = writeFrames(dir.path(), 1, QSize(8, 8), "jpg");
    job.outputPath = dir.filePath(QStringLiteral("clip"));
    job.extension = QStringLiteral("avi");
    job.ffmpegPath = QStandardPaths::findExecutable(QStringLiteral("true"));
    kovVideoEncoder encoder;
    QString message;
    QVERIFY(!encoder.encodeAnimation(job, message));
    QCOMPARE(message, QStringLiteral("Animation not produced see log file for more info.\n")
                          + QDir::toNativeSeparators(dir.filePath(QStringLiteral("encoding.log"))));
    QVERIFY(!earlier.exists());
  }

  void framesGoTwoSecondsAfterAClipIsMade()
  {
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("frames"));
    kovVideoEncoder::Job job;
    job.frames = writeFrames(dir.filePath(QStringLiteral("frames")), 3, QSize(8, 8), "jpg");
    job.outputPath = dir.filePath(QStringLiteral("clip.mp4"));
    job.extension = QStringLiteral("mp4");
    job.ffmpegPath = kFakeFfmpeg;
    job.deleteImages = true;
    kovVideoEncoder encoder;
    QString message;
    QVERIFY(encoder.encodeAnimation(job, message));
    QVERIFY(encoder.cleanup());
    QVERIFY(QFile::exists(job.frames.first()));
    QSignalSpy done(encoder.cleanup(), &kovFrameCleanup::done);
    QVERIFY(done.wait(3000));
    for (const QString& frame : job.frames)
      QVERIFY(!QFile::exists(frame));
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("framesList.txt"))));
    QVERIFY(!QDir(dir.filePath(QStringLiteral("frames"))).exists());
    QVERIFY(QFile::exists(job.outputPath));
  }
};

QTEST_GUILESS_MAIN(tst_Encoding)

#include "tst_encoding.moc"
