// Production runs as a user meets them, against a stand-in render engine
// whose pictures show the animation's time: every frame of a cut, in order,
// from one step after its start; the refusals before anything renders; a
// resume after a cancel; a disk that fills up; ffmpeg cancelled; stills and
// sequences that are never encoded; the path tracer's passes; the drawing's
// undo history; and the editor's runs and previews under the progress dialog.
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "db/kovEditingState.h"
#include "editor/kovAnimationEditorWidget.h"
#include "production/kovAnimationProduction.h"
#include "production/kovAnimationProductionModel.h"
#include "production/kovConfirmStartProductionWidget.h"
#include "production/kovKeepAwake.h"
#include "production/kovProductionPanel.h"
#include "production/kovProductionProgressDialog.h"
#include "rasterservices/kovRasterServices.h"

#include "host/api/IkovPhysicsRender.h"
#include "host/api/IkovViewSystem.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"
#include "Rx/OdRxDictionary.h"
#include "kovAnimationTestValues.h"
#include "kovClipProbe.h"
#include "kovTestHostDefaults.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>

#include <csignal>

using CutEdit = std::function<void(kovCameraCut&)>;
Q_DECLARE_METATYPE(CutEdit)
Q_DECLARE_METATYPE(kovOutputFormat)

class PipelineHost : public QApplication, public kovTestHostDefaults {
  Q_OBJECT
  Q_INTERFACES(IkovApplication)
public:
  PipelineHost(int& argc, char** argv) : QApplication(argc, argv) {}
  QVariant setting(const QString& key, const QVariant& def) const override { return settings.value(key, def); }
  void setSetting(const QString& key, const QVariant& value) override { settings.insert(key, value); }
  OdDbDatabase* currentDatabase() const override { return db.get(); }

  OdDbDatabasePtr db;
  QVariantMap settings;
};

namespace {

const QSize kSize(64, 48);

PipelineHost* host()
{
  return static_cast<PipelineHost*>(QCoreApplication::instance());
}

kovDbAnimationPtr open(const OdDbObjectId& id, OdDb::OpenMode mode = OdDb::kForRead)
{
  return kovDbAnimation::cast(id.openObject(mode).get());
}

int editingTime()
{
  const kovDbAnimationPtr animation = open(kovEditingState::editingAnimationId());
  return animation.isNull() ? -1 : animation->currentPositionMs();
}

// The engine's picture at a time: red counts 40 ms steps, so that a frame
// shows which time it was taken at.
QColor pictureColour(int ms)
{
  return QColor(ms / 40 % 256, 90, 160);
}

OdGiRasterImagePtr picture(const QSize& size, int ms)
{
  OdGiRasterImagePtr image(new OdGiRasterImage(OdUInt32(size.width()), OdUInt32(size.height())));
  const QColor c = pictureColour(ms);
  for (int y = 0; y < size.height(); ++y)
    for (int x = 0; x < size.width(); ++x)
      image->setPixel(OdUInt32(x), OdUInt32(y), OdUInt8(c.red()), OdUInt8(c.green()), OdUInt8(c.blue()));
  return image;
}

// The rasterizer: pictures at once, at the time the animation shows.
class FakeViews : public IkovViewSystem {
public:
  int activeViewport(OdDbDatabase* db) const override { return db ? 0 : -1; }
  kovViewCamera viewCamera(int viewport) const override { return cameras.value(viewport); }
  void setViewCamera(int viewport, const kovViewCamera& camera) override { cameras[viewport] = camera; }
  QString activeRenderEngine(OdDbDatabase*) const override { return engine; }
  void refresh(const OdDbObjectId&) override {}
  OdGiRasterImagePtr viewRaster(OdDbDatabase*, int, const QSize& size, QString&) override
  {
    renderedAt << editingTime();
    return picture(size, editingTime());
  }

  QString engine = QStringLiteral("kovRaster");
  QMap<int, kovViewCamera> cameras;
  QList<int> renderedAt;
};

// The path tracer: a pass per question, from nothing whenever the time moves.
class FakePathTracer : public IkovPhysicsRender {
public:
  void setTarget(const QSize& size, int maxPasses) override
  {
    target = size;
    passes = maxPasses;
  }
  int passesDone(OdDbDatabase*) override
  {
    if (editingTime() != m_time) {
      m_time = editingTime();
      m_done = 0;
    }
    return ++m_done;
  }
  bool frameFinished(OdDbDatabase* db) override { return passesDone(db) >= passes; }
  bool saveFrame(OdDbDatabase*, const QString& path, QString&) override
  {
    passesAtSave << m_done;
    QImage image(target, QImage::Format_RGB32);
    image.fill(pictureColour(m_time));
    return image.save(path);
  }

  QSize target;
  int passes = 0;
  QList<int> passesAtSave;

private:
  int m_time = -1;
  int m_done = 0;
};

int redOf(const QString& frame)
{
  return QColor(QImage(frame).pixel(kSize.width() / 2, kSize.height() / 2)).red();
}

QStringList filesIn(const QString& folder)
{
  return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

// The titles of the progress dialogs shown over a widget.
class DialogWatch : public QObject {
public:
  explicit DialogWatch(QWidget& parent) { parent.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override
  {
    if (event->type() == QEvent::ChildPolished) {
      if (auto* dialog = qobject_cast<kovProductionProgressDialog*>(static_cast<QChildEvent*>(event)->child()))
        shown << dialog->windowTitle();
    }
    return false;
  }
  QStringList shown;
};

// PATH with the fake ffmpeg first, in the mode given, while it lives.
struct FakeFfmpegOnPath {
  explicit FakeFfmpegOnPath(const QByteArray& mode)
    : m_path(qgetenv("PATH"))
  {
    qputenv("PATH", QByteArray(KOV_FAKE_FFMPEG_DIR ":") + m_path);
    qputenv("KOV_FAKE_FFMPEG", mode);
  }
  ~FakeFfmpegOnPath()
  {
    qputenv("PATH", m_path);
    qunsetenv("KOV_FAKE_FFMPEG");
  }
  QByteArray m_path;
};

} // namespace

class tst_Pipeline : public QObject {
  Q_OBJECT

private:
  OdDbObjectId m_id;
  FakeViews* m_views = nullptr;
  FakePathTracer* m_tracer = nullptr;
  std::unique_ptr<QTemporaryDir> m_out;

  // The cut of the camera track (keyed from 0 to 4000 ms), 64x48, changed by edit.
  void setCut(const std::function<void(kovCameraCut&)>& edit)
  {
    kovDbAnimationPtr animation = open(m_id, OdDb::kForWrite);
    kovCameraCut cut;
    cut.name = QStringLiteral("Shot");
    cut.track = animation->constTracks().front();
    cut.startMs = 0;
    cut.endMs = 1000;
    cut.frameRate = 25.0;
    cut.imageWidth = kSize.width();
    cut.imageHeight = kSize.height();
    cut.encoding = kovEncoding::H264;
    cut.outputFormat = kovOutputFormat::JpegSequence;
    edit(cut);
    animation->sceneCuts() = { cut };
  }

  // Runs a production of the cut into the test's folder; false when it did
  // not start (message says why).
  bool produce(kovAnimationProduction& run, QString* message = nullptr)
  {
    run.setDestination(m_out->path());
    QSignalSpy finished(&run, &kovAnimationProduction::finished);
    QString why;
    if (!run.start(why)) {
      if (message)
        *message = why;
      return false;
    }
    if (!finished.wait(30000))
      qFatal("the production did not finish");
    return true;
  }

  QString framesFolder() const { return m_out->filePath(QStringLiteral("Camera Shot")); }

  // The editor showing the animation with the cut's row current.
  void showCut(kovAnimationEditorWidget& editor)
  {
    kovProductionPanel::install(&editor);
    editor.selectAnimation(m_id);
    editor.cutTable()->setCurrentIndex(editor.cutTable()->model()->index(0, 0));
  }

  static QPushButton* buttonOf(QWidget& widget, const char* toolTip)
  {
    for (QPushButton* b : widget.findChildren<QPushButton*>())
      if (b->toolTip() == QLatin1String(toolTip))
        return b;
    qFatal("no button %s", toolTip);
  }
  QString frame(int number) const
  {
    return framesFolder() + QStringLiteral("/Camera Shot_%1.").arg(number) + QStringLiteral("jpg");
  }

private slots:
  void initTestCase()
  {
    // A file past the size limit of the full-disk test fails to write
    // instead of ending the process.
    std::signal(SIGXFSZ, SIG_IGN);
  }

  void init()
  {
    odInitialize();
    kovDbTempBlockReference::rxInit();
    kovDbAnimation::rxInit();
    kovRegisterRasterServices();
    m_views = new FakeViews;
    m_tracer = new FakePathTracer;
    odrxSysRegistry()->putAt(OdString(IkovViewSystem::serviceId()), m_views);
    odrxSysRegistry()->putAt(OdString(IkovPhysicsRender::serviceId()), m_tracer);
    host()->settings.clear();
    host()->db = OdDbDatabase::createObject();
    kovDbAnimationPtr animation = kovDbAnimation::createObject();
    animation->setDatabaseDefaults(host()->db.get());
    animation->setName(QStringLiteral("Walk"));
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(QStringLiteral("Camera"));
    track->setEntityUniqueName(host()->db.get(), QStringLiteral("Camera"));
    addItem(*track, kovAnimationItem::LocationByPoints, { { 0, pointValue(0, 0, 2) }, { 4000, pointValue(8, 0, 2) } });
    animation->editTracks().push_back(track);
    animation->setCurrentPosition(2500);
    OdDbBlockTableRecordPtr space = host()->db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    m_id = space->appendOdDbEntity(animation.get());
    m_out = std::make_unique<QTemporaryDir>();
  }

  void cleanup()
  {
    kovEditingState::setEditingAnimation(OdDbObjectId());
    host()->db = nullptr;
    odrxSysRegistry()->remove(OdString(IkovViewSystem::serviceId()));
    odrxSysRegistry()->remove(OdString(IkovPhysicsRender::serviceId()));
    kovUnregisterRasterServices();
    kovDbAnimation::rxUninit();
    kovDbTempBlockReference::rxUninit();
    odUninitialize();
  }

  void clipHoldsEveryFrameFromOneStepAfterTheStart()
  {
    if (!kovClipProbe::available())
      QSKIP("ffmpeg and ffprobe are not installed (scripts/install-deps.sh installs them)");
    setCut([](kovCameraCut& cut) { cut.outputFormat = kovOutputFormat::Mp4; });
    const kovViewCamera before = m_views->viewCamera(0);
    kovAnimationProduction run(m_id, 0);
    bool heldWhileRunning = false;
    connect(&run, &kovAnimationProduction::progressed, [&] { heldWhileRunning = kovKeepAwake::isHeld(); });
    QVERIFY(produce(run));
    QVERIFY2(run.outcome().complete, qPrintable(run.outcome().message));
    QCOMPARE(run.outcome().outputPath, m_out->filePath(QStringLiteral("Camera Shot.mp4")));
    QCOMPARE(run.frames().size(), 25);
    for (int n = 1; n <= 25; ++n) {
      QCOMPARE(run.frames().at(n - 1), frame(n));
      QVERIFY2(std::abs(redOf(frame(n)) - n) <= 2, qPrintable(QStringLiteral("frame %1").arg(n)));
    }
    QCOMPARE(filesIn(framesFolder()).size(), 25);
    const kovClipProbe clip = kovClipProbe::of(run.outcome().outputPath);
    QCOMPARE(clip.frames, 25);
    QCOMPARE(QSize(clip.width, clip.height), kSize);
    // The run leaves things as it found them.
    QVERIFY(heldWhileRunning);
    QVERIFY(!kovKeepAwake::isHeld());
    QVERIFY(!kovEditingState::isProducing() && !kovEditingState::isPlaying());
    QCOMPARE(open(m_id)->currentPositionMs(), 2500);
    QVERIFY(!open(m_id)->areGizmosHidden());
    QCOMPARE(m_views->viewCamera(0), before);
  }

  void refusesBeforeRenderingAnything_data()
  {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("ffmpegOnPath");
    QTest::addColumn<QString>("message");
    using Edit = CutEdit;
    QTest::addColumn<Edit>("edit");
    const Edit none = [](kovCameraCut&) {};
    QTest::newRow("no such cut") << 1 << "" << true << "The animation \"Walk\" has no camera cut 2; its cuts are 1 to 1."
                                 << none;
    QTest::newRow("frame rate 0") << 0 << "" << true << "The frame rate must be above 0."
                                  << Edit([](kovCameraCut& cut) { cut.frameRate = 0.0; });
    QTest::newRow("end before start") << 0 << "" << true
                                      << "The end time of a camera cut must not be before its start time."
                                      << Edit([](kovCameraCut& cut) { cut.endMs = -40; });
    QTest::newRow("no frame size") << 0 << "" << true << "The frame width and height must be from 1 to 16384 pixels."
                                   << Edit([](kovCameraCut& cut) { cut.imageWidth = 0; });
    QTest::newRow("a still as a clip")
        << 0 << "" << true << "A still image is made as Jpg, Png or Hdr: choose one of them as the output format."
        << Edit([](kovCameraCut& cut) { cut.stillImage = true; });
    QTest::newRow("a still no codec writes") << 0 << "" << true << "The host can't write HDR pictures."
                                             << Edit([](kovCameraCut& cut) {
                                                  cut.stillImage = true;
                                                  cut.outputFormat = kovOutputFormat::Hdr;
                                                });
    QTest::newRow("ffmpeg missing") << 0 << "" << false << "ffmpeg was not found"
                                    << Edit([](kovCameraCut& cut) { cut.outputFormat = kovOutputFormat::Avi; });
    QTest::newRow("folder not writable") << 0 << "/proc" << true << "The destination folder /proc can't be written to"
                                         << none;
    QTest::newRow("folder under a file") << 0 << "file/sub" << true << "The destination folder " << none;
  }
  void refusesBeforeRenderingAnything()
  {
    QFETCH(int, row);
    QFETCH(QString, folder);
    QFETCH(bool, ffmpegOnPath);
    QFETCH(QString, message);
    QFETCH(CutEdit, edit);
    setCut(edit);
    QFile(m_out->filePath(QStringLiteral("file"))).open(QIODevice::WriteOnly);
    const QByteArray path = qgetenv("PATH");
    if (!ffmpegOnPath)
      qputenv("PATH", m_out->path().toLocal8Bit());
    kovAnimationProduction run(m_id, row);
    if (!folder.isEmpty())
      run.setDestination(folder.startsWith(QLatin1Char('/')) ? folder : m_out->filePath(folder));
    QString why;
    QVERIFY(!run.start(why));
    qputenv("PATH", path);
    QVERIFY2(why.startsWith(message), qPrintable(why));
    QVERIFY(m_views->renderedAt.isEmpty());
    QVERIFY(!kovEditingState::isProducing());
    QVERIFY(!QDir(framesFolder()).exists());
  }

  void missingDestinationIsMade()
  {
    setCut([](kovCameraCut&) {});
    kovAnimationProduction run(m_id, 0);
    run.setDestination(m_out->filePath(QStringLiteral("a/b")));
    QSignalSpy finished(&run, &kovAnimationProduction::finished);
    QString why;
    QVERIFY2(run.start(why), qPrintable(why));
    QVERIFY(finished.wait(10000));
    QVERIFY(run.outcome().complete);
    QCOMPARE(filesIn(m_out->filePath(QStringLiteral("a/b/Camera Shot"))).size(), 25);
  }

  void resumeAfterACancelMakesEachFrameOnce()
  {
    if (!kovClipProbe::available())
      QSKIP("ffmpeg and ffprobe are not installed (scripts/install-deps.sh installs them)");
    setCut([](kovCameraCut& cut) { cut.outputFormat = kovOutputFormat::Mkv; });
    {
      kovAnimationProduction run(m_id, 0);
      connect(&run, &kovAnimationProduction::progressed, [&run] {
        if (run.frames().size() == 5)
          run.cancel();
      });
      QVERIFY(produce(run));
      QVERIFY(run.outcome().cancelled && !run.outcome().complete);
      QVERIFY2(run.outcome().message.startsWith(QStringLiteral("The production was cancelled; the 5 frames made are kept")),
               qPrintable(run.outcome().message));
    }
    QCOMPARE(filesIn(framesFolder()).size(), 5);
    m_views->renderedAt.clear();
    int asked = 0;
    kovAnimationProduction resumed(m_id, 0);
    resumed.setRecoveryQuestion([&asked] { return ++asked > 0; });
    QVERIFY(produce(resumed));
    QVERIFY2(resumed.outcome().complete, qPrintable(resumed.outcome().message));
    QCOMPARE(asked, 1);
    // Frames 6 to 25 only, each at its own time.
    QCOMPARE(m_views->renderedAt.size(), 20);
    QCOMPARE(m_views->renderedAt.first(), 240);
    QCOMPARE(resumed.frames().size(), 25);
    QCOMPARE(filesIn(framesFolder()).size(), 25);
    QCOMPARE(kovClipProbe::of(resumed.outcome().outputPath).frames, 25);

    // Declined, the frames are made again.
    m_views->renderedAt.clear();
    kovAnimationProduction again(m_id, 0);
    again.setRecoveryQuestion([] { return false; });
    QVERIFY(produce(again));
    QCOMPARE(m_views->renderedAt.size(), 25);
    QCOMPARE(filesIn(framesFolder()).size(), 25);
  }

  void aFullDiskStopsTheRunAndKeepsItsFrames()
  {
    setCut([](kovCameraCut&) {});
    rlimit before {};
    getrlimit(RLIMIT_FSIZE, &before);
    kovAnimationProduction run(m_id, 0);
    // Frames written as they come, so that three are on disk when files of
    // more than a few bytes stop fitting.
    run.setWriterThreading(kovFrameWriter::Threading::Inline);
    connect(&run, &kovAnimationProduction::progressed, [&run, &before] {
      if (run.frames().size() == 3) {
        rlimit full = before;
        full.rlim_cur = 64;
        setrlimit(RLIMIT_FSIZE, &full);
      }
    });
    const bool ran = produce(run);
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY(ran);
    QVERIFY(!run.outcome().complete);
    QVERIFY2(run.outcome().message.startsWith(QStringLiteral("The frame %1 can't be written").arg(frame(4))),
             qPrintable(run.outcome().message));
    QCOMPARE(filesIn(framesFolder()), QStringList({ QStringLiteral("Camera Shot_1.jpg"), QStringLiteral("Camera Shot_2.jpg"),
                                                    QStringLiteral("Camera Shot_3.jpg") }));
    for (int n = 1; n <= 3; ++n)
      QVERIFY(!QImage(frame(n)).isNull());
  }

  // ffmpeg's faults are told by the encoder's own tests; here the run's
  // Cancel reaches ffmpeg, and the frames stay, deletion asked or not.
  void cancellingTheEncodingStopsFfmpegAndKeepsTheFrames()
  {
    setCut([](kovCameraCut& cut) { cut.outputFormat = kovOutputFormat::Mp4; });
    host()->settings.insert(QStringLiteral("AnimationProductionDeleteImages"), true);
    const FakeFfmpegOnPath fake("hang");
    kovAnimationProduction run(m_id, 0);
    connect(&run, &kovAnimationProduction::encodingStarted,
            [&run] { QTimer::singleShot(200, &run, &kovAnimationProduction::cancel); });
    QVERIFY(produce(run));
    QVERIFY(!run.outcome().complete && run.outcome().cancelled);
    const QString log = QDir::toNativeSeparators(m_out->filePath(QStringLiteral("encoding.log")));
    QVERIFY2(run.outcome().message.startsWith(QStringLiteral("The encoding was cancelled.")),
             qPrintable(run.outcome().message));
    QVERIFY(run.outcome().message.endsWith(QStringLiteral(" (See log file for more info.)\n") + log));
    QTest::qWait(100);
    QCOMPARE(filesIn(framesFolder()).size(), 25);
    QVERIFY(!QFile::exists(run.outcome().outputPath));
  }

  void stillsAndSequencesAreNeverEncoded_data()
  {
    QTest::addColumn<kovOutputFormat>("format");
    QTest::addColumn<QStringList>("files");
    QTest::newRow("png still") << kovOutputFormat::Png << QStringList { QStringLiteral("Camera Shot.png") };
    QTest::newRow("jpeg sequence") << kovOutputFormat::JpegSequence << QStringList { QStringLiteral("Camera Shot") };
    QTest::newRow("png sequence") << kovOutputFormat::PngSequence << QStringList { QStringLiteral("Camera Shot") };
  }
  void stillsAndSequencesAreNeverEncoded()
  {
    QFETCH(kovOutputFormat, format);
    QFETCH(QStringList, files);
    setCut([format](kovCameraCut& cut) {
      cut.outputFormat = format;
      cut.stillImage = kovIsStillImageFormat(format);
      cut.startMs = 400;
    });
    // An encoder run would fail the production.
    const FakeFfmpegOnPath fake("failure");
    kovAnimationProduction run(m_id, 0);
    QVERIFY(produce(run));
    QVERIFY2(run.outcome().complete, qPrintable(run.outcome().message));
    QCOMPARE(QDir(m_out->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), files);
    if (format == kovOutputFormat::Png) {
      QCOMPARE(m_views->renderedAt, QList<int> { 400 });
      QCOMPARE(redOf(run.outcome().outputPath), 10);
    } else {
      QCOMPARE(filesIn(run.outcome().outputPath).size(), 15);
      QVERIFY(filesIn(run.outcome().outputPath).first().endsWith(
          format == kovOutputFormat::PngSequence ? QLatin1String(".png") : QLatin1String(".jpg")));
    }
  }

  void pathTracedFramesWaitForTheirPasses()
  {
    setCut([](kovCameraCut& cut) {
      cut.endMs = 200;
      cut.maxIterations = 4;
    });
    m_views->engine = IkovPhysicsRender::label();
    kovAnimationProduction run(m_id, 0);
    QVERIFY(produce(run));
    QVERIFY2(run.outcome().complete, qPrintable(run.outcome().message));
    QCOMPARE(m_tracer->target, kSize);
    QCOMPARE(m_tracer->passesAtSave, (QList<int> { 4, 4, 4, 4, 4 }));
    QVERIFY(m_views->renderedAt.isEmpty());
    for (int n = 1; n <= 5; ++n)
      QVERIFY(std::abs(redOf(frame(n)) - n) <= 2);
  }

  void undoHistoryStaysAsItWas()
  {
    setCut([](kovCameraCut&) {});
    OdDbDatabase* db = host()->db.get();
    db->startUndoRecord();
    open(m_id, OdDb::kForWrite)->setName(QStringLiteral("Walk 2"));
    db->undo();
    QVERIFY(db->hasRedo() && !db->hasUndo());
    kovAnimationProduction run(m_id, 0);
    QVERIFY(produce(run));
    QVERIFY(run.outcome().complete);
    // Nothing was recorded: the undone rename can still be made again.
    QVERIFY(db->hasRedo() && !db->hasUndo());
    db->redo();
    QCOMPARE(open(m_id)->animationName(), QStringLiteral("Walk 2"));
  }

  void editorRunsTheConfirmedCutUnderTheProgressDialog()
  {
    setCut([](kovCameraCut&) {});
    host()->settings.insert(QStringLiteral("AnimationProductionPath"), m_out->path());
    kovAnimationEditorWidget editor;
    showCut(editor);
    DialogWatch dialogs(editor);
    QTimer::singleShot(0, [] {
      auto* confirmation = qobject_cast<kovConfirmStartProductionWidget*>(QApplication::activeModalWidget());
      for (QPushButton* b : confirmation->findChildren<QPushButton*>())
        if (b->text() == QLatin1String("Produce"))
          b->click();
    });
    buttonOf(editor, "Execute Camera Cuts Production")->click();
    QCOMPARE(editor.playbackTimer()->interval(), 10);
    QVERIFY(kovEditingState::isProducing());
    QTRY_COMPARE(dialogs.shown, QStringList { QStringLiteral("Producing Camera") });
    QTRY_VERIFY_WITH_TIMEOUT(!editor.findChild<kovProductionProgressDialog*>(), 20000);
    QVERIFY(!kovEditingState::isProducing() && !kovEditingState::isPlaying());
    QVERIFY(!editor.playbackTimer()->isActive());
    QCOMPARE(filesIn(framesFolder()).size(), 25);
  }

  // Play previews the path tracer's pictures frame by frame, saving none;
  // the rasterizer's it plays in real time.
  void editorPreviewsPathTracedCutsFrameByFrame()
  {
    setCut([](kovCameraCut& cut) {
      cut.endMs = 200;
      cut.maxIterations = 50;
    });
    host()->settings.insert(QStringLiteral("AnimationProductionPath"), m_out->path());
    kovAnimationEditorWidget editor;
    showCut(editor);
    QPushButton* play = buttonOf(editor, "Play/Pause Camera Cut Preview");
    play->click();
    QVERIFY(editor.playbackTimer()->isActive());
    QVERIFY(!editor.findChild<kovProductionProgressDialog*>());
    play->click();

    m_views->engine = IkovPhysicsRender::label();
    DialogWatch dialogs(editor);
    play->click();
    QCOMPARE(dialogs.shown, QStringList { QStringLiteral("Preview Camera") });
    QVERIFY(kovEditingState::isPlaying() && !editor.playbackTimer()->isActive());
    QTRY_VERIFY_WITH_TIMEOUT(!editor.findChild<kovProductionProgressDialog*>(), 20000);
    QVERIFY(!kovEditingState::isPlaying());
    QVERIFY(m_tracer->passesAtSave.isEmpty());
    QVERIFY(QDir(m_out->path()).isEmpty());
  }
};

int main(int argc, char** argv)
{
  PipelineHost app(argc, argv);
  tst_Pipeline test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_pipeline.moc"
