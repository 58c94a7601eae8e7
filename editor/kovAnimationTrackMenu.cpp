#include "editor/kovAnimationTrackMenu.h"

#include "animation/kovKeyframeValues.h"
#include "db/kovDbAnimation.h"
#include "editor/kovSubTrackClipboard.h"

#include <QCoreApplication>
#include <QMenu>

namespace {

const char* const kTexts[kovAnimationTrackMenu::EntryCount] = {
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Rename Track"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Edit Track"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Remove Track"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Add Sub-Track"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Copy Sub-Track Values"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Paste Sub-Track Values"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Remove Sub-Track"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Edit Sub-Track"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "ReCompute KF Times by Distance"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Add KeyFrame"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Append KeyFrame"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Remove KeyFrame"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Edit KeyFrame"),
  QT_TRANSLATE_NOOP("kovAnimationTrackMenu", "Duplicate KeyFrame"),
};

bool isObjectTrack(const kovAnimationTrack& track)
{
  const QString kind = track.trackTypeIdentifier();
  return kind == QLatin1String("Object") || kind == QLatin1String("SpawnedObject");
}

void enableSubTrackEntries(kovAnimationTrackMenu::Enabled& on, const kovAnimationTrack& track,
                           const kovAnimationItem& item, const std::optional<int>& key, int position)
{
  using Menu = kovAnimationTrackMenu;
  const bool hasKey = key && item.values().contains(*key);
  // On a library or spawned object a path that computes its duration by
  // distance owns its keyframe times (resizing the track leaves them too):
  // entries that put a keyframe at a time of the user's choice would not
  // hold, so only appending and re-timing by distance remain.
  const bool timesByDistance =
      isObjectTrack(track) && kovKeyframeValues::isPath(item) && item.durationByAnimationSpeed();
  const int time = position - track.startMillisecond();

  on[Menu::EditTrack] = true;
  on[Menu::CopySubTrackValues] = true;
  on[Menu::PasteSubTrackValues] = kovSubTrackClipboard::instance().hasValues();
  on[Menu::RemoveSubTrack] = true;
  on[Menu::EditSubTrack] = true;
  // Only a path has a length to time its keyframes by; a closed one has no
  // end to run to.
  on[Menu::RecomputeTimes] = kovKeyframeValues::isPath(item) && item.values().size() >= 2
                             && !kovKeyframeValues::isClosedPath(item);
  // A keyframe goes at the current position when that lies within the
  // track's time and holds none yet.
  on[Menu::AddKeyframe] = !timesByDistance && time >= 0 && !item.values().contains(time);
  on[Menu::AppendKeyframe] = true;
  on[Menu::RemoveKeyframe] = hasKey;
  on[Menu::EditKeyframe] = hasKey;
  on[Menu::DuplicateKeyframe] = hasKey && !timesByDistance;
}

} // namespace

QString kovAnimationTrackMenu::text(Entry entry)
{
  return entry >= 0 && entry < EntryCount ? QCoreApplication::translate("kovAnimationTrackMenu", kTexts[entry])
                                          : QString();
}

kovAnimationTrackMenu::Enabled kovAnimationTrackMenu::enabled(const kovDbAnimation* animation, const Target& target,
                                                              int position)
{
  Enabled on {};
  if (!animation || target.track < 0 || target.track >= static_cast<int>(animation->constTracks().size()))
    return on;
  const kovAnimationTrack& track = *animation->constTracks()[static_cast<size_t>(target.track)];
  if (target.element < 0) {
    on[RenameTrack] = true;
    on[RemoveTrack] = true;
    on[AddSubTrack] = true;
    return on;
  }
  if (target.element < track.numElements())
    enableSubTrackEntries(on, track, track.elementAt(target.element), target.key, position);
  return on;
}

kovAnimationTrackMenu::Entry kovAnimationTrackMenu::exec(const Enabled& enabled, const QPoint& globalPos,
                                                         QWidget* parent)
{
  QMenu menu(parent);
  menu.setObjectName(QStringLiteral("TrackMenu"));
  for (int entry = 0; entry < EntryCount; ++entry) {
    QAction* action = menu.addAction(text(static_cast<Entry>(entry)));
    action->setData(entry);
    action->setEnabled(enabled[static_cast<size_t>(entry)]);
  }
  const QAction* chosen = menu.exec(globalPos);
  return chosen ? static_cast<Entry>(chosen->data().toInt()) : EntryCount;
}
