#ifndef KOV_ANIMATION_TIMELINE_HEADER_WIDGET_H
#define KOV_ANIMATION_TIMELINE_HEADER_WIDGET_H

#include <QWidget>

class kovAnimationEditorWidget;

// Above the timeline: the tick labels, the draggable current-time handle,
// and the wheel that zooms.
class kovAnimationTimelineHeaderWidget : public QWidget {
  Q_OBJECT
public:
  explicit kovAnimationTimelineHeaderWidget(kovAnimationEditorWidget* editor, QWidget* parent = nullptr);

private:
  kovAnimationEditorWidget* m_editor;
};

#endif
