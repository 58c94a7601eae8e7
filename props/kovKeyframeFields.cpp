#include "props/kovKeyframeFields.h"

#include "animation/kovKeyframeValues.h"

#include <QCoreApplication>
#include <QVariantList>

namespace {

using Field = kovKeyframeFields::Field;
using Values = kovKeyframeValues;

// The three fields of a rotation's centre, then the rotation's own.
std::vector<Field> centreAnd(std::initializer_list<Field> rest)
{
  std::vector<Field> fields {
    { "ValueX", QT_TRANSLATE_NOOP("kovKeyframeFields", "Center X"), kovKeyframeFields::DoubleField, 0 },
    { "ValueY", QT_TRANSLATE_NOOP("kovKeyframeFields", "Center Y"), kovKeyframeFields::DoubleField, 1 },
    { "ValueZ", QT_TRANSLATE_NOOP("kovKeyframeFields", "Center Z"), kovKeyframeFields::DoubleField, 2 },
  };
  fields.insert(fields.end(), rest);
  return fields;
}

const std::vector<Field> kPointFields {
  { "ValueX", QT_TRANSLATE_NOOP("kovKeyframeFields", "X"), kovKeyframeFields::DoubleField, 0 },
  { "ValueY", QT_TRANSLATE_NOOP("kovKeyframeFields", "Y"), kovKeyframeFields::DoubleField, 1 },
  { "ValueZ", QT_TRANSLATE_NOOP("kovKeyframeFields", "Z"), kovKeyframeFields::DoubleField, 2 },
};
const std::vector<Field> kTangentFields {
  { "ValueX", QT_TRANSLATE_NOOP("kovKeyframeFields", "X"), kovKeyframeFields::DoubleField, 3 },
  { "ValueY", QT_TRANSLATE_NOOP("kovKeyframeFields", "Y"), kovKeyframeFields::DoubleField, 4 },
  { "ValueZ", QT_TRANSLATE_NOOP("kovKeyframeFields", "Z"), kovKeyframeFields::DoubleField, 5 },
};
const std::vector<Field> kAnglesFields = centreAnd({
  { "Pitch", QT_TRANSLATE_NOOP("kovKeyframeFields", "Pitch"), kovKeyframeFields::DoubleField, Values::kPitchElement },
  { "Yaw", QT_TRANSLATE_NOOP("kovKeyframeFields", "Yaw"), kovKeyframeFields::DoubleField, Values::kYawElement },
  { "Roll", QT_TRANSLATE_NOOP("kovKeyframeFields", "Roll"), kovKeyframeFields::DoubleField, Values::kRollElement },
});
const std::vector<Field> kTargetFields = centreAnd({
  { "DirX", QT_TRANSLATE_NOOP("kovKeyframeFields", "Target X"), kovKeyframeFields::DoubleField, 3 },
  { "DirY", QT_TRANSLATE_NOOP("kovKeyframeFields", "Target Y"), kovKeyframeFields::DoubleField, 4 },
  { "DirZ", QT_TRANSLATE_NOOP("kovKeyframeFields", "Target Z"), kovKeyframeFields::DoubleField, 5 },
});
const std::vector<Field> kEntityFields = centreAnd({
  { "TargetEntity", QT_TRANSLATE_NOOP("kovKeyframeFields", "Entity ID"), kovKeyframeFields::StringField, 3 },
});
const std::vector<Field> kScaleFields {
  { "Scale", QT_TRANSLATE_NOOP("kovKeyframeFields", "Scale"), kovKeyframeFields::DoubleField, -1 },
};
const std::vector<Field> kNumberFields {
  { "NumberValue", QT_TRANSLATE_NOOP("kovKeyframeFields", "Value"), kovKeyframeFields::DoubleField, -1 },
};
const std::vector<Field> kOnOffFields {
  { "BoolValue", QT_TRANSLATE_NOOP("kovKeyframeFields", "Value"), kovKeyframeFields::BoolField, -1 },
};
const std::vector<Field> kTextFields {
  { "TextValue", QT_TRANSLATE_NOOP("kovKeyframeFields", "Value"), kovKeyframeFields::StringField, -1 },
};

const Field* findIn(const std::vector<Field>& fields, const QString& name)
{
  for (const Field& field : fields) {
    if (name == QLatin1String(field.name))
      return &field;
  }
  return nullptr;
}

// element converted to the type of the neutral element it stands in for;
// the neutral one when it does not convert.
QVariant conformedElement(const QVariant& element, const QVariant& neutral)
{
  if (neutral.type() == QVariant::String)
    return element.type() == QVariant::String ? element : neutral;
  bool ok = false;
  const double number = element.toDouble(&ok);
  return ok ? QVariant(number) : neutral;
}

} // namespace

const std::vector<Field>& kovKeyframeFields::of(const kovAnimationItem& item)
{
  switch (Values::kindOf(item)) {
  case Values::PointKind:
    return kPointFields;
  case Values::AnglesKind:
    return kAnglesFields;
  case Values::TargetKind:
    return kTargetFields;
  case Values::EntityKind:
    return kEntityFields;
  case Values::OnOffKind:
    return kOnOffFields;
  case Values::TextKind:
    return kTextFields;
  case Values::NumberKind:
    break;
  }
  return item.animationType() == kovAnimationItem::Scale ? kScaleFields : kNumberFields;
}

const Field* kovKeyframeFields::find(const kovAnimationItem& item, const QString& name)
{
  return findIn(of(item), name);
}

bool kovKeyframeFields::isFieldName(const QString& name)
{
  for (const std::vector<Field>* fields :
       { &kPointFields, &kAnglesFields, &kTargetFields, &kEntityFields, &kScaleFields, &kNumberFields, &kOnOffFields,
         &kTextFields }) {
    if (findIn(*fields, name))
      return true;
  }
  return false;
}

const std::vector<Field>& kovKeyframeFields::tangentFields()
{
  return kTangentFields;
}

const Field* kovKeyframeFields::findTangentField(const QString& name)
{
  return findIn(kTangentFields, name);
}

// Paths by points keep a tangent only where one was given; the palette
// offers the two ends' tangents on the spline paths, which always have them.
bool kovKeyframeFields::hasTangents(const kovAnimationItem& item)
{
  return item.animationType() == kovAnimationItem::LocationBySpline
         || item.animationType() == kovAnimationItem::LocationBySplineAndRotation;
}

QVariant kovKeyframeFields::conformed(const kovAnimationItem& item, const QVariant& value)
{
  const QVariant neutral = Values::defaultValue(item);
  switch (static_cast<int>(neutral.type())) {
  case QMetaType::QVariantList:
    break;
  case QMetaType::Bool: {
    if (value.type() == QVariant::Bool)
      return value;
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? QVariant(number != 0.0) : neutral;
  }
  case QMetaType::QString:
    return value.type() == QVariant::String ? value : neutral;
  default:
    return conformedElement(value, neutral);
  }
  QVariantList shaped = neutral.toList();
  const QVariantList given = value.toList();
  // A point of a path by points may carry a tangent in three more elements.
  if (Values::kindOf(item) == Values::PointKind && given.size() >= 6)
    while (shaped.size() < 6)
      shaped.append(0.0);
  for (int i = 0; i < shaped.size() && i < given.size(); ++i)
    shaped[i] = conformedElement(given.at(i), shaped.at(i));
  return shaped;
}

QVariant kovKeyframeFields::read(const QVariant& value, const Field& field)
{
  return field.element < 0 ? value : value.toList().value(field.element);
}

QVariant kovKeyframeFields::written(const QVariant& value, const Field& field, const QVariant& fieldValue)
{
  if (field.element < 0)
    return fieldValue;
  QVariantList list = value.toList();
  if (field.element < list.size())
    list[field.element] = fieldValue;
  return list;
}

QString kovKeyframeFields::visibleName(const Field& field)
{
  return QCoreApplication::translate("kovKeyframeFields", field.visibleName);
}
