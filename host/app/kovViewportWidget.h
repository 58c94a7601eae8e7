#ifndef KOV_VIEWPORT_WIDGET_H
#define KOV_VIEWPORT_WIDGET_H

#include "host/app/OdGsView.h"
#include "host/app/kovViewProjection.h"
#include "host/render/kovRenderView.h"

#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

class kovHostApplication;
class kovHostViewSystem;
class kovInteractiveUserIO;
class OdGsDevice;
class Standard_Failure;
class kovSelection;
class QAction;
class QActionGroup;

// The 3D view of the open drawing as the render engine draws it: one of the
// view system's viewports, in its camera and visual style, or seen through
// the animation's camera. The engine draws offscreen at the widget's size in
// device pixels; the widget shows that picture with the point tracker and a
// line of status (the path tracer's pass) painted over it. In the rendered
// style the path tracer adds a pass whenever the view is idle, up to the
// "Render/MaxPasses" setting, and starts again after any change.
//
// Left drag orbits, middle drag or shift + left drag pans, the wheel zooms
// toward the cursor; each of them leaves the animation's camera. A click
// answers the running prompt when it waits for a point (on the ground, or on
// the height of the point picked before) or for objects; otherwise it selects
// the entity the engine drew under the cursor, which the engine highlights.
class kovViewportWidget : public QWidget {
  Q_OBJECT
public:
  static QString maxPassesKey() { return QStringLiteral("Render/MaxPasses"); }
  static constexpr int kDefaultMaxPasses = 256;

  // viewport: the view system's viewport shown; -1 for its active one.
  kovViewportWidget(kovHostApplication& app, kovHostViewSystem* views, kovSelection* selection, int viewport = -1,
                    QWidget* parent = nullptr);

  int viewportNumber() const { return m_viewport; }
  // The user input whose prompts clicks answer; null for none.
  void setUserIO(kovInteractiveUserIO* io) { m_io = io; }
  OdGsView* gsView() { return &m_gsView; }

  // The camera shown: the animation's while looking through it (and it has
  // one here), else the viewport's.
  kovViewCamera camera() const;
  kovViewProjection projection() const;
  // The entity the engine drew at the pixel; null for none.
  OdDbObjectId entityAt(const QPointF& pixel);
  // The point under the pixel on the picking plane; false when the ray misses it.
  bool pointAt(const QPointF& pixel, OdGePoint3d& point) const;
  // The path tracer's passes in the picture shown (1 for the rasterizer, 0
  // before anything was drawn).
  int passes() const;
  // Why the engine draws nothing (the widget shows it); empty while it draws.
  const QString& engineError() const { return m_error; }

  // For menus: the visual styles (checked as the view system has this
  // viewport's) and the look-through toggle.
  QList<QAction*> visualStyleActions() const;
  QAction* lookThroughAction() const { return m_lookThrough; }

public slots:
  void zoomExtents();
  // Refresh events of the host: the drawing changed or closed.
  void refresh(const QString& key, const QString& argument);

signals:
  // The point under the cursor, for the status bar; empty off the plane.
  void cursorMoved(const QString& text);
  void cancelRequested();

protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

private:
  enum class Drag { None, Orbit, Pan };

  void createActions();
  void showVisualStyle();
  void followAnimation();
  void moveCamera(const kovViewCamera& camera);
  void restartPasses();
  kovRenderView* renderView();
  bool prepareView(kovRenderView& view);
  QImage drawPicture();
  void engineFailed(const Standard_Failure& failure);
  void click(const QPointF& pixel);
  void paintTracker(QPainter& painter, const kovViewProjection& projection) const;
  void paintStatus(QPainter& painter, const QString& text);
  double pickingPlane() const;
  int maxPasses() const;

  kovHostApplication& m_app;
  kovHostViewSystem* m_views;
  kovSelection* m_selection;
  int m_viewport;
  kovInteractiveUserIO* m_io = nullptr;
  OdGsView m_gsView;
  // The view system's device, which outlives this widget.
  OdGsDevice* m_device = nullptr;
  std::unique_ptr<kovRenderView> m_view;
  // The engine's last picture, shown again while nothing changed.
  QImage m_picture;
  bool m_pictureStale = true;
  unsigned m_drawnRevision = 0;
  QString m_error;
  QActionGroup* m_styles = nullptr;
  QAction* m_lookThrough = nullptr;
  // The animation's camera while looking through it and it has one.
  std::optional<kovViewCamera> m_animationCamera;
  QTimer m_passTimer;
  Drag m_drag = Drag::None;
  bool m_dragged = false;
  QPointF m_pressPos;
  QPointF m_lastPos;
};

#endif
