#include "production/kovEncoderCommand.h"

#include <cmath>

namespace {

const char* const kEncoderSettings =
    "-coder 1 -flags +loop -cmp chroma -partitions +parti8x8+parti4x4+partp8x8+partb8x8 -me_method hex -subq 6 "
    "-me_range 16 -g 250 -keyint_min 25 -sc_threshold 40 -i_qfactor 0.71 -b_strategy 1 -qcomp 0.6 -qmin 10 "
    "-qmax 51 -qdiff 4 -direct-pred 1 -fast-pskip 1 -an";

QStringList words(const QString& text)
{
  return text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

QString kovEncoderCommand::codec(kovEncoding encoding)
{
  switch (encoding) {
  case kovEncoding::H264: return QStringLiteral("h264");
  case kovEncoding::H265: return QStringLiteral("h265");
  case kovEncoding::Mjpeg: return QStringLiteral("mjpeg");
  case kovEncoding::Flv: return QStringLiteral("flv1");
  case kovEncoding::XVid: return QStringLiteral("libxvid -vtag xvid");
  case kovEncoding::Uncompressed:
  case kovEncoding::Quicktime:
    break;
  }
  return QString();
}

unsigned kovEncoderCommand::bitRate(int width, int height, double framesPerSecond, kovQuality quality)
{
  double factor = 0.015;
  switch (quality) {
  case kovQuality::Low: factor = 0.003; break;
  case kovQuality::Medium: factor = 0.005; break;
  case kovQuality::High: factor = 0.009; break;
  case kovQuality::Extreme: break;
  }
  const double rate = static_cast<double>(width) * height * framesPerSecond * factor;
  return rate > 0.0 && std::isfinite(rate) && rate < 4e9 ? static_cast<unsigned>(rate) : 0u;
}

QByteArray kovEncoderCommand::framesList(const QStringList& framePaths)
{
  QByteArray list;
  for (const QString& path : framePaths) {
    if (path.isEmpty())
      continue;
    QString escaped = path;
    escaped.replace(QLatin1String("'"), QLatin1String("'\\''"));
    list += QStringLiteral("file '%1' \r").arg(escaped).toUtf8();
  }
  return list;
}

QStringList kovEncoderCommand::arguments(int framesPerSecond, const QString& codec, unsigned bitRateKbps,
                                         const QString& outputPath)
{
  QStringList args { QStringLiteral("-report"),     QStringLiteral("-loglevel"),
                     QStringLiteral("warning"),     QStringLiteral("-r"),
                     QString::number(framesPerSecond), QStringLiteral("-f"),
                     QStringLiteral("concat"),      QStringLiteral("-safe"),
                     QStringLiteral("0"),           QStringLiteral("-i"),
                     framesListName(),              QStringLiteral("-threads:v"),
                     QStringLiteral("12"),          QStringLiteral("-sws_flags"),
                     QStringLiteral("bicubic"),     QStringLiteral("-vf"),
                     QStringLiteral("scale = 0:0,setdar = 15 / 8") };
  QString lower = codec.toLower();
  // H.265 is deliberately made as H.264, which every player reads.
  if (lower == QLatin1String("h265"))
    lower = QStringLiteral("h264");
  if (!lower.isEmpty())
    args << QStringLiteral("-c:v") << words(lower);
  if (bitRateKbps != 0 && lower != QLatin1String("h264") && lower != QLatin1String("h265"))
    args << QStringLiteral("-b:v") << QString::number(bitRateKbps) + QLatin1Char('k');
  args << words(QLatin1String(kEncoderSettings)) << outputPath;
  return args;
}
