#ifndef KOV_CLIP_PROBE_H
#define KOV_CLIP_PROBE_H

// What ffprobe reads of a clip, for the tests that check produced clips.
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

struct kovClipProbe {
  QString codec;
  int width = 0;
  int height = 0;
  // Frames counted by decoding the whole clip.
  int frames = 0;
  // The container's duration in seconds.
  double seconds = 0.0;

  static bool available()
  {
    return !QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty()
           && !QStandardPaths::findExecutable(QStringLiteral("ffprobe")).isEmpty();
  }

  static kovClipProbe of(const QString& clip)
  {
    QProcess ffprobe;
    ffprobe.start(QStringLiteral("ffprobe"),
                  { QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-count_frames"),
                    QStringLiteral("-select_streams"), QStringLiteral("v:0"), QStringLiteral("-show_entries"),
                    QStringLiteral("stream=codec_name,width,height,nb_read_frames:format=duration"),
                    QStringLiteral("-of"), QStringLiteral("default=noprint_wrappers=1:nokey=1"), clip });
    ffprobe.waitForFinished();
    const QStringList values =
        QString::fromUtf8(ffprobe.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    kovClipProbe probe;
    probe.codec = values.value(0);
    probe.width = values.value(1).toInt();
    probe.height = values.value(2).toInt();
    probe.frames = values.value(3).toInt();
    probe.seconds = values.value(4).toDouble();
    return probe;
  }
};

#endif
