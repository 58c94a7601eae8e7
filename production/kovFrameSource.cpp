#include "production/kovFrameSource.h"

#include "production/kovFrameWriter.h"

#include "host/api/IkovPhysicsRender.h"
#include "host/api/IkovViewSystem.h"
#include "host/api/kovHostService.h"

#include <QCoreApplication>

namespace {

// A preview shows a path-traced frame once it is past its first rough passes.
const int kPreviewPasses = 2;

} // namespace

kovFrameSource::kovFrameSource(OdDbDatabase* db, const QSize& size, int passes)
  : m_db(db)
  , m_size(size)
  , m_views(kovHostService<IkovViewSystem>())
  , m_pathTracer(kovHostService<IkovPhysicsRender>())
  , m_engine(m_views ? m_views->activeRenderEngine(db) : QString())
{
  if (isPathTracer())
    m_pathTracer->setTarget(size, passes);
}

bool kovFrameSource::isPathTracer() const
{
  return m_pathTracer && m_engine == IkovPhysicsRender::label();
}

bool kovFrameSource::isReady(qint64 msSinceTimeMoved, int extraWaitMs, bool producing) const
{
  if (!isPathTracer())
    return true;
  if (msSinceTimeMoved <= extraWaitMs)
    return false;
  return producing ? m_pathTracer->frameFinished(m_db) : m_pathTracer->passesDone(m_db) > kPreviewPasses;
}

bool kovFrameSource::save(const QString& path, kovFrameWriter& writer, QString& error) const
{
  if (isPathTracer())
    return m_pathTracer->saveFrame(m_db, path, error);
  if (!m_views) {
    error = QCoreApplication::translate("kovFrameSource", "The host has no views to take frames from.");
    return false;
  }
  const OdGiRasterImagePtr picture = m_views->viewRaster(m_db, m_views->activeViewport(m_db), m_size, error);
  if (picture.isNull())
    return false;
  writer.write(picture, m_size, path);
  return true;
}
