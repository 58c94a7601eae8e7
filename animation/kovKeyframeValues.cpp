#include "animation/kovKeyframeValues.h"

#include <QVariantList>

#include <algorithm>
#include <iterator>

namespace {

bool isNumber(const QVariant& value)
{
  switch (static_cast<int>(value.type())) {
  case QMetaType::Double:
  case QMetaType::Float:
  case QMetaType::Int:
  case QMetaType::LongLong:
    return true;
  default:
    return false;
  }
}

QVariant blend(const QVariant& from, const QVariant& to, double fraction)
{
  if (isNumber(from) && isNumber(to))
    return from.toDouble() + (to.toDouble() - from.toDouble()) * fraction;
  if (from.type() != QVariant::List || to.type() != QVariant::List)
    return from;
  QVariantList a = from.toList();
  const QVariantList b = to.toList();
  for (int i = 0; i < a.size() && i < b.size(); ++i)
    a[i] = blend(a.at(i), b.at(i), fraction);
  return a;
}

} // namespace

kovKeyframeValues::Kind kovKeyframeValues::kindOf(kovAnimationItem::AnimationType type,
                                                 kovAnimationItem::ParameterType paramsType)
{
  switch (type) {
  case kovAnimationItem::LocationByPoints:
  case kovAnimationItem::LocationBySpline:
  case kovAnimationItem::LocationBySplineAndRotation:
    return PointKind;
  case kovAnimationItem::Scale:
    return NumberKind;
  case kovAnimationItem::RotationByAngles:
    return AnglesKind;
  case kovAnimationItem::RotationToTarget:
    return TargetKind;
  case kovAnimationItem::RotationToEntity:
    return EntityKind;
  case kovAnimationItem::CustomParameter:
    break;
  }
  switch (paramsType) {
  case kovAnimationItem::Point:
    return PointKind;
  case kovAnimationItem::OnOff:
    return OnOffKind;
  case kovAnimationItem::Text:
    return TextKind;
  case kovAnimationItem::Number:
    break;
  }
  return NumberKind;
}

QVariant kovKeyframeValues::defaultValue(const kovAnimationItem& item)
{
  switch (kindOf(item)) {
  case PointKind:
    if (item.animationType() == kovAnimationItem::LocationByPoints
        || item.animationType() == kovAnimationItem::CustomParameter)
      return QVariantList { 0.0, 0.0, 0.0 };
    return QVariantList { 0.0, 0.0, 0.0, 0.0, 0.0, 0.0 };
  case AnglesKind:
  case TargetKind:
    return QVariantList { 0.0, 0.0, 0.0, 0.0, 0.0, 0.0 };
  case EntityKind:
    return QVariantList { 0.0, 0.0, 0.0, QString() };
  case OnOffKind:
    return true;
  case TextKind:
    return item.valueList().isEmpty() ? QString() : item.valueList().first();
  case NumberKind:
    break;
  }
  // A scale of 1 leaves the subject as it is; a parameter starts at its
  // lowest allowed value when 0 is out of its range.
  if (item.animationType() == kovAnimationItem::Scale)
    return 1.0;
  return std::max(item.minValue(), std::min(0.0, item.maxValue()));
}

QVariant kovKeyframeValues::valueAt(const kovAnimationItem& item, int ms)
{
  const QMap<int, QVariant>& keys = item.values();
  if (keys.isEmpty())
    return defaultValue(item);
  auto next = keys.lowerBound(ms);
  if (next == keys.cend())
    return keys.last();
  if (next.key() == ms || next == keys.cbegin())
    return next.value();
  const auto previous = std::prev(next);
  const double fraction = static_cast<double>(ms - previous.key()) / (next.key() - previous.key());
  return blend(previous.value(), next.value(), fraction);
}

bool kovKeyframeValues::isPath(const kovAnimationItem& item)
{
  return item.animationType() == kovAnimationItem::LocationByPoints
         || item.animationType() == kovAnimationItem::LocationBySpline;
}

bool kovKeyframeValues::isClosedPath(const kovAnimationItem& item)
{
  const QMap<int, QVariant>& keys = item.values();
  if (kindOf(item) != PointKind || keys.size() <= 2)
    return false;
  const OdGePoint3d none(1e300, 1e300, 1e300);
  const OdGePoint3d first = item.valueAsPoint(keys.firstKey(), none);
  return !first.isEqualTo(none) && first.isEqualTo(item.valueAsPoint(keys.lastKey(), none));
}
