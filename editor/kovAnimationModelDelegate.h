#ifndef KOV_ANIMATION_MODEL_DELEGATE_H
#define KOV_ANIMATION_MODEL_DELEGATE_H

#include <QItemDelegate>

class kovAnimationTrack;
class kovDbAnimation;
class kovAnimationTreeView;
class kovAnimationItem;

// Paints the track tree's rows: column 0 as any item with the edit and remove
// spots at its right end, column 1 as the timeline lane (a sub-track's
// keyframe markers, a track's key span).
//
// Where things sit in a row, shared with the view's hit test:
// - the remove spot is the 16 px square at the right end of column 0, 2 px
//   from its edge and centred vertically; the edit spot is the same square
//   18 px left of it. Column 0 is 32 px (sub-track) or 64 px (track, with its
//   icon) wider than its text for them;
// - a keyframe marker is hit within kMarkerReach pixels of its centre
//   horizontally, over the row's height, so that a 7 px marker is easy to
//   take in a 30 px row;
// - an end of a key span is hit within kSpanEndReach pixels of it; inside
//   the span between them is the span itself.
class kovAnimationModelDelegate : public QItemDelegate {
  Q_OBJECT
public:
  static constexpr int kSpotSize = 16;
  static constexpr int kMarkerReach = 5;
  static constexpr int kSpanEndReach = 4;
  static constexpr int kSpanHeight = 20;

  explicit kovAnimationModelDelegate(kovAnimationTreeView* view);

  static QRect removeSpot(const QRect& nameCell);
  static QRect editSpot(const QRect& nameCell);
  // The track at index, or null.
  static const kovAnimationTrack* trackAt(const kovDbAnimation& animation, int index);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
  void paintSpots(QPainter* painter, const QRect& nameCell, const QColor& color) const;
  void paintLane(QPainter* painter, const QRect& lane, const QModelIndex& index) const;
  void paintKeyframes(QPainter* painter, const QRect& lane, const kovAnimationTrack& track, int trackIndex,
                      int element) const;
  void paintSpan(QPainter* painter, const QRect& lane, const kovAnimationTrack& track, int trackIndex) const;

  kovAnimationTreeView* m_view;
};

#endif
