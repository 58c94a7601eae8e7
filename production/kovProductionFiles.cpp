#include "production/kovProductionFiles.h"

#include "production/kovProductionSettings.h"

#include <QDir>

#include <iterator>

namespace {

const QString kUnsafe = QStringLiteral("<>\\/\":;?,*|=`");

const char* const kExtensions[] = { "jpg", "png", "hdr", "avi", "mp4", "mov", "flv", "mkv", "jpg", "png" };

} // namespace

kovProductionFiles::kovProductionFiles(const kovCameraCut& cut, const QString& folder)
  : m_folder(QDir(folder.isEmpty() ? kovProductionSettings::destinationFolder(cut.stillImage) : folder)
                 .absolutePath())
  , m_base(safeName((cut.track.isNull() ? QString() : cut.track->trackName()) + QLatin1Char(' ') + cut.name))
  , m_frameExtension(frameExtension(cut))
  , m_outputExtension(extension(cut.outputFormat))
{
}

QString kovProductionFiles::safeName(const QString& name)
{
  QString safe = name;
  for (QChar& c : safe) {
    if (kUnsafe.contains(c))
      c = QLatin1Char('_');
  }
  return safe;
}

QString kovProductionFiles::extension(kovOutputFormat format)
{
  const int index = static_cast<int>(format);
  return index >= 0 && index < static_cast<int>(std::size(kExtensions)) ? QLatin1String(kExtensions[index])
                                                                        : QString();
}

QString kovProductionFiles::frameExtension(const kovCameraCut& cut)
{
  const bool uncompressedAvi = cut.outputFormat == kovOutputFormat::Avi && cut.encoding == kovEncoding::Uncompressed;
  return uncompressedAvi || cut.outputFormat == kovOutputFormat::PngSequence ? QStringLiteral("png")
                                                                              : QStringLiteral("jpg");
}

QString kovProductionFiles::framesFolder() const
{
  return m_folder + QLatin1Char('/') + m_base;
}

QString kovProductionFiles::framePath(int frameNumber) const
{
  return framesFolder() + QLatin1Char('/') + m_base + QLatin1Char('_') + QString::number(frameNumber)
         + QLatin1Char('.') + m_frameExtension;
}

QString kovProductionFiles::outputPath() const
{
  return m_folder + QLatin1Char('/') + m_base + QLatin1Char('.') + m_outputExtension;
}
