#ifndef KOV_KEYFRAME_VALUES_H
#define KOV_KEYFRAME_VALUES_H

#include "animation/kovAnimationItem.h"

#include <QVariant>

// What a sub-track's keyframes hold, for the edits that make new keyframes
// and change a sub-track's type.
class kovKeyframeValues {
public:
  // The kinds of stored value: types of one kind read each other's keyframes.
  enum Kind { PointKind, AnglesKind, TargetKind, EntityKind, NumberKind, OnOffKind, TextKind };
  // A rotation by angles keeps its angles about X, Y and Z in these elements:
  // looking along +Y with Z up, they are pitch, roll and yaw.
  static constexpr int kPitchElement = 3;
  static constexpr int kRollElement = 4;
  static constexpr int kYawElement = 5;

  static Kind kindOf(kovAnimationItem::AnimationType type, kovAnimationItem::ParameterType paramsType);
  static Kind kindOf(const kovAnimationItem& item) { return kindOf(item.animationType(), item.paramsType()); }

  // A neutral value of the item's kind, for a sub-track without keyframes.
  static QVariant defaultValue(const kovAnimationItem& item);
  // The value the item shows at ms (relative to its track): numbers blend
  // linearly between the keyframes around it, anything else holds the earlier
  // keyframe's value; before the first and after the last keyframe it is
  // theirs.
  static QVariant valueAt(const kovAnimationItem& item, int ms);
  // Whether the item is a path whose keyframes lie on a closed loop: more
  // than 2 keyframes, the first and last at one place.
  static bool isClosedPath(const kovAnimationItem& item);
  // Whether keyframe times of the item follow from its path's length.
  static bool isPath(const kovAnimationItem& item);
};

#endif
