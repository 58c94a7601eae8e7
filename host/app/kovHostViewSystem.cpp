#include "host/app/kovHostViewSystem.h"

#include "host/render/OdGsDevice.h"

#include <Standard_Failure.hxx>

kovHostViewSystem::kovHostViewSystem()
  : m_lighting(kovSkyModel::lighting(kovSkyModel::directionToSun(215.0, 40.0)))
{
}

kovHostViewSystem::~kovHostViewSystem()
{
  // Views go before the device they draw with.
  m_offscreen.reset();
  m_device.reset();
}

int kovHostViewSystem::activeViewport(OdDbDatabase* db) const
{
  return db ? m_active : -1;
}

kovViewCamera kovHostViewSystem::viewCamera(int viewport) const
{
  return m_cameras.value(viewport);
}

void kovHostViewSystem::setViewCamera(int viewport, const kovViewCamera& camera)
{
  if (viewport < 0)
    return;
  m_cameras[viewport] = camera;
  emit changed();
}

kovRenderView::VisualStyle kovHostViewSystem::visualStyle(int viewport) const
{
  return m_styles.value(viewport, kovRenderView::VisualStyle::Shaded);
}

void kovHostViewSystem::setVisualStyle(int viewport, kovRenderView::VisualStyle style)
{
  m_styles[viewport] = style;
  emit changed();
}

QString kovHostViewSystem::activeRenderEngine(OdDbDatabase* db) const
{
  return visualStyle(activeViewport(db)) == kovRenderView::VisualStyle::Rendered ? pathTracerLabel()
                                                                               : rasterEngineLabel();
}

void kovHostViewSystem::setLighting(const kovSkyModel::Lighting& lighting)
{
  m_lighting = lighting;
  if (m_device)
    m_device->setLighting(lighting);
  emit changed();
}

void kovHostViewSystem::refresh(const OdDbObjectId& id)
{
  if (m_device)
    m_device->model().invalidate(id);
  emit refreshed(id);
  emit changed();
}

OdGsDevice* kovHostViewSystem::device(OdDbDatabase* db, QString& error)
{
  if (!m_device && m_deviceError.isEmpty()) {
    m_device = OdGsDevice::create(m_deviceError);
    if (m_device)
      m_device->setLighting(m_lighting);
  }
  if (!m_device) {
    error = m_deviceError;
    return nullptr;
  }
  m_device->setDatabase(db);
  return m_device.get();
}

QImage kovHostViewSystem::render(OdDbDatabase* db, int viewport, const QSize& size, int samples, QString& error)
{
  if (!kovRenderView::isValidSize(size)) {
    error = tr("A picture must be 1 to %1 pixels wide and high; %2 x %3 is not.")
                .arg(kovRenderView::kMaxSize)
                .arg(size.width())
                .arg(size.height());
    return QImage();
  }
  OdGsDevice* gs = device(db, error);
  if (!gs)
    return QImage();
  QImage image;
  try {
    if (!m_offscreen)
      m_offscreen = std::make_unique<kovRenderView>(*gs, size);
    m_offscreen->setSize(size);
    m_offscreen->setCamera(viewCamera(viewport));
    m_offscreen->setVisualStyle(visualStyle(viewport));
    image = m_offscreen->render(samples);
  } catch (const Standard_Failure& failure) {
    error = tr("The render engine failed: %1").arg(QString::fromLocal8Bit(failure.GetMessageString()));
    return QImage();
  }
  if (image.isNull())
    error = tr("The render engine could not read back the picture.");
  return image;
}
