#include "editor/kovAnimationTreeView.h"

#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationModelDelegate.h"
#include "editor/kovAnimationtreeViewHeader.h"
#include "editor/kovKeyframeToolTip.h"
#include "editor/kovTimelinePan.h"

#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>

#include <iterator>

namespace {

// Where a menu opens beside the pointer.
const QPoint kMenuOffset(5, -10);

} // namespace

kovAnimationTreeView::kovAnimationTreeView(kovAnimationEditorWidget* editor, QWidget* parent)
  : QTreeView(parent)
  , m_editor(editor)
{
  setObjectName(QStringLiteral("AnimationTree"));
  setHeader(new kovAnimationtreeViewHeader(editor, this));
  setItemDelegate(new kovAnimationModelDelegate(this));
  setMouseTracking(true);
}

kovAnimationTreeView::~kovAnimationTreeView()
{
  if (auto* animationModel = qobject_cast<kovAnimationModel*>(model()))
    animationModel->setLaneToolTip(nullptr);
}

void kovAnimationTreeView::setModel(QAbstractItemModel* model)
{
  QTreeView::setModel(model);
  if (auto* animationModel = qobject_cast<kovAnimationModel*>(model))
    animationModel->setLaneToolTip([this](const QModelIndex& index) { return laneToolTip(index); });
}

int kovAnimationTreeView::laneLeft() const
{
  return header()->sectionViewportPosition(1);
}

int kovAnimationTreeView::laneWidth() const
{
  return header()->sectionSize(1);
}

void kovAnimationTreeView::paintGrid(QPainter& painter, const QRect& area) const
{
  const kovTimelineScale& scale = m_editor->scale();
  const int major = scale.majorInterval();
  const int left = laneLeft();
  const QPen plain(QColor(150, 150, 150), 1, Qt::DashLine);
  const QPen solid(QColor(110, 110, 110));
  for (int t = scale.firstTick; t <= scale.lastVisible; t += scale.step) {
    const int x = left + scale.xOf(t);
    if (x < area.left() || x > area.right())
      continue;
    painter.setPen(t % major == 0 ? solid : plain);
    painter.drawLine(x, area.top(), x, area.bottom());
  }
}

void kovAnimationTreeView::paintEvent(QPaintEvent* event)
{
  {
    // Rows paint their own lanes with the grid; this is the grid below them.
    QPainter painter(viewport());
    paintGrid(painter, QRect(laneLeft(), 0, laneWidth(), viewport()->height()));
  }
  QTreeView::paintEvent(event);
  const kovTimelineScale& scale = m_editor->scale();
  const int position = m_editor->currentPosition();
  if (position < scale.visibleStart || position > scale.lastVisible)
    return;
  QPainter painter(viewport());
  painter.fillRect(laneLeft() + scale.xOf(position) - 1, 0, 3, viewport()->height(), QColor(128, 92, 92, 128));
}

kovAnimationTreeView::Hit kovAnimationTreeView::hitTest(const QPoint& pos) const
{
  Hit hit;
  const QModelIndex row = indexAt(pos).siblingAtColumn(0);
  if (!row.isValid())
    return hit;
  hit.track = kovAnimationModel::trackIndexOf(row);
  hit.element = kovAnimationModel::elementIndexOf(row);
  const QRect nameCell = visualRect(row);
  if (kovAnimationModelDelegate::removeSpot(nameCell).contains(pos)) {
    hit.zone = RemoveSpot;
    return hit;
  }
  if (kovAnimationModelDelegate::editSpot(nameCell).contains(pos)) {
    hit.zone = EditSpot;
    return hit;
  }
  const int x = pos.x() - laneLeft();
  const kovDbAnimationPtr animation = m_editor->openAnimation();
  const kovAnimationTrack* track =
      animation.isNull() || x < 0 ? nullptr : kovAnimationModelDelegate::trackAt(*animation, hit.track);
  if (!track)
    return hit;
  const kovTimelineScale& scale = m_editor->scale();
  const int start = track->startMillisecond();
  if (hit.element < 0) {
    const int first = scale.xOf(start + track->firstKeyframeTime());
    const int last = scale.xOf(start + track->lastKeyframeTime());
    if (first == last)
      return hit;
    if (std::abs(x - first) <= kovAnimationModelDelegate::kSpanEndReach)
      hit.zone = SpanStart;
    else if (std::abs(x - last) <= kovAnimationModelDelegate::kSpanEndReach)
      hit.zone = SpanEnd;
    else if (x > first && x < last)
      hit.zone = SpanBody;
    return hit;
  }
  if (hit.element >= track->numElements())
    return hit;
  // The nearest marker within reach; the keys are ordered, so the search
  // starts at the first that can reach the pointer.
  const QMap<int, QVariant>& keys = track->elementAt(hit.element).values();
  int nearest = kovAnimationModelDelegate::kMarkerReach + 1;
  for (auto it = keys.lowerBound(scale.timeAt(x - kovAnimationModelDelegate::kMarkerReach - 1) - start);
       it != keys.cend(); ++it) {
    const int distance = scale.xOf(start + it.key()) - x;
    if (distance > kovAnimationModelDelegate::kMarkerReach)
      break;
    if (std::abs(distance) < nearest) {
      nearest = std::abs(distance);
      hit.zone = Keyframe;
      hit.key = it.key();
    }
  }
  return hit;
}

std::optional<int> kovAnimationTreeView::hoveredKey(int track, int element) const
{
  if (m_hover.zone != Keyframe || m_hover.track != track || m_hover.element != element)
    return std::nullopt;
  return m_hover.key;
}

bool kovAnimationTreeView::isDraggingSpan(int track) const
{
  return m_drag.zone == SpanBody && m_drag.track == track;
}

QModelIndex kovAnimationTreeView::rowIndex(const Hit& hit) const
{
  auto* animationModel = qobject_cast<kovAnimationModel*>(model());
  if (!animationModel || hit.track < 0)
    return QModelIndex();
  return hit.element < 0 ? animationModel->trackIndex(hit.track) : animationModel->elementIndex(hit.track, hit.element);
}

void kovAnimationTreeView::mousePressEvent(QMouseEvent* event)
{
  const Hit hit = hitTest(event->pos());
  // The menu's keyframe entries act on the keyframe under the pointer.
  hover(hit);
  if (event->button() == Qt::RightButton) {
    emit contextMenuRequested(rowIndex(hit), event->globalPos() + kMenuOffset);
    return;
  }
  if (event->button() != Qt::LeftButton)
    return;
  if (hit.zone == EditSpot) {
    if (hit.element >= 0)
      emit editRequested(rowIndex(hit), event->globalPos());
    else
      emit trackMenuRequested(rowIndex(hit), event->globalPos() + kMenuOffset);
    return;
  }
  if (hit.zone == RemoveSpot) {
    confirmRemove(hit);
    return;
  }
  // A whole drag, press to release, is one edit; it starts before the press
  // selects the row, so that undo gives the selection back too.
  const bool drags = hit.zone >= SpanStart && m_editor->beginEdit();
  QTreeView::mousePressEvent(event);
  if (hit.zone >= SpanStart && !drags)
    return;
  m_drag = hit;
  m_lastX = event->pos().x();
  if (m_drag.zone == SpanBody)
    viewport()->update();
}

void kovAnimationTreeView::confirmRemove(const Hit& hit)
{
  const bool subTrack = hit.element >= 0;
  const QString text = subTrack ? tr("Do you really want to remove this animation sub-track?")
                                : tr("Do you really want to remove this animation track?");
  const QString title = subTrack ? tr("Confirm Remove SubTrack") : tr("Confirm Remove Track");
  if (QMessageBox::question(this, title, text, QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes
      || !m_editor->beginEdit())
    return;
  const QModelIndex row = rowIndex(hit);
  m_drag = Hit();
  m_hover = Hit();
  model()->removeRows(row.row(), 1, row.parent());
  m_editor->editDone();
}

void kovAnimationTreeView::mouseMoveEvent(QMouseEvent* event)
{
  if (!(event->buttons() & Qt::LeftButton) || m_drag.zone < SpanStart) {
    hover(hitTest(event->pos()));
    QTreeView::mouseMoveEvent(event);
    return;
  }
  // Movement that rounds to no time, or that a keyframe may not follow, is
  // kept for the next move.
  const int delta = m_editor->scale().msOf(event->pos().x() - m_lastX);
  if (delta == 0 || !dragBy(delta))
    return;
  m_lastX = event->pos().x();
  viewport()->update();
}

bool kovAnimationTreeView::dragBy(int delta)
{
  kovDbAnimationPtr animation = m_editor->openAnimation(OdDb::kForWrite);
  if (animation.isNull() || !kovAnimationModelDelegate::trackAt(*animation, m_drag.track))
    return false;
  kovAnimationTrack& track = *animation->editTracks()[static_cast<size_t>(m_drag.track)];
  const int first = track.firstKeyframeTime();
  const int last = track.lastKeyframeTime();
  // An end dragged onto or past the other would turn the span over.
  switch (m_drag.zone) {
  case SpanStart:
    if (first + delta >= last)
      return false;
    track.resize(first + delta, last);
    return true;
  case SpanEnd:
    if (last + delta <= first)
      return false;
    track.resize(first, last + delta);
    return true;
  case SpanBody:
    track.setStartMillisecond(track.startMillisecond() + delta);
    return true;
  case Keyframe:
    return m_drag.element < track.numElements() && moveKeyframe(track.elementAt(m_drag.element), delta);
  default:
    return false;
  }
}

bool kovAnimationTreeView::moveKeyframe(kovAnimationItem& item, int delta)
{
  const QMap<int, QVariant>& keys = item.values();
  const auto it = keys.constFind(m_drag.key);
  if (it == keys.cend())
    return false;
  const int to = m_drag.key + delta;
  const auto next = std::next(it);
  if ((next != keys.cend() && to >= next.key()) || (it != keys.cbegin() && to <= std::prev(it).key()))
    return false;
  const QVariant value = it.value();
  item.setValue(to, value);
  item.removeValue(m_drag.key);
  m_drag.key = to;
  m_hover = m_drag;
  return true;
}

void kovAnimationTreeView::hover(const Hit& hit)
{
  const bool wasKey = m_hover.zone == Keyframe;
  const bool isKey = hit.zone == Keyframe;
  const bool changed =
      wasKey != isKey
      || (isKey && (hit.track != m_hover.track || hit.element != m_hover.element || hit.key != m_hover.key));
  m_hover = hit;
  switch (hit.zone) {
  case SpanStart:
  case SpanEnd:
    viewport()->setCursor(Qt::SizeHorCursor);
    break;
  case SpanBody:
  case Keyframe:
    viewport()->setCursor(Qt::OpenHandCursor);
    break;
  case EditSpot:
  case RemoveSpot:
    viewport()->setCursor(Qt::PointingHandCursor);
    break;
  default:
    viewport()->unsetCursor();
  }
  if (changed)
    viewport()->update();
}

void kovAnimationTreeView::mouseReleaseEvent(QMouseEvent* event)
{
  const bool wasSpan = m_drag.zone == SpanBody;
  m_drag = Hit();
  if (wasSpan)
    viewport()->update();
  QTreeView::mouseReleaseEvent(event);
}

// A double click on the lane moves the current time there, as in the header;
// on the names it keeps its usual meaning (expanding a track).
void kovAnimationTreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
  const int x = event->pos().x() - laneLeft();
  if (x < 0) {
    QTreeView::mouseDoubleClickEvent(event);
    return;
  }
  m_editor->setCurrentPosition(m_editor->scale().timeAt(x));
}

// The wheel scrolls the rows; sideways or with Shift it scrolls through time.
void kovAnimationTreeView::wheelEvent(QWheelEvent* event)
{
  if (const int pan = panDelta(event)) {
    m_editor->panBy(pan);
    event->accept();
    return;
  }
  QTreeView::wheelEvent(event);
}

QVariant kovAnimationTreeView::laneToolTip(const QModelIndex& index) const
{
  if (!hoveredKey(kovAnimationModel::trackIndexOf(index), kovAnimationModel::elementIndexOf(index)))
    return QVariant();
  const kovDbAnimationPtr animation = m_editor->openAnimation();
  const kovAnimationTrack* track =
      animation.isNull() ? nullptr : kovAnimationModelDelegate::trackAt(*animation, m_hover.track);
  if (!track || m_hover.element >= track->numElements())
    return QVariant();
  const kovAnimationItem& item = track->elementAt(m_hover.element);
  return kovKeyframeToolTip::text(item, item.values().value(m_hover.key));
}
