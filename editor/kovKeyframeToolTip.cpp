#include "editor/kovKeyframeToolTip.h"

#include "animation/kovKeyframeValues.h"

#include <QCoreApplication>
#include <QVariantList>

namespace {

QString tr(const char* text)
{
  return QCoreApplication::translate("kovKeyframeToolTip", text);
}

QString number(double value)
{
  return QString::number(value, 'g', 6);
}

double element(const QVariantList& list, int index)
{
  return index < list.size() ? list.at(index).toDouble() : 0.0;
}

// " X:1 Y:2 Z:3" of the list's elements from first on.
QString xyz(const QVariantList& list, int first)
{
  return tr(" X:") + number(element(list, first)) + tr(" Y:") + number(element(list, first + 1)) + tr(" Z:")
         + number(element(list, first + 2));
}

QString pivot(const QVariantList& list)
{
  return tr(" Pivot (X:") + number(element(list, 0)) + tr(" Y:") + number(element(list, 1)) + tr(" Z:")
         + number(element(list, 2));
}

QString customText(const kovAnimationItem& item, const QVariant& value)
{
  QString text = tr(" Value:");
  switch (item.paramsType()) {
  case kovAnimationItem::OnOff:
    return text + (value.toBool() ? tr(" True") : tr(" False"));
  case kovAnimationItem::Text:
    return text + value.toString();
  case kovAnimationItem::Point:
    return text + xyz(value.toList(), 0);
  case kovAnimationItem::Number:
    break;
  }
  return text + number(value.toDouble());
}

} // namespace

QString kovKeyframeToolTip::text(const kovAnimationItem& item, const QVariant& value)
{
  const QVariantList list = value.toList();
  switch (item.animationType()) {
  case kovAnimationItem::CustomParameter:
    return customText(item, value);
  case kovAnimationItem::LocationByPoints:
  case kovAnimationItem::LocationBySpline:
  case kovAnimationItem::LocationBySplineAndRotation: {
    QString text = xyz(list, 0);
    // The tangent's plan direction says where the path heads; a free
    // tangent (all zero) says nothing.
    if (element(list, 3) != 0.0 || element(list, 4) != 0.0 || element(list, 5) != 0.0)
      text += tr(" - Tangent:") + tr(" X:") + number(element(list, 3)) + tr(" Y:") + number(element(list, 4));
    return text;
  }
  case kovAnimationItem::Scale: {
    // A scale is one factor for all three axes; a list gives one per axis.
    const QVariantList factors = list.size() >= 3 ? list : QVariantList { value, value, value };
    return tr(" Scale:") + xyz(factors, 0);
  }
  case kovAnimationItem::RotationByAngles:
    return pivot(list) + tr(" Pitch:") + number(element(list, kovKeyframeValues::kPitchElement)) + tr(" Yaw:")
           + number(element(list, kovKeyframeValues::kYawElement)) + tr(" Roll:")
           + number(element(list, kovKeyframeValues::kRollElement));
  case kovAnimationItem::RotationToTarget:
    return pivot(list) + tr(" Target (X:") + number(element(list, 3)) + tr(" Y:") + number(element(list, 4))
           + tr(" Z:") + number(element(list, 5));
  case kovAnimationItem::RotationToEntity:
    return pivot(list) + tr(" Target Entity:") + (list.size() >= 4 ? list.at(3).toString() : QString());
  }
  return QString();
}
