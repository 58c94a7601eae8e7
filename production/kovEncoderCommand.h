#ifndef KOV_ENCODER_COMMAND_H
#define KOV_ENCODER_COMMAND_H

#include "db/kovProductionChoices.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

// What ffmpeg is told to make a clip of a cut's frames: the codec and bit
// rate the cut's choices stand for, the list of frames it reads and its
// arguments. Pure functions, so that the exact bytes and words can be checked.
class kovEncoderCommand {
public:
  // The frame list's name in the output folder, where ffmpeg runs.
  static QString framesListName() { return QStringLiteral("framesList.txt"); }

  // "h264", "h265", "mjpeg", "flv1", or "libxvid -vtag xvid" (a codec with
  // its options); empty for ffmpeg's choice for the container (Uncompressed,
  // Quicktime, or a choice outside the list).
  static QString codec(kovEncoding encoding);
  // kbit/s: the integer part of width x height x rate x the quality's factor.
  static unsigned bitRate(int width, int height, double framesPerSecond, kovQuality quality);

  // One "file '<path>' " line per frame, each ended by a carriage return,
  // with every quote of a path escaped as '\''. Empty paths are left out.
  static QByteArray framesList(const QStringList& framePaths);
  // ffmpeg's arguments, in order: the concatenated frames at the frame rate,
  // the scaling, the codec (H.265 is made as H.264) with its options as
  // separate words, the bit rate unless the codec is H.264, the encoder
  // settings, and the output path.
  static QStringList arguments(int framesPerSecond, const QString& codec, unsigned bitRateKbps,
                               const QString& outputPath);
};

#endif
