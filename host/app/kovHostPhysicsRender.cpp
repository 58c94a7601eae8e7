#include "host/app/kovHostPhysicsRender.h"

#include "host/app/kovHostLog.h"
#include "host/app/kovHostViewSystem.h"
#include "rasterservices/kovRasterImage.h"

#include "Rx/OdRxRasterServices.h"


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
  // The raster services write a frame whole or not at all: a frame file that
  // exists is complete, even when the host stops half way.
  const OdRxRasterServicesPtr services = odrxRasterServices();
  const OdResult result = services.isNull() ? eNotApplicable
                                            : services->saveRasterImage(*kovRasterImageFromQImage(picture),
                                                                        odFromQString(path));
  if (result != eOk) {
    error = QObject::tr("%1 can't be written: %2").arg(path, QString::fromWCharArray(odResultDescription(result)));
    return false;
  }
  return true;
}
