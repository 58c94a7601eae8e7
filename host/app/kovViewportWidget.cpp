#include "host/app/kovViewportWidget.h"

#include "host/app/kovHostApplication.h"
#include "host/app/kovHostViewSystem.h"
#include "host/app/kovInteractiveUserIO.h"
#include "host/app/kovScenePainter.h"
#include "host/app/kovSelection.h"

#include "Gi/OdGiWorldDrawRecorder.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace {

// A press that moves less than this is a click, not a drag.
constexpr double kClickSlop = 4.0;
// How near to a drawn primitive a click must be to pick its entity.
constexpr double kPickPixels = 5.0;
constexpr double kOrbitRadiansPerPixel = 0.008;
constexpr double kZoomPerWheelStep = 0.85;

// A mid-tone, so that dark drawings (the module's camera icon has a dark
// body) and light ones both stand out.
const QColor kBackground(96, 104, 118);
const QColor kGridMinor(110, 118, 133);
const QColor kGridMajor(136, 144, 160);
const QColor kHighlight(255, 200, 40);
const QColor kTracker(120, 220, 255);

QString formatNumber(double value)
{
  // Millimetre precision: a click can't be finer, and the transcript stays readable.
  const double rounded = std::round(value * 1000.0) / 1000.0;
  return QString::number(rounded == 0.0 ? 0.0 : rounded, 'g', 12);
}

QString formatPoint(const OdGePoint3d& point)
{
  return formatNumber(point.x) + QLatin1Char(',') + formatNumber(point.y) + QLatin1Char(',') + formatNumber(point.z);
}

} // namespace

kovViewportWidget::kovViewportWidget(kovHostApplication& app, kovHostViewSystem* views, kovSelection* selection,
                                     QWidget* parent)
  : QWidget(parent)
  , m_app(app)
  , m_views(views)
  , m_selection(selection)
  , m_gsView([this] { update(); })
{
  setObjectName(QStringLiteral("Viewport"));
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(200, 150);
  setAutoFillBackground(false);
  setAttribute(Qt::WA_OpaquePaintEvent);

  connect(m_views, &kovHostViewSystem::changed, this, qOverload<>(&QWidget::update));
  connect(m_views, &kovHostViewSystem::refreshed, this, &kovViewportWidget::markDirty);
  connect(m_selection, &kovSelection::changed, this, qOverload<>(&QWidget::update));
  connect(&m_app, &kovHostApplication::databaseChanged, this, &kovViewportWidget::markDirty);
  m_app.registerRefreshEvents(QStringLiteral("<event-refresh:database_changed>|<event-refresh:database_closed>"),
                              this);
}

kovViewProjection kovViewportWidget::projection() const
{
  return kovViewProjection(m_views->viewCamera(0), QSizeF(size()));
}

void kovViewportWidget::refresh(const QString& key, const QString& argument)
{
  Q_UNUSED(key);
  Q_UNUSED(argument);
  markDirty();
}

void kovViewportWidget::markDirty()
{
  m_dirty = true;
  update();
}

void kovViewportWidget::regenerateIfDirty()
{
  if (!m_dirty)
    return;
  m_dirty = false;
  m_scene.regenerate(m_app.currentDatabase());
}

const kovScene& kovViewportWidget::scene()
{
  regenerateIfDirty();
  return m_scene;
}

void kovViewportWidget::zoomExtents()
{
  OdGeExtents3d extents = scene().extents();
  if (!extents.isValidExtents())
    extents.set(OdGePoint3d(-10.0, -10.0, 0.0), OdGePoint3d(10.0, 10.0, 0.0));
  m_views->setViewCamera(0, kovViewProjection::fit(m_views->viewCamera(0), extents));
}

double kovViewportWidget::pickingPlane() const
{
  return m_io && m_io->hasLastPoint() ? m_io->lastPoint().z : 0.0;
}

bool kovViewportWidget::pointAt(const QPointF& pixel, OdGePoint3d& point) const
{
  return projection().pointOnPlane(pixel, pickingPlane(), point);
}

OdDbObjectId kovViewportWidget::entityAt(const QPointF& pixel)
{
  const kovViewProjection view = projection();
  OdDbObjectId nearestId;
  double nearest = kPickPixels;
  for (const kovScene::Item& item : scene().items()) {
    for (const OdGiPrimitiveRecord& record : item.records) {
      const double d = kovScenePainter::distance(view, record, pixel);
      if (d <= nearest) {
        nearest = d;
        nearestId = item.id;
      }
    }
  }
  return nearestId;
}

void kovViewportWidget::paintGrid(QPainter& painter, const kovViewProjection& projection) const
{
  const OdGeExtents3d& extents = m_scene.extents();
  double reach = 20.0;
  if (extents.isValidExtents()) {
    for (const OdGePoint3d& corner : { extents.minPoint(), extents.maxPoint() })
      reach = std::max({ reach, std::fabs(corner.x) * 1.5, std::fabs(corner.y) * 1.5 });
  }
  const double spacing = reach > 200.0 ? 10.0 : 1.0;
  const int lines = static_cast<int>(std::ceil(reach / spacing));
  const double end = lines * spacing;
  for (int i = -lines; i <= lines; ++i) {
    painter.setPen(QPen(i % 10 == 0 ? kGridMajor : kGridMinor, 1.0));
    const double at = i * spacing;
    QPointF a;
    QPointF b;
    if (projection.projectSegment(OdGePoint3d(at, -end, 0.0), OdGePoint3d(at, end, 0.0), a, b))
      painter.drawLine(a, b);
    if (projection.projectSegment(OdGePoint3d(-end, at, 0.0), OdGePoint3d(end, at, 0.0), a, b))
      painter.drawLine(a, b);
  }
  const double axis = spacing * 5.0;
  const struct {
    OdGeVector3d direction;
    QColor color;
  } axes[] = { { OdGeVector3d::kXAxis, QColor(230, 70, 70) },
               { OdGeVector3d::kYAxis, QColor(80, 200, 90) },
               { OdGeVector3d::kZAxis, QColor(80, 130, 255) } };
  for (const auto& a : axes) {
    QPointF from;
    QPointF to;
    if (projection.projectSegment(OdGePoint3d::kOrigin, OdGePoint3d::kOrigin + a.direction * axis, from, to)) {
      painter.setPen(QPen(a.color, 2.0));
      painter.drawLine(from, to);
    }
  }
}

void kovViewportWidget::paintTracker(QPainter& painter, const kovViewProjection& projection) const
{
  if (!m_gsView.tracker())
    return;
  OdGiWorldDrawRecorder recorder;
  m_gsView.drawTracker(&recorder);
  for (const OdGiPrimitiveRecord& record : recorder.records())
    kovScenePainter::draw(painter, projection, record, &kTracker);
}

void kovViewportWidget::paintEvent(QPaintEvent* event)
{
  Q_UNUSED(event);
  regenerateIfDirty();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), kBackground);
  const kovViewProjection view = projection();
  paintGrid(painter, view);
  for (const kovScene::Item& item : m_scene.items()) {
    const bool selected = m_selection->contains(item.id);
    for (const OdGiPrimitiveRecord& record : item.records)
      kovScenePainter::draw(painter, view, record, selected ? &kHighlight : nullptr);
  }
  paintTracker(painter, view);
}

void kovViewportWidget::mousePressEvent(QMouseEvent* event)
{
  m_pressPos = event->localPos();
  m_lastPos = m_pressPos;
  m_dragged = false;
  if (event->button() == Qt::MiddleButton
      || (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ShiftModifier)))
    m_drag = Drag::Pan;
  else if (event->button() == Qt::LeftButton)
    m_drag = Drag::Orbit;
  else
    m_drag = Drag::None;
}

void kovViewportWidget::mouseMoveEvent(QMouseEvent* event)
{
  const QPointF pos = event->localPos();
  OdGePoint3d ground;
  const bool onPlane = pointAt(pos, ground);
  emit cursorMoved(onPlane ? formatPoint(ground) : QString());
  if (m_drag == Drag::None) {
    if (onPlane && m_gsView.tracker())
      m_gsView.trackCursor(ground);
    return;
  }
  if (!m_dragged && QLineF(pos, m_pressPos).length() < kClickSlop)
    return;
  m_dragged = true;
  const QPointF delta = pos - m_lastPos;
  m_lastPos = pos;
  const kovViewCamera camera = m_views->viewCamera(0);
  if (m_drag == Drag::Orbit)
    m_views->setViewCamera(0, kovViewProjection::orbit(camera, -delta.x() * kOrbitRadiansPerPixel,
                                                       delta.y() * kOrbitRadiansPerPixel));
  else
    m_views->setViewCamera(0, kovViewProjection::pan(camera, delta, QSizeF(size())));
}

void kovViewportWidget::mouseReleaseEvent(QMouseEvent* event)
{
  const bool wasClick = m_drag != Drag::None && !m_dragged && event->button() == Qt::LeftButton;
  m_drag = Drag::None;
  m_dragged = false;
  if (wasClick)
    click(event->localPos());
}

void kovViewportWidget::click(const QPointF& pixel)
{
  using Waiting = kovInteractiveUserIO::Waiting;
  const Waiting waiting = m_io ? m_io->waiting() : Waiting::Nothing;
  if (waiting == Waiting::Point) {
    OdGePoint3d point;
    if (pointAt(pixel, point))
      m_io->answer(formatPoint(point));
    return;
  }
  const OdDbObjectId id = entityAt(pixel);
  if (waiting == Waiting::Objects) {
    if (!id.isNull())
      m_io->answer(odToQString(id.getHandle().ascii()));
    return;
  }
  m_selection->select(id);
}

void kovViewportWidget::wheelEvent(QWheelEvent* event)
{
  const double steps = event->angleDelta().y() / 120.0;
  if (steps == 0.0)
    return;
  const kovViewCamera camera = m_views->viewCamera(0);
  const double factor = std::pow(kZoomPerWheelStep, steps);
  // Toward what is under the cursor, on the target's height; straight in
  // when the cursor is above the horizon.
  OdGePoint3d anchor;
  if (projection().pointOnPlane(event->position(), camera.target.z, anchor))
    m_views->setViewCamera(0, kovViewProjection::zoomAt(camera, anchor, factor));
  else
    m_views->setViewCamera(0, kovViewProjection::zoom(camera, factor));
  event->accept();
}

void kovViewportWidget::keyPressEvent(QKeyEvent* event)
{
  if (event->key() == Qt::Key_Escape) {
    emit cancelRequested();
    m_selection->clear();
    return;
  }
  QWidget::keyPressEvent(event);
}
