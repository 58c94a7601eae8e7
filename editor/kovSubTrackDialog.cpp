#include "editor/kovSubTrackDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMessageBox>

namespace {

// What a custom parameter of that name becomes: the built-in parameters fix
// their kind of value.
kovAnimationItem specialParameter(const QString& name)
{
  kovAnimationItem probe;
  kovAnimationItem::setSpecialCustomParamType(probe, name);
  return probe;
}

} // namespace

kovSubTrackDialog::kovSubTrackDialog(const kovAnimationItem& item, const QString& trackKind, QWidget* parent)
  : QDialog(parent)
  , m_trackKind(trackKind)
  , m_originalKind(kovKeyframeValues::kindOf(item))
  , m_hasKeyframes(!item.values().isEmpty())
  , m_type(new QComboBox(this))
  , m_name(new QComboBox(this))
  , m_paramType(new QComboBox(this))
  , m_faceDirection(new QCheckBox(tr("Face Direction"), this))
  , m_byDistance(new QCheckBox(tr("Compute Duration By Distance"), this))
{
  setObjectName(QStringLiteral("SubTrackDialog"));
  setWindowTitle(tr("Edit"));
  m_type->setObjectName(QStringLiteral("AnimationType"));
  m_name->setObjectName(QStringLiteral("ParameterName"));
  m_paramType->setObjectName(QStringLiteral("ParamType"));
  for (kovAnimationItem::AnimationType type : allowedTypes(trackKind))
    m_type->addItem(kovAnimationItem::animationType2String(type), static_cast<int>(type));
  // A type the track would not offer stays choosable for the sub-track that has it.
  if (m_type->findData(static_cast<int>(item.animationType())) < 0)
    m_type->addItem(kovAnimationItem::animationType2String(item.animationType()), static_cast<int>(item.animationType()));
  m_type->setCurrentIndex(m_type->findData(static_cast<int>(item.animationType())));
  m_name->setEditable(true);
  m_name->addItems(kovAnimationItem::listSpecialParameters(trackKind));
  m_name->setCurrentText(item.customParameterName());
  for (int type = kovAnimationItem::Point; type <= kovAnimationItem::Text; ++type)
    m_paramType->addItem(kovAnimationItem::paramType2String(type), type);
  m_paramType->setCurrentIndex(m_paramType->findData(static_cast<int>(item.paramsType())));
  m_faceDirection->setChecked(item.faceDirection());
  m_byDistance->setChecked(item.durationByAnimationSpeed());
  m_lastType = m_type->currentIndex();
  m_lastParamType = m_paramType->currentIndex();
  m_lastName = m_name->currentText();

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* form = new QFormLayout(this);
  form->addRow(tr("Animation Type:"), m_type);
  form->addRow(tr("Parameter Name:"), m_name);
  form->addRow(tr("Param Type:"), m_paramType);
  form->addRow(m_faceDirection);
  form->addRow(m_byDistance);
  form->addRow(buttons);
  updateParameterFields();

  connect(m_type, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] { onKindMayChange(); });
  connect(m_paramType, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] { onKindMayChange(); });
  connect(m_name, &QComboBox::currentTextChanged, this, [this] { onKindMayChange(); });
}

QList<kovAnimationItem::AnimationType> kovSubTrackDialog::allowedTypes(const QString& trackKind)
{
  using Item = kovAnimationItem;
  if (!Item::trackTypeAllowTransforms(trackKind))
    return { Item::CustomParameter };
  QList<Item::AnimationType> types { Item::CustomParameter,  Item::LocationByPoints, Item::LocationBySpline,
                                     Item::Scale,            Item::RotationByAngles, Item::RotationToTarget,
                                     Item::RotationToEntity, Item::LocationBySplineAndRotation };
  // A camera has no size to scale.
  if (trackKind == QLatin1String("Camera"))
    types.removeAll(Item::Scale);
  return types;
}

kovAnimationItem::AnimationType kovSubTrackDialog::animationType() const
{
  return static_cast<kovAnimationItem::AnimationType>(m_type->currentData().toInt());
}

QString kovSubTrackDialog::parameterName() const
{
  return m_name->currentText();
}

kovAnimationItem::ParameterType kovSubTrackDialog::paramsType() const
{
  return static_cast<kovAnimationItem::ParameterType>(m_paramType->currentData().toInt());
}

kovKeyframeValues::Kind kovSubTrackDialog::chosenKind() const
{
  return kovKeyframeValues::kindOf(animationType(), paramsType());
}

void kovSubTrackDialog::updateParameterFields()
{
  const bool custom = animationType() == kovAnimationItem::CustomParameter;
  const kovAnimationItem special = specialParameter(parameterName());
  m_name->setEnabled(custom);
  m_paramType->setEnabled(custom && !special.isFactoryParameter());
  if (custom && special.isFactoryParameter()) {
    const QSignalBlocker blocker(m_paramType);
    m_paramType->setCurrentIndex(m_paramType->findData(static_cast<int>(special.paramsType())));
  }
}

void kovSubTrackDialog::onKindMayChange()
{
  updateParameterFields();
  const kovKeyframeValues::Kind kind = chosenKind();
  const bool costsKeys = m_hasKeyframes && kind != m_originalKind;
  if (costsKeys && !m_dropsKeyframes
      && QMessageBox::question(this, tr("Confirm Type Change"),
                               tr("This change will remove all keyframes in the current subtrack due to the different "
                                  "data type.\n\rDo you really want to proceed?"),
                               QMessageBox::Yes | QMessageBox::No)
             != QMessageBox::Yes) {
    const QSignalBlocker typeBlocker(m_type);
    const QSignalBlocker paramBlocker(m_paramType);
    const QSignalBlocker nameBlocker(m_name);
    m_type->setCurrentIndex(m_lastType);
    m_paramType->setCurrentIndex(m_lastParamType);
    m_name->setCurrentText(m_lastName);
    updateParameterFields();
    return;
  }
  m_dropsKeyframes = costsKeys;
  m_lastType = m_type->currentIndex();
  m_lastParamType = m_paramType->currentIndex();
  m_lastName = m_name->currentText();
}

void kovSubTrackDialog::applyTo(kovAnimationItem& item) const
{
  if (m_dropsKeyframes)
    item.clearValues();
  if (animationType() == kovAnimationItem::CustomParameter) {
    const QString name = parameterName();
    if (kovAnimationItem::listSpecialParameters(m_trackKind).contains(name)) {
      kovAnimationItem::setSpecialCustomParamType(item, name);
    } else {
      // A parameter of the user's own takes the plain defaults of any item.
      const kovAnimationItem plain;
      item.setAnimationType(kovAnimationItem::CustomParameter, OdGePoint3d::kOrigin);
      item.setCustomParameterName(name);
      item.setParamsType(paramsType());
      item.setIsFactoryParameter(false);
      item.setRange(plain.minValue(), plain.maxValue(), plain.decimals());
      item.setValueList(QStringList());
    }
  } else {
    item.setAnimationType(animationType(), OdGePoint3d::kOrigin);
  }
  item.setFaceDirection(m_faceDirection->isChecked());
  if (item.durationByAnimationSpeed() != m_byDistance->isChecked())
    item.setDurationByAnimationSpeed(m_byDistance->isChecked());
}
