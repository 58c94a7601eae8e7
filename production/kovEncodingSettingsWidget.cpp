#include "production/kovEncodingSettingsWidget.h"

#include "production/kovAnimationProductionModel.h"
#include "production/kovCameraCutChecks.h"
#include "production/kovProductionLabels.h"
#include "production/kovProductionSettings.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbViewTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>

#include <cmath>
#include <limits>

Q_DECLARE_METATYPE(OdDbObjectId)

namespace {

struct FrameSize {
  const char* label;
  int width;
  int height;
};

const FrameSize kFrameSizes[] = {
  { QT_TRANSLATE_NOOP("kovEncodingSettingsWidget", "720x480 NTSC DV"), 720, 480 },
  { QT_TRANSLATE_NOOP("kovEncodingSettingsWidget", "720x486 NTSC"), 720, 486 },
  { QT_TRANSLATE_NOOP("kovEncodingSettingsWidget", "720x576 PAL"), 720, 576 },
  { QT_TRANSLATE_NOOP("kovEncodingSettingsWidget", "1280x720 HD 720P"), 1280, 720 },
  { QT_TRANSLATE_NOOP("kovEncodingSettingsWidget", "1280x1080 HD 1280P"), 1280, 1080 },
  { QT_TRANSLATE_NOOP("kovEncodingSettingsWidget", "1920x1080 HD"), 1920, 1080 },
  { QT_TRANSLATE_NOOP("kovEncodingSettingsWidget", "3840x2160 4K Ultra HD"), 3840, 2160 },
  { QT_TRANSLATE_NOOP("kovEncodingSettingsWidget", "7680x4320 8K Ultra HD"), 7680, 4320 },
};

const char* const kFrameRates[] = { "23.976", "24", "25", "29.97", "30", "48", "50", "59.94", "60" };

// Wide enough for any width or height, so that a drawing's out-of-range
// size shows as it is and is refused with a message rather than clamped.
const int kMaxSizeField = 99999;

const kovOutputFormat kImageFormats[] = { kovOutputFormat::Jpg, kovOutputFormat::Png, kovOutputFormat::Hdr };
const kovOutputFormat kVideoFormats[] = { kovOutputFormat::Avi,          kovOutputFormat::Mp4,
                                          kovOutputFormat::Flv,          kovOutputFormat::Mov,
                                          kovOutputFormat::Mkv,          kovOutputFormat::JpegSequence,
                                          kovOutputFormat::PngSequence };

// The entry whose data is value, else the first.
void selectData(QComboBox* combo, const QVariant& value)
{
  combo->setCurrentIndex(std::max(0, combo->findData(value)));
}

} // namespace

QList<kovEncoding> kovEncodingSettingsWidget::encodingsFor(kovOutputFormat format)
{
  switch (format) {
  case kovOutputFormat::Avi:
    return { kovEncoding::H264, kovEncoding::H265, kovEncoding::Mjpeg, kovEncoding::XVid, kovEncoding::Uncompressed };
  case kovOutputFormat::Mp4:
  case kovOutputFormat::Mkv:
    return { kovEncoding::H264, kovEncoding::H265 };
  case kovOutputFormat::Mov:
    return { kovEncoding::Quicktime };
  case kovOutputFormat::Flv:
    return { kovEncoding::Flv };
  default:
    return {};
  }
}

kovEncodingSettingsWidget::kovEncodingSettingsWidget(QWidget* parent)
  : QWidget(parent, Qt::Dialog)
{
  setObjectName(QStringLiteral("EncodingSettings"));
  setWindowTitle(tr("Output Format Options"));
  buildLayout();
}

void kovEncodingSettingsWidget::buildLayout()
{
  const auto combo = [this](const char* name) {
    auto* box = new QComboBox(this);
    box->setObjectName(QLatin1String(name));
    return box;
  };
  const auto spin = [this](const char* name, int minimum, int maximum) {
    auto* box = new QSpinBox(this);
    box->setObjectName(QLatin1String(name));
    box->setRange(minimum, maximum);
    return box;
  };
  m_view = combo("CameraView");
  m_folder = new QLineEdit(this);
  m_folder->setObjectName(QStringLiteral("DestinationFolder"));
  auto* browse = new QToolButton(this);
  browse->setText(QStringLiteral("..."));
  browse->setToolTip(tr("Choose the destination folder"));
  m_name = new QLineEdit(this);
  m_name->setObjectName(QStringLiteral("ClipName"));
  m_type = combo("OutputType");
  m_type->addItem(tr("Image"), Image);
  m_type->addItem(tr("Videoclip"), Videoclip);
  m_format = combo("OutputFormat");
  m_encoding = combo("Encoding");
  m_quality = combo("Quality");
  for (kovQuality quality : { kovQuality::Medium, kovQuality::High, kovQuality::Extreme })
    m_quality->addItem(kovProductionLabels::quality(quality), static_cast<int>(quality));
  m_size = combo("FrameSize");
  for (const FrameSize& size : kFrameSizes)
    m_size->addItem(tr(size.label), QSize(size.width, size.height));
  m_size->addItem(tr("Custom Size"), QSize());
  m_width = spin("CustomWidth", 0, kMaxSizeField);
  m_height = spin("CustomHeight", 0, kMaxSizeField);
  m_rate = combo("FrameRate");
  m_rate->setEditable(true);
  for (const char* rate : kFrameRates)
    m_rate->addItem(QLatin1String(rate));
  m_samples = spin("MaxSamples", 1, kMaxSamples);
  m_pathTracing = new QCheckBox(this);
  m_pathTracing->setObjectName(QStringLiteral("PathTracing"));

  auto* folderRow = new QHBoxLayout;
  folderRow->addWidget(m_folder, 1);
  folderRow->addWidget(browse);
  auto* sizeRow = new QHBoxLayout;
  sizeRow->addWidget(m_size, 1);
  sizeRow->addWidget(m_width);
  sizeRow->addWidget(new QLabel(QStringLiteral("x"), this));
  sizeRow->addWidget(m_height);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);

  auto* form = new QFormLayout(this);
  form->addRow(tr("Camera View"), m_view);
  form->addRow(tr("Destination Folder"), folderRow);
  form->addRow(tr("Scene Clip Name"), m_name);
  form->addRow(tr("Output Type"), m_type);
  form->addRow(tr("Output Format"), m_format);
  form->addRow(tr("Encoding"), m_encoding);
  form->addRow(tr("Quality"), m_quality);
  form->addRow(tr("Frame Size"), sizeRow);
  form->addRow(tr("Frame Rate"), m_rate);
  form->addRow(tr("Max Samples"), m_samples);
  form->addRow(tr("UE PathTracing Production"), m_pathTracing);
  form->addRow(buttons);

  connect(m_type, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] { outputTypeChanged(); });
  connect(m_format, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] { outputFormatChanged(); });
  connect(m_size, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] { frameSizeChanged(); });
  connect(browse, &QToolButton::clicked, this, [this] {
    const QString chosen = QFileDialog::getExistingDirectory(this, tr("Destination Folder"), m_folder->text());
    if (!chosen.isEmpty())
      m_folder->setText(chosen);
  });
  connect(buttons, &QDialogButtonBox::accepted, this, &kovEncodingSettingsWidget::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &kovEncodingSettingsWidget::cancelled);
}

void kovEncodingSettingsWidget::setCut(const kovCameraCut& cut, OdDbDatabase* db)
{
  m_view->clear();
  m_view->addItem(tr("None"), QVariant::fromValue(OdDbObjectId()));
  OdDbObjectPtr table = db ? db->getViewTableId().openObject(OdDb::kForRead) : OdDbObjectPtr();
  const OdDbViewTablePtr views = OdDbViewTable::cast(table.get());
  for (OdDbSymbolTableIteratorPtr it = views.isNull() ? OdDbSymbolTableIteratorPtr() : views->newIterator();
       !it.isNull() && !it->done(); it->step()) {
    const OdDbSymbolTableRecordPtr view = it->getRecord();
    if (!view.isNull())
      m_view->addItem(odToQString(view->getName()), QVariant::fromValue(it->getRecordId()));
  }
  selectData(m_view, QVariant::fromValue(cut.viewId));

  m_shownFolder = kovProductionSettings::destinationFolder(cut.stillImage);
  m_folder->setText(m_shownFolder);
  m_name->setText(cut.name);
  // Each refill runs whether or not the entry changes: the lists may be
  // empty, or filled for another cut.
  {
    const QSignalBlocker blocker(m_type);
    m_type->setCurrentIndex(cut.stillImage ? Image : Videoclip);
  }
  outputTypeChanged();
  {
    const QSignalBlocker blocker(m_format);
    selectData(m_format, static_cast<int>(cut.outputFormat));
  }
  outputFormatChanged();
  selectData(m_encoding, static_cast<int>(cut.encoding));
  selectData(m_quality, static_cast<int>(cut.quality));

  const int preset = m_size->findData(QSize(cut.imageWidth, cut.imageHeight));
  {
    const QSignalBlocker blocker(m_size);
    m_size->setCurrentIndex(preset >= 0 ? preset : m_size->count() - 1);
  }
  m_width->setValue(cut.imageWidth);
  m_height->setValue(cut.imageHeight);
  frameSizeChanged();
  m_rate->setCurrentText(kovAnimationProductionModel::frameRateText(cut.frameRate));
  m_samples->setValue(cut.maxIterations);
  m_pathTracing->setChecked(cut.pathTracing);
}

void kovEncodingSettingsWidget::applyTo(kovCameraCut& cut) const
{
  cut.viewId = m_view->currentData().value<OdDbObjectId>();
  cut.name = m_name->text();
  cut.stillImage = m_type->currentIndex() == Image;
  cut.outputFormat = static_cast<kovOutputFormat>(m_format->currentData().toInt());
  if (m_encoding->isEnabled() && m_encoding->currentIndex() >= 0)
    cut.encoding = static_cast<kovEncoding>(m_encoding->currentData().toInt());
  cut.quality = static_cast<kovQuality>(m_quality->currentData().toInt());
  cut.imageWidth = m_width->value();
  cut.imageHeight = m_height->value();
  if (!cut.stillImage)
    cut.frameRate = frameRate();
  cut.maxIterations = m_samples->value();
  cut.pathTracing = m_pathTracing->isChecked();
}

QString kovEncodingSettingsWidget::problem() const
{
  const QString rate = m_rate->isEnabled() ? kovCameraCutChecks::frameRateProblem(frameRate()) : QString();
  return rate.isEmpty() ? kovCameraCutChecks::frameSizeProblem(m_width->value(), m_height->value()) : rate;
}

void kovEncodingSettingsWidget::closeEvent(QCloseEvent* event)
{
  QWidget::closeEvent(event);
  emit cancelled();
}

void kovEncodingSettingsWidget::outputTypeChanged()
{
  frameSizeChanged();
  const bool image = m_type->currentIndex() == Image;
  // Refilled only when the type changed, so that the chosen format stays.
  if (m_format->count() == 0 || m_format->property("IsImage").toBool() != image) {
    const QSignalBlocker blocker(m_format);
    m_format->clear();
    for (kovOutputFormat format : image ? QList<kovOutputFormat>(std::begin(kImageFormats), std::end(kImageFormats))
                                        : QList<kovOutputFormat>(std::begin(kVideoFormats), std::end(kVideoFormats)))
      m_format->addItem(kovProductionLabels::outputFormat(format), static_cast<int>(format));
    m_format->setProperty("IsImage", image);
  }
  m_encoding->setEnabled(!image);
  m_rate->setEnabled(!image);
  outputFormatChanged();
}

void kovEncodingSettingsWidget::outputFormatChanged()
{
  const QVariant format = m_format->currentData();
  if (m_encoding->count() > 0 && m_encoding->property("Format") == format)
    return;
  m_encoding->clear();
  if (format.isValid()) {
    for (kovEncoding encoding : encodingsFor(static_cast<kovOutputFormat>(format.toInt())))
      m_encoding->addItem(kovProductionLabels::encoding(encoding), static_cast<int>(encoding));
  }
  m_encoding->setProperty("Format", format);
}

void kovEncodingSettingsWidget::frameSizeChanged()
{
  const QSize preset = m_size->currentData().toSize();
  const bool custom = !preset.isValid();
  m_width->setEnabled(custom);
  m_height->setEnabled(custom);
  if (!custom) {
    m_width->setValue(preset.width());
    m_height->setValue(preset.height());
  }
}

void kovEncodingSettingsWidget::accept()
{
  const QString refused = problem();
  if (!refused.isEmpty()) {
    kovCameraCutChecks::refuse(this, refused);
    return;
  }
  if (m_folder->text() != m_shownFolder)
    kovProductionSettings::setDestination(m_folder->text());
  emit accepted();
}

double kovEncodingSettingsWidget::frameRate() const
{
  bool ok = false;
  const double rate = QLocale::c().toDouble(m_rate->currentText().trimmed(), &ok);
  return ok ? rate : std::numeric_limits<double>::quiet_NaN();
}
