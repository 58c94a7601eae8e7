#ifndef KOV_CAMERA_CUT_CHECKS_H
#define KOV_CAMERA_CUT_CHECKS_H

#include <QCoreApplication>
#include <QString>

struct kovCameraCut;
class QWidget;

// What makes a camera cut impossible to produce. Each check gives the
// sentence that tells the user, or an empty string when the value is fine.
// The widgets refuse such values; a drawing may still hold them, and the
// table marks those cuts instead.
class kovCameraCutChecks {
  Q_DECLARE_TR_FUNCTIONS(kovCameraCutChecks)
public:
  // The largest width or height of a frame, in pixels.
  static constexpr int kMaxFrameSide = 16384;

  static QString timesProblem(int startMs, int endMs);
  static QString frameRateProblem(double framesPerSecond);
  static QString frameSizeProblem(int width, int height);
  // The frame rate's problem, else the frame size's.
  static QString settingsProblem(const kovCameraCut& cut);

  // Tells the user why a value was refused: a warning box.
  static void refuse(QWidget* parent, const QString& problem);
};

#endif
