#ifndef KOV_PRODUCTION_PROGRESS_DIALOG_H
#define KOV_PRODUCTION_PROGRESS_DIALOG_H

#include <QProgressDialog>

class kovAnimationProduction;

// The modal dialog a production runs under on the desktop: the run's title
// ("Producing " and the track), the frame count with the speed and the time
// left, and Cancel, which ends the run (or its encoding).
class kovProductionProgressDialog : public QProgressDialog {
  Q_OBJECT
public:
  static constexpr int kSteps = 1000;

  kovProductionProgressDialog(kovAnimationProduction* run, QWidget* parent);

private:
  void showProgress();

  kovAnimationProduction* m_run;
};

#endif
