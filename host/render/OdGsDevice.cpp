#include "host/render/OdGsDevice.h"

#include "host/render/kovOcctConvert.h"
#include "host/render/kovRenderDisplay.h"
#include "host/render/kovRenderLog.h"

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
    device->m_sun->SetName("sun");
    device->m_ambient = new V3d_AmbientLight();
    device->m_ambient->SetName("sky");
    device->m_viewer->AddLight(device->m_ambient);
    device->m_viewer->SetLightOn(device->m_ambient);
    device->m_viewer->AddLight(device->m_sun);
    device->m_viewer->SetLightOn(device->m_sun);
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
  if (m_lighting.sunOn)
    m_viewer->SetLightOn(m_sun);
  else
    m_viewer->SetLightOff(m_sun);
  m_ambient->SetColor(rgb(m_lighting.ambient));
  m_ambient->SetIntensity(1.0f);
  m_viewer->UpdateLights();
  ++m_lightingRevision;
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
