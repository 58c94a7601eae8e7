#ifndef KOV_ANIMATION_TREE_VIEW_H
#define KOV_ANIMATION_TREE_VIEW_H

#include <QTreeView>

class kovAnimationEditorWidget;

// The track tree with the timeline in its column 1: the grid of ticks, the
// current-time line, and the drags that move spans and keyframes.
class kovAnimationTreeView : public QTreeView {
  Q_OBJECT
public:
  explicit kovAnimationTreeView(kovAnimationEditorWidget* editor, QWidget* parent = nullptr);

  kovAnimationEditorWidget* editor() const { return m_editor; }
  // The left of column 1 in the viewport and its width.
  int laneLeft() const;
  int laneWidth() const;

private:
  kovAnimationEditorWidget* m_editor;
};

#endif
