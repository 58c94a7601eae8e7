#include "production/kovProductionProgressDialog.h"

#include "production/kovAnimationProduction.h"

kovProductionProgressDialog::kovProductionProgressDialog(kovAnimationProduction* run, QWidget* parent)
  : QProgressDialog(parent)
  , m_run(run)
{
  setObjectName(QStringLiteral("ProductionProgress"));
  setWindowTitle(run->title());
  setWindowModality(Qt::ApplicationModal);
  setMinimumSize(350, 135);
  setRange(0, kSteps);
  setAutoReset(false);
  setAutoClose(false);
  setMinimumDuration(0);
  showProgress();
  connect(run, &kovAnimationProduction::progressed, this, &kovProductionProgressDialog::showProgress);
  connect(run, &kovAnimationProduction::encodingStarted, this,
          [this] { setLabelText(tr("Encoding animation video...")); });
  connect(this, &QProgressDialog::canceled, run, &kovAnimationProduction::cancel);
}

void kovProductionProgressDialog::showProgress()
{
  setLabelText(m_run->title() + QLatin1Char('\n') + m_run->status());
  setValue(minimum() + static_cast<int>((maximum() - minimum()) * m_run->progress()));
}
