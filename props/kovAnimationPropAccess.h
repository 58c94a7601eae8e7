#ifndef KOV_ANIMATION_PROP_ACCESS_H
#define KOV_ANIMATION_PROP_ACCESS_H

#include "Prop/OdPropBase.h"

#include <QString>

class kovDbAnimation;

// Reads and writes one property of the palette's definition of an animation
// (kovAnimationPropDefinition) by its path (kovAnimationPropPath): exactly
// the properties the definition shows for the animation as it is now.
//
// A write checks the path and the value against the animation open for read
// and changes nothing when either is refused; only then does it upgrade the
// open to write and make the change. A value equal to the shown one changes
// nothing either (no write, no undo step).
//
// What the writes do where the data model leaves a choice:
// - AnimationType and ParameterType change the sub-track's kind, then every
//   keyframe keeps what fits the new kind (kovKeyframeFields::conformed).
// - CustomParameter naming a built-in parameter of the track's kind makes
//   the sub-track that parameter; another name makes a built-in parameter a
//   plain one.
// - DeltaTime is the time from the keyframe before (from the track's start
//   for the first), in seconds, whole milliseconds kept; a new delta moves
//   that keyframe and every later one by the same amount, so that the other
//   rows keep their deltas.
// - AddRow appends a keyframe a second after the last one holding the same
//   value, or the kind's neutral value at 0 ms when there is none.
// - SelectEntity takes the handle of the entity to turn toward.
// - AddElement appends a sub-track (a custom parameter where the track's
//   subject cannot move); RemoveElement and RemoveValue remove theirs.
class kovAnimationPropAccess {
public:
  struct Outcome {
    OdResult code = eOk;
    // Why it was refused, in a sentence for the user.
    QString message;
    OdPropBase::Action action = OdPropBase::kNone;
  };

  static Outcome read(const kovDbAnimation& animation, const QString& path, QString& value);
  // animation is open for read.
  static Outcome write(kovDbAnimation& animation, const QString& path, const QString& value);

  // The time a row added after the last keyframe comes.
  static constexpr int kAddRowStepMs = 1000;
};

#endif
