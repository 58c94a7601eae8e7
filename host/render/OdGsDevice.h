#ifndef OD_GS_DEVICE_H
#define OD_GS_DEVICE_H

#include "host/render/OdGsModel.h"
#include "host/render/kovSkyModel.h"

#include <Aspect_DisplayConnection.hxx>
#include <OpenGl_GraphicDriver.hxx>
#include <V3d_AmbientLight.hxx>
#include <V3d_DirectionalLight.hxx>
#include <V3d_View.hxx>
#include <V3d_Viewer.hxx>

#include <QString>

#include <memory>
#include <vector>

class OdDbDatabase;

// The render device: the engine's driver and viewer over one X display, the
// model of the open drawing that all its views show, and the lights: the
// sun and the sky's ambient light from the sky model, and the drawing's own
// lights. Views (OdGsView) are made from it and must go before it.
class OdGsDevice {
public:
  // A device on the host's display (a private one when there is none); null,
  // with the reason in error, when no display or no OpenGL context can be had.
  static std::unique_ptr<OdGsDevice> create(QString& error);
  ~OdGsDevice();
  OdGsDevice(const OdGsDevice&) = delete;
  OdGsDevice& operator=(const OdGsDevice&) = delete;

  OdGsModel& model() { return *m_model; }
  const Handle(AIS_InteractiveContext)& context() const { return m_context; }
  const Handle(V3d_Viewer)& viewer() const { return m_viewer; }
  const Handle(Aspect_DisplayConnection)& display() const { return m_display; }

  void setDatabase(OdDbDatabase* db) { m_model->setDatabase(db); }

  void setLighting(const kovSkyModel::Lighting& lighting);
  const kovSkyModel::Lighting& lighting() const { return m_lighting; }
  // Casting shadows from the sun (rasterizer).
  void setShadows(bool on);
  bool shadows() const { return m_shadows; }
  // Turns on, in view alone, the sun and sky light of the engine that draws
  // it: the rasterizer's, or the path tracer's, which weighs light by
  // physical units and gathers the sky from the environment map.
  void showLightsIn(const Handle(V3d_View)& view, bool pathTraced) const;

  // Brings the model and the drawing's lights up to date. True when
  // anything shown changed.
  bool update();
  // Counts every change of what is shown or how it is lit.
  unsigned revision() const { return m_model->revision() + m_lightingRevision; }
  unsigned lightingRevision() const { return m_lightingRevision; }

private:
  OdGsDevice() = default;
  void applyLighting();
  void syncDrawingLights();

  Handle(Aspect_DisplayConnection) m_display;
  Handle(OpenGl_GraphicDriver) m_driver;
  Handle(V3d_Viewer) m_viewer;
  Handle(AIS_InteractiveContext) m_context;
  std::unique_ptr<OdGsModel> m_model;
  Handle(V3d_DirectionalLight) m_sun;
  Handle(V3d_AmbientLight) m_ambient;
  Handle(V3d_DirectionalLight) m_tracedSun;
  Handle(V3d_AmbientLight) m_tracedSky;
  std::vector<Handle(Graphic3d_CLight)> m_drawingLights;
  std::vector<OdGsModel::Light> m_shownLights;
  kovSkyModel::Lighting m_lighting;
  bool m_shadows = true;
  unsigned m_lightingRevision = 0;
};

#endif
