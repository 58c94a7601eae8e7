#include "editor/kovAnimationModelDelegate.h"

#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationTreeView.h"

#include <QPainter>

#include <algorithm>

namespace {

const int kSpotMargin = 2;
const int kSpotGap = 2;
const int kTrackExtraWidth = 64;
const int kSubTrackExtraWidth = 32;
const int kMarkerSize = 7;
const int kCurrentMarkerSize = 9;
const int kContinuationWidth = 3;
const int kContinuationHeight = 16;

const QColor kCurrentOuter(255, 0, 0);
const QColor kLightMarker(255, 128, 128);
const QColor kMarker(64, 32, 32);
const QColor kSpanOutline(16, 16, 16);
const QColor kSpanFill(126, 156, 196);
const QColor kSpanDraggedFill(232, 176, 88);

QRect centredSquare(int x, int y, int size)
{
  return QRect(x - size / 2, y - size / 2, size, size);
}

} // namespace

kovAnimationModelDelegate::kovAnimationModelDelegate(kovAnimationTreeView* view)
  : QItemDelegate(view)
  , m_view(view)
{
}

QRect kovAnimationModelDelegate::removeSpot(const QRect& nameCell)
{
  return QRect(nameCell.right() - kSpotMargin - kSpotSize + 1, nameCell.center().y() - kSpotSize / 2, kSpotSize,
               kSpotSize);
}

QRect kovAnimationModelDelegate::editSpot(const QRect& nameCell)
{
  return removeSpot(nameCell).translated(-(kSpotSize + kSpotGap), 0);
}

const kovAnimationTrack* kovAnimationModelDelegate::trackAt(const kovDbAnimation& animation, int index)
{
  const std::vector<kovAnimationTrackPtr>& tracks = animation.constTracks();
  return index >= 0 && static_cast<size_t>(index) < tracks.size() ? tracks[static_cast<size_t>(index)].get()
                                                                  : nullptr;
}

void kovAnimationModelDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
  if (kovAnimationModel::trackIndexOf(index) < 0)
    return;
  if (index.column() == 1) {
    paintLane(painter, option.rect, index);
    return;
  }
  QItemDelegate::paint(painter, option, index);
  const QVariant foreground = index.data(Qt::ForegroundRole);
  paintSpots(painter, option.rect,
             foreground.canConvert<QColor>() ? foreground.value<QColor>() : option.palette.color(QPalette::Text));
}

QSize kovAnimationModelDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
  QSize size = QItemDelegate::sizeHint(option, index);
  if (index.column() != 0)
    return size;
  if (kovAnimationModel::elementIndexOf(index) >= 0)
    size.rwidth() += kSubTrackExtraWidth;
  else if (kovAnimationModel::trackIndexOf(index) >= 0)
    size.rwidth() += kTrackExtraWidth;
  return size;
}

// A pencil for the edit spot and a cross for the remove spot, drawn in the
// row's text colour.
void kovAnimationModelDelegate::paintSpots(QPainter* painter, const QRect& nameCell, const QColor& color) const
{
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const QRect edit = editSpot(nameCell).adjusted(3, 3, -3, -3);
  painter->setPen(QPen(color, 3, Qt::SolidLine, Qt::RoundCap));
  painter->drawLine(edit.bottomLeft() + QPoint(1, -1), edit.topRight());
  painter->setPen(QPen(color, 1));
  painter->drawLine(edit.bottomLeft(), edit.bottomRight());
  const QRect remove = removeSpot(nameCell).adjusted(4, 4, -4, -4);
  painter->setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap));
  painter->drawLine(remove.topLeft(), remove.bottomRight());
  painter->drawLine(remove.bottomLeft(), remove.topRight());
  painter->restore();
}

// The entity is opened once for the whole lane: the model's background and
// the keys come from the same open.
void kovAnimationModelDelegate::paintLane(QPainter* painter, const QRect& lane, const QModelIndex& index) const
{
  const kovDbAnimationPtr animation = m_view->editor()->openAnimation();
  const kovAnimationTrack* track =
      animation.isNull() ? nullptr : trackAt(*animation, kovAnimationModel::trackIndexOf(index));
  if (!track)
    return;
  const int element = kovAnimationModel::elementIndexOf(index);
  painter->save();
  painter->setClipRect(lane);
  if (element >= 0 && element < track->numElements()) {
    painter->fillRect(lane, kovAnimationModel::typeColor(track->elementAt(element).animationType()));
    m_view->paintGrid(*painter, lane);
    paintKeyframes(painter, lane, *track, kovAnimationModel::trackIndexOf(index), element);
  } else if (element < 0) {
    m_view->paintGrid(*painter, lane);
    paintSpan(painter, lane, *track, kovAnimationModel::trackIndexOf(index));
  }
  painter->restore();
}

void kovAnimationModelDelegate::paintKeyframes(QPainter* painter, const QRect& lane, const kovAnimationTrack& track,
                                               int trackIndex, int element) const
{
  const kovAnimationEditorWidget* editor = m_view->editor();
  const kovTimelineScale& scale = editor->scale();
  const int start = track.startMillisecond();
  const int current = editor->currentPosition();
  const std::optional<int> hovered = m_view->hoveredKey(trackIndex, element);
  const int y = lane.center().y();
  const QMap<int, QVariant>& keys = track.elementAt(element).values();
  // Keys left of the lane are passed over at once; the walk ends at the
  // first marker right of it.
  for (auto it = keys.lowerBound(scale.visibleStart - start); it != keys.cend(); ++it) {
    const int x = scale.xOf(start + it.key());
    if (x >= lane.width())
      break;
    if (x < 0)
      continue;
    if (start + it.key() == current) {
      painter->fillRect(centredSquare(lane.left() + x, y, kCurrentMarkerSize), kCurrentOuter);
      painter->fillRect(centredSquare(lane.left() + x, y, kMarkerSize), kLightMarker);
    } else {
      painter->fillRect(centredSquare(lane.left() + x, y, kMarkerSize), hovered == it.key() ? kLightMarker : kMarker);
    }
  }
}

void kovAnimationModelDelegate::paintSpan(QPainter* painter, const QRect& lane, const kovAnimationTrack& track,
                                          int trackIndex) const
{
  const kovTimelineScale& scale = m_view->editor()->scale();
  const int start = track.startMillisecond();
  const int first = lane.left() + scale.xOf(start + track.firstKeyframeTime());
  const int last = lane.left() + scale.xOf(start + track.lastKeyframeTime());
  if (first == last || last < lane.left() || first > lane.right())
    return;
  const int y = lane.center().y();
  const QRect bar(QPoint(std::max(first, lane.left()), y - kSpanHeight / 2),
                  QPoint(std::min(last, lane.right()), y + kSpanHeight / 2 - 1));
  painter->setPen(kSpanOutline);
  painter->setBrush(m_view->isDraggingSpan(trackIndex) ? kSpanDraggedFill : kSpanFill);
  painter->drawRect(bar.adjusted(0, 0, -1, -1));
  const QSize continuation(kContinuationWidth, kContinuationHeight);
  if (first < lane.left())
    painter->fillRect(QRect(QPoint(lane.left(), y - kContinuationHeight / 2), continuation), kSpanOutline);
  if (last > lane.right())
    painter->fillRect(QRect(QPoint(lane.right() - kContinuationWidth + 1, y - kContinuationHeight / 2), continuation),
                      kSpanOutline);
}
