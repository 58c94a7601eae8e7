#include "editor/kovAnimationEditorWidget.h"

kovAnimationEditorWidget::kovAnimationEditorWidget(QWidget* parent)
  : QWidget(parent)
{
  setObjectName(QStringLiteral("kovAnimationEditorWidget"));
}
