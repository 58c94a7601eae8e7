#include "props/OdDbXmlPropAnimation.h"

#include "props/kovAnimationPropAccess.h"
#include "props/kovAnimationPropDefinition.h"
#include "props/kovAnimationPropPath.h"

#include "db/kovDbAnimation.h"

#include "Prop/OdPropContext.h"

#include <QCoreApplication>

ODRX_CONS_DEFINE_MEMBERS(OdDbXmlPropAnimation, OdPropBase, RXIMPL_CONSTR)

namespace {

const QLatin1String kAnimationType("AnimationType");
const QLatin1String kParameterType("ParameterType");

QStringList typeNames(std::initializer_list<kovAnimationItem::AnimationType> types)
{
  QStringList names;
  for (kovAnimationItem::AnimationType type : types)
    names << kovAnimationItem::animationType2String(type);
  return names;
}

QStringList paramNames(std::initializer_list<kovAnimationItem::ParameterType> types)
{
  QStringList names;
  for (kovAnimationItem::ParameterType type : types)
    names << kovAnimationItem::paramType2String(type);
  return names;
}

} // namespace

kovDbAnimationPtr OdDbXmlPropAnimation::openAnimation()
{
  kovDbAnimationPtr animation = kovDbAnimation::cast(objectId().openObject().get());
  if (animation.isNull())
    setLastError(eWasErased, odFromQString(QCoreApplication::translate("OdDbXmlPropAnimation",
                                                                       "The animation is no longer in the drawing.")));
  return animation;
}

QStringList OdDbXmlPropAnimation::animationTypeLabels()
{
  using Item = kovAnimationItem;
  return typeNames({ Item::CustomParameter, Item::LocationByPoints, Item::LocationBySpline, Item::RotationByAngles,
                     Item::RotationToEntity, Item::RotationToTarget });
}

QStringList OdDbXmlPropAnimation::parameterTypeLabels()
{
  using Item = kovAnimationItem;
  return paramNames({ Item::Number, Item::OnOff, Item::Point, Item::Text });
}

QStringList OdDbXmlPropAnimation::parameterTypeItems()
{
  using Item = kovAnimationItem;
  return paramNames({ Item::Text, Item::OnOff, Item::Number, Item::Point });
}

bool OdDbXmlPropAnimation::getPropertyValues(OdPropContext& ctx)
{
  const kovDbAnimationPtr animation = openAnimation();
  if (animation.isNull())
    return false;
  kovAnimationPropDefinition::write(*animation, ctx);
  return true;
}

bool OdDbXmlPropAnimation::getPropertyValue(const OdString& path, OdString& value)
{
  const kovDbAnimationPtr animation = openAnimation();
  if (animation.isNull())
    return false;
  QString text;
  const kovAnimationPropAccess::Outcome outcome = kovAnimationPropAccess::read(*animation, odToQString(path), text);
  if (outcome.code != eOk)
    return setLastError(outcome.code, odFromQString(outcome.message));
  value = odFromQString(text);
  return true;
}

bool OdDbXmlPropAnimation::setPropertyValue(const OdString& path, const OdString& value, Action& action)
{
  const kovDbAnimationPtr animation = openAnimation();
  if (animation.isNull())
    return false;
  const kovAnimationPropAccess::Outcome outcome =
      kovAnimationPropAccess::write(*animation, odToQString(path), odToQString(value));
  if (outcome.code != eOk)
    return setLastError(outcome.code, odFromQString(outcome.message));
  action = outcome.action;
  if (animation->isWriteEnabled())
    animation->invalidateDrawings();
  return true;
}

bool OdDbXmlPropAnimation::getPropertyPossibleValues(const OdString& path, OdStringArray& values,
                                                     OdStringArray& iconPaths)
{
  kovAnimationPropPath combo;
  QStringList labels;
  if (kovAnimationPropPath::parse(odToQString(path), combo) && combo.scope == kovAnimationPropPath::ElementScope)
    labels = combo.name == kAnimationType ? animationTypeLabels()
                                          : (combo.name == kParameterType ? parameterTypeLabels() : QStringList());
  if (labels.isEmpty())
    return OdPropBase::getPropertyPossibleValues(path, values, iconPaths);
  values.setLogicalLength(0);
  iconPaths.setLogicalLength(0);
  for (const QString& label : labels) {
    values.append(odFromQString(label));
    iconPaths.append(OdString());
  }
  return true;
}
