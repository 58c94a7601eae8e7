#include "production/kovFrameWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QStorageInfo>

#include <cstring>

namespace {

// Less room than this on a disk that refused a frame: it is full.
const qint64 kFullDiskBytes = 16 * 1024 * 1024;

} // namespace

kovFrameWriter::kovFrameWriter(Threading threading)
  : m_threading(threading)
  , m_services(odrxRasterServices())
{
  if (m_threading == Threading::Worker)
    m_worker = std::thread([this] { work(); });
}

kovFrameWriter::~kovFrameWriter()
{
  {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_stopping = true;
  }
  m_wake.notify_all();
  if (m_worker.joinable())
    m_worker.join();
}

void kovFrameWriter::write(const OdGiRasterImagePtr& picture, const QSize& size, const QString& path)
{
  Job job { picture, size, path };
  if (m_threading == Threading::Inline) {
    if (!m_error.isEmpty())
      return;
    m_error = save(job);
    if (m_error.isEmpty())
      ++m_written;
    return;
  }
  {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_error.isEmpty())
      return;
    m_queue.push_back(std::move(job));
  }
  m_wake.notify_one();
}

int kovFrameWriter::pending() const
{
  std::lock_guard<std::mutex> lock(m_mutex);
  return static_cast<int>(m_queue.size()) + (m_busy ? 1 : 0);
}

void kovFrameWriter::waitForAll()
{
  std::unique_lock<std::mutex> lock(m_mutex);
  m_idle.wait(lock, [this] { return m_queue.empty() && !m_busy; });
}

QString kovFrameWriter::error() const
{
  std::lock_guard<std::mutex> lock(m_mutex);
  return m_error;
}

int kovFrameWriter::framesWritten() const
{
  std::lock_guard<std::mutex> lock(m_mutex);
  return m_written;
}

void kovFrameWriter::work()
{
  std::unique_lock<std::mutex> lock(m_mutex);
  for (;;) {
    m_wake.wait(lock, [this] { return m_stopping || !m_queue.empty(); });
    if (m_queue.empty())
      return;
    Job job = std::move(m_queue.front());
    m_queue.pop_front();
    m_busy = true;
    lock.unlock();
    const QString problem = save(job);
    job.picture.reset();
    lock.lock();
    m_busy = false;
    if (problem.isEmpty()) {
      ++m_written;
    } else if (m_error.isEmpty()) {
      m_error = problem;
      m_queue.clear();
    }
    if (m_queue.empty())
      m_idle.notify_all();
  }
}

QString kovFrameWriter::save(const Job& job) const
{
  if (m_services.isNull())
    return QCoreApplication::translate("kovFrameWriter", "No raster services to write %1 with.")
        .arg(QDir::toNativeSeparators(job.path));
  OdGiRasterImagePtr picture = job.picture;
  const QSize shape(static_cast<int>(picture->pixelWidth()), static_cast<int>(picture->pixelHeight()));
  if (shape != job.size && job.size.isValid()) {
    // The raster's bytes are blue, green, red, alpha: Qt's ARGB32 on a
    // little-endian machine.
    const QImage scaled = QImage(picture->bgraPixels(), shape.width(), shape.height(), shape.width() * 4,
                                 QImage::Format_ARGB32)
                              .scaled(job.size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    picture.reset(new OdGiRasterImage(static_cast<OdUInt32>(scaled.width()), static_cast<OdUInt32>(scaled.height())));
    for (int y = 0; y < scaled.height(); ++y)
      std::memcpy(picture->bgraPixels() + static_cast<size_t>(y) * scaled.width() * 4, scaled.constScanLine(y),
                  static_cast<size_t>(scaled.width()) * 4);
  }
  const OdResult result = m_services->saveRasterImage(*picture, odFromQString(job.path));
  if (result == eOk)
    return QString();
  // The raster services keep no reason beyond the code: a disk that has run
  // out of room is told as such.
  const QStorageInfo disk(QFileInfo(job.path).absolutePath());
  const QString reason = disk.isValid() && disk.bytesAvailable() < kFullDiskBytes
                             ? QCoreApplication::translate("kovFrameWriter", "the disk is full")
                             : QString::fromWCharArray(odResultDescription(result));
  return QCoreApplication::translate("kovFrameWriter", "The frame %1 can't be written: %2.")
      .arg(QDir::toNativeSeparators(job.path), reason);
}
