#include "editor/kovKeyframeValueDialog.h"

#include "editor/kovHostSelection.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include <iterator>

namespace {

const double kCoordinateLimit = 1e9;
const int kCoordinateDecimals = 4;
const double kAngleLimit = 360.0;
const int kAngleDecimals = 2;
const double kMinScale = 0.001;
const double kMaxScale = 1000.0;
const int kScaleDecimals = 3;
const int kLatestKeyMs = 10800000;

double element(const QVariantList& list, int index)
{
  return index < list.size() ? list.at(index).toDouble() : 0.0;
}

QDoubleSpinBox* numberField(QWidget* parent, const QString& name, double value, double min, double max, int decimals)
{
  auto* field = new QDoubleSpinBox(parent);
  field->setObjectName(name);
  field->setDecimals(decimals);
  field->setRange(min, max);
  field->setValue(value);
  return field;
}

} // namespace

kovKeyframeValueDialog::kovKeyframeValueDialog(const kovAnimationItem& item, int key, OdDbDatabase* db,
                                               QWidget* parent)
  : QDialog(parent)
  , m_db(db)
  , m_type(item.animationType())
  , m_kind(kovKeyframeValues::kindOf(item))
{
  setObjectName(QStringLiteral("KeyframeValueDialog"));
  setWindowTitle(tr("Edit Value"));
  auto* form = new QFormLayout(this);
  form->addRow(new QLabel(QStringLiteral("<h3>") + kovAnimationItem::animationType2String(m_type)
                              + QStringLiteral("</h3>"),
                          this));

  // The keyframe keeps its neighbours on either side.
  const QMap<int, QVariant>& keys = item.values();
  const auto at = keys.constFind(key);
  const int earliest = at == keys.cend() || at == keys.cbegin() ? 0 : std::prev(at).key() + 1;
  const int latest = at == keys.cend() || std::next(at) == keys.cend() ? kLatestKeyMs : std::next(at).key() - 1;
  m_time = new QSpinBox(this);
  m_time->setObjectName(QStringLiteral("KFTime"));
  m_time->setSuffix(tr(" ms"));
  m_time->setRange(std::min(earliest, key), std::max(latest, key));
  m_time->setValue(key);
  form->addRow(tr("KF Time"), m_time);

  addFields(form, item, keys.value(key, kovKeyframeValues::defaultValue(item)));

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(buttons);
}

kovKeyframeValueDialog::Triple kovKeyframeValueDialog::addTriple(QFormLayout* form, const QString& label,
                                                                 const QString& name, const QVariantList& values,
                                                                 int first)
{
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  Triple triple;
  QDoubleSpinBox** fields[] = { &triple.x, &triple.y, &triple.z };
  const char* const axes[] = { "X", "Y", "Z" };
  for (int i = 0; i < 3; ++i) {
    layout->addWidget(new QLabel(QLatin1String(axes[i]), row));
    *fields[i] = numberField(row, name + QLatin1String(axes[i]), element(values, first + i), -kCoordinateLimit,
                             kCoordinateLimit, kCoordinateDecimals);
    layout->addWidget(*fields[i], 1);
  }
  form->addRow(label, row);
  return triple;
}

QDoubleSpinBox* kovKeyframeValueDialog::addNumber(QFormLayout* form, const QString& label, const QString& name,
                                                  double value, double min, double max, int decimals)
{
  QDoubleSpinBox* field = numberField(this, name, value, min, max, decimals);
  form->addRow(label, field);
  return field;
}

void kovKeyframeValueDialog::addFields(QFormLayout* form, const kovAnimationItem& item, const QVariant& value)
{
  const QVariantList list = value.toList();
  switch (m_kind) {
  case kovKeyframeValues::PointKind:
    m_first = addTriple(form, tr("Position"), QStringLiteral("Position"), list, 0);
    if (m_type != kovAnimationItem::CustomParameter)
      m_second = addTriple(form, tr("Tangent"), QStringLiteral("Tangent"), list, 3);
    return;
  case kovKeyframeValues::AnglesKind: {
    m_first = addTriple(form, tr("Pivot"), QStringLiteral("Pivot"), list, 0);
    auto* picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("PitchYawRoll"));
    picture->setPixmap(QPixmap(QStringLiteral(":/animation/icons/pitch_yaw_roll.png")));
    picture->setAlignment(Qt::AlignCenter);
    form->addRow(picture);
    m_pitch = addNumber(form, tr("Pitch"), QStringLiteral("Pitch"), element(list, kovKeyframeValues::kPitchElement),
                        -kAngleLimit, kAngleLimit, kAngleDecimals);
    m_yaw = addNumber(form, tr("Yaw"), QStringLiteral("Yaw"), element(list, kovKeyframeValues::kYawElement),
                      -kAngleLimit, kAngleLimit, kAngleDecimals);
    m_roll = addNumber(form, tr("Roll"), QStringLiteral("Roll"), element(list, kovKeyframeValues::kRollElement),
                       -kAngleLimit, kAngleLimit, kAngleDecimals);
    return;
  }
  case kovKeyframeValues::TargetKind:
    m_first = addTriple(form, tr("Pivot"), QStringLiteral("Pivot"), list, 0);
    m_second = addTriple(form, tr("Target"), QStringLiteral("Target"), list, 3);
    return;
  case kovKeyframeValues::EntityKind: {
    m_first = addTriple(form, tr("Pivot"), QStringLiteral("Pivot"), list, 0);
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_entity = new QLineEdit(list.size() >= 4 ? list.at(3).toString() : QString(), row);
    m_entity->setObjectName(QStringLiteral("Entity"));
    auto* copy = new QPushButton(tr("Copy Selected"), row);
    copy->setObjectName(QStringLiteral("CopySelected"));
    layout->addWidget(m_entity, 1);
    layout->addWidget(copy);
    form->addRow(tr("Entity"), row);
    connect(copy, &QPushButton::clicked, this, &kovKeyframeValueDialog::copySelected);
    return;
  }
  case kovKeyframeValues::NumberKind:
    if (m_type == kovAnimationItem::Scale)
      m_number = addNumber(form, tr("Scale"), QStringLiteral("Scale"), value.toDouble(), kMinScale, kMaxScale,
                           kScaleDecimals);
    else
      m_number = addNumber(form, tr("Value"), QStringLiteral("Value"), value.toDouble(), item.minValue(),
                           item.maxValue(), item.decimals());
    return;
  case kovKeyframeValues::OnOffKind:
    m_onOff = new QCheckBox(this);
    m_onOff->setObjectName(QStringLiteral("Value"));
    m_onOff->setChecked(value.toBool());
    form->addRow(tr("Value"), m_onOff);
    return;
  case kovKeyframeValues::TextKind:
    m_text = new QComboBox(this);
    m_text->setObjectName(QStringLiteral("Value"));
    // Without a list of allowed texts any text goes.
    m_text->setEditable(item.valueList().isEmpty());
    m_text->addItems(item.valueList());
    m_text->setCurrentText(value.toString());
    form->addRow(tr("Value"), m_text);
    return;
  }
}

void kovKeyframeValueDialog::copySelected()
{
  const OdDbObjectId id = kovHostSelection::first(m_db);
  if (!id.isNull())
    m_entity->setText(odToQString(id.getHandle().ascii()));
}

int kovKeyframeValueDialog::time() const
{
  return m_time->value();
}

QVariant kovKeyframeValueDialog::value() const
{
  switch (m_kind) {
  case kovKeyframeValues::PointKind: {
    QVariantList list { m_first.x->value(), m_first.y->value(), m_first.z->value() };
    // A point of a path by points keeps three elements until it gets a tangent.
    if (m_second.x && (m_type != kovAnimationItem::LocationByPoints || m_second.x->value() != 0.0
                       || m_second.y->value() != 0.0 || m_second.z->value() != 0.0))
      list << m_second.x->value() << m_second.y->value() << m_second.z->value();
    return list;
  }
  case kovKeyframeValues::AnglesKind: {
    QVariantList list { m_first.x->value(), m_first.y->value(), m_first.z->value(), 0.0, 0.0, 0.0 };
    list[kovKeyframeValues::kPitchElement] = m_pitch->value();
    list[kovKeyframeValues::kYawElement] = m_yaw->value();
    list[kovKeyframeValues::kRollElement] = m_roll->value();
    return list;
  }
  case kovKeyframeValues::TargetKind:
    return QVariantList { m_first.x->value(),  m_first.y->value(),  m_first.z->value(),
                          m_second.x->value(), m_second.y->value(), m_second.z->value() };
  case kovKeyframeValues::EntityKind:
    return QVariantList { m_first.x->value(), m_first.y->value(), m_first.z->value(), m_entity->text() };
  case kovKeyframeValues::NumberKind:
    return m_number->value();
  case kovKeyframeValues::OnOffKind:
    return m_onOff->isChecked();
  case kovKeyframeValues::TextKind:
    return m_text->currentText();
  }
  return QVariant();
}
