#ifndef KOV_VIDEO_ENCODER_H
#define KOV_VIDEO_ENCODER_H

#include "production/kovFrameCleanup.h"
#include "production/kovProcessRunner.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

// Makes a clip of saved frames with ffmpeg. The frame list, ffmpeg's report
// ("encoding.log") and the clip go in the clip's folder, where ffmpeg runs;
// a failure leaves the frames on disk and says what happened with the log's
// path. While ffmpeg runs the application's events go on, so that a progress
// dialog can cancel it.
class kovVideoEncoder : public QObject {
  Q_OBJECT
public:
  // The host setting that gives ffmpeg more time for long clips.
  static QString timeoutKey() { return QStringLiteral("AnimationProductionEncodeTimeoutMs"); }
  static constexpr int kDefaultTimeoutMs = 30000;
  static QString logName() { return QStringLiteral("encoding.log"); }

  struct Job {
    QStringList frames;
    QString outputPath;
    // Added to the output path when it does not end with it.
    QString extension;
    int framesPerSecond = 24;
    QString codec;
    unsigned bitRateKbps = 0;
    QString ffmpegPath;
    bool deleteImages = false;
    // Shows the clip in the desktop's player once made.
    bool openClip = false;
    // How long ffmpeg may run before it is stopped.
    int timeoutMs = kDefaultTimeoutMs;
  };

  explicit kovVideoEncoder(QObject* parent = nullptr);

  // The application folder's ffmpeg/bin/ffmpeg, else ffmpeg on the PATH;
  // empty when there is neither.
  static QString ffmpegExecutable();
  // What to tell a user who has none.
  static QString missingFfmpegMessage();
  // The host's limit for one run of ffmpeg, at least the default.
  static int timeoutMs();

  // True when the clip exists afterwards; otherwise message says why and
  // where the log is. On success with deleteImages the frames go
  // kovFrameCleanup::kDelayMs later (cleanup() until then).
  bool encodeAnimation(const Job& job, QString& message);
  QString logPath() const { return m_logPath; }
  kovFrameCleanup* cleanup() const { return m_cleanup; }
  bool isRunning() const { return m_runner.isRunning(); }

public slots:
  void cancel() { m_runner.cancel(); }

private:
  QString failureText(const Job& job, const kovProcessRunner::Result& result) const;
  void appendToLog(const Job& job, const QStringList& arguments, const kovProcessRunner::Result& result) const;

  kovProcessRunner m_runner;
  QString m_logPath;
  QPointer<kovFrameCleanup> m_cleanup;
};

#endif
