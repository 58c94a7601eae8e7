#include "host/app/kovHostViewSystem.h"

#include "host/render/OdGsDevice.h"
#include "rasterservices/kovRasterImage.h"

#include "host/api/IkovAnimatedScene.h"
#include "host/api/kovHostService.h"

#include <Standard_Failure.hxx>

namespace {

bool sameRgb(const kovRgb& a, const kovRgb& b)
{
  return a.r == b.r && a.g == b.g && a.b == b.b;
}

// Lighting is a pure function of the sun and the preset, so equal inputs give
// equal fields; comparing them keeps an accumulating picture from starting
// again when the animation's sun has not moved.
bool sameLighting(const kovSkyModel::Lighting& a, const kovSkyModel::Lighting& b)
{
  return a.period == b.period && a.sunOn == b.sunOn && a.toSun.isEqualTo(b.toSun) && a.sunIntensity == b.sunIntensity
         && sameRgb(a.sunColor, b.sunColor) && sameRgb(a.ambient, b.ambient) && sameRgb(a.skyZenith, b.skyZenith)
         && sameRgb(a.skyHorizon, b.skyHorizon) && sameRgb(a.ground, b.ground);
}

} // namespace

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
    applyAnimatedScene(m_device->model().database());
  emit changed();
}

// The animation's environment, when it has one, lights the scene instead of
// the host's own sun.
void kovHostViewSystem::applyAnimatedScene(OdDbDatabase* db)
{
  const IkovAnimatedScene* scene = kovHostService<IkovAnimatedScene>();
  const IkovAnimatedScene::Frame frame = scene && db ? scene->frame(db) : IkovAnimatedScene::Frame();
  m_device->model().setSubjects(frame.subjects, frame.hidden);
  const kovSkyModel::Lighting lighting =
      frame.hasSun ? kovSkyModel::lighting(frame.toSun, kovSkyModel::presetNamed(frame.sky)) : m_lighting;
  if (!sameLighting(lighting, m_device->lighting()))
    m_device->setLighting(lighting);
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
  applyAnimatedScene(db);
  return m_device.get();
}

kovRenderView* kovHostViewSystem::offscreenView(OdDbDatabase* db, int viewport, const QSize& size,
                                                kovRenderView::VisualStyle style, QString& error)
{
  if (!kovRenderView::isValidSize(size)) {
    error = tr("A picture must be 1 to %1 pixels wide and high; %2 x %3 is not.")
                .arg(kovRenderView::kMaxSize)
                .arg(size.width())
                .arg(size.height());
    return nullptr;
  }
  OdGsDevice* gs = device(db, error);
  if (!gs)
    return nullptr;
  if (!m_offscreen)
    m_offscreen = std::make_unique<kovRenderView>(*gs, size);
  m_offscreen->setSize(size);
  m_offscreen->setCamera(viewCamera(viewport));
  m_offscreen->setVisualStyle(style);
  return m_offscreen.get();
}

QImage kovHostViewSystem::render(OdDbDatabase* db, int viewport, const QSize& size, int samples, QString& error)
{
  QImage image;
  try {
    kovRenderView* view = offscreenView(db, viewport, size, visualStyle(viewport), error);
    if (!view)
      return QImage();
    image = view->render(samples);
  } catch (const Standard_Failure& failure) {
    error = tr("The render engine failed: %1").arg(QString::fromLocal8Bit(failure.GetMessageString()));
    return QImage();
  }
  if (image.isNull())
    error = tr("The render engine could not read back the picture.");
  return image;
}

OdGiRasterImagePtr kovHostViewSystem::viewRaster(OdDbDatabase* db, int viewport, const QSize& size, QString& error)
{
  const QImage image = render(db, viewport, size, 1, error);
  return image.isNull() ? OdGiRasterImagePtr() : kovRasterImageFromQImage(image);
}
