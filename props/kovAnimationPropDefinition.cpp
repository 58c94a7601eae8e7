#include "props/kovAnimationPropDefinition.h"

#include "props/OdDbXmlPropAnimation.h"
#include "props/kovAnimationPropPath.h"
#include "props/kovKeyframeFields.h"

#include "animation/kovKeyframeValues.h"
#include "db/kovDbAnimation.h"

#include "Prop/OdPropContext.h"

#include <QCoreApplication>

#include <iterator>

namespace {

OdString text(const char* source)
{
  return odFromQString(QCoreApplication::translate("OdDbXmlPropAnimation", source));
}

OdString od(const QString& value)
{
  return odFromQString(value);
}

OdString od(const char* latin1)
{
  return odFromQString(QLatin1String(latin1));
}

void writeField(const kovKeyframeFields::Field& field, const QVariant& value, OdPropContext& ctx)
{
  const OdString name = od(field.name);
  const OdString shown = od(kovKeyframeFields::visibleName(field));
  switch (field.type) {
  case kovKeyframeFields::DoubleField:
    ctx.addDouble(name, shown, value.toDouble());
    break;
  case kovKeyframeFields::BoolField:
    ctx.addBool(name, shown, value.toBool());
    break;
  case kovKeyframeFields::StringField:
    ctx.addString(name, shown, od(value.toString()));
    break;
  }
}

// The start tangent is the first keyframe's, the end tangent the last's;
// without keyframes both read 0.
void writeTangent(const kovAnimationItem& item, bool end, OdPropContext& ctx)
{
  ctx.beginCategory(od(kovAnimationPropPath::tangentCategory(end)), text(end ? "End Tangent" : "Start Tangent"));
  const QMap<int, QVariant>& keys = item.values();
  const QVariant value = kovKeyframeFields::conformed(item, keys.isEmpty() ? QVariant()
                                                                           : (end ? keys.last() : keys.first()));
  for (const kovKeyframeFields::Field& field : kovKeyframeFields::tangentFields())
    writeField(field, kovKeyframeFields::read(value, field), ctx);
  ctx.endCategory();
}

} // namespace

void kovAnimationPropDefinition::write(const kovDbAnimation& animation, OdPropContext& ctx)
{
  const kovAnimationTrackPtr track = animation.selectedTrack();
  ctx.beginCategory(od(kovAnimationPropPath::animationCategory()), text("Animation"));
  ctx.addString(od("Name"), text("Name"), od(animation.animationName()));
  ctx.addString(od("Description"), text("Description"), od(animation.animationDescription()));
  if (!track.isNull())
    ctx.addButton(od("AddElement"), text("Add Element"));
  ctx.endCategory();
  if (track.isNull())
    return;
  const bool objectTrack = showsDurationByDistance(*track);
  for (int i = 0; i < track->numElements(); ++i)
    writeElement(track->elementAt(i), i, objectTrack, ctx);
}

bool kovAnimationPropDefinition::showsDurationByDistance(const kovAnimationTrack& track)
{
  const QString kind = track.trackTypeIdentifier();
  return kind == QLatin1String("Object") || kind == QLatin1String("SpawnedObject");
}

int kovAnimationPropDefinition::deltaMs(const kovAnimationItem& item, int row)
{
  const QMap<int, QVariant>& keys = item.values();
  const auto at = std::next(keys.cbegin(), row);
  return row == 0 ? at.key() : at.key() - std::prev(at).key();
}

void kovAnimationPropDefinition::writeElement(const kovAnimationItem& item, int element, bool objectTrack,
                                               OdPropContext& ctx)
{
  ctx.beginCategory(od(kovAnimationPropPath::elementCategory(element)),
                    od(QCoreApplication::translate("OdDbXmlPropAnimation", "Element %1").arg(element + 1)));
  ctx.addCombo(od("AnimationType"), text("Animation Type"),
               od(kovAnimationItem::animationType2String(item.animationType())));
  ctx.addString(od("CustomParameter"), text("Parameter Name"), od(item.customParameterName()));
  ctx.addCombo(od("ParameterType"), text("Parameter Type"), od(kovAnimationItem::paramType2String(item.paramsType())))
      .attribute(od("Items"), od(OdDbXmlPropAnimation::parameterTypeItems().join(QLatin1Char(';'))));
  ctx.addBool(od("FaceDirection"), text("Face Movement Direction"), item.faceDirection());
  if (objectTrack)
    ctx.addBool(od("ConstrainAnimationDuration"), text("Compute Duration By Distance"),
                item.durationByAnimationSpeed());
  ctx.addButton(od("AddRow"), text("Add Value"));
  ctx.addButton(od("RemoveElement"), text("Remove Element"));
  if (kovKeyframeFields::hasTangents(item)) {
    writeTangent(item, false, ctx);
    writeTangent(item, true, ctx);
  }
  for (int row = 0; row < item.values().size(); ++row)
    writeRow(item, row, ctx);
  ctx.endCategory();
}

void kovAnimationPropDefinition::writeRow(const kovAnimationItem& item, int row, OdPropContext& ctx)
{
  const auto at = std::next(item.values().cbegin(), row);
  ctx.beginCategory(od(kovAnimationPropPath::rowCategory(row)),
                    od(QCoreApplication::translate("OdDbXmlPropAnimation", "Value %1").arg(row + 1)));
  ctx.addButton(od("RemoveValue"), text("Remove This Value"));
  ctx.addDouble(od("DeltaTime"), text("Delta Time"), deltaMs(item, row) / 1000.0);
  const QVariant value = kovKeyframeFields::conformed(item, at.value());
  for (const kovKeyframeFields::Field& field : kovKeyframeFields::of(item))
    writeField(field, kovKeyframeFields::read(value, field), ctx);
  if (kovKeyframeValues::kindOf(item) == kovKeyframeValues::EntityKind)
    ctx.addButton(od("SelectEntity"), text("Select Entity"));
  ctx.endCategory();
}
