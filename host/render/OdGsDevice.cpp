#include "host/render/OdGsDevice.h"

#include "host/render/kovOcctConvert.h"
#include "host/render/kovRenderDisplay.h"
#include "host/render/kovRenderLog.h"
#include "host/render/kovSkyCubeMap.h"

#include <AIS_InteractiveContext.hxx>
#include <OSD_Environment.hxx>
#include <Standard_Failure.hxx>
#include <V3d_PositionalLight.hxx>
#include <V3d_SpotLight.hxx>

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace {

// Debian installs the engine's shaders here; without CSF_ShadersDirectory
// (or with a CASROOT that points elsewhere) it would not find them.
void findShaders()
{
  if (!qEnvironmentVariableIsEmpty("CSF_ShadersDirectory"))
    return;
  for (const char* dir : { "/usr/share/opencascade/resources/Shaders", "/usr/local/share/opencascade/resources/Shaders" }) {
    if (QDir(QString::fromLatin1(dir)).exists()) {
      qputenv("CSF_ShadersDirectory", dir);
      return;
    }
  }
}

Quantity_Color rgb(const kovRgb& c)
{
  return Quantity_Color(std::min(c.r, 1.0), std::min(c.g, 1.0), std::min(c.b, 1.0), Quantity_TOC_RGB);
}

// The path tracer's weights of sun and sky against the rasterizer's. Its
// diffuse surfaces reflect a light's radiance over pi, and on a GL without
// sRGB buffers it squares colours in and takes square roots out, so the
// weights were matched by pictures: a sunlit grey ground as bright as the
// rasterizer draws it, and the sun's shadows as deep.
constexpr double kTracedSunGain = 16.0;
constexpr double kTracedSkyGain = 0.3;

// A light of any brightness: the engine's colours stop at 1, so the colour is
// scaled to its brightest channel and the rest goes into the intensity.
void setRadiance(Graphic3d_CLight& light, const kovRgb& c)
{
  const double peak = std::max({ c.r, c.g, c.b });
  if (peak <= 0.0) {
    light.SetColor(Quantity_NOC_BLACK);
    light.SetIntensity(0.01f);
    return;
  }
  light.SetColor(Quantity_Color(c.r / peak, c.g / peak, c.b / peak, Quantity_TOC_RGB));
  light.SetIntensity(static_cast<Standard_ShortReal>(std::max(peak, 0.01)));
}

} // namespace

std::unique_ptr<OdGsDevice> OdGsDevice::create(QString& error)
{
  const QString display = kovRenderDisplay::ensure(error);
  if (display.isEmpty())
    return nullptr;
  findShaders();
  std::unique_ptr<OdGsDevice> device(new OdGsDevice);
  try {
    device->m_display = new Aspect_DisplayConnection(TCollection_AsciiString(display.toLocal8Bit().constData()));
    device->m_driver = new OpenGl_GraphicDriver(device->m_display, false);
    // Frames are read back, never shown: no swap, no waiting for the screen.
    device->m_driver->ChangeOptions().buffersNoSwap = true;
    device->m_driver->ChangeOptions().swapInterval = 0;
    if (!device->m_driver->InitContext()) {
      error = QCoreApplication::translate("OdGsDevice",
                                          "No OpenGL context could be made on display %1: rendering is not available. "
                                          "Check that Mesa's OpenGL drivers are installed (libgl1-mesa-dri).")
                  .arg(display);
      return nullptr;
    }
    device->m_viewer = new V3d_Viewer(device->m_driver);
    device->m_viewer->SetDefaultViewProj(V3d_XposYnegZpos);
    device->m_context = new AIS_InteractiveContext(device->m_viewer);
    device->m_context->SetAutomaticHilight(false);
    device->m_model = std::make_unique<OdGsModel>(device->m_context);
    device->m_sun = new V3d_DirectionalLight(gp_Dir(0.0, 0.0, -1.0));
    device->m_ambient = new V3d_AmbientLight();
    // A sun of no angular size: the tracer takes its intensity as the light
    // falling on a surface facing it (given a disc, it would take it as the
    // disc's radiance and drop samples of the small disc as too weak).
    device->m_tracedSun = new V3d_DirectionalLight(gp_Dir(0.0, 0.0, -1.0));
    device->m_tracedSky = new V3d_AmbientLight();
    // Sun and sky are turned on view by view (showLightsIn): a light the
    // viewer turns on for all its views cannot be turned off in one.
    const std::pair<Handle(V3d_Light), const char*> lights[] = { { device->m_sun, "sun" },
                                                                  { device->m_ambient, "sky" },
                                                                  { device->m_tracedSun, "traced sun" },
                                                                  { device->m_tracedSky, "traced sky" } };
    for (const auto& [light, name] : lights) {
      light->SetName(name);
      device->m_viewer->AddLight(light);
    }
    // An afternoon sun from the south-west until an animation says otherwise.
    device->setLighting(kovSkyModel::lighting(kovSkyModel::directionToSun(215.0, 40.0)));
  } catch (const Standard_Failure& failure) {
    error = QCoreApplication::translate("OdGsDevice", "The render engine could not start on display %1: %2")
                .arg(display, QString::fromLocal8Bit(failure.GetMessageString()));
    return nullptr;
  }
  return device;
}

OdGsDevice::~OdGsDevice()
{
  if (m_model)
    m_model->setDatabase(nullptr);
}

void OdGsDevice::setLighting(const kovSkyModel::Lighting& lighting)
{
  m_lighting = lighting;
  applyLighting();
}

void OdGsDevice::setShadows(bool on)
{
  if (on == m_shadows)
    return;
  m_shadows = on;
  applyLighting();
}

void OdGsDevice::applyLighting()
{
  m_sun->SetDirection(kovOcct::direction(-m_lighting.toSun));
  m_sun->SetColor(rgb(m_lighting.sunColor));
  // The engine refuses an intensity of 0: a sun that gives no light is off.
  m_sun->SetIntensity(static_cast<Standard_ShortReal>(std::max(m_lighting.sunIntensity, 0.01)));
  m_sun->SetCastShadows(m_shadows && m_lighting.sunOn);
  m_ambient->SetColor(rgb(m_lighting.ambient));
  m_ambient->SetIntensity(1.0f);

  m_tracedSun->SetDirection(kovOcct::direction(-m_lighting.toSun));
  const double sun = kTracedSunGain * std::max(m_lighting.sunIntensity, 0.0);
  setRadiance(*m_tracedSun, { m_lighting.sunColor.r * sun, m_lighting.sunColor.g * sun, m_lighting.sunColor.b * sun });
  // The tracer's ambient light scales what the sky map sends to surfaces.
  // Dividing it by the map's own mean gives the sky's light the rasterizer's
  // ambient colour, nearly neutral, so a grey ground is not tinted by a sky
  // that is blue to look at.
  const kovRgb sky = kovSkyCubeMap::meanRadiance(m_lighting);
  const auto ratio = [](double want, double have) { return have > 1e-4 ? kTracedSkyGain * want / have : 0.0; };
  setRadiance(*m_tracedSky, { ratio(m_lighting.ambient.r, sky.r), ratio(m_lighting.ambient.g, sky.g),
                              ratio(m_lighting.ambient.b, sky.b) });
  m_viewer->UpdateLights();
  ++m_lightingRevision;
}

void OdGsDevice::showLightsIn(const Handle(V3d_View)& view, bool pathTraced) const
{
  const auto show = [&view](const Handle(V3d_Light)& light, bool on) {
    if (on && !view->IsActiveLight(light))
      view->SetLightOn(light);
    else if (!on && view->IsActiveLight(light))
      view->SetLightOff(light);
  };
  show(m_sun, !pathTraced && m_lighting.sunOn);
  show(m_ambient, !pathTraced);
  show(m_tracedSun, pathTraced && m_lighting.sunOn);
  show(m_tracedSky, pathTraced);
}

bool OdGsDevice::update()
{
  if (!m_model->update())
    return false;
  syncDrawingLights();
  return true;
}

void OdGsDevice::syncDrawingLights()
{
  const std::vector<OdGsModel::Light> lights = m_model->lights();
  const auto same = [](const OdGsModel::Light& a, const OdGsModel::Light& b) {
    return a.type == b.type && a.position == b.position && a.target == b.target && a.intensity == b.intensity;
  };
  // Changing the lights rebuilds the engine's shaders: only when they changed.
  if (lights.size() == m_shownLights.size() && std::equal(lights.begin(), lights.end(), m_shownLights.begin(), same))
    return;
  m_shownLights = lights;
  for (const Handle(Graphic3d_CLight)& light : m_drawingLights)
    m_viewer->DelLight(light);
  m_drawingLights.clear();
  for (const OdGsModel::Light& light : lights) {
    Handle(Graphic3d_CLight) made;
    const gp_Pnt at = kovOcct::point(light.position);
    const OdGeVector3d toward = light.target - light.position;
    const gp_Dir direction = toward.isZeroLength() ? gp_Dir(0, 0, -1) : kovOcct::direction(toward);
    switch (light.type) {
    case OdDbLight::kDistantLight:
      made = new V3d_DirectionalLight(direction);
      break;
    case OdDbLight::kSpotLight:
      made = new V3d_SpotLight(at, direction);
      break;
    case OdDbLight::kPointLight:
      made = new V3d_PositionalLight(at);
      break;
    }
    made->SetIntensity(static_cast<Standard_ShortReal>(light.intensity));
    m_viewer->AddLight(made);
    m_viewer->SetLightOn(made);
    m_drawingLights.push_back(made);
  }
  m_viewer->UpdateLights();
}
