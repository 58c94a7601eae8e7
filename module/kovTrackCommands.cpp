#include "module/kovTrackCommands.h"

#include "module/kovKeyframeText.h"
#include "module/kovScriptInput.h"

#include "animation/kovKeyframeValues.h"
#include "db/kovEditingState.h"
#include "editor/kovAddTrackMenu.h"
#include "editor/kovKeyframeToolTip.h"
#include "editor/kovSubTrackDialog.h"
#include "editor/kovTrackFactory.h"

#include "Db/OdDbBlockReference.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace {

QString tr(const char* text)
{
  return QCoreApplication::translate("kovTrackCommands", text);
}

void say(kovScriptInput& in, const QString& text)
{
  in.io()->putString(odFromQString(text));
}

OdDbObjectId selectOne(kovScriptInput& in, const QString& prompt)
{
  const OdDbObjectIdArray ids = in.io()->select(odFromQString(prompt), OdEd::kSelSingleEntity);
  if (ids.isEmpty())
    kovScriptInput::fail(tr("Nothing was selected."));
  return ids[0];
}

QString itemName(const kovAnimationItem& item)
{
  return item.animationType() == kovAnimationItem::CustomParameter
             ? item.customParameterName()
             : kovAnimationItem::animationType2String(item.animationType());
}

// The latest keyframe time of the track's paths; -1 without a path.
int pathsEnd(const kovAnimationTrack& track)
{
  int end = -1;
  for (const kovAnimationItem& item : track.animationElements()) {
    if (kovKeyframeValues::isPath(item) && !item.values().isEmpty())
      end = std::max(end, item.values().lastKey());
  }
  return end;
}

// The keyframes at their times times factor, each still after the one before.
QMap<int, QVariant> scaledTimes(const QMap<int, QVariant>& values, double factor)
{
  QMap<int, QVariant> scaled;
  int previous = INT_MIN;
  for (auto it = values.cbegin(); it != values.cend(); ++it) {
    const double wanted = std::round(it.key() * factor);
    int time = wanted >= INT_MAX ? INT_MAX : static_cast<int>(wanted);
    if (time <= previous && previous < INT_MAX)
      time = previous + 1;
    scaled.insert(time, it.value());
    previous = time;
  }
  return scaled;
}

} // namespace

void kovTrackCommands::selectAnimation(OdEdCommandContext* pCmdCtx)
{
  kovScriptInput in(pCmdCtx);
  const OdDbObjectId id = in.animationNamed(in.text(tr("Animation name:")));
  kovEditingState::setEditingAnimation(id);
}

void kovTrackCommands::addTrack(OdEdCommandContext* pCmdCtx)
{
  kovScriptInput in(pCmdCtx);
  const kovAddTrackMenu::Kind kinds[] = { kovAddTrackMenu::CameraTrack, kovAddTrackMenu::EntityTrack,
                                          kovAddTrackMenu::EnvironmentTrack, kovAddTrackMenu::SpawnedObjectTrack,
                                          kovAddTrackMenu::DbObjectTrack };
  const kovAddTrackMenu::Kind kind = kinds[in.io()->getKeyword(
      OdString(L"Track kind [Camera/Entity/Environment/SpawnedObject/Object]:"),
      OdString(L"Camera Entity Environment SpawnedObject Object"))];
  const OdDbObjectId animationId = in.animation()->objectId();
  OdDbDatabase* db = in.database();
  kovAnimationTrackPtr track;
  switch (kind) {
  case kovAddTrackMenu::CameraTrack:
    track = kovTrackFactory::camera(db, kovAddTrackMenu::text(kind));
    break;
  case kovAddTrackMenu::EnvironmentTrack:
    track = kovTrackFactory::environment(db, kovAddTrackMenu::text(kind));
    break;
  case kovAddTrackMenu::EntityTrack: {
    const OdDbObjectId entity = selectOne(in, tr("Select the entity to animate:"));
    if (entity == animationId)
      kovScriptInput::fail(tr("An animation is no subject of its own tracks."));
    track = kovTrackFactory::entity(entity, kovAddTrackMenu::text(kind));
    break;
  }
  case kovAddTrackMenu::SpawnedObjectTrack: {
    const QString typed = in.text(tr("Library block:"));
    const QStringList blocks = kovTrackFactory::libraryBlocks(db);
    const auto found = std::find_if(blocks.cbegin(), blocks.cend(), [&typed](const QString& block) {
      return block.compare(typed, Qt::CaseInsensitive) == 0;
    });
    if (found == blocks.cend())
      kovScriptInput::fail(blocks.isEmpty() ? tr("The drawing has no library blocks (\"xblock\" in their names).")
                                            : tr("No library block is \"%1\"; there are: %2.")
                                                  .arg(typed, blocks.join(QStringLiteral(", "))));
    track = kovTrackFactory::spawnedObject(db, *found);
    break;
  }
  case kovAddTrackMenu::DbObjectTrack: {
    const OdDbObjectId reference = selectOne(in, tr("Select the placed library block:"));
    OdDbObjectPtr object = reference.openObject(OdDb::kForRead);
    if (OdDbBlockReference::cast(object.get()).isNull())
      kovScriptInput::fail(tr("An object track moves a placed block; the selection is none."));
    track = kovTrackFactory::placedObject(reference, kovAddTrackMenu::text(kind));
    break;
  }
  }
  if (!in.lineEnded()) {
    const QString name = in.text(tr("Track name <%1>:").arg(track->trackName()), track->trackName());
    if (!name.isEmpty())
      track->setName(name);
  }
  kovDbAnimationPtr animation = in.animation(OdDb::kForWrite);
  kovTrackFactory::add(animation.get(), track);
  say(in, tr("Added track %1 \"%2\" (%3).")
              .arg(animation->constTracks().size())
              .arg(track->trackName(), track->trackTypeIdentifier()));
}

void kovTrackCommands::addSubTrack(OdEdCommandContext* pCmdCtx)
{
  using Item = kovAnimationItem;
  kovScriptInput in(pCmdCtx);
  kovDbAnimationPtr animation = in.animation(OdDb::kForWrite);
  kovAnimationTrack& track = *animation->editTracks().at(static_cast<size_t>(in.track(*animation)));
  const Item::AnimationType types[] = { Item::LocationByPoints, Item::LocationBySpline,  Item::Scale,
                                        Item::RotationByAngles, Item::RotationToTarget,  Item::RotationToEntity,
                                        Item::LocationBySplineAndRotation, Item::CustomParameter };
  const Item::AnimationType type = types[in.io()->getKeyword(
      OdString(L"Sub-track type [LocationByPoints/LocationBySpline/Scale/RotationByAngles/RotationToTarget/"
               L"RotationToEntity/LocationBySplineAndRotation/Parameter]:"),
      OdString(L"LocationByPoints LocationBySpline Scale RotationByAngles RotationToTarget RotationToEntity "
               L"LocationBySplineAndRotation Parameter"))];
  const QString kind = track.trackTypeIdentifier();
  if (!kovSubTrackDialog::allowedTypes(kind).contains(type))
    kovScriptInput::fail(tr("A track of kind %1 takes no %2 sub-track.").arg(kind, Item::animationType2String(type)));

  Item item;
  if (type == Item::CustomParameter) {
    const QString name = in.text(tr("Parameter name:"));
    if (Item::listSpecialParameters(kind).contains(name)) {
      Item::setSpecialCustomParamType(item, name);
    } else {
      item.setAnimationType(Item::CustomParameter, OdGePoint3d::kOrigin);
      item.setCustomParameterName(name);
      if (!in.lineEnded())
        item.setParamsType(static_cast<Item::ParameterType>(
            in.io()->getKeyword(OdString(L"Parameter type [Point/Number/OnOff/Text] <Number>:"),
                                OdString(L"Point Number OnOff Text"), Item::Number)));
    }
  } else {
    item.setAnimationType(type, OdGePoint3d::kOrigin);
  }
  // The script gives every keyframe itself.
  item.clearValues();
  track.addElement();
  track.elementAt(track.numElements() - 1) = item;
  say(in, tr("Added sub-track %1 (%2) to the track \"%3\".")
              .arg(track.numElements())
              .arg(itemName(item), track.trackName()));
}

void kovTrackCommands::addKeyframe(OdEdCommandContext* pCmdCtx)
{
  kovScriptInput in(pCmdCtx);
  kovDbAnimationPtr animation = in.animation(OdDb::kForWrite);
  kovAnimationTrack& track = *animation->editTracks().at(static_cast<size_t>(in.track(*animation)));
  kovAnimationItem& item = track.elementAt(in.subTrack(track));
  const int ms = in.milliseconds(tr("Time in milliseconds:"));
  if (ms < track.startMillisecond())
    kovScriptInput::fail(tr("The track \"%1\" starts at %2 ms: a keyframe can't come before.")
                             .arg(track.trackName())
                             .arg(track.startMillisecond()));
  QVariant value;
  QString error;
  if (!kovKeyframeText::parse(item, in.text(tr("Value:")), value, error))
    kovScriptInput::fail(error);
  if (!item.setValue(ms - track.startMillisecond(), value))
    kovScriptInput::fail(tr("The drawing can't keep that value."));
  say(in, tr("Keyframe of %1 at %2 ms:%3").arg(itemName(item)).arg(ms).arg(kovKeyframeToolTip::text(item, value)));
}

void kovTrackCommands::retime(OdEdCommandContext* pCmdCtx)
{
  kovScriptInput in(pCmdCtx);
  kovDbAnimationPtr animation = in.animation(OdDb::kForWrite);
  kovAnimationTrack& track = *animation->editTracks().at(static_cast<size_t>(in.track(*animation)));
  const double speed = in.io()->getReal(OdString(L"Speed in drawing units per second:"),
                                        OdEd::kInpThrowEmpty | OdEd::kInpNonZero | OdEd::kInpNonNeg);
  const int oldEnd = pathsEnd(track);
  if (oldEnd < 0)
    kovScriptInput::fail(tr("The track \"%1\" has no path to re-time.").arg(track.trackName()));
  for (int i = 0; i < track.numElements(); ++i) {
    kovAnimationItem& item = track.elementAt(i);
    if (kovKeyframeValues::isPath(item))
      item.recalcKFTimesByDistance(animation.get(), &track, speed);
  }
  // The other keyframes keep their share of the paths' time: a camera's
  // turns at the ends of its path stay there.
  const int newEnd = pathsEnd(track);
  if (oldEnd > 0 && newEnd != oldEnd) {
    for (int i = 0; i < track.numElements(); ++i) {
      kovAnimationItem& item = track.elementAt(i);
      if (!kovKeyframeValues::isPath(item))
        item.setValues(scaledTimes(item.values(), static_cast<double>(newEnd) / oldEnd));
    }
  }
  say(in, tr("The paths of \"%1\" now take %2 s.").arg(track.trackName()).arg(newEnd / 1000.0));
}
