#include "production/kovAnimationProduction.h"

#include "db/kovDbAnimation.h"
#include "db/kovEditingState.h"
#include "production/kovCameraCutChecks.h"
#include "production/kovEncoderCommand.h"
#include "production/kovFrameSource.h"
#include "production/kovKeepAwake.h"
#include "production/kovProductionSettings.h"
#include "production/kovVideoEncoder.h"

#include "host/api/IkovViewSystem.h"
#include "host/api/kovHostService.h"

#include "Db/OdDbDatabase.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QTimer>

#include <utility>

namespace {

kovDbAnimationPtr openAnimation(const OdDbObjectId& id, OdDb::OpenMode mode)
{
  OdDbObjectPtr object = id.isNull() ? OdDbObjectPtr() : id.openObject(mode);
  return kovDbAnimation::cast(object.get());
}

// The animation opened for write to move its time, which is no edit: the
// open goes unrecorded, so the drawing's undo history stays as it was.
kovDbAnimationPtr openAnimationState(const OdDbObjectId& id)
{
  OdDbDatabase* db = id.database();
  if (!db)
    return kovDbAnimationPtr();
  const bool wasDisabled = db->isUndoRecordingDisabled();
  db->disableUndoRecording(true);
  kovDbAnimationPtr animation = openAnimation(id, OdDb::kForWrite);
  db->disableUndoRecording(wasDisabled);
  return animation;
}

QString nativePath(const QString& path)
{
  return QDir::toNativeSeparators(path);
}

} // namespace

kovAnimationProduction::kovAnimationProduction(const OdDbObjectId& animationId, int cutRow, Mode mode,
                                               QObject* parent)
  : QObject(parent)
  , m_animationId(animationId)
  , m_row(cutRow)
  , m_mode(mode)
  , m_timer(new QTimer(this))
{
  m_timer->setInterval(kTickMs);
  connect(m_timer, &QTimer::timeout, this, &kovAnimationProduction::tick);
}

kovAnimationProduction::~kovAnimationProduction()
{
  if (isRunning()) {
    const QSignalBlocker quiet(this);
    m_cancelled = true;
    if (m_phase != Phase::Encoding)
      finish(false);
  }
}

QString kovAnimationProduction::title() const
{
  const QString track = m_cut.track.isNull() ? QString() : m_cut.track->trackName();
  return (m_mode == Mode::Produce ? tr("Producing ") : tr("Preview ")) + track;
}

bool kovAnimationProduction::start(QString& message)
{
  kovDbAnimationPtr animation = openAnimation(m_animationId, OdDb::kForRead);
  if (animation.isNull()) {
    message = tr("There is no animation to produce.");
    return false;
  }
  const QList<kovCameraCut>& cuts = std::as_const(*animation).sceneCuts();
  if (m_row < 0 || m_row >= cuts.size()) {
    message = cuts.isEmpty() ? tr("The animation \"%1\" has no camera cut to produce: add one first.")
                                   .arg(animation->animationName())
                             : tr("The animation \"%1\" has no camera cut %2; its cuts are 1 to %3.")
                                   .arg(animation->animationName())
                                   .arg(m_row + 1)
                                   .arg(cuts.size());
    return false;
  }
  m_cut = cuts.at(m_row);
  m_timeBefore = animation->currentPositionMs();
  animation = nullptr;

  message = cutProblem();
  if (!message.isEmpty())
    return false;
  m_schedule.emplace(m_cut.startMs, m_cut.endMs, m_cut.frameRate);
  m_files.emplace(m_cut, m_destination);
  if (m_mode == Mode::Produce) {
    if (kovIsVideoClipFormat(m_cut.outputFormat) && !m_cut.stillImage) {
      m_ffmpeg = kovVideoEncoder::ffmpegExecutable();
      if (m_ffmpeg.isEmpty()) {
        message = kovVideoEncoder::missingFfmpegMessage();
        return false;
      }
    }
    if (!prepareFolders(message))
      return false;
    if (!m_cut.stillImage)
      recoverFrames();
  }

  OdDbDatabase* db = m_animationId.database();
  const IkovViewSystem* views = kovHostService<IkovViewSystem>();
  m_viewport = views ? views->activeViewport(db) : -1;
  if (!kovDbAnimation::sceneHasSavedState(m_animationId, m_viewport)) {
    kovDbAnimation::saveSceneState(m_animationId, m_viewport, m_cut);
    m_restoreScene = true;
  }
  kovEditingState::setEditingAnimation(m_animationId);
  if (m_mode == Mode::Produce)
    kovEditingState::isProducing() = true;
  kovEditingState::isPlaying() = true;
  if (kovDbAnimationPtr state = openAnimationState(m_animationId); !state.isNull()) {
    if (state->selectedSceneCutIndex() != m_row)
      state->setSelectedSceneCutIndex(m_row);
    if (!m_cut.viewId.isNull())
      state->setNamedView(m_cut);
    // The paths and icons that show the animation in the drawing are no
    // part of its pictures.
    m_gizmosWereHidden = state->areGizmosHidden();
    state->hideAnimationGizmos() = true;
  }

  m_source = std::make_unique<kovFrameSource>(db, QSize(m_cut.imageWidth, m_cut.imageHeight), m_cut.maxIterations);
  m_writer = std::make_unique<kovFrameWriter>(m_threading);
  m_awake = std::make_unique<kovKeepAwake>();
  m_phase = Phase::Rendering;
  m_running.start();
  m_clock.start(0);
  moveTo(m_cut.startMs);
  m_timer->setProperty("StartTime", QDateTime::currentDateTime());
  m_timer->start();
  return true;
}

QString kovAnimationProduction::cutProblem() const
{
  if (m_cut.track.isNull() || m_cut.track->trackTypeIdentifier() != QLatin1String("Camera"))
    return tr("The camera cut \"%1\" films no camera track: choose one in its Camera column.").arg(m_cut.name);
  QString problem = kovCameraCutChecks::timesProblem(m_cut.startMs, m_cut.endMs);
  if (problem.isEmpty())
    problem = kovCameraCutChecks::settingsProblem(m_cut);
  if (problem.isEmpty() && kovFrameSchedule::stepMs(m_cut.frameRate) < 1)
    problem = tr("The frame rate must be at most 1000 frames per second.");
  if (!problem.isEmpty() || m_mode == Mode::Preview)
    return problem;
  const kovOutputFormat format = m_cut.outputFormat;
  if (kovProductionFiles::extension(format).isEmpty())
    return tr("The camera cut's output format (%1) is none this version knows.").arg(static_cast<int>(format));
  if (m_cut.stillImage && !kovIsStillImageFormat(format))
    return tr("A still image is made as Jpg, Png or Hdr: choose one of them as the output format.");
  if (!m_cut.stillImage && kovIsStillImageFormat(format))
    return tr("A video cut is made as a clip or an image sequence: choose one as the output format.");
  const QString pictures =
      m_cut.stillImage ? kovProductionFiles::extension(format) : kovProductionFiles::frameExtension(m_cut);
  const OdRxRasterServicesPtr services = odrxRasterServices();
  if (services.isNull() || !services->isRasterImageTypeSupported(odFromQString(pictures)))
    return tr("The host can't write %1 pictures.").arg(pictures.toUpper());
  return QString();
}

bool kovAnimationProduction::prepareFolders(QString& message)
{
  const QString folder = m_files->folder();
  if (!QDir().mkpath(folder)) {
    message = tr("The destination folder %1 can't be made.").arg(nativePath(folder));
    return false;
  }
  QTemporaryFile probe(folder + QStringLiteral("/.kovWriteCheck-XXXXXX"));
  if (!probe.open()) {
    message = tr("The destination folder %1 can't be written to: %2").arg(nativePath(folder), probe.errorString());
    return false;
  }
  if (!m_cut.stillImage && !QDir().mkpath(m_files->framesFolder())) {
    message = tr("The frames' folder %1 can't be made.").arg(nativePath(m_files->framesFolder()));
    return false;
  }
  return true;
}

// Frames an earlier run left, from the first on, are kept when the user
// wants them: the clip is made of them and of the frames rendered now.
void kovAnimationProduction::recoverFrames()
{
  const auto path = [this](int k) { return m_files->framePath(m_schedule->frameNumber(k)); };
  m_next = 1;
  if (!QFileInfo::exists(path(1)) || (m_askRecovery && !m_askRecovery()))
    return;
  while (m_next <= m_schedule->frameCount() && QFileInfo::exists(path(m_next)))
    m_frames << path(m_next++);
}

double kovAnimationProduction::progress() const
{
  return m_schedule ? m_schedule->progressAt(m_time) : 0.0;
}

QString kovAnimationProduction::status() const
{
  const int frames = m_cut.stillImage || !m_schedule ? 1 : m_schedule->frameCount();
  const int done = m_cut.stillImage ? 0 : std::min(m_next - 1, frames);
  const qint64 now = m_running.isValid() ? m_running.elapsed() : 0;
  return kovProductionClock::status(std::min(done + 1, frames), frames, m_clock.framesPerSecond(now),
                                    m_clock.msLeft(frames - done));
}

void kovAnimationProduction::cancel()
{
  m_cancelled = true;
  if (m_encoder)
    m_encoder->cancel();
}

void kovAnimationProduction::tick()
{
  m_tickQueued = false;
  if (m_phase == Phase::Flushing) {
    if (m_writer->pending() == 0)
      finish(m_writer->error().isEmpty(), m_writer->error());
    return;
  }
  if (m_phase != Phase::Rendering)
    return;
  // The editor's produce or play button stops a run by clearing its flag.
  const bool flagCleared = m_mode == Mode::Produce ? !kovEditingState::isProducing() : !kovEditingState::isPlaying();
  if (m_cancelled || flagCleared) {
    m_cancelled = true;
    finish(false);
    return;
  }
  if (const QString failed = m_writer->error(); !failed.isEmpty()) {
    finish(false, failed);
    return;
  }
  if (m_writer->pending() >= kMaxFramesQueued)
    return;
  const bool stepped = m_cut.stillImage ? saveStill() : renderStep();
  // An engine that draws at once is given the next frame without waiting
  // for the timer; the events in between keep the application responsive.
  if (stepped && !m_source->isPathTracer())
    tickSoon();
}

void kovAnimationProduction::tickSoon()
{
  if (m_tickQueued || m_phase == Phase::Done)
    return;
  m_tickQueued = true;
  QTimer::singleShot(0, this, &kovAnimationProduction::tick);
}

bool kovAnimationProduction::renderStep()
{
  const bool producing = m_mode == Mode::Produce;
  if (!m_source->isReady(m_sinceMoved.elapsed(), 0, producing))
    return false;
  if (!m_settled) {
    // The picture at the start only lets the engine settle: it is no frame.
    m_settled = true;
  } else {
    if (producing) {
      const QString path = m_files->framePath(m_schedule->frameNumber(m_next));
      QString error;
      if (!m_source->save(path, *m_writer, error)) {
        finish(false, error);
        return false;
      }
      m_frames << path;
    }
    m_clock.frameDone(m_running.elapsed());
    ++m_next;
  }
  if (m_next > m_schedule->frameCount())
    m_phase = Phase::Flushing;
  else
    moveTo(m_schedule->timeOfFrame(m_next));
  emit progressed();
  return true;
}

bool kovAnimationProduction::saveStill()
{
  const bool producing = m_mode == Mode::Produce;
  if (!m_source->isReady(m_sinceMoved.elapsed(), kStillWaitMs, producing))
    return false;
  QString error;
  if (producing && !m_source->save(m_files->outputPath(), *m_writer, error)) {
    finish(false, error);
    return false;
  }
  m_clock.frameDone(m_running.elapsed());
  m_phase = Phase::Flushing;
  emit progressed();
  return true;
}

void kovAnimationProduction::moveTo(int ms)
{
  m_time = ms;
  if (kovDbAnimationPtr animation = openAnimationState(m_animationId); !animation.isNull()) {
    animation->setCurrentPosition(ms);
    animation->updateCurrentView(m_cut.track.get());
    // The host's engine draws the animated scene at the new time.
    animation->invalidateDrawings();
  }
  m_sinceMoved.start();
  m_timer->setProperty("LastFrameTime", QDateTime::currentDateTime());
}

void kovAnimationProduction::finish(bool complete, const QString& message)
{
  m_timer->stop();
  // The frames rendered are kept, also when the run stops half way.
  m_writer->waitForAll();
  QString problem = message;
  if (problem.isEmpty() && !m_writer->error().isEmpty()) {
    problem = m_writer->error();
    complete = false;
  }
  m_awake.reset();
  if (kovDbAnimationPtr animation = openAnimationState(m_animationId); !animation.isNull()) {
    animation->setCurrentPosition(m_timeBefore);
    animation->hideAnimationGizmos() = m_gizmosWereHidden;
    animation->invalidateDrawings();
  }
  if (m_restoreScene)
    kovDbAnimation::restoreSceneState(m_animationId, m_viewport);
  if (m_mode == Mode::Produce)
    kovEditingState::isProducing() = false;
  kovEditingState::isPlaying() = false;

  const bool sequence = kovIsImageSequenceFormat(m_cut.outputFormat) && !m_cut.stillImage;
  m_outcome.outputPath = sequence ? m_files->framesFolder() : m_files->outputPath();
  m_outcome.cancelled = m_cancelled;
  if (m_cancelled && problem.isEmpty())
    problem = m_mode == Mode::Preview
                  ? tr("The preview was stopped.")
                  : tr("The production was cancelled; the %1 frames made are kept in %2.")
                        .arg(m_frames.size())
                        .arg(nativePath(m_files->framesFolder()));
  if (complete && m_mode == Mode::Produce && !m_cut.stillImage && kovIsVideoClipFormat(m_cut.outputFormat)) {
    m_phase = Phase::Encoding;
    emit encodingStarted();
    QCoreApplication::processEvents();
    encode();
    complete = m_outcome.complete;
    problem = m_outcome.message;
    m_outcome.cancelled = m_cancelled;
  }
  m_outcome.complete = complete && m_mode == Mode::Produce;
  m_outcome.message = problem;
  m_phase = Phase::Done;
  emit finished();
}

void kovAnimationProduction::encode()
{
  kovVideoEncoder::Job job;
  job.frames = m_frames;
  job.outputPath = m_files->outputPath();
  job.extension = kovProductionFiles::extension(m_cut.outputFormat);
  job.framesPerSecond = static_cast<int>(m_cut.frameRate);
  job.codec = kovEncoderCommand::codec(m_cut.encoding);
  job.bitRateKbps = kovEncoderCommand::bitRate(m_cut.imageWidth, m_cut.imageHeight, m_cut.frameRate, m_cut.quality);
  job.ffmpegPath = m_ffmpeg;
  job.deleteImages = kovProductionSettings::deleteImages();
  job.openClip = m_openClip && !m_cancelled;
  job.timeoutMs = kovVideoEncoder::timeoutMs();
  m_encoder = std::make_unique<kovVideoEncoder>();
  QString message;
  m_outcome.complete = m_encoder->encodeAnimation(job, message) && !m_cancelled;
  m_outcome.message = message;
}
