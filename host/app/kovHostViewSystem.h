#ifndef KOV_HOST_VIEW_SYSTEM_H
#define KOV_HOST_VIEW_SYSTEM_H

#include "host/api/IkovViewSystem.h"
#include "host/render/kovRenderView.h"
#include "host/render/kovSkyModel.h"

#include <QMap>
#include <QObject>
#include <QSize>

#include <memory>

class OdGsDevice;

// The host's views: numbered viewports, each with its camera and visual
// style, and the render device that draws them, made the first time a
// picture is asked for (it needs an X display). The visual style picks the
// engine: the rendered style is the path tracer ("TessaRender"), the others
// the rasterizer ("kovRaster").
//
// Views that show a viewport repaint on changed(); refresh() also says
// refreshed(), after which they draw the drawing anew.
class kovHostViewSystem : public QObject, public IkovViewSystem {
  Q_OBJECT
public:
  static QString rasterEngineLabel() { return QStringLiteral("kovRaster"); }
  static QString pathTracerLabel() { return QStringLiteral("TessaRender"); }

  kovHostViewSystem();
  ~kovHostViewSystem() override;

  int activeViewport(OdDbDatabase* db) const override;
  kovViewCamera viewCamera(int viewport) const override;
  void setViewCamera(int viewport, const kovViewCamera& camera) override;
  QString activeRenderEngine(OdDbDatabase* db) const override;
  void refresh(const OdDbObjectId& id) override;
  OdGiRasterImagePtr viewRaster(OdDbDatabase* db, int viewport, const QSize& size, QString& error) override;

  void setActiveViewport(int viewport) { m_active = viewport; }
  // The viewport commands act on, whether or not a drawing is open.
  int activeViewportNumber() const { return m_active; }
  kovRenderView::VisualStyle visualStyle(int viewport) const;
  void setVisualStyle(int viewport, kovRenderView::VisualStyle style);
  // The sun and sky every view is lit by.
  void setLighting(const kovSkyModel::Lighting& lighting);
  const kovSkyModel::Lighting& lighting() const { return m_lighting; }

  // The device, made on first use, showing db as its animation has it at
  // its current position; null, with the reason in error, when no display or
  // OpenGL context can be had.
  OdGsDevice* device(OdDbDatabase* db, QString& error);

  // The offscreen view of db's viewport at size, in the viewport's camera and
  // the given style, that pictures are rendered in; its path-traced passes go on
  // accumulating from call to call while nothing changes. Null, with the
  // reason in error, when the size is out of range or there is no device.
  kovRenderView* offscreenView(OdDbDatabase* db, int viewport, const QSize& size, kovRenderView::VisualStyle style,
                               QString& error);

  // The picture of db's viewport at size, drawn by its engine with samples
  // passes when it path traces. A null image, with the reason in error, when
  // the size is out of range or nothing can be rendered.
  QImage render(OdDbDatabase* db, int viewport, const QSize& size, int samples, QString& error);

signals:
  void changed();
  void refreshed(const OdDbObjectId& id);

private:
  void applyAnimatedScene(OdDbDatabase* db);

  int m_active = 0;
  QMap<int, kovViewCamera> m_cameras;
  QMap<int, kovRenderView::VisualStyle> m_styles;
  kovSkyModel::Lighting m_lighting;
  std::unique_ptr<OdGsDevice> m_device;
  std::unique_ptr<kovRenderView> m_offscreen;
  QString m_deviceError;
};

#endif
