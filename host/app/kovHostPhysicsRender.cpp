#include "host/app/kovHostPhysicsRender.h"

#include "host/app/kovHostLog.h"
#include "host/app/kovHostViewSystem.h"

#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

#include <Standard_Failure.hxx>

#include <algorithm>

namespace {

// The offscreen view set to path trace db's active viewport; null (logged)
// when it cannot be had.
kovRenderView* tracingView(kovHostViewSystem& views, OdDbDatabase* db, const QSize& size)
{
  QString error;
  kovRenderView* view =
      views.offscreenView(db, views.activeViewport(db), size, kovRenderView::VisualStyle::Rendered, error);
  if (!view)
    qCWarning(lcHostDesktop) << "The path tracer has no view:" << error;
  return view;
}

} // namespace

void kovHostPhysicsRender::setTarget(const QSize& size, int maxPasses)
{
  m_size = size;
  m_maxPasses = std::max(1, maxPasses);
}

int kovHostPhysicsRender::passesDone(OdDbDatabase* db)
{
  try {
    kovRenderView* view = tracingView(m_views, db, m_size);
    if (!view)
      return 0;
    if (view->passes() < m_maxPasses || !view->isCurrent())
      view->redraw();
    return view->passes();
  } catch (const Standard_Failure& failure) {
    qCWarning(lcHostDesktop) << "The path tracer failed:" << failure.GetMessageString();
    return 0;
  }
}

bool kovHostPhysicsRender::frameFinished(OdDbDatabase* db)
{
  return passesDone(db) >= m_maxPasses;
}

bool kovHostPhysicsRender::saveFrame(OdDbDatabase* db, const QString& path, QString& error)
{
  kovRenderView* view = m_views.offscreenView(db, m_views.activeViewport(db), m_size,
                                              kovRenderView::VisualStyle::Rendered, error);
  if (!view)
    return false;
  const QImage picture = view->grab();
  if (picture.isNull()) {
    error = QObject::tr("The path tracer has no picture to save.");
    return false;
  }
  // Written whole under a temporary name and then renamed: a frame file that
  // exists is always complete, even when the host stops half way.
  QSaveFile file(path);
  const QByteArray format = QFileInfo(path).suffix().toLower().toLatin1();
  if (!file.open(QIODevice::WriteOnly)) {
    error = QObject::tr("%1 can't be written: %2").arg(path, file.errorString());
    return false;
  }
  QImageWriter writer(&file, format);
  if (!writer.write(picture) || !file.commit()) {
    error = QObject::tr("%1 can't be written: %2").arg(path, writer.error() != QImageWriter::UnknownError
                                                                  ? writer.errorString()
                                                                  : file.errorString());
    return false;
  }
  return true;
}
