#include "production/kovConfirmStartProductionWidget.h"

#include "production/kovAnimationProductionModel.h"
#include "production/kovCameraCutChecks.h"
#include "production/kovProductionSettings.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <cmath>

namespace {

// The table's times run to 9999999 ms.
const double kMaxSeconds = 9999.999;
// A line edit's frame and padding around its text.
const int kTextMargin = 16;

int msOf(const QDoubleSpinBox* seconds)
{
  return static_cast<int>(std::lround(seconds->value() * 1000.0));
}

void showMs(QDoubleSpinBox* seconds, int ms)
{
  seconds->setValue(ms / 1000.0);
}

} // namespace

kovConfirmStartProductionWidget::kovConfirmStartProductionWidget(QWidget* parent)
  : QDialog(parent)
{
  setObjectName(QStringLiteral("ConfirmStartProduction"));
  setWindowTitle(tr("Production Options Summary"));
  setModal(true);
  const auto text = [this](const char* name) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(QLatin1String(name));
    edit->setReadOnly(true);
    return edit;
  };
  const auto seconds = [this](const char* name, bool editable) {
    auto* box = new QDoubleSpinBox(this);
    box->setObjectName(QLatin1String(name));
    box->setDecimals(3);
    box->setRange(0.0, kMaxSeconds);
    box->setReadOnly(!editable);
    if (!editable)
      box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    return box;
  };
  const auto message = [this](const char* name) {
    auto* label = new QLabel(this);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::RichText);
    return label;
  };
  m_folder = text("OutputFolder");
  m_name = text("ClipName");
  m_summary = text("Summary");
  m_deleteImages = new QCheckBox(tr("Remove frame images after video encoding"), this);
  m_deleteImages->setObjectName(QStringLiteral("DeleteImages"));
  m_firstKey = seconds("FirstKeyframe", false);
  m_lastKey = seconds("LastKeyframe", false);
  m_start = seconds("RecordingStart", true);
  m_end = seconds("RecordingEnd", true);
  auto* reset = new QPushButton(tr("Reset Start/End"), this);
  m_startCheck = message("StartCheck");
  m_endCheck = message("EndCheck");
  auto* buttons = new QDialogButtonBox(this);
  m_produce = buttons->addButton(tr("Produce"), QDialogButtonBox::AcceptRole);
  buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);

  auto* form = new QFormLayout(this);
  form->addRow(tr("Output Folder"), m_folder);
  form->addRow(tr("Scene Clip Name"), m_name);
  form->addRow(tr("Summary"), m_summary);
  form->addRow(m_deleteImages);
  form->addRow(tr("First Camera Kf Second"), m_firstKey);
  form->addRow(tr("Last Camera Kf Second"), m_lastKey);
  form->addRow(tr("Recording Start Second"), m_start);
  form->addRow(tr("Recording End Second"), m_end);
  form->addRow(reset);
  form->addRow(m_startCheck);
  form->addRow(m_endCheck);
  form->addRow(buttons);
  setMinimumWidth(480);

  for (QDoubleSpinBox* box : { m_start, m_end })
    connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &kovConfirmStartProductionWidget::checkRange);
  connect(reset, &QPushButton::clicked, this, [this] {
    m_start->setValue(m_firstKey->value());
    m_end->setValue(m_lastKey->value());
  });
  connect(buttons, &QDialogButtonBox::accepted, this, &kovConfirmStartProductionWidget::produce);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  setCut(nullptr);
}

void kovConfirmStartProductionWidget::setCut(const kovCameraCut* cut)
{
  m_produce->setEnabled(cut != nullptr);
  if (!cut) {
    for (QLineEdit* edit : { m_folder, m_name, m_summary })
      edit->clear();
    for (QDoubleSpinBox* box : { m_firstKey, m_lastKey, m_start, m_end })
      showMs(box, 0);
    m_startCheck->clear();
    m_endCheck->clear();
    return;
  }
  m_folder->setText(kovProductionSettings::destinationFolder(cut->stillImage));
  m_name->setText(cut->name);
  m_summary->setText(kovAnimationProductionModel::settingsSummary(*cut));
  // The summary is read whole; a long folder or name from its start.
  m_summary->setMinimumWidth(m_summary->fontMetrics().horizontalAdvance(m_summary->text()) + kTextMargin);
  for (QLineEdit* edit : { m_folder, m_name, m_summary })
    edit->setCursorPosition(0);
  m_deleteImages->setChecked(kovProductionSettings::deleteImages());
  // Only a video clip's frames are deleted: a sequence's are the product.
  m_deleteImages->setEnabled(!cut->stillImage && kovIsVideoClipFormat(cut->outputFormat));
  showMs(m_firstKey, cut->track.isNull() ? 0 : kovAnimationProductionModel::firstKeyframeMs(*cut->track));
  showMs(m_lastKey, cut->track.isNull() ? 0 : kovAnimationProductionModel::lastKeyframeMs(*cut->track));
  showMs(m_start, cut->startMs);
  showMs(m_end, cut->endMs);
  checkRange();
}

int kovConfirmStartProductionWidget::recordingStartMs() const
{
  return msOf(m_start);
}

int kovConfirmStartProductionWidget::recordingEndMs() const
{
  return msOf(m_end);
}

void kovConfirmStartProductionWidget::checkRange()
{
  m_startCheck->setText(recordingStartMs() >= msOf(m_firstKey)
                          ? QString()
                          : QStringLiteral("<font color='red'>%1</font>").arg(tr("Check Start Time")));
  m_endCheck->setText(recordingEndMs() <= msOf(m_lastKey)
                        ? QString()
                        : QStringLiteral("<font color='red'>%1</font>").arg(tr("Check End Time")));
}

void kovConfirmStartProductionWidget::produce()
{
  const QString problem = kovCameraCutChecks::timesProblem(recordingStartMs(), recordingEndMs());
  if (!problem.isEmpty()) {
    kovCameraCutChecks::refuse(this, problem);
    return;
  }
  if (m_deleteImages->isEnabled())
    kovProductionSettings::setDeleteImages(m_deleteImages->isChecked());
  accept();
}
