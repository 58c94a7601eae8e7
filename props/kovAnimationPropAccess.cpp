#include "props/kovAnimationPropAccess.h"

#include "props/OdDbXmlPropAnimation.h"
#include "props/kovAnimationPropDefinition.h"
#include "props/kovAnimationPropPath.h"
#include "props/kovKeyframeFields.h"

#include "animation/kovKeyframeCodec.h"
#include "animation/kovKeyframeValues.h"
#include "db/kovDbAnimation.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbEntity.h"
#include "Prop/OdPropContext.h"

#include <QCoreApplication>

#include <cmath>
#include <functional>
#include <iterator>
#include <limits>

namespace {

using Outcome = kovAnimationPropAccess::Outcome;
using Field = kovKeyframeFields::Field;
using Path = kovAnimationPropPath;
using Item = kovAnimationItem;

enum class Property {
  Name,
  Description,
  AddElement,
  AnimationType,
  CustomParameter,
  ParameterType,
  FaceDirection,
  DurationByDistance,
  AddRow,
  RemoveElement,
  Tangent,
  RemoveValue,
  DeltaTime,
  Value,
  SelectEntity
};

struct Named {
  const char* name;
  Property property;
};

const std::vector<Named> kAnimationProperties {
  { "Name", Property::Name }, { "Description", Property::Description }, { "AddElement", Property::AddElement }
};
const std::vector<Named> kElementProperties {
  { "AnimationType", Property::AnimationType },
  { "CustomParameter", Property::CustomParameter },
  { "ParameterType", Property::ParameterType },
  { "FaceDirection", Property::FaceDirection },
  { "ConstrainAnimationDuration", Property::DurationByDistance },
  { "AddRow", Property::AddRow },
  { "RemoveElement", Property::RemoveElement },
};
const std::vector<Named> kRowProperties {
  { "RemoveValue", Property::RemoveValue }, { "DeltaTime", Property::DeltaTime }, { "SelectEntity", Property::SelectEntity }
};

// What a path names in the animation as it is.
struct Target {
  Path path;
  Property property = Property::Name;
  const kovAnimationTrack* track = nullptr;
  const Item* item = nullptr;
  // The row's keyframe time.
  int key = 0;
  const Field* field = nullptr;
};

// Changes the animation, open for write, as a checked write asks.
using Edit = std::function<void(kovDbAnimation&)>;

QString tr(const char* text)
{
  return QCoreApplication::translate("OdDbXmlPropAnimation", text);
}

Outcome refused(OdResult code, const QString& message)
{
  Outcome outcome;
  outcome.code = code;
  outcome.message = message;
  return outcome;
}

Outcome changed(OdPropBase::Action action)
{
  Outcome outcome;
  outcome.action = action;
  return outcome;
}

bool lookUp(const std::vector<Named>& names, const QString& name, Property& property)
{
  for (const Named& named : names) {
    if (name == QLatin1String(named.name)) {
      property = named.property;
      return true;
    }
  }
  return false;
}

// The number of an "Element<n>" or "Row<m>" part of the path as written.
QString numberIn(const QString& path, int part)
{
  const QString category = path.section(QLatin1Char('/'), part, part);
  int digits = 0;
  while (digits < category.size() && category.at(category.size() - 1 - digits).isDigit())
    ++digits;
  return category.right(digits);
}

QString boolText(bool on)
{
  return odToQString(OdPropContext::formatBool(on));
}

QString doubleText(double number)
{
  return odToQString(OdPropContext::formatDouble(number));
}

QString fieldText(const QVariant& value, const Field& field)
{
  const QVariant part = kovKeyframeFields::read(value, field);
  switch (field.type) {
  case kovKeyframeFields::DoubleField:
    return doubleText(part.toDouble());
  case kovKeyframeFields::BoolField:
    return boolText(part.toBool());
  case kovKeyframeFields::StringField:
    break;
  }
  return part.toString();
}

bool parseDouble(const QString& text, double& number)
{
  bool ok = false;
  number = text.trimmed().toDouble(&ok);
  return ok && std::isfinite(number);
}

bool parseBool(const QString& text, bool& on)
{
  const QString word = text.trimmed();
  on = word.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
  return on || word.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0;
}

Outcome notANumber(const QString& text)
{
  return refused(eInvalidInput, tr("\"%1\" is not a number.").arg(text));
}

Outcome notABool(const QString& text)
{
  return refused(eInvalidInput, tr("\"%1\" is neither true nor false.").arg(text));
}

Outcome notAChoice(const QString& text, const QStringList& choices)
{
  return refused(eInvalidInput, tr("\"%1\" is not one of the choices: %2.").arg(text, choices.join(QLatin1String(", "))));
}

Item& itemOf(kovDbAnimation& animation, int element)
{
  return animation.selectedTrack()->elementAt(element);
}

// Every keyframe in the shape of the item's kind, after the kind changed.
void conformAll(Item& item)
{
  QMap<int, QVariant> values;
  for (auto it = item.values().cbegin(); it != item.values().cend(); ++it)
    values.insert(it.key(), kovKeyframeFields::conformed(item, it.value()));
  item.setValues(values);
}

// The tangent of the path's first or last keyframe (zero without keyframes).
QVariant tangentValue(const Item& item, bool end)
{
  const QMap<int, QVariant>& keys = item.values();
  return kovKeyframeFields::conformed(item, keys.isEmpty() ? QVariant() : (end ? keys.last() : keys.first()));
}

Outcome resolve(const kovDbAnimation& animation, const QString& text, Target& target)
{
  const Outcome unknown = refused(eKeyNotFound, tr("The animation has no property %1.").arg(text));
  if (!Path::parse(text, target.path))
    return unknown;
  const Path& path = target.path;
  const kovAnimationTrackPtr track = animation.selectedTrack();
  target.track = track.get();
  switch (path.scope) {
  case Path::AnimationScope:
    if (!lookUp(kAnimationProperties, path.name, target.property)
        || (target.property == Property::AddElement && !target.track))
      return unknown;
    return Outcome();
  case Path::ElementScope:
    if (!lookUp(kElementProperties, path.name, target.property))
      return unknown;
    break;
  case Path::TangentScope:
    target.field = kovKeyframeFields::findTangentField(path.name);
    if (!target.field)
      return unknown;
    target.property = Property::Tangent;
    break;
  case Path::RowScope:
    if (!lookUp(kRowProperties, path.name, target.property)) {
      if (!kovKeyframeFields::isFieldName(path.name))
        return unknown;
      target.property = Property::Value;
    }
    break;
  }
  if (!target.track)
    return refused(eInvalidIndex, tr("The animation shows no track."));
  if (path.element < 0 || path.element >= track->numElements())
    return refused(eInvalidIndex, tr("The shown track has no element %1.").arg(numberIn(text, 0)));
  const Item& item = track->elementAt(path.element);
  target.item = &item;
  if ((target.property == Property::DurationByDistance && !kovAnimationPropDefinition::showsDurationByDistance(*track))
      || (target.property == Property::Tangent && !kovKeyframeFields::hasTangents(item)))
    return unknown;
  if (path.scope != Path::RowScope)
    return Outcome();
  if (path.row < 0 || path.row >= item.values().size())
    return refused(eInvalidIndex, tr("Element %1 has no value %2.").arg(path.element + 1).arg(numberIn(text, 1)));
  target.key = std::next(item.values().cbegin(), path.row).key();
  if (target.property == Property::Value)
    target.field = kovKeyframeFields::find(item, path.name);
  if ((target.property == Property::Value && !target.field)
      || (target.property == Property::SelectEntity
          && kovKeyframeValues::kindOf(item) != kovKeyframeValues::EntityKind))
    return unknown;
  return Outcome();
}

// Writing value at the target's keyframe: refused when a drawing could not
// keep it, nothing when it is the stored one.
Outcome planValue(const Target& target, const QVariant& value, Edit& edit)
{
  if (value == target.item->values().value(target.key))
    return Outcome();
  const QString why = kovKeyframeCodec::whyNotStorable(value);
  if (!why.isEmpty())
    return refused(eInvalidInput, why);
  edit = [element = target.path.element, key = target.key, value](kovDbAnimation& animation) {
    itemOf(animation, element).setValue(key, value);
  };
  return changed(OdPropBase::kRefresh);
}

Outcome planField(const Target& target, const QString& text, Edit& edit)
{
  const Item& item = *target.item;
  const Field& field = *target.field;
  QVariant part;
  switch (field.type) {
  case kovKeyframeFields::DoubleField: {
    double number = 0.0;
    if (!parseDouble(text, number))
      return notANumber(text);
    const bool parameter = kovKeyframeValues::kindOf(item) == kovKeyframeValues::NumberKind
                           && item.animationType() == Item::CustomParameter;
    if (parameter && (number < item.minValue() || number > item.maxValue()))
      return refused(eOutOfRange, tr("%1 is outside the parameter's range, %2 to %3.")
                                      .arg(text.trimmed())
                                      .arg(item.minValue())
                                      .arg(item.maxValue()));
    part = number;
    break;
  }
  case kovKeyframeFields::BoolField: {
    bool on = false;
    if (!parseBool(text, on))
      return notABool(text);
    part = on;
    break;
  }
  case kovKeyframeFields::StringField:
    if (kovKeyframeValues::kindOf(item) == kovKeyframeValues::TextKind && !item.valueList().isEmpty()
        && !item.valueList().contains(text))
      return notAChoice(text, item.valueList());
    part = text;
    break;
  }
  const QVariant stored = kovKeyframeFields::conformed(item, item.values().value(target.key));
  return planValue(target, kovKeyframeFields::written(stored, field, part), edit);
}

Outcome planTangent(const Target& target, const QString& text, Edit& edit)
{
  const Item& item = *target.item;
  if (item.values().isEmpty())
    return refused(eInvalidIndex, tr("Element %1 has no values to give a tangent.").arg(target.path.element + 1));
  double number = 0.0;
  if (!parseDouble(text, number))
    return notANumber(text);
  Target end = target;
  end.key = target.path.endTangent ? item.values().lastKey() : item.values().firstKey();
  return planValue(end, kovKeyframeFields::written(tangentValue(item, target.path.endTangent), *target.field, number),
                   edit);
}

Outcome planDeltaTime(const Target& target, const QString& text, Edit& edit)
{
  double seconds = 0.0;
  if (!parseDouble(text, seconds))
    return notANumber(text);
  const Item& item = *target.item;
  const int row = target.path.row;
  const qint64 limit = std::numeric_limits<int>::max();
  const qint64 ms = std::abs(seconds) < 1e12 ? std::llround(seconds * 1000.0) : limit + 1;
  if (ms < (row == 0 ? 0 : 1))
    return refused(eOutOfRange, row == 0 ? tr("The first value's delta time can't be below 0 s.")
                                         : tr("A value's delta time must be more than 0 s: it comes after the one "
                                              "before it."));
  const qint64 shift = ms - kovAnimationPropDefinition::deltaMs(item, row);
  if (shift == 0)
    return Outcome();
  if (item.values().lastKey() + shift > limit)
    return refused(eOutOfRange, tr("%1 s is more than a track can hold.").arg(text.trimmed()));
  edit = [element = target.path.element, key = target.key, shift = static_cast<int>(shift)](kovDbAnimation& animation) {
    Item& changedItem = itemOf(animation, element);
    QMap<int, QVariant> values;
    for (auto it = changedItem.values().cbegin(); it != changedItem.values().cend(); ++it)
      values.insert(it.key() < key ? it.key() : it.key() + shift, it.value());
    changedItem.setValues(values);
  };
  return changed(OdPropBase::kRefresh);
}

Outcome planSelectEntity(const kovDbAnimation& animation, const Target& target, const QString& text, Edit& edit)
{
  const OdDbHandle handle(odFromQString(text.trimmed()));
  OdDbDatabase* db = animation.database();
  const OdDbObjectId id = db && !handle.isNull() ? db->getOdDbObjectId(handle) : OdDbObjectId();
  const OdDbObjectPtr object = id.isNull() || id == animation.objectId() ? OdDbObjectPtr() : id.openObject();
  if (object.isNull() || !OdDbEntity::cast(object.get()))
    return refused(eInvalidInput, tr("\"%1\" is not the handle of another entity of the drawing.").arg(text));
  const Field& entity = *kovKeyframeFields::find(*target.item, QStringLiteral("TargetEntity"));
  const QVariant stored = kovKeyframeFields::conformed(*target.item, target.item->values().value(target.key));
  return planValue(target, kovKeyframeFields::written(stored, entity, odToQString(handle.ascii())), edit);
}

// The sub-track's kind: a label of the combo, or the shown one (which a
// kind outside the combo's list keeps).
template <class Kind>
Outcome planKind(const Target& target, const QString& text, const QString& shown, const QStringList& labels,
                 Kind kind, void (*apply)(Item&, Kind), Edit& edit)
{
  if (text == shown)
    return Outcome();
  if (!labels.contains(text))
    return notAChoice(text, labels);
  edit = [element = target.path.element, kind, apply](kovDbAnimation& animation) {
    Item& item = itemOf(animation, element);
    apply(item, kind);
    conformAll(item);
  };
  return changed(OdPropBase::kRecreate);
}

Outcome planCustomParameter(const Target& target, const QString& name, Edit& edit)
{
  if (name == target.item->customParameterName())
    return Outcome();
  const QStringList special = Item::listSpecialParameters(target.track->trackTypeIdentifier());
  edit = [element = target.path.element, name, special](kovDbAnimation& animation) {
    Item& item = itemOf(animation, element);
    if (item.animationType() == Item::CustomParameter && special.contains(name)) {
      Item::setSpecialCustomParamType(item, name);
      conformAll(item);
      return;
    }
    item.setCustomParameterName(name);
    if (item.isFactoryParameter()) {
      const Item plain;
      item.setIsFactoryParameter(false);
      item.setRange(plain.minValue(), plain.maxValue(), plain.decimals());
      item.setValueList(QStringList());
    }
  };
  return changed(OdPropBase::kRecreate);
}

Outcome planFlag(const Target& target, const QString& text, bool shown, void (Item::*set)(bool), Edit& edit)
{
  bool on = false;
  if (!parseBool(text, on))
    return notABool(text);
  if (on == shown)
    return Outcome();
  edit = [element = target.path.element, on, set](kovDbAnimation& animation) {
    (itemOf(animation, element).*set)(on);
  };
  return changed(OdPropBase::kRefresh);
}

Outcome planAddRow(const Target& target, Edit& edit)
{
  const QMap<int, QVariant>& keys = target.item->values();
  if (!keys.isEmpty() && keys.lastKey() > std::numeric_limits<int>::max() - kovAnimationPropAccess::kAddRowStepMs)
    return refused(eOutOfRange, tr("There is no time left after the last value."));
  const int time = keys.isEmpty() ? 0 : keys.lastKey() + kovAnimationPropAccess::kAddRowStepMs;
  const QVariant value = keys.isEmpty() ? kovKeyframeValues::defaultValue(*target.item) : keys.last();
  edit = [element = target.path.element, time, value](kovDbAnimation& animation) {
    itemOf(animation, element).setValue(time, value);
  };
  return changed(OdPropBase::kRecreate);
}

Outcome plan(const kovDbAnimation& animation, const Target& target, const QString& text, Edit& edit)
{
  const int element = target.path.element;
  switch (target.property) {
  case Property::Name:
  case Property::Description: {
    const bool name = target.property == Property::Name;
    if (text == (name ? animation.animationName() : animation.animationDescription()))
      return Outcome();
    edit = [name, text](kovDbAnimation& changedAnimation) {
      name ? changedAnimation.setName(text) : changedAnimation.setDescription(text);
    };
    return changed(OdPropBase::kRefresh);
  }
  case Property::AddElement: {
    const bool movable = Item::trackTypeAllowTransforms(target.track->trackTypeIdentifier());
    edit = [movable](kovDbAnimation& changedAnimation) {
      const kovAnimationTrackPtr track = changedAnimation.selectedTrack();
      track->addElement();
      if (!movable)
        track->elementAt(track->numElements() - 1).setAnimationType(Item::CustomParameter, OdGePoint3d::kOrigin);
    };
    return changed(OdPropBase::kRecreate);
  }
  case Property::RemoveElement:
    edit = [element](kovDbAnimation& changedAnimation) { changedAnimation.selectedTrack()->removeElement(element); };
    return changed(OdPropBase::kRecreate);
  case Property::AnimationType:
    return planKind<Item::AnimationType>(
        target, text, Item::animationType2String(target.item->animationType()),
        OdDbXmlPropAnimation::animationTypeLabels(), Item::string2AnimationType(text),
        [](Item& item, Item::AnimationType type) { item.setAnimationType(type, OdGePoint3d::kOrigin); }, edit);
  case Property::ParameterType:
    return planKind<Item::ParameterType>(
        target, text, Item::paramType2String(target.item->paramsType()), OdDbXmlPropAnimation::parameterTypeLabels(),
        Item::string2ParamType(text), [](Item& item, Item::ParameterType type) { item.setParamsType(type); }, edit);
  case Property::CustomParameter:
    return planCustomParameter(target, text, edit);
  case Property::FaceDirection:
    return planFlag(target, text, target.item->faceDirection(), &Item::setFaceDirection, edit);
  case Property::DurationByDistance:
    return planFlag(target, text, target.item->durationByAnimationSpeed(), &Item::setDurationByAnimationSpeed, edit);
  case Property::AddRow:
    return planAddRow(target, edit);
  case Property::Tangent:
    return planTangent(target, text, edit);
  case Property::RemoveValue:
    edit = [element, key = target.key](kovDbAnimation& changedAnimation) {
      itemOf(changedAnimation, element).removeValue(key);
    };
    return changed(OdPropBase::kRecreate);
  case Property::DeltaTime:
    return planDeltaTime(target, text, edit);
  case Property::Value:
    return planField(target, text, edit);
  case Property::SelectEntity:
    return planSelectEntity(animation, target, text, edit);
  }
  return Outcome();
}

} // namespace

Outcome kovAnimationPropAccess::read(const kovDbAnimation& animation, const QString& path, QString& value)
{
  Target target;
  const Outcome outcome = resolve(animation, path, target);
  if (outcome.code != eOk)
    return outcome;
  const Item* item = target.item;
  switch (target.property) {
  case Property::Name:
    value = animation.animationName();
    break;
  case Property::Description:
    value = animation.animationDescription();
    break;
  case Property::AnimationType:
    value = Item::animationType2String(item->animationType());
    break;
  case Property::CustomParameter:
    value = item->customParameterName();
    break;
  case Property::ParameterType:
    value = Item::paramType2String(item->paramsType());
    break;
  case Property::FaceDirection:
    value = boolText(item->faceDirection());
    break;
  case Property::DurationByDistance:
    value = boolText(item->durationByAnimationSpeed());
    break;
  case Property::Tangent:
    value = fieldText(tangentValue(*item, target.path.endTangent), *target.field);
    break;
  case Property::DeltaTime:
    value = doubleText(kovAnimationPropDefinition::deltaMs(*item, target.path.row) / 1000.0);
    break;
  case Property::Value:
    value = fieldText(kovKeyframeFields::conformed(*item, item->values().value(target.key)), *target.field);
    break;
  case Property::AddElement:
  case Property::AddRow:
  case Property::RemoveElement:
  case Property::RemoveValue:
  case Property::SelectEntity:
    return refused(eNotApplicable, tr("%1 is a button: it has no value.").arg(path));
  }
  return outcome;
}

Outcome kovAnimationPropAccess::write(kovDbAnimation& animation, const QString& path, const QString& value)
{
  Target target;
  Outcome outcome = resolve(animation, path, target);
  Edit edit;
  if (outcome.code == eOk)
    outcome = plan(animation, target, value, edit);
  if (outcome.code != eOk || !edit)
    return outcome;
  animation.upgradeOpen();
  edit(animation);
  return outcome;
}
