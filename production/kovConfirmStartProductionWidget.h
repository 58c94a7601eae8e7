#ifndef KOV_CONFIRM_START_PRODUCTION_WIDGET_H
#define KOV_CONFIRM_START_PRODUCTION_WIDGET_H

#include <QDialog>

struct kovCameraCut;
class QCheckBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QPushButton;

// What a production is about to make, shown before it starts ("Production
// Options Summary"): the folder, the clip's name and a summary of its
// settings, whether the frames go once the video is encoded, and the
// recording range against the camera's keyframes, with a red word when the
// range starts before the first keyframe or ends after the last.
//
// Times show as seconds with millisecond decimals. "Reset Start/End" sets the
// range to the camera's first and last keyframes. "Produce" accepts, unless
// the range ends before it starts, and stores the check box in the host's
// settings, where the encoder reads it.
class kovConfirmStartProductionWidget : public QDialog {
  Q_OBJECT
public:
  explicit kovConfirmStartProductionWidget(QWidget* parent = nullptr);

  // The cut to produce; null empties the summary and disables "Produce".
  void setCut(const kovCameraCut* cut);
  int recordingStartMs() const;
  int recordingEndMs() const;

private:
  void checkRange();
  void produce();

  QLineEdit* m_folder = nullptr;
  QLineEdit* m_name = nullptr;
  QLineEdit* m_summary = nullptr;
  QCheckBox* m_deleteImages = nullptr;
  QDoubleSpinBox* m_firstKey = nullptr;
  QDoubleSpinBox* m_lastKey = nullptr;
  QDoubleSpinBox* m_start = nullptr;
  QDoubleSpinBox* m_end = nullptr;
  QLabel* m_startCheck = nullptr;
  QLabel* m_endCheck = nullptr;
  QPushButton* m_produce = nullptr;
};

#endif
