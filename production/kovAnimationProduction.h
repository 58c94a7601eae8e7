#ifndef KOV_ANIMATION_PRODUCTION_H
#define KOV_ANIMATION_PRODUCTION_H

#include "db/kovCameraCut.h"
#include "production/kovFrameSchedule.h"
#include "production/kovFrameWriter.h"
#include "production/kovProductionClock.h"
#include "production/kovProductionFiles.h"

#include "Db/OdDbObjectId.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QTimer;
class kovFrameSource;
class kovKeepAwake;
class kovVideoEncoder;

// One run of production: a camera cut of an animation made into a clip, an
// image sequence or a still image. It steps the animation's current time
// frame by frame on a 10 ms timer, so that the host renders between steps,
// saves each finished picture (the files written on a worker thread while
// the next frame renders) and has ffmpeg make the clip. A preview runs the
// same loop without saving anything.
//
// The run saves the scene state and puts it back when it ends; it writes
// the animation's time outside the drawing's undo history.
class kovAnimationProduction : public QObject {
  Q_OBJECT
public:
  enum class Mode { Produce, Preview };
  enum class Phase { Idle, Rendering, Flushing, Encoding, Done };
  struct Outcome {
    // The clip, the sequence or the still is there whole.
    bool complete = false;
    bool cancelled = false;
    // The clip or the still; the frames' folder of a sequence.
    QString outputPath;
    // Why the run is not complete; empty when it is.
    QString message;
  };
  // The polling interval while the engine works on a picture.
  static constexpr int kTickMs = 10;
  // A still image is taken once the engine has had this long.
  static constexpr int kStillWaitMs = 2500;
  // Frames rendered ahead of the writer at most.
  static constexpr int kMaxFramesQueued = 3;

  kovAnimationProduction(const OdDbObjectId& animationId, int cutRow, Mode mode = Mode::Produce,
                         QObject* parent = nullptr);
  ~kovAnimationProduction() override;

  // The folder the files go to instead of the host's setting.
  void setDestination(const QString& folder) { m_destination = folder; }
  // Asked when frames of an earlier run of the cut are on disk: true keeps
  // them and renders the missing ones only. Unset, they are kept.
  void setRecoveryQuestion(std::function<bool()> ask) { m_askRecovery = std::move(ask); }
  // Shows the clip in the desktop's player once it is made.
  void setOpenClip(bool open) { m_openClip = open; }
  void setWriterThreading(kovFrameWriter::Threading threading) { m_threading = threading; }

  // Checks the cut, ffmpeg and the destination, then starts the timer;
  // false, with what to tell the user in message, when it can't start
  // (nothing is rendered then).
  bool start(QString& message);

  Mode mode() const { return m_mode; }
  Phase phase() const { return m_phase; }
  bool isRunning() const { return m_phase != Phase::Idle && m_phase != Phase::Done; }
  const kovCameraCut& cut() const { return m_cut; }
  // "Producing " or "Preview ", then the track's name.
  QString title() const;
  const kovFrameSchedule& schedule() const { return *m_schedule; }
  const kovProductionFiles& files() const { return *m_files; }
  // The frames of the clip so far, in order, those of an earlier run kept
  // on recovery first.
  const QStringList& frames() const { return m_frames; }
  // The animation's time the run is at.
  int currentTime() const { return m_time; }
  // Progress from the cut's start to its end, 0 to 1.
  double progress() const;
  // The frame count, the speed and the time left, as the user reads them.
  QString status() const;
  const Outcome& outcome() const { return m_outcome; }
  // The run's timer, with the properties "StartTime" and "LastFrameTime".
  QTimer* timer() const { return m_timer; }
  // ffmpeg's run while encoding (to wait for its frame cleanup); else null.
  const kovVideoEncoder* encoder() const { return m_encoder.get(); }

public slots:
  // Ends the run: while rendering the frames made are kept, while encoding
  // ffmpeg is stopped.
  void cancel();

signals:
  // A frame was saved, or the time moved on.
  void progressed();
  void encodingStarted();
  // The run ended; outcome() says how.
  void finished();

private:
  QString cutProblem() const;
  bool prepareFolders(QString& message);
  void recoverFrames();
  void tick();
  void tickSoon();
  bool renderStep();
  bool saveStill();
  void moveTo(int ms);
  void finish(bool complete, const QString& message = QString());
  void encode();

  OdDbObjectId m_animationId;
  int m_row;
  Mode m_mode;
  Phase m_phase = Phase::Idle;
  kovCameraCut m_cut;
  QString m_destination;
  std::function<bool()> m_askRecovery;
  bool m_openClip = false;
  kovFrameWriter::Threading m_threading = kovFrameWriter::Threading::Worker;
  QString m_ffmpeg;

  std::optional<kovFrameSchedule> m_schedule;
  std::optional<kovProductionFiles> m_files;
  std::unique_ptr<kovFrameSource> m_source;
  std::unique_ptr<kovFrameWriter> m_writer;
  std::unique_ptr<kovKeepAwake> m_awake;
  std::unique_ptr<kovVideoEncoder> m_encoder;
  QTimer* m_timer;
  QElapsedTimer m_sinceMoved;
  QElapsedTimer m_running;
  kovProductionClock m_clock;

  QStringList m_frames;
  // The next frame to save (1-based); past the last one when all are saved.
  int m_next = 1;
  // The engine has settled on the picture at the start.
  bool m_settled = false;
  bool m_tickQueued = false;
  bool m_cancelled = false;
  int m_time = 0;
  int m_timeBefore = -1;
  bool m_gizmosWereHidden = false;
  int m_viewport = -1;
  bool m_restoreScene = false;
  Outcome m_outcome;
};

#endif
