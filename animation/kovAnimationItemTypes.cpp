// Enumerations, special parameters and colours of sub-tracks.
#include "animation/kovAnimationItem.h"

#include "animation/kovAnimationTrack.h"
#include "animation/kovOdDbEx.h"

#include <iterator>

namespace {

// Display strings in enumeration order; both conversions compare translations.
const char* const kAnimationTypeNames[] = {
  QT_TRANSLATE_NOOP("kovAnimationItem", "Custom Parameter"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Location By Points"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Location By Spline"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Scale"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Rotation By Angles"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Rotation To Target"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Rotation To Entity"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Location By Spline and Rotation"),
};

const char* const kParameterTypeNames[] = {
  QT_TRANSLATE_NOOP("kovAnimationItem", "Point"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Number"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "On/Off"),
  QT_TRANSLATE_NOOP("kovAnimationItem", "Text"),
};

const char* const kSkyNames[] = {
  "Altocumulus", "Cirrus", "Clear_Sky", "Cumulus", "Multi-Layer", "Nimbo-stratus",
  "Strato-cumulus", "Stratus", "Towering_Cumulus", "TrueSkySequenceCumulus", "TrueSkySequenceStratus", "Rainy",
};

struct SpecialParameter {
  const char* name;
  kovAnimationItem::ParameterType type;
  double minValue;
  double maxValue;
  int decimals;
};

// "Year" ends at 2999 and "Focus Distance" shares the limit of "Depth Of
// Field": both as the values were always offered to users.
const SpecialParameter kSpecialParameters[] = {
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Time"), kovAnimationItem::Number, 0, 24, 2 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Day"), kovAnimationItem::Number, 1, 31, 0 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Month"), kovAnimationItem::Number, 1, 12, 0 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Year"), kovAnimationItem::Number, 1970, 2999, 0 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "North"), kovAnimationItem::Number, -180, 180, 2 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Longitude"), kovAnimationItem::Number, -180, 180, 3 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Latitude"), kovAnimationItem::Number, -90, 90, 3 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Visibility"), kovAnimationItem::OnOff, 0, 1, 0 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Sky Sequence"), kovAnimationItem::Text, 0, 0, 0 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Fov"), kovAnimationItem::Number, 1, 179, 2 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Depth Of Field"), kovAnimationItem::Number, 0, 10000, 2 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Focus Distance"), kovAnimationItem::Number, 0, 10000, 2 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Intensity"), kovAnimationItem::Number, 0, 1000000, 2 },
  { QT_TRANSLATE_NOOP("kovAnimationItem", "Object Animation"), kovAnimationItem::Text, 0, 0, 0 },
};

QStringList translated(std::initializer_list<const char*> names)
{
  QStringList list;
  for (const char* name : names)
    list << kovAnimationItem::tr(name);
  return list;
}

QStringList objectAnimationNames(const kovAnimationItem& item)
{
  const kovOdDbEx* library = kovOdDbEx::service();
  const kovAnimationTrack* track = item.parentTrack();
  if (!library || !track)
    return QStringList();
  return library->animationNames(track->entityId().database(), track->entityUniqueName());
}

} // namespace

QString kovAnimationItem::animationType2String(int type)
{
  if (type < 0 || type >= static_cast<int>(std::size(kAnimationTypeNames)))
    return QString();
  return tr(kAnimationTypeNames[type]);
}

kovAnimationItem::AnimationType kovAnimationItem::string2AnimationType(const QString& text)
{
  for (int i = 0; i < static_cast<int>(std::size(kAnimationTypeNames)); ++i) {
    if (text == tr(kAnimationTypeNames[i]))
      return static_cast<AnimationType>(i);
  }
  return CustomParameter;
}

QString kovAnimationItem::paramType2String(int type)
{
  if (type < 0 || type >= static_cast<int>(std::size(kParameterTypeNames)))
    return QString();
  return tr(kParameterTypeNames[type]);
}

kovAnimationItem::ParameterType kovAnimationItem::string2ParamType(const QString& text)
{
  for (int i = 0; i < static_cast<int>(std::size(kParameterTypeNames)); ++i) {
    if (text == tr(kParameterTypeNames[i]))
      return static_cast<ParameterType>(i);
  }
  return Number;
}

QStringList kovAnimationItem::listSpecialParameters(const QString& trackTypeIdentifier)
{
  if (trackTypeIdentifier == QLatin1String("Environment"))
    return translated({ "Time", "Day", "Month", "Year", "Sky Sequence", "North", "Longitude", "Latitude" });
  if (trackTypeIdentifier == QLatin1String("Camera"))
    return translated({ "Fov", "Depth Of Field", "Focus Distance" });
  if (trackTypeIdentifier == QLatin1String("ArtificialLight"))
    return translated({ "Intensity" });
  if (trackTypeIdentifier == QLatin1String("Object") || trackTypeIdentifier == QLatin1String("SpawnedObject"))
    return translated({ "Object Animation", "Visibility" });
  if (trackTypeIdentifier == QLatin1String("Entity"))
    return translated({ "Visibility" });
  return QStringList();
}

void kovAnimationItem::setSpecialCustomParamType(kovAnimationItem& item, const QString& name)
{
  item.setAnimationType(CustomParameter, OdGePoint3d::kOrigin);
  item.m_customParameterName = name;
  for (const SpecialParameter& special : kSpecialParameters) {
    if (name != tr(special.name))
      continue;
    item.m_paramsType = special.type;
    item.m_isFactoryParameter = true;
    item.setRange(special.minValue, special.maxValue, special.decimals);
    item.m_valueList.clear();
    if (qstrcmp(special.name, "Sky Sequence") == 0) {
      for (const char* sky : kSkyNames)
        item.m_valueList << QString::fromLatin1(sky);
    } else if (qstrcmp(special.name, "Object Animation") == 0) {
      item.m_valueList = objectAnimationNames(item);
    }
    return;
  }
}

bool kovAnimationItem::trackTypeAllowTransforms(const QString& trackTypeIdentifier)
{
  // Subjects that have a place in the scene move, turn and scale; the
  // environment and an unbound track only carry values.
  static const char* const kMovable[] = { "Camera", "Entity", "Object", "SpawnedObject", "ArtificialLight" };
  for (const char* id : kMovable) {
    if (trackTypeIdentifier == QLatin1String(id))
      return true;
  }
  return false;
}

int kovAnimationItem::colorIndexByAnimationType(int type)
{
  // Colour indexes of distinct hues, saturated enough to stay readable once
  // the tree lightens them for the lane background.
  switch (type) {
  case CustomParameter: return 30;
  case LocationByPoints: return 150;
  case LocationBySpline: return 130;
  case Scale: return 90;
  case RotationByAngles: return 210;
  case RotationToTarget: return 230;
  case RotationToEntity: return 10;
  case LocationBySplineAndRotation: return 170;
  default: return 8;
  }
}
