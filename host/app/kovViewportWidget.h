#ifndef KOV_VIEWPORT_WIDGET_H
#define KOV_VIEWPORT_WIDGET_H

#include "host/app/OdGsView.h"
#include "host/app/kovScene.h"
#include "host/app/kovViewProjection.h"

#include <QWidget>

class kovHostApplication;
class kovHostViewSystem;
class kovInteractiveUserIO;
class kovSelection;

// The 3D view of the open drawing: a wireframe perspective of what model
// space draws, over a ground grid and the axes, seen through the view
// system's camera of viewport 0 (which animations drive too).
//
// Left drag orbits, middle drag or shift + left drag pans, the wheel zooms.
// A click answers the running prompt when it waits for a point (on the ground,
// or on the height of the point picked before) or for objects; otherwise it
// selects the entity under the cursor. While a point prompt has a tracker, the
// tracker follows the cursor and is drawn over the drawing.
class kovViewportWidget : public QWidget {
  Q_OBJECT
public:
  kovViewportWidget(kovHostApplication& app, kovHostViewSystem* views, kovSelection* selection,
                    QWidget* parent = nullptr);

  // The user input whose prompts clicks answer; null for none.
  void setUserIO(kovInteractiveUserIO* io) { m_io = io; }
  OdGsView* gsView() { return &m_gsView; }

  kovViewProjection projection() const;
  // The entity drawn nearest to the pixel, within a few pixels; null for none.
  OdDbObjectId entityAt(const QPointF& pixel);
  // The point under the pixel on the picking plane; false when the ray misses it.
  bool pointAt(const QPointF& pixel, OdGePoint3d& point) const;
  const kovScene& scene();

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

private:
  enum class Drag { None, Orbit, Pan };

  void markDirty();
  void regenerateIfDirty();
  void click(const QPointF& pixel);
  void paintGrid(QPainter& painter, const kovViewProjection& projection) const;
  void paintTracker(QPainter& painter, const kovViewProjection& projection) const;
  double pickingPlane() const;

  kovHostApplication& m_app;
  kovHostViewSystem* m_views;
  kovSelection* m_selection;
  kovInteractiveUserIO* m_io = nullptr;
  OdGsView m_gsView;
  kovScene m_scene;
  bool m_dirty = true;
  Drag m_drag = Drag::None;
  bool m_dragged = false;
  QPointF m_pressPos;
  QPointF m_lastPos;
};

#endif
