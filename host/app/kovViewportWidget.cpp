#include "host/app/kovViewportWidget.h"

#include "host/api/IkovAnimatedScene.h"
#include "host/api/kovHostService.h"
#include "host/app/kovHostApplication.h"
#include "host/app/kovHostViewSystem.h"
#include "host/app/kovInteractiveUserIO.h"
#include "host/app/kovScenePainter.h"
#include "host/app/kovSelection.h"
#include "host/render/OdGsDevice.h"

#include "Gi/OdGiWorldDrawRecorder.h"

#include <Standard_Failure.hxx>

#include <QActionGroup>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

// A press that moves less than this is a click, not a drag.
constexpr double kClickSlop = 4.0;
// How near to a drawn line a click must be to pick its entity.
constexpr int kPickPixels = 5;
constexpr double kOrbitRadiansPerPixel = 0.008;
constexpr double kZoomPerWheelStep = 0.85;

const QColor kNoPictureBackground(60, 64, 72);
const QColor kTracker(120, 220, 255);

struct StyleChoice {
  kovRenderView::VisualStyle style;
  const char* text;
  const char* objectName;
};

const StyleChoice kStyleChoices[] = {
  { kovRenderView::VisualStyle::Wireframe, QT_TRANSLATE_NOOP("kovViewportWidget", "&Wireframe"),
    "VisualStyleWireframe" },
  { kovRenderView::VisualStyle::Shaded, QT_TRANSLATE_NOOP("kovViewportWidget", "&Shaded"), "VisualStyleShaded" },
  { kovRenderView::VisualStyle::ShadedWithEdges, QT_TRANSLATE_NOOP("kovViewportWidget", "Shaded with &Edges"),
    "VisualStyleShadedWithEdges" },
  { kovRenderView::VisualStyle::Rendered, QT_TRANSLATE_NOOP("kovViewportWidget", "&Rendered"),
    "VisualStyleRendered" },
};

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

bool sameCamera(const kovViewCamera& a, const kovViewCamera& b)
{
  return a.eye == b.eye && a.target == b.target && a.up == b.up && a.fieldOfView == b.fieldOfView
         && a.depthOfField == b.depthOfField && a.focusDistance == b.focusDistance && a.lensRadius == b.lensRadius;
}

} // namespace

kovViewportWidget::kovViewportWidget(kovHostApplication& app, kovHostViewSystem* views, kovSelection* selection,
                                     int viewport, QWidget* parent)
  : QWidget(parent)
  , m_app(app)
  , m_views(views)
  , m_selection(selection)
  , m_viewport(viewport >= 0 ? viewport : views->activeViewportNumber())
  , m_gsView([this] { update(); })
{
  setObjectName(QStringLiteral("Viewport"));
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(200, 150);
  setAutoFillBackground(false);
  setAttribute(Qt::WA_OpaquePaintEvent);
  createActions();

  // Idle passes: one per turn of the event loop, so that input still comes first.
  m_passTimer.setSingleShot(true);
  m_passTimer.setInterval(0);
  connect(&m_passTimer, &QTimer::timeout, this, qOverload<>(&QWidget::update));

  connect(m_views, &kovHostViewSystem::changed, this, [this] {
    showVisualStyle();
    followAnimation();
    update();
  });
  connect(m_views, &kovHostViewSystem::refreshed, this, [this] {
    followAnimation();
    update();
  });
  connect(m_selection, &kovSelection::changed, this, [this] {
    restartPasses();
    update();
  });
  connect(&m_app, &kovHostApplication::databaseChanged, this, [this] {
    followAnimation();
    update();
  });
  m_app.registerRefreshEvents(QStringLiteral("<event-refresh:database_changed>|<event-refresh:database_closed>"),
                              this);
}

void kovViewportWidget::createActions()
{
  m_styles = new QActionGroup(this);
  for (const StyleChoice& choice : kStyleChoices) {
    QAction* action = m_styles->addAction(tr(choice.text));
    action->setObjectName(QLatin1String(choice.objectName));
    action->setCheckable(true);
    action->setStatusTip(tr("Drawn by %1").arg(choice.style == kovRenderView::VisualStyle::Rendered
                                                   ? kovHostViewSystem::pathTracerLabel()
                                                   : kovHostViewSystem::rasterEngineLabel()));
    const kovRenderView::VisualStyle style = choice.style;
    connect(action, &QAction::triggered, this, [this, style] { m_views->setVisualStyle(m_viewport, style); });
  }
  showVisualStyle();

  m_lookThrough = new QAction(tr("&Look Through Animation Camera"), this);
  m_lookThrough->setObjectName(QStringLiteral("LookThroughAnimationCamera"));
  m_lookThrough->setCheckable(true);
  m_lookThrough->setStatusTip(tr("Show the animation's camera at the current position"));
  connect(m_lookThrough, &QAction::toggled, this, [this] {
    followAnimation();
    update();
  });
}

QList<QAction*> kovViewportWidget::visualStyleActions() const
{
  return m_styles->actions();
}

void kovViewportWidget::showVisualStyle()
{
  const kovRenderView::VisualStyle style = m_views->visualStyle(m_viewport);
  const QList<QAction*> actions = m_styles->actions();
  for (int i = 0; i < actions.size(); ++i)
    actions[i]->setChecked(kStyleChoices[i].style == style);
}

void kovViewportWidget::followAnimation()
{
  m_animationCamera.reset();
  if (!m_lookThrough->isChecked())
    return;
  const IkovAnimatedScene* scene = kovHostService<IkovAnimatedScene>();
  OdDbDatabase* db = m_app.currentDatabase();
  if (!scene || !db)
    return;
  const IkovAnimatedScene::Frame frame = scene->frame(db);
  if (frame.hasCamera)
    m_animationCamera = frame.camera;
}

kovViewCamera kovViewportWidget::camera() const
{
  return m_animationCamera ? *m_animationCamera : m_views->viewCamera(m_viewport);
}

kovViewProjection kovViewportWidget::projection() const
{
  return kovViewProjection(camera(), QSizeF(size()));
}

void kovViewportWidget::moveCamera(const kovViewCamera& camera)
{
  // Moving the view leaves the animation's camera: the move starts from what
  // was shown and stays on the viewport.
  m_lookThrough->setChecked(false);
  m_views->setViewCamera(m_viewport, camera);
}

void kovViewportWidget::refresh(const QString& key, const QString& argument)
{
  Q_UNUSED(key);
  Q_UNUSED(argument);
  update();
}

int kovViewportWidget::maxPasses() const
{
  return std::max(1, m_app.setting(maxPassesKey(), kDefaultMaxPasses).toInt());
}

int kovViewportWidget::passes() const
{
  return m_view ? m_view->passes() : 0;
}

void kovViewportWidget::restartPasses()
{
  m_pictureStale = true;
  if (m_view)
    m_view->setCamera(m_view->camera());
}

kovRenderView* kovViewportWidget::renderView()
{
  QString error;
  m_device = m_views->device(m_app.currentDatabase(), error);
  if (!m_device) {
    m_error = error;
    m_view.reset();
    return nullptr;
  }
  if (!m_view) {
    m_view = std::make_unique<kovRenderView>(*m_device, size());
    m_view->engineView()->TriedronDisplay(Aspect_TOTP_LEFT_LOWER, Quantity_NOC_WHITE, 0.08, V3d_ZBUFFER);
    m_device->context()->SetPixelTolerance(kPickPixels);
    m_pictureStale = true;
  }
  m_error.clear();
  return m_view.get();
}

// Brings the engine's view to what this widget shows; the camera and the size
// only when they changed, since setting them starts the path tracer again.
// Any change makes the picture stale.
bool kovViewportWidget::prepareView(kovRenderView& view)
{
  const qreal ratio = devicePixelRatioF();
  const QSize pixels(qRound(width() * ratio), qRound(height() * ratio));
  const kovViewCamera shown = camera();
  const kovRenderView::VisualStyle style = m_views->visualStyle(m_viewport);
  if (pixels != view.size() || !sameCamera(shown, view.camera()) || style != view.visualStyle())
    m_pictureStale = true;
  if (!view.setSize(pixels))
    return false;
  if (!sameCamera(shown, view.camera()))
    view.setCamera(shown);
  view.setVisualStyle(style);
  return true;
}

QImage kovViewportWidget::drawPicture()
{
  try {
    kovRenderView* view = renderView();
    if (!view || !prepareView(*view))
      return QImage();
    if (m_device->update() || m_device->revision() != m_drawnRevision)
      m_pictureStale = true;
    // Repaints for the overlays alone show the picture as it is, unless the
    // path tracer still has passes to add.
    const bool converged = view->visualStyle() != kovRenderView::VisualStyle::Rendered
                           || view->passes() >= maxPasses();
    if (!m_pictureStale && converged && !m_picture.isNull())
      return m_picture;
    // The highlight is this widget's: the device's other views, the render
    // command's among them, draw the drawing as it is.
    OdGsModel& model = m_device->model();
    const OdDbObjectIdArray& ids = m_selection->ids();
    model.setHighlighted(std::set<OdDbObjectId>(ids.begin(), ids.end()));
    view->redraw();
    m_picture = view->grab();
    model.setHighlighted({});
    m_pictureStale = false;
    m_drawnRevision = m_device->revision();
    if (m_picture.isNull())
      m_error = tr("The render engine could not read back the picture.");
    m_picture.setDevicePixelRatio(devicePixelRatioF());
    return m_picture;
  } catch (const Standard_Failure& failure) {
    engineFailed(failure);
  }
  return QImage();
}

void kovViewportWidget::engineFailed(const Standard_Failure& failure)
{
  m_error = tr("The render engine failed: %1\nIt needs an X display with OpenGL (GLX): start the host under "
               "xvfb-run, or set DISPLAY to a display that has it.")
                .arg(QString::fromLocal8Bit(failure.GetMessageString()));
  m_view.reset();
}

void kovViewportWidget::zoomExtents()
{
  OdGeExtents3d extents;
  QString error;
  if (OdGsDevice* device = m_views->device(m_app.currentDatabase(), error)) {
    device->update();
    const Bnd_Box box = device->model().extents();
    if (!box.IsVoid()) {
      double x0, y0, z0, x1, y1, z1;
      box.Get(x0, y0, z0, x1, y1, z1);
      extents.set(OdGePoint3d(x0, y0, z0), OdGePoint3d(x1, y1, z1));
    }
  }
  if (!extents.isValidExtents())
    extents.set(OdGePoint3d(-10.0, -10.0, 0.0), OdGePoint3d(10.0, 10.0, 0.0));
  moveCamera(kovViewProjection::fit(camera(), extents));
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
  try {
    kovRenderView* view = renderView();
    if (view && prepareView(*view))
      return view->pick((pixel * devicePixelRatioF()).toPoint());
  } catch (const Standard_Failure& failure) {
    engineFailed(failure);
  }
  return OdDbObjectId();
}

void kovViewportWidget::paintTracker(QPainter& painter, const kovViewProjection& projection) const
{
  if (!m_gsView.tracker())
    return;
  OdGiWorldDrawRecorder recorder;
  m_gsView.drawTracker(&recorder);
  for (const OdGiPrimitiveRecord& record : recorder.records())
    kovScenePainter::draw(painter, projection, record, kTracker);
}

void kovViewportWidget::paintStatus(QPainter& painter, const QString& text)
{
  if (text.isEmpty())
    return;
  const QRect box = painter.fontMetrics().boundingRect(text).adjusted(-6, -3, 6, 3);
  const QRect placed(rect().bottomRight() - QPoint(box.width() + 8, box.height() + 8), box.size());
  painter.fillRect(placed, QColor(0, 0, 0, 110));
  painter.setPen(QColor(235, 235, 235));
  painter.drawText(placed, Qt::AlignCenter, text);
}

void kovViewportWidget::paintEvent(QPaintEvent* event)
{
  Q_UNUSED(event);
  const QImage picture = drawPicture();
  QPainter painter(this);
  if (picture.isNull()) {
    painter.fillRect(rect(), kNoPictureBackground);
    painter.setPen(QColor(235, 235, 235));
    painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("The viewport cannot be drawn.\n%1").arg(m_error));
    return;
  }
  painter.drawImage(QPointF(0.0, 0.0), picture);
  painter.setRenderHint(QPainter::Antialiasing);
  paintTracker(painter, projection());

  QStringList status;
  if (m_lookThrough->isChecked() && !m_animationCamera)
    status << tr("No animation camera here");
  if (m_view->visualStyle() == kovRenderView::VisualStyle::Rendered) {
    status << tr("Pass %1").arg(m_view->passes());
    if (m_view->passes() < maxPasses())
      m_passTimer.start();
  }
  paintStatus(painter, status.join(QLatin1String("  ")));
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
  if (m_drag == Drag::Orbit)
    moveCamera(kovViewProjection::orbit(camera(), -delta.x() * kOrbitRadiansPerPixel,
                                        delta.y() * kOrbitRadiansPerPixel));
  else
    moveCamera(kovViewProjection::pan(camera(), delta, QSizeF(size())));
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
  const kovViewCamera shown = camera();
  const double factor = std::pow(kZoomPerWheelStep, steps);
  // Toward what is under the cursor, on the target's height; straight in
  // when the cursor is above the horizon.
  OdGePoint3d anchor;
  if (projection().pointOnPlane(event->position(), shown.target.z, anchor))
    moveCamera(kovViewProjection::zoomAt(shown, anchor, factor));
  else
    moveCamera(kovViewProjection::zoom(shown, factor));
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

void kovViewportWidget::contextMenuEvent(QContextMenuEvent* event)
{
  QMenu menu(this);
  menu.addActions(visualStyleActions());
  menu.addSeparator();
  menu.addAction(m_lookThrough);
  menu.addAction(tr("Zoom &Extents"), this, &kovViewportWidget::zoomExtents);
  menu.exec(event->globalPos());
}
