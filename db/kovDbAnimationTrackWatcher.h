#ifndef KOV_DB_ANIMATION_TRACK_WATCHER_H
#define KOV_DB_ANIMATION_TRACK_WATCHER_H

#include <QObject>

class kovAnimationTrack;
class kovDbAnimation;

// Receives the change signals of an animation's tracks for the entity, which
// is not a QObject, so that each track is connected once (a unique connection
// needs a receiver with a slot).
class kovDbAnimationTrackWatcher : public QObject {
  Q_OBJECT
public:
  explicit kovDbAnimationTrackWatcher(kovDbAnimation* animation);

public slots:
  void onTrackItemChanged(kovAnimationTrack* track, int index);

private:
  kovDbAnimation* m_animation;
};

#endif
