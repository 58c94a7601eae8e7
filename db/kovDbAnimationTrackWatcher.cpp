#include "db/kovDbAnimationTrackWatcher.h"

#include "db/kovDbAnimation.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcAnimationEntity, "kov.animation.entity")

kovDbAnimationTrackWatcher::kovDbAnimationTrackWatcher(kovDbAnimation* animation)
  : m_animation(animation)
{
}

void kovDbAnimationTrackWatcher::onTrackItemChanged(kovAnimationTrack* track, int index)
{
  if (!track || index < 0 || index >= track->numElements())
    return;
  // The change may come while the entity is closed: keep it open for write
  // for the recalculation. Nothing may escape a slot.
  try {
    OdDbObjectPtr open;
    if (m_animation->isDBRO())
      open = m_animation->objectId().openObject(OdDb::kForWrite);
    track->elementAt(index).recalcConstrainedValues(m_animation, track);
  } catch (const OdError& error) {
    qCWarning(lcAnimationEntity, "Keyframes of track %s not updated: %s", qPrintable(track->trackName()),
              error.description().toUtf8().c_str());
  }
}
