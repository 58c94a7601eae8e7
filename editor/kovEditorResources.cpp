#include "editor/kovEditorResources.h"

#include <QtGlobal>

void kovInitEditorResources()
{
  static const bool registered = [] {
    Q_INIT_RESOURCE(kovAnimationIcons);
    return true;
  }();
  Q_UNUSED(registered);
}
