#ifndef KOV_RENDER_VIEW_H
#define KOV_RENDER_VIEW_H

#include "host/api/kovViewCamera.h"

#include "Db/OdDbObjectId.h"
#include "Ge/OdGePoint3d.h"

#include <V3d_View.hxx>

#include <QImage>
#include <QSize>


class OdGsDevice;

// One view of the device's model, drawn offscreen at a size of its own: the
// engine's view with its camera, visual style and sky. The host's viewports
// and its production renders are such views.
//
// The rendered style path traces: every redraw adds one pass to the
// picture, and passes() counts them since the last change of the camera, the
// size, the style, the lighting or anything shown, after which the engine
// starts its accumulation again too.
class kovRenderView {
public:
  enum class VisualStyle { Wireframe, Shaded, ShadedWithEdges, Rendered };

  kovRenderView(OdGsDevice& device, const QSize& size);
  ~kovRenderView();
  kovRenderView(const kovRenderView&) = delete;
  kovRenderView& operator=(const kovRenderView&) = delete;

  // Sizes of 1 to kMaxSize pixels a side.
  static constexpr int kMaxSize = 16384;
  static bool isValidSize(const QSize& size);
  // Resizes the view (a size out of range is refused: false).
  bool setSize(const QSize& size);
  QSize size() const { return m_size; }

  void setCamera(const kovViewCamera& camera);
  const kovViewCamera& camera() const { return m_camera; }
  void setVisualStyle(VisualStyle style);
  VisualStyle visualStyle() const { return m_style; }
  // Multisampling of the rasterized styles (0 for none).
  void setMsaaSamples(int samples);

  // Draws one frame, the model brought up to date first.
  void redraw();
  int passes() const { return m_passes; }
  // Whether the picture shows what is to be shown now: false after a change
  // that the next redraw starts the passes again for.
  bool isCurrent();
  // Draws until the picture has samples passes (one frame for the
  // rasterized styles) and returns it; a null image when the engine fails.
  QImage render(int samples = 1);
  // The picture as last drawn, without drawing again.
  QImage grab() const;

  // The entity drawn at the pixel (from the top left), null for none.
  OdDbObjectId pick(const QPoint& pixel);

  const Handle(V3d_View)& engineView() const { return m_view; }

private:
  void applyCamera();
  void applySky();
  void applyStyle();

  OdGsDevice& m_device;
  Handle(V3d_View) m_view;
  QSize m_size;
  kovViewCamera m_camera;
  VisualStyle m_style = VisualStyle::Shaded;
  int m_msaa = 4;
  int m_passes = 0;
  // What the picture was last drawn with: a change restarts the passes.
  unsigned m_drawnRevision = ~0u;
  unsigned m_drawnLighting = ~0u;
  bool m_changed = true;
};

#endif
