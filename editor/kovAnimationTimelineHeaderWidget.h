#ifndef KOV_ANIMATION_TIMELINE_HEADER_WIDGET_H
#define KOV_ANIMATION_TIMELINE_HEADER_WIDGET_H

#include <QWidget>

class kovAnimationEditorWidget;

// Above the timeline: the tick labels, the draggable current-time handle,
// and the wheel that zooms. Its x 0 is the lane's left edge.
class kovAnimationTimelineHeaderWidget : public QWidget {
  Q_OBJECT
public:
  explicit kovAnimationTimelineHeaderWidget(kovAnimationEditorWidget* editor, QWidget* parent = nullptr);

  // The current-time handle, empty while the current position is outside the
  // visible range.
  QRect handleRect() const;
  bool isHandleHovered() const { return m_hovered; }

protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;

private:
  void setHovered(bool hovered);

  kovAnimationEditorWidget* m_editor;
  bool m_hovered = false;
  bool m_dragging = false;
};

#endif
