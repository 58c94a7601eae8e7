#include "editor/kovAnimationTreeView.h"

#include <QHeaderView>

kovAnimationTreeView::kovAnimationTreeView(kovAnimationEditorWidget* editor, QWidget* parent)
  : QTreeView(parent)
  , m_editor(editor)
{
  setObjectName(QStringLiteral("AnimationTree"));
}

int kovAnimationTreeView::laneLeft() const
{
  return header()->sectionViewportPosition(1);
}

int kovAnimationTreeView::laneWidth() const
{
  return header()->sectionSize(1);
}
