#ifndef KOV_ANIMATION_TRACKS_HEADER_WIDGET_H
#define KOV_ANIMATION_TRACKS_HEADER_WIDGET_H

#include <QWidget>

class QDoubleSpinBox;
class QPushButton;
class kovAnimationEditorWidget;

// Above the track names: the add-track button, the current position and the
// animation's length, in seconds.
class kovAnimationTracksHeaderWidget : public QWidget {
  Q_OBJECT
public:
  explicit kovAnimationTracksHeaderWidget(kovAnimationEditorWidget* editor, QWidget* parent = nullptr);

  QPushButton* addTrackButton() const { return m_addTrack; }
  QDoubleSpinBox* positionField() const { return m_position; }
  QDoubleSpinBox* durationField() const { return m_duration; }

private:
  kovAnimationEditorWidget* m_editor;
  QPushButton* m_addTrack;
  QDoubleSpinBox* m_position;
  QDoubleSpinBox* m_duration;
};

#endif
