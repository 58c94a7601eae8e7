#ifndef KOV_ANIMATION_TRACK_MENU_H
#define KOV_ANIMATION_TRACK_MENU_H

#include <QString>

#include <array>
#include <optional>

class QPoint;
class QWidget;
class kovDbAnimation;

// The track tree's context menu: every entry, always in this order, enabled
// by the row under the mouse and the keyframe on it.
class kovAnimationTrackMenu {
public:
  enum Entry {
    RenameTrack,
    EditTrack,
    RemoveTrack,
    AddSubTrack,
    CopySubTrackValues,
    PasteSubTrackValues,
    RemoveSubTrack,
    EditSubTrack,
    RecomputeTimes,
    AddKeyframe,
    AppendKeyframe,
    RemoveKeyframe,
    EditKeyframe,
    DuplicateKeyframe,
    EntryCount
  };
  using Enabled = std::array<bool, EntryCount>;

  // A row of the tree (element -1 for a track's row) and the keyframe under
  // the mouse on a sub-track's row, as a time within its track.
  struct Target {
    int track = -1;
    int element = -1;
    std::optional<int> key;
  };

  static QString text(Entry entry);
  // The entries the target offers in the animation at the current position
  // (a time of the timeline); none without an animation or for a row that
  // is not there.
  static Enabled enabled(const kovDbAnimation* animation, const Target& target, int position);
  // Shows the menu and waits for the choice; EntryCount when none was made.
  static Entry exec(const Enabled& enabled, const QPoint& globalPos, QWidget* parent);
};

#endif
