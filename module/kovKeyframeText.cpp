#include "module/kovKeyframeText.h"

#include "animation/kovKeyframeValues.h"

#include <QStringList>
#include <QVariantList>

#include <cmath>

namespace {

bool toNumbers(const QStringList& parts, QVariantList& numbers)
{
  for (const QString& part : parts) {
    bool ok = false;
    const double number = part.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(number))
      return false;
    numbers << number;
  }
  return true;
}

// Three numbers fill the list's own values (a location's point, a rotation's
// angles or target) and leave the rest at their defaults; a full list
// replaces all of it.
bool fillList(const QVariantList& numbers, bool threeAreFirst, QVariantList& list)
{
  if (numbers.size() == list.size()) {
    list = numbers;
    return true;
  }
  if (numbers.size() != 3 || list.size() != 6)
    return false;
  const int first = threeAreFirst ? 0 : 3;
  for (int i = 0; i < 3; ++i)
    list[first + i] = numbers.at(i);
  return true;
}

} // namespace

bool kovKeyframeText::parse(const kovAnimationItem& item, const QString& text, QVariant& value, QString& error)
{
  const QString typed = text.trimmed();
  const kovKeyframeValues::Kind kind = kovKeyframeValues::kindOf(item);
  switch (kind) {
  case kovKeyframeValues::NumberKind: {
    bool ok = false;
    const double number = typed.toDouble(&ok);
    if (!ok || !std::isfinite(number)) {
      error = tr("\"%1\" is no number.").arg(typed);
      return false;
    }
    if (item.animationType() == kovAnimationItem::CustomParameter
        && (number < item.minValue() || number > item.maxValue())) {
      error = tr("%1 takes values from %2 to %3.")
                  .arg(item.customParameterName())
                  .arg(item.minValue())
                  .arg(item.maxValue());
      return false;
    }
    value = number;
    return true;
  }
  case kovKeyframeValues::OnOffKind: {
    static const QStringList on { QStringLiteral("on"), QStringLiteral("true"), QStringLiteral("yes"),
                                  QStringLiteral("1") };
    static const QStringList off { QStringLiteral("off"), QStringLiteral("false"), QStringLiteral("no"),
                                   QStringLiteral("0") };
    if (!on.contains(typed.toLower()) && !off.contains(typed.toLower())) {
      error = tr("\"%1\" is neither On nor Off.").arg(typed);
      return false;
    }
    value = on.contains(typed.toLower());
    return true;
  }
  case kovKeyframeValues::TextKind: {
    if (item.valueList().isEmpty()) {
      value = typed;
      return true;
    }
    for (const QString& choice : item.valueList()) {
      if (choice.compare(typed, Qt::CaseInsensitive) == 0) {
        value = choice;
        return true;
      }
    }
    error = tr("%1 is one of: %2.").arg(item.customParameterName(), item.valueList().join(QStringLiteral(", ")));
    return false;
  }
  case kovKeyframeValues::EntityKind: {
    QStringList parts = typed.split(QLatin1Char(','));
    const QString name = parts.takeLast().trimmed();
    QVariantList pivot;
    if (name.isEmpty() || (!parts.isEmpty() && (parts.size() != 3 || !toNumbers(parts, pivot)))) {
      error = tr("A rotation to an entity takes the entity's name, or a pivot x,y,z and the name.");
      return false;
    }
    QVariantList list = kovKeyframeValues::defaultValue(item).toList();
    for (int i = 0; i < pivot.size(); ++i)
      list[i] = pivot.at(i);
    list[3] = name;
    value = list;
    return true;
  }
  case kovKeyframeValues::PointKind:
  case kovKeyframeValues::AnglesKind:
  case kovKeyframeValues::TargetKind:
    break;
  }
  QVariantList numbers;
  QVariantList list = kovKeyframeValues::defaultValue(item).toList();
  if (!toNumbers(typed.split(QLatin1Char(',')), numbers)
      || !fillList(numbers, kind == kovKeyframeValues::PointKind, list)) {
    error = list.size() == 6 ? tr("\"%1\" is not 3 or 6 numbers separated by commas.").arg(typed)
                             : tr("\"%1\" is not %2 numbers separated by commas.").arg(typed).arg(list.size());
    return false;
  }
  value = list;
  return true;
}
