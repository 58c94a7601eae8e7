#include "production/kovFrameCleanup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

kovFrameCleanup::kovFrameCleanup(const QString& listPath, const QStringList& frames)
  : QObject(QCoreApplication::instance())
  , m_listPath(listPath)
  , m_frames(frames)
{
}

kovFrameCleanup* kovFrameCleanup::schedule(const QString& listPath, const QStringList& frames)
{
  auto* cleanup = new kovFrameCleanup(listPath, frames);
  QTimer::singleShot(kDelayMs, cleanup, &kovFrameCleanup::run);
  return cleanup;
}

void kovFrameCleanup::run()
{
  QFile::remove(m_listPath);
  for (const QString& frame : qAsConst(m_frames))
    QFile::remove(frame);
  // Removing a folder fails while anything is left in it.
  if (!m_frames.isEmpty())
    QDir().rmdir(QFileInfo(m_frames.first()).absolutePath());
  emit done();
  deleteLater();
}
