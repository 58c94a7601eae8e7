#include "editor/kovAnimationTimelineHeaderWidget.h"

kovAnimationTimelineHeaderWidget::kovAnimationTimelineHeaderWidget(kovAnimationEditorWidget* editor, QWidget* parent)
  : QWidget(parent)
  , m_editor(editor)
{
  setObjectName(QStringLiteral("TimelineHeader"));
  setMinimumHeight(24);
}
