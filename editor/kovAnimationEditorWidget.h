#ifndef KOV_ANIMATION_EDITOR_WIDGET_H
#define KOV_ANIMATION_EDITOR_WIDGET_H

#include <QWidget>

// The dockable animation editor. For now an empty page in the editor's dock:
// the track tree, the timeline and the production bar come next.
class kovAnimationEditorWidget : public QWidget {
  Q_OBJECT
public:
  explicit kovAnimationEditorWidget(QWidget* parent = nullptr);
};

#endif
