#ifndef ANIMATION_GRIP_APP_DATA_H
#define ANIMATION_GRIP_APP_DATA_H

#include "Rx/OdRxClass.h"

// What a grip of the animation entity stands for: one keyframe of one
// sub-track of one track.
class AnimationGripAppData : public OdRxObject {
public:
  ODRX_DECLARE_MEMBERS(AnimationGripAppData);

  int trackIndex = -1;
  int elementIndex = -1;
  int keyframeMs = 0;
};

typedef OdSmartPtr<AnimationGripAppData> AnimationGripAppDataPtr;

#endif
