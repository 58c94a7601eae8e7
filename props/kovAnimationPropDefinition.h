#ifndef KOV_ANIMATION_PROP_DEFINITION_H
#define KOV_ANIMATION_PROP_DEFINITION_H

#include <QString>

class OdPropContext;
class kovAnimationItem;
class kovAnimationTrack;
class kovDbAnimation;

// The palette's definition of an animation: the category "Animation" with
// the name, the description and the button that adds a sub-track, then per
// sub-track of the selected track a category "Element<n>" with its type, its
// parameter, its options, its buttons, the spline's end tangents and one
// category "Row<m>" per keyframe (kovAnimationPropPath names them all).
//
// The button that adds a sub-track is written only while a track is shown.
class kovAnimationPropDefinition {
public:
  static void write(const kovDbAnimation& animation, OdPropContext& ctx);

  // What a sub-track shows: the option that only object tracks have.
  static bool showsDurationByDistance(const kovAnimationTrack& track);
  // A keyframe's time after the one before it (after the track's start for
  // the first), in milliseconds: what "Delta Time" shows, in seconds.
  static int deltaMs(const kovAnimationItem& item, int row);

private:
  static void writeElement(const kovAnimationItem& item, int element, bool objectTrack, OdPropContext& ctx);
  static void writeRow(const kovAnimationItem& item, int row, OdPropContext& ctx);
};

#endif
