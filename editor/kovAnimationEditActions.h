#ifndef KOV_ANIMATION_EDIT_ACTIONS_H
#define KOV_ANIMATION_EDIT_ACTIONS_H

#include "editor/kovAnimationTrackMenu.h"

#include <QObject>

class QModelIndex;
class QPoint;
class kovAnimationEditorWidget;
class kovAnimationItem;
class kovAnimationTrack;
class kovDbAnimation;

// What the track tree's context menu does: each entry asks what it needs
// (a confirmation, a dialog, a speed), then changes the editing animation as
// one edit of the editor. An entry that the menu would not enable for its
// target, and any answer but OK or Yes, changes nothing.
class kovAnimationEditActions : public QObject {
  Q_OBJECT
public:
  // Listens to the editor's track tree: its right button and the edit spots.
  explicit kovAnimationEditActions(kovAnimationEditorWidget* editor);

  // Where "Append KeyFrame" puts a keyframe after the last one, and where a
  // duplicate of the last keyframe goes: a second later.
  static constexpr int kAppendStepMs = 1000;

  // The target's menu at globalPos, and the chosen entry run.
  void showMenu(const kovAnimationTrackMenu::Target& target, const QPoint& globalPos);
  void run(kovAnimationTrackMenu::Entry entry, const kovAnimationTrackMenu::Target& target);

private:
  kovAnimationTrackMenu::Target targetOf(const QModelIndex& index) const;

  void editTrackText(int track);
  void removeRow(int track, int element);
  void addSubTrack(int track);
  void copyValues(const kovAnimationTrackMenu::Target& target);
  void pasteValues(const kovAnimationTrackMenu::Target& target);
  void editSubTrack(const kovAnimationTrackMenu::Target& target);
  void recomputeTimes(const kovAnimationTrackMenu::Target& target);
  void addKeyframe(const kovAnimationTrackMenu::Target& target);
  void appendKeyframe(const kovAnimationTrackMenu::Target& target);
  void removeKeyframe(const kovAnimationTrackMenu::Target& target);
  void editKeyframe(const kovAnimationTrackMenu::Target& target);
  void duplicateKeyframe(const kovAnimationTrackMenu::Target& target);

  kovAnimationEditorWidget* m_editor;
};

#endif
