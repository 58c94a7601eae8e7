#ifndef KOV_FRAME_WRITER_H
#define KOV_FRAME_WRITER_H

#include "Gi/OdGiRasterImage.h"
#include "Rx/OdRxRasterServices.h"

#include <QSize>
#include <QString>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

// Writes rendered frames to their files, in the order given, through the
// raster services, which write a file whole or not at all. The encoding and
// writing run on a worker thread of their own while the next frame renders;
// the inline way (the same work on the caller's thread) is there to measure
// what the thread saves. After the first frame that can't be written (a full
// disk, a folder gone) the writer drops what is still queued and keeps the
// reason.
class kovFrameWriter {
public:
  enum class Threading { Worker, Inline };

  explicit kovFrameWriter(Threading threading = Threading::Worker);
  ~kovFrameWriter();
  kovFrameWriter(const kovFrameWriter&) = delete;
  kovFrameWriter& operator=(const kovFrameWriter&) = delete;

  // Queues the picture to be written at path, scaled to size when it has
  // another size.
  void write(const OdGiRasterImagePtr& picture, const QSize& size, const QString& path);
  // Frames queued and not yet written.
  int pending() const;
  // Returns once every queued frame is written or dropped.
  void waitForAll();
  // Why a frame could not be written; empty while none failed.
  QString error() const;
  int framesWritten() const;

private:
  struct Job {
    OdGiRasterImagePtr picture;
    QSize size;
    QString path;
  };
  void work();
  QString save(const Job& job) const;

  Threading m_threading;
  OdRxRasterServicesPtr m_services;
  mutable std::mutex m_mutex;
  std::condition_variable m_wake;
  std::condition_variable m_idle;
  std::deque<Job> m_queue;
  // The job the worker is on, counted with the queue.
  bool m_busy = false;
  bool m_stopping = false;
  QString m_error;
  int m_written = 0;
  std::thread m_worker;
};

#endif
