#ifndef KOV_ANIMATION_TREE_VIEW_H
#define KOV_ANIMATION_TREE_VIEW_H

#include <QTreeView>

#include <optional>

class kovAnimationEditorWidget;
class kovAnimationItem;

// The track tree with the timeline in its column 1: the grid of ticks, the
// current-time line, and the drags that move spans and keyframes. Every drag
// step opens the editing animation for write, changes it and closes it; the
// view keeps only which row and keyframe the pointer holds.
class kovAnimationTreeView : public QTreeView {
  Q_OBJECT
public:
  // What a row offers under the pointer; the zones from SpanStart on are
  // the ones a left-button drag moves.
  enum Zone { NoZone, EditSpot, RemoveSpot, SpanStart, SpanEnd, SpanBody, Keyframe };
  struct Hit {
    Zone zone = NoZone;
    int track = -1;
    int element = -1;
    // The keyframe's time within its track (Keyframe only).
    int key = 0;
  };

  explicit kovAnimationTreeView(kovAnimationEditorWidget* editor, QWidget* parent = nullptr);
  ~kovAnimationTreeView() override;

  kovAnimationEditorWidget* editor() const { return m_editor; }
  // The left of column 1 in the viewport and its width.
  int laneLeft() const;
  int laneWidth() const;

  Hit hitTest(const QPoint& viewportPos) const;
  // The tick lines that fall in area of the viewport.
  void paintGrid(QPainter& painter, const QRect& area) const;
  // The keyframe under the mouse in that sub-track, as a time within its track.
  std::optional<int> hoveredKey(int track, int element) const;
  // Whether the whole track is being dragged along the timeline.
  bool isDraggingSpan(int track) const;

  void setModel(QAbstractItemModel* model) override;

signals:
  // The edit spot of a sub-track row.
  void editRequested(const QModelIndex& index, const QPoint& globalPos);
  // The edit spot of a track row; the position is where its menu goes.
  void trackMenuRequested(const QModelIndex& index, const QPoint& globalPos);
  // The right button anywhere; the position is where the menu goes.
  void contextMenuRequested(const QModelIndex& index, const QPoint& globalPos);

protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

private:
  QModelIndex rowIndex(const Hit& hit) const;
  void confirmRemove(const Hit& hit);
  bool dragBy(int delta);
  bool moveKeyframe(kovAnimationItem& item, int delta);
  void hover(const Hit& hit);
  QVariant laneToolTip(const QModelIndex& index) const;

  kovAnimationEditorWidget* m_editor;
  Hit m_drag;
  Hit m_hover;
  int m_lastX = 0;
};

#endif
