#include "host/render/kovRenderView.h"

#include "host/render/OdGsDevice.h"
#include "host/render/kovGsPresentation.h"
#include "host/render/kovRenderLog.h"
#include "host/render/kovSkyCubeMap.h"


#include <Graphic3d_Camera.hxx>
#include <Image_AlienPixMap.hxx>
#include <SelectMgr_EntityOwner.hxx>
#include <StdSelect_ViewerSelector3d.hxx>
#include <Xw_Window.hxx>

#include <algorithm>
#include <cmath>

namespace {

kovGsPresentation::DisplayMode displayModeOf(kovRenderView::VisualStyle style)
{
  switch (style) {
  case kovRenderView::VisualStyle::Wireframe:
    return kovGsPresentation::Wireframe;
  case kovRenderView::VisualStyle::ShadedWithEdges:
    return kovGsPresentation::ShadedWithEdges;
  case kovRenderView::VisualStyle::Shaded:
  case kovRenderView::VisualStyle::Rendered:
    break;
  }
  return kovGsPresentation::Shaded;
}

Quantity_Color skyColor(const kovRgb& c)
{
  return Quantity_Color(std::min(c.r, 1.0), std::min(c.g, 1.0), std::min(c.b, 1.0), Quantity_TOC_RGB);
}

} // namespace

kovRenderView::kovRenderView(OdGsDevice& device, const QSize& size)
  : m_device(device)
  , m_view(device.viewer()->CreateView())
{
  m_view->SetImmediateUpdate(false);
  m_view->SetAutoZFitMode(true);
  m_view->Camera()->SetProjectionType(Graphic3d_Camera::Projection_Perspective);
  m_view->SetShadingModel(Graphic3d_TypeOfShadingModel_Phong);
  setSize(isValidSize(size) ? size : QSize(640, 480));
  applyStyle();
}

kovRenderView::~kovRenderView()
{
  m_view->Remove();
}

bool kovRenderView::isValidSize(const QSize& size)
{
  return size.width() >= 1 && size.height() >= 1 && size.width() <= kMaxSize && size.height() <= kMaxSize;
}

bool kovRenderView::setSize(const QSize& size)
{
  if (!isValidSize(size))
    return false;
  if (size == m_size)
    return true;
  // A hidden window of the new size: the engine draws into buffers of its
  // size, and a dump at another size would restart the accumulation.
  Handle(Xw_Window) window = new Xw_Window(m_device.display(), "kovhost view", 0, 0, size.width(), size.height());
  window->SetVirtual(true);
  m_view->SetWindow(window);
  m_size = size;
  m_changed = true;
  return true;
}

void kovRenderView::setCamera(const kovViewCamera& camera)
{
  if (camera == m_camera)
    return;
  m_camera = camera;
  m_changed = true;
}

void kovRenderView::setVisualStyle(VisualStyle style)
{
  if (style == m_style)
    return;
  m_style = style;
  applyStyle();
  m_changed = true;
}

void kovRenderView::setMsaaSamples(int samples)
{
  m_msaa = std::max(0, samples);
  applyStyle();
  m_changed = true;
}

void kovRenderView::applyCamera()
{
  const Handle(Graphic3d_Camera)& camera = m_view->Camera();
  OdGeVector3d forward = m_camera.target - m_camera.eye;
  if (forward.isZeroLength())
    forward = OdGeVector3d::kYAxis;
  OdGeVector3d up = m_camera.up;
  if (up.isZeroLength() || up.isParallelTo(forward))
    up = std::fabs(forward.normal().z) > 0.99 ? OdGeVector3d::kYAxis : OdGeVector3d::kZAxis;
  camera->SetEye(gp_Pnt(m_camera.eye.x, m_camera.eye.y, m_camera.eye.z));
  const OdGePoint3d center = m_camera.eye + forward;
  camera->SetCenter(gp_Pnt(center.x, center.y, center.z));
  camera->SetUp(gp_Dir(up.x, up.y, up.z));
  camera->OrthogonalizeUp();
  camera->SetFOVy(std::clamp(m_camera.fieldOfView, 1.0, 170.0));

  // Depth of field is the path tracer's: a thin lens of the camera's radius
  // focused at its focus distance (at the target when none is given).
  Graphic3d_RenderingParams& params = m_view->ChangeRenderingParams();
  const bool dof = m_camera.depthOfField && m_camera.lensRadius > 0.0;
  params.CameraApertureRadius = dof ? static_cast<float>(m_camera.lensRadius) : 0.0f;
  const double focus = m_camera.focusDistance > 0.0 ? m_camera.focusDistance : forward.length();
  params.CameraFocalPlaneDist = static_cast<float>(focus);
  m_view->AutoZFit();
}

void kovRenderView::applySky()
{
  const kovSkyModel::Lighting& lighting = m_device.lighting();
  const bool traced = m_style == VisualStyle::Rendered;
  m_device.showLightsIn(m_view, traced);
  if (traced) {
    m_view->SetBackgroundCubeMap(kovSkyCubeMap::create(lighting), false, false);
  } else {
    m_view->SetBackgroundCubeMap(Handle(Graphic3d_CubeMap)(), false, false);
    m_view->SetBgGradientColors(skyColor(lighting.skyZenith), skyColor(lighting.skyHorizon),
                                Aspect_GradientFillMethod_Vertical, false);
  }
}

void kovRenderView::applyStyle()
{
  Graphic3d_RenderingParams& params = m_view->ChangeRenderingParams();
  const bool traced = m_style == VisualStyle::Rendered;
  params.Method = traced ? Graphic3d_RM_RAYTRACING : Graphic3d_RM_RASTERIZATION;
  params.IsGlobalIlluminationEnabled = traced;
  params.IsAntialiasingEnabled = traced;
  params.RaytracingDepth = 4;
  // No tone curve: the filmic one greys a blue sky to white, and the scene's
  // light is weighed (OdGsDevice) to stay in range as in the rasterizer.
  params.ToneMappingMethod = Graphic3d_ToneMappingMethod_Disabled;
  params.Exposure = 0.0f;
  // Clamps the rare bright path so that it does not stay a speck for
  // hundreds of passes; sunlit surfaces stay well under it.
  params.RadianceClampingValue = 10.0f;
  params.IsTransparentShadowEnabled = true;
  params.NbMsaaSamples = traced ? 0 : m_msaa;
  params.IsShadowEnabled = !traced && m_style != VisualStyle::Wireframe;
  m_drawnLighting = ~0u;
}

bool kovRenderView::isCurrent()
{
  m_device.model().setDisplayMode(displayModeOf(m_style));
  m_device.update();
  return !m_changed && m_passes > 0 && m_device.revision() == m_drawnRevision
         && m_device.lightingRevision() == m_drawnLighting;
}

void kovRenderView::redraw()
{
  m_device.model().setDisplayMode(displayModeOf(m_style));
  m_device.update();
  if (m_device.lightingRevision() != m_drawnLighting) {
    applySky();
    m_drawnLighting = m_device.lightingRevision();
  }
  const unsigned revision = m_device.revision();
  if (m_changed || revision != m_drawnRevision) {
    applyCamera();
    m_passes = 0;
    m_changed = false;
    m_drawnRevision = revision;
  }
  m_view->Redraw();
  m_passes = m_style == VisualStyle::Rendered ? m_passes + 1 : 1;
}

QImage kovRenderView::render(int samples)
{
  const int wanted = m_style == VisualStyle::Rendered ? std::max(1, samples) : 1;
  do
    redraw();
  while (m_passes < wanted);
  return grab();
}

QImage kovRenderView::grab() const
{
  Image_AlienPixMap pixels;
  V3d_ImageDumpOptions options;
  options.Width = m_size.width();
  options.Height = m_size.height();
  options.BufferType = Graphic3d_BT_RGB;
  if (!m_view->ToPixMap(pixels, options)) {
    qCWarning(lcRender) << "the engine could not read back a picture of" << m_size;
    return QImage();
  }
  QImage image(m_size, QImage::Format_RGB888);
  for (int y = 0; y < m_size.height(); ++y) {
    // Row() counts from the top whichever way the rows are stored.
    const Standard_Byte* in = pixels.Row(Standard_Size(y));
    uchar* out = image.scanLine(y);
    const bool bgr = pixels.Format() == Image_Format_BGR || pixels.Format() == Image_Format_BGR32
                     || pixels.Format() == Image_Format_BGRA;
    for (int x = 0; x < m_size.width(); ++x) {
      const Standard_Byte* p = in + static_cast<size_t>(x) * pixels.SizePixelBytes();
      out[3 * x + 0] = bgr ? p[2] : p[0];
      out[3 * x + 1] = p[1];
      out[3 * x + 2] = bgr ? p[0] : p[2];
    }
  }
  return image;
}

OdDbObjectId kovRenderView::pick(const QPoint& pixel)
{
  m_device.update();
  applyCamera();
  const Handle(StdSelect_ViewerSelector3d)& selector = m_device.context()->MainSelector();
  selector->Pick(pixel.x(), pixel.y(), m_view);
  for (Standard_Integer i = 1; i <= selector->NbPicked(); ++i) {
    Handle(SelectMgr_EntityOwner) owner = selector->Picked(i);
    if (owner.IsNull())
      continue;
    Handle(AIS_InteractiveObject) object = Handle(AIS_InteractiveObject)::DownCast(owner->Selectable());
    if (object.IsNull())
      continue;
    const OdDbObjectId id = m_device.model().entityOf(object);
    if (!id.isNull())
      return id;
  }
  return OdDbObjectId();
}
