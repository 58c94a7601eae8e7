#ifndef KOV_ANIMATION_TREE_VIEW_HEADER_H
#define KOV_ANIMATION_TREE_VIEW_HEADER_H

#include <QHeaderView>

class kovAnimationEditorWidget;

// The track tree's header. The timeline follows its sections: a new width of
// column 1 gives the editor a new scale, and the tracks header above the
// tree stays as wide as column 0 so that the timeline header starts where
// the lane does.
class kovAnimationtreeViewHeader : public QHeaderView {
  Q_OBJECT
public:
  explicit kovAnimationtreeViewHeader(kovAnimationEditorWidget* editor, QWidget* parent = nullptr);

private:
  void followSection(int logicalIndex, int newSize);

  kovAnimationEditorWidget* m_editor;
};

#endif
