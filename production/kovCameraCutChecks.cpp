#include "production/kovCameraCutChecks.h"

#include "db/kovCameraCut.h"

#include <QMessageBox>

#include <cmath>

QString kovCameraCutChecks::timesProblem(int startMs, int endMs)
{
  return endMs < startMs ? tr("The end time of a camera cut must not be before its start time.") : QString();
}

QString kovCameraCutChecks::frameRateProblem(double framesPerSecond)
{
  // Written as a negation so that a rate that is not a number is refused too.
  return !(framesPerSecond > 0.0) || !std::isfinite(framesPerSecond) ? tr("The frame rate must be above 0.")
                                                                       : QString();
}

QString kovCameraCutChecks::frameSizeProblem(int width, int height)
{
  const auto fits = [](int side) { return side >= 1 && side <= kMaxFrameSide; };
  return fits(width) && fits(height) ? QString()
                                     : tr("The frame width and height must be from 1 to %1 pixels.").arg(kMaxFrameSide);
}

QString kovCameraCutChecks::settingsProblem(const kovCameraCut& cut)
{
  const QString rate = frameRateProblem(cut.frameRate);
  return rate.isEmpty() ? frameSizeProblem(cut.imageWidth, cut.imageHeight) : rate;
}

void kovCameraCutChecks::refuse(QWidget* parent, const QString& problem)
{
  QMessageBox::warning(parent, tr("Camera Cut"), problem);
}
