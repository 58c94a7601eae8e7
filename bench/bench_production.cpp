// Producing the main job's cut in process, as kovhost --produce does: the
// demo site (scripts/demo-scene.kovs and scripts/demo.kovs, built by kovhost
// into a drawing first), 250 frames of 1280x720 at 25 fps, an H.264 clip.
// Reports the run's total time and frames per second; the same frames
// rendered alone and encoded by ffmpeg alone, and the run's total against
// their sum (what the pipeline adds of its own, at most 1.10 by target); and
// the run with the frame writer on the render loop's thread against the run
// with it on its worker thread.

#include "kovBenchMeasure.h"

#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "db/kovEditingState.h"
#include "host/app/kovHostApplication.h"
#include "host/app/kovHostClasses.h"
#include "host/app/kovHostServices.h"
#include "host/app/kovHostViewSystem.h"
#include "module/kovAnimatedScene.h"
#include "production/kovAnimationProduction.h"
#include "production/kovEncoderCommand.h"
#include "production/kovVideoEncoder.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbFileReader.h"
#include "Db/OdDbModule.h"
#include "Db/OdDbObjectIterator.h"
#include "Rx/OdRxDictionary.h"
#include "Rx/OdStaticRxObject.h"

#include <QDir>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <utility>

namespace {

bool buildDemoDrawing(const QString& settings, const QString& drawing)
{
  QProcess host;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  host.setProcessEnvironment(environment);
  host.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  host.setStandardOutputFile(QProcess::nullDevice());
  host.start(QStringLiteral(KOV_BIN_DIR "/kovhost"),
             { QStringLiteral("--headless"), QStringLiteral("--settings"), settings, QStringLiteral("--script"),
               QStringLiteral(KOV_SOURCE_DIR "/scripts/demo-scene.kovs"), QStringLiteral("--script"),
               QStringLiteral(KOV_SOURCE_DIR "/scripts/demo.kovs"), QStringLiteral("-c"),
               QStringLiteral("save ") + drawing });
  return host.waitForFinished(-1) && host.exitStatus() == QProcess::NormalExit && host.exitCode() == 0;
}

OdDbObjectId firstAnimation(OdDbDatabase* db)
{
  OdDbBlockTableRecordPtr space = db->getModelSpaceId().safeOpenObject();
  for (OdDbObjectIteratorPtr it = space->newIterator(); !it->done(); it->step()) {
    if (!kovDbAnimation::cast(it->objectId().openObject().get()).isNull())
      return it->objectId();
  }
  return OdDbObjectId();
}

// Seconds to render the cut's frames alone: the time moved and the picture
// read back, nothing saved.
double renderOnly(kovHostViewSystem& views, const OdDbObjectId& id, const kovCameraCut& cut, int& frames)
{
  OdDbDatabase* db = id.database();
  const QSize size(cut.imageWidth, cut.imageHeight);
  const kovFrameSchedule schedule(cut.startMs, cut.endMs, cut.frameRate);
  frames = schedule.frameCount();
  QString error;
  const double start = benchNow();
  for (int k = 1; k <= frames; ++k) {
    {
      db->disableUndoRecording(true);
      kovDbAnimationPtr animation = kovDbAnimation::cast(id.openObject(OdDb::kForWrite).get());
      db->disableUndoRecording(false);
      animation->setCurrentPosition(schedule.timeOfFrame(k));
      animation->updateCurrentView(cut.track.get());
      animation->invalidateDrawings();
    }
    if (views.viewRaster(db, views.activeViewport(db), size, error).isNull()) {
      std::fprintf(stderr, "bench_production: %s\n", qPrintable(error));
      return -1.0;
    }
  }
  return benchNow() - start;
}

// Seconds of a whole production run into folder; its frames in frames.
double produce(const OdDbObjectId& id, const QString& folder, kovFrameWriter::Threading threading, QStringList& frames)
{
  kovAnimationProduction run(id, 0);
  run.setDestination(folder);
  run.setWriterThreading(threading);
  QEventLoop loop;
  QObject::connect(&run, &kovAnimationProduction::finished, &loop, &QEventLoop::quit);
  const double start = benchNow();
  QString message;
  if (!run.start(message)) {
    std::fprintf(stderr, "bench_production: %s\n", qPrintable(message));
    return -1.0;
  }
  loop.exec();
  const double seconds = benchNow() - start;
  if (!run.outcome().complete) {
    std::fprintf(stderr, "bench_production: %s\n", qPrintable(run.outcome().message));
    return -1.0;
  }
  frames = run.frames();
  return seconds;
}

// Seconds of ffmpeg alone over the frames, with the production's arguments.
double ffmpegOnly(const kovCameraCut& cut, const QStringList& frames, const QString& folder)
{
  QDir().mkpath(folder);
  kovVideoEncoder::Job job;
  job.frames = frames;
  job.outputPath = folder + QStringLiteral("/clip.mp4");
  job.extension = QStringLiteral("mp4");
  job.framesPerSecond = static_cast<int>(cut.frameRate);
  job.codec = kovEncoderCommand::codec(cut.encoding);
  job.bitRateKbps = kovEncoderCommand::bitRate(cut.imageWidth, cut.imageHeight, cut.frameRate, cut.quality);
  job.ffmpegPath = kovVideoEncoder::ffmpegExecutable();
  job.timeoutMs = 600000;
  kovVideoEncoder encoder;
  QString message;
  const double start = benchNow();
  if (!encoder.encodeAnimation(job, message)) {
    std::fprintf(stderr, "bench_production: %s\n", qPrintable(message));
    return -1.0;
  }
  return benchNow() - start;
}

} // namespace

int main(int argc, char** argv)
{
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QTemporaryDir dir;
  const QString settings = dir.filePath(QStringLiteral("settings.ini"));
  const QString drawing = dir.filePath(QStringLiteral("demo.kdw"));
  if (!buildDemoDrawing(settings, drawing)) {
    std::fprintf(stderr, "bench_production: kovhost could not build the demo drawing\n");
    return 1;
  }
  kovHostApplication app(argc, argv, settings);
  odInitialize();
  int status = 0;
  {
    kovHostClasses classes;
    kovHostServices services;
    kovDbTempBlockReference::rxInit();
    kovDbAnimation::rxInit();
    OdStaticRxObject<kovAnimatedScene> scene;
    odrxSysRegistry()->putAt(OdString(IkovAnimatedScene::serviceId()), &scene);
    app.setDatabase(OdDbFileReader::readFile(odFromQString(drawing)), drawing);
    const OdDbObjectId id = firstAnimation(app.currentDatabase());
    kovEditingState::setEditingAnimation(id);
    const kovCameraCut cut = std::as_const(*kovDbAnimation::cast(id.openObject().get())).sceneCuts().value(0);

    int frames = 0;
    // The first picture makes the device and its display: not measured.
    renderOnly(*services.viewSystem(), id, cut, frames);
    const double render = renderOnly(*services.viewSystem(), id, cut, frames);
    QStringList saved;
    const double total = produce(id, dir.filePath(QStringLiteral("worker")), kovFrameWriter::Threading::Worker, saved);
    const double ffmpeg = ffmpegOnly(cut, saved, dir.filePath(QStringLiteral("ffmpeg")));
    QStringList inlineSaved;
    const double inlineTotal =
        produce(id, dir.filePath(QStringLiteral("inline")), kovFrameWriter::Threading::Inline, inlineSaved);
    if (render < 0 || total < 0 || ffmpeg < 0 || inlineTotal < 0) {
      status = 1;
    } else {
      benchFigure("production_demo_frames", frames, "frames");
      benchFigure("production_demo_total_s", total, "s");
      benchFigure("production_demo_fps", frames / total, "fps");
      benchFigure("production_render_only_s", render, "s");
      benchFigure("production_ffmpeg_only_s", ffmpeg, "s");
      benchFigure("production_total_vs_render_plus_ffmpeg_ratio", total / (render + ffmpeg), "x");
      benchFigure("production_writer_inline_total_s", inlineTotal, "s");
      benchFigure("production_writer_worker_vs_inline_ratio", total / inlineTotal, "x");
    }
    kovEditingState::setEditingAnimation(OdDbObjectId());
    app.setDatabase(OdDbDatabasePtr(), QString());
    odrxSysRegistry()->remove(OdString(IkovAnimatedScene::serviceId()));
    kovDbAnimation::rxUninit();
    kovDbTempBlockReference::rxUninit();
  }
  odUninitialize();
  return status;
}
