#include "editor/kovAnimationTimelineHeaderWidget.h"

#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovTimelinePan.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

const int kTickLength = 5;
const int kHandleWidth = 10;
// The wheel may zoom out further than the editor shows; the editor's setter
// clamps.
const double kWheelMinZoom = 1e-6;

} // namespace

kovAnimationTimelineHeaderWidget::kovAnimationTimelineHeaderWidget(kovAnimationEditorWidget* editor, QWidget* parent)
  : QWidget(parent)
  , m_editor(editor)
{
  setObjectName(QStringLiteral("TimelineHeader"));
  setMinimumHeight(24);
  setMouseTracking(true);
  // The bright-text ticks need a darker ground than the window's.
  setBackgroundRole(QPalette::Mid);
  setAutoFillBackground(true);
}

QRect kovAnimationTimelineHeaderWidget::handleRect() const
{
  const kovTimelineScale& scale = m_editor->scale();
  const int position = m_editor->currentPosition();
  if (position < scale.visibleStart || position > scale.lastVisible)
    return QRect();
  return QRect(scale.xOf(position) - kHandleWidth / 2, 0, kHandleWidth, height() - 1);
}

void kovAnimationTimelineHeaderWidget::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  const kovTimelineScale& scale = m_editor->scale();
  const int major = scale.majorInterval();
  const int majorWidth = static_cast<int>(std::lround(major * scale.pixelsPerMs));
  const QPen minorPen(palette().color(QPalette::BrightText));
  const QPen majorPen(palette().color(QPalette::Text));
  for (int t = scale.firstTick; t <= scale.lastVisible; t += scale.step) {
    const int x = scale.xOf(t);
    const bool isMajor = t % major == 0;
    painter.setPen(isMajor ? majorPen : minorPen);
    painter.drawLine(x, height() - kTickLength, x, height());
    if (isMajor)
      painter.drawText(QRect(x - majorWidth / 2, 0, majorWidth, height()), Qt::AlignCenter, scale.label(t));
  }

  const QRect handle = handleRect();
  if (handle.isEmpty())
    return;
  painter.setPen(QColor(128, 64, 64));
  painter.setBrush(m_hovered ? QColor(255, 128, 128, 128) : QColor(192, 64, 64, 128));
  painter.drawRect(handle);
}

void kovAnimationTimelineHeaderWidget::setHovered(bool hovered)
{
  if (hovered == m_hovered)
    return;
  m_hovered = hovered;
  update();
}

void kovAnimationTimelineHeaderWidget::mouseMoveEvent(QMouseEvent* event)
{
  // Moving the position repaints the header through the editor, only when it
  // changed.
  if (m_dragging)
    m_editor->setCurrentPosition(m_editor->scale().timeAt(event->pos().x()));
  setHovered(handleRect().contains(event->pos()));
}

void kovAnimationTimelineHeaderWidget::mousePressEvent(QMouseEvent* event)
{
  if (event->button() == Qt::LeftButton && m_hovered)
    m_dragging = true;
}

void kovAnimationTimelineHeaderWidget::mouseReleaseEvent(QMouseEvent*)
{
  m_dragging = false;
}

void kovAnimationTimelineHeaderWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
  m_editor->setCurrentPosition(m_editor->scale().timeAt(event->pos().x()));
}

void kovAnimationTimelineHeaderWidget::wheelEvent(QWheelEvent* event)
{
  event->accept();
  // A sideways wheel, or the wheel with Shift, scrolls through time instead.
  if (const int pan = panDelta(event)) {
    m_editor->panBy(pan);
    return;
  }
  const int delta = event->angleDelta().y();
  if (delta == 0)
    return;
  const double factor = std::abs(delta) / 1000.0 + 1.0;
  const double zoom = delta > 0 ? m_editor->zoom() * factor : m_editor->zoom() / factor;
  m_editor->setZoom(std::clamp(zoom, kWheelMinZoom, kovTimelineScale::kMaxZoom));
}

void kovAnimationTimelineHeaderWidget::leaveEvent(QEvent*)
{
  setHovered(false);
}
