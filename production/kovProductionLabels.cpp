#include "production/kovProductionLabels.h"

#include <iterator>

namespace {

const char* const kQualities[] = { QT_TRANSLATE_NOOP("kovProductionLabels", "Low"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "Medium"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "High"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "Extreme") };
const char* const kFormats[] = { QT_TRANSLATE_NOOP("kovProductionLabels", "Jpg"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Png"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Hdr"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Avi"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Mp4"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Mov"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Flv"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Mkv"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Jpeg Sequence"),
                                 QT_TRANSLATE_NOOP("kovProductionLabels", "Png Sequence") };
const char* const kEncodings[] = { QT_TRANSLATE_NOOP("kovProductionLabels", "H264"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "H265"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "Mjpeg"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "Uncompressed"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "Flv"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "Quicktime"),
                                   QT_TRANSLATE_NOOP("kovProductionLabels", "XVid") };

template <class Choice, size_t N>
QString labelOf(const char* const (&labels)[N], Choice choice)
{
  const int index = static_cast<int>(choice);
  return index >= 0 && index < static_cast<int>(N) ? kovProductionLabels::tr(labels[index]) : QString();
}

} // namespace

QString kovProductionLabels::quality(kovQuality quality)
{
  return labelOf(kQualities, quality);
}

QString kovProductionLabels::outputFormat(kovOutputFormat format)
{
  return labelOf(kFormats, format);
}

QString kovProductionLabels::encoding(kovEncoding encoding)
{
  return labelOf(kEncodings, encoding);
}
