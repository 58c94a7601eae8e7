#include "editor/kovAnimationEditActions.h"

#include "animation/kovKeyframeValues.h"
#include "db/kovDbAnimation.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationNameDialog.h"
#include "editor/kovAnimationTreeView.h"
#include "editor/kovKeyframeValueDialog.h"
#include "editor/kovSubTrackClipboard.h"
#include "editor/kovSubTrackDialog.h"

#include <QInputDialog>
#include <QMessageBox>

#include <iterator>
#include <memory>

namespace {

using Target = kovAnimationTrackMenu::Target;

const double kInitialSpeed = 2.0;
const double kMinSpeed = 0.1;
const double kMaxSpeed = 100.0;
const int kSpeedDecimals = 2;

kovAnimationTrack* trackOf(const kovDbAnimation& animation, int track)
{
  const std::vector<kovAnimationTrackPtr>& tracks = animation.constTracks();
  return track >= 0 && track < static_cast<int>(tracks.size()) ? tracks[static_cast<size_t>(track)].get() : nullptr;
}

kovAnimationItem* itemOf(const kovDbAnimation& animation, const Target& target)
{
  kovAnimationTrack* track = trackOf(animation, target.track);
  return track && target.element >= 0 && target.element < track->numElements() ? &track->elementAt(target.element)
                                                                                : nullptr;
}

// One edit of the target's sub-track: the animation opened for write around
// the change, the editor told before and after.
template <class Change>
void editItem(kovAnimationEditorWidget* editor, const Target& target, Change change)
{
  if (!editor->beginEdit())
    return;
  {
    kovDbAnimationPtr animation = editor->openAnimation(OdDb::kForWrite);
    kovAnimationItem* item = animation.isNull() ? nullptr : itemOf(*animation, target);
    if (!item)
      return;
    change(*animation, *trackOf(*animation, target.track), *item);
  }
  editor->editDone();
}

bool confirmed(QWidget* parent, const QString& title, const QString& text)
{
  return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

} // namespace

kovAnimationEditActions::kovAnimationEditActions(kovAnimationEditorWidget* editor)
  : QObject(editor)
  , m_editor(editor)
{
  setObjectName(QStringLiteral("EditActions"));
  kovAnimationTreeView* tree = editor->treeView();
  const auto menu = [this](const QModelIndex& index, const QPoint& globalPos) { showMenu(targetOf(index), globalPos); };
  connect(tree, &kovAnimationTreeView::contextMenuRequested, this, menu);
  connect(tree, &kovAnimationTreeView::trackMenuRequested, this, menu);
  connect(tree, &kovAnimationTreeView::editRequested, this,
          [this](const QModelIndex& index) { run(kovAnimationTrackMenu::EditSubTrack, targetOf(index)); });
}

kovAnimationTrackMenu::Target kovAnimationEditActions::targetOf(const QModelIndex& index) const
{
  Target target;
  target.track = kovAnimationModel::trackIndexOf(index);
  target.element = kovAnimationModel::elementIndexOf(index);
  target.key = m_editor->treeView()->hoveredKey(target.track, target.element);
  return target;
}

void kovAnimationEditActions::showMenu(const Target& target, const QPoint& globalPos)
{
  kovAnimationTrackMenu::Enabled enabled;
  {
    const kovDbAnimationPtr animation = m_editor->openAnimation();
    enabled = kovAnimationTrackMenu::enabled(animation.get(), target, m_editor->currentPosition());
  }
  run(kovAnimationTrackMenu::exec(enabled, globalPos, m_editor->treeView()), target);
}

void kovAnimationEditActions::run(kovAnimationTrackMenu::Entry entry, const Target& target)
{
  {
    const kovDbAnimationPtr animation = m_editor->openAnimation();
    const kovAnimationTrackMenu::Enabled enabled =
        kovAnimationTrackMenu::enabled(animation.get(), target, m_editor->currentPosition());
    if (entry < 0 || entry >= kovAnimationTrackMenu::EntryCount || !enabled[static_cast<size_t>(entry)])
      return;
  }
  switch (entry) {
  case kovAnimationTrackMenu::RenameTrack:
  case kovAnimationTrackMenu::EditTrack:
    editTrackText(target.track);
    break;
  case kovAnimationTrackMenu::RemoveTrack:
  case kovAnimationTrackMenu::RemoveSubTrack:
    removeRow(target.track, target.element);
    break;
  case kovAnimationTrackMenu::AddSubTrack:
    addSubTrack(target.track);
    break;
  case kovAnimationTrackMenu::CopySubTrackValues:
    copyValues(target);
    break;
  case kovAnimationTrackMenu::PasteSubTrackValues:
    pasteValues(target);
    break;
  case kovAnimationTrackMenu::EditSubTrack:
    editSubTrack(target);
    break;
  case kovAnimationTrackMenu::RecomputeTimes:
    recomputeTimes(target);
    break;
  case kovAnimationTrackMenu::AddKeyframe:
    addKeyframe(target);
    break;
  case kovAnimationTrackMenu::AppendKeyframe:
    appendKeyframe(target);
    break;
  case kovAnimationTrackMenu::RemoveKeyframe:
    removeKeyframe(target);
    break;
  case kovAnimationTrackMenu::EditKeyframe:
    editKeyframe(target);
    break;
  case kovAnimationTrackMenu::DuplicateKeyframe:
    duplicateKeyframe(target);
    break;
  case kovAnimationTrackMenu::EntryCount:
    break;
  }
}

// "Edit Track" on a sub-track's row edits the track it belongs to, as
// "Rename Track" does on the track's own row.
void kovAnimationEditActions::editTrackText(int trackIndex)
{
  QString name;
  QString description;
  {
    const kovDbAnimationPtr animation = m_editor->openAnimation();
    const kovAnimationTrack* track = animation.isNull() ? nullptr : trackOf(*animation, trackIndex);
    if (!track)
      return;
    name = track->trackName();
    description = track->trackDescription();
  }
  kovAnimationNameDialog dialog(name, description, m_editor);
  if (dialog.exec() != QDialog::Accepted || !m_editor->beginEdit())
    return;
  {
    kovDbAnimationPtr animation = m_editor->openAnimation(OdDb::kForWrite);
    kovAnimationTrack* track = animation.isNull() ? nullptr : trackOf(*animation, trackIndex);
    if (!track)
      return;
    track->setName(dialog.name());
    track->setDescription(dialog.description());
  }
  m_editor->editDone();
}

void kovAnimationEditActions::removeRow(int track, int element)
{
  const bool subTrack = element >= 0;
  const QString title = subTrack ? tr("Confirm Remove SubTrack") : tr("Confirm Remove Track");
  const QString text = subTrack ? tr("Do you really want to remove this animation sub-track?")
                                : tr("Do you really want to remove this animation track?");
  if (!confirmed(m_editor, title, text) || !m_editor->beginEdit())
    return;
  kovAnimationModel* model = m_editor->model();
  if (subTrack)
    model->removeRows(element, 1, model->trackIndex(track));
  else
    model->removeRows(track, 1);
  m_editor->editDone();
}

// A track without a place in the scene takes custom parameters only, so its
// new sub-track starts as one.
void kovAnimationEditActions::addSubTrack(int trackIndex)
{
  int row = 0;
  {
    const kovDbAnimationPtr animation = m_editor->openAnimation();
    const kovAnimationTrack* track = animation.isNull() ? nullptr : trackOf(*animation, trackIndex);
    if (!track || !m_editor->beginEdit())
      return;
    row = track->numElements();
  }
  kovAnimationModel* model = m_editor->model();
  if (!model->insertRows(row, 1, model->trackIndex(trackIndex)))
    return;
  {
    kovDbAnimationPtr animation = m_editor->openAnimation(OdDb::kForWrite);
    kovAnimationTrack* track = trackOf(*animation, trackIndex);
    if (!kovAnimationItem::trackTypeAllowTransforms(track->trackTypeIdentifier()))
      track->elementAt(row).setAnimationType(kovAnimationItem::CustomParameter, OdGePoint3d::kOrigin);
  }
  m_editor->editDone();
}

void kovAnimationEditActions::copyValues(const Target& target)
{
  const kovDbAnimationPtr animation = m_editor->openAnimation();
  if (const kovAnimationItem* item = animation.isNull() ? nullptr : itemOf(*animation, target))
    kovSubTrackClipboard::instance().copy(*item);
}

void kovAnimationEditActions::pasteValues(const Target& target)
{
  const kovSubTrackClipboard& clipboard = kovSubTrackClipboard::instance();
  {
    const kovDbAnimationPtr animation = m_editor->openAnimation();
    const kovAnimationItem* item = animation.isNull() ? nullptr : itemOf(*animation, target);
    if (!item)
      return;
    if (!clipboard.fits(*item)) {
      QMessageBox::warning(m_editor, tr("Invalid Operation"),
                           tr("Sub-Track Animation Type not matching the values in clipboard."));
      return;
    }
  }
  editItem(m_editor, target,
           [&clipboard](kovDbAnimation&, kovAnimationTrack&, kovAnimationItem& item) { item.setValues(clipboard.values()); });
}

void kovAnimationEditActions::editSubTrack(const Target& target)
{
  std::unique_ptr<kovSubTrackDialog> dialog;
  {
    const kovDbAnimationPtr animation = m_editor->openAnimation();
    const kovAnimationItem* item = animation.isNull() ? nullptr : itemOf(*animation, target);
    if (!item)
      return;
    dialog = std::make_unique<kovSubTrackDialog>(*item, trackOf(*animation, target.track)->trackTypeIdentifier(),
                                                 m_editor);
  }
  if (dialog->exec() != QDialog::Accepted)
    return;
  editItem(m_editor, target,
           [&dialog](kovDbAnimation&, kovAnimationTrack&, kovAnimationItem& item) { dialog->applyTo(item); });
}

void kovAnimationEditActions::recomputeTimes(const Target& target)
{
  QInputDialog input(m_editor);
  input.setObjectName(QStringLiteral("SpeedInput"));
  input.setInputMode(QInputDialog::DoubleInput);
  input.setWindowTitle(tr("Insert a Speed Value"));
  input.setLabelText(tr("Speed Value (units per sec)"));
  input.setDoubleDecimals(kSpeedDecimals);
  input.setDoubleRange(kMinSpeed, kMaxSpeed);
  input.setDoubleValue(kInitialSpeed);
  if (input.exec() != QDialog::Accepted)
    return;
  const double speed = input.doubleValue();
  editItem(m_editor, target, [speed](kovDbAnimation& animation, kovAnimationTrack& track, kovAnimationItem& item) {
    item.recalcKFTimesByDistance(&animation, &track, speed);
  });
}

void kovAnimationEditActions::addKeyframe(const Target& target)
{
  const int position = m_editor->currentPosition();
  editItem(m_editor, target, [position](kovDbAnimation&, kovAnimationTrack& track, kovAnimationItem& item) {
    const int time = position - track.startMillisecond();
    item.setValue(time, kovKeyframeValues::valueAt(item, time));
  });
}

// The new keyframe repeats the last one a step later, so that the subject
// holds still until the user moves it; the first keyframe of an empty
// sub-track goes at the track's start.
void kovAnimationEditActions::appendKeyframe(const Target& target)
{
  editItem(m_editor, target, [](kovDbAnimation&, kovAnimationTrack&, kovAnimationItem& item) {
    const QMap<int, QVariant>& keys = item.values();
    if (keys.isEmpty())
      item.setValue(0, kovKeyframeValues::defaultValue(item));
    else
      item.setValue(keys.lastKey() + kAppendStepMs, QVariant(keys.last()));
  });
}

void kovAnimationEditActions::removeKeyframe(const Target& target)
{
  if (!confirmed(m_editor, tr("Confirm Remove Keyframe"), tr("Do you really want to remove this animation Keyframe?")))
    return;
  editItem(m_editor, target,
           [&target](kovDbAnimation&, kovAnimationTrack&, kovAnimationItem& item) { item.removeValue(*target.key); });
}

void kovAnimationEditActions::editKeyframe(const Target& target)
{
  std::unique_ptr<kovKeyframeValueDialog> dialog;
  {
    const kovDbAnimationPtr animation = m_editor->openAnimation();
    const kovAnimationItem* item = animation.isNull() ? nullptr : itemOf(*animation, target);
    if (!item)
      return;
    dialog = std::make_unique<kovKeyframeValueDialog>(*item, *target.key, m_editor->animationId().database(),
                                                      m_editor);
  }
  if (dialog->exec() != QDialog::Accepted)
    return;
  editItem(m_editor, target, [&dialog, &target](kovDbAnimation&, kovAnimationTrack&, kovAnimationItem& item) {
    if (dialog->time() != *target.key)
      item.removeValue(*target.key);
    item.setValue(dialog->time(), dialog->value());
  });
}

// The copy goes halfway to the next keyframe, so that it stays between the
// two, or a step after the last one; with no millisecond between the two it
// has no place and nothing is made.
void kovAnimationEditActions::duplicateKeyframe(const Target& target)
{
  editItem(m_editor, target, [&target](kovDbAnimation&, kovAnimationTrack&, kovAnimationItem& item) {
    const QMap<int, QVariant>& keys = item.values();
    const auto at = keys.constFind(*target.key);
    const auto next = std::next(at);
    const int time = next == keys.cend() ? at.key() + kAppendStepMs : at.key() + (next.key() - at.key()) / 2;
    if (time != at.key())
      item.setValue(time, QVariant(at.value()));
  });
}
