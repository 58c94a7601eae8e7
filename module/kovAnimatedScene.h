#ifndef KOV_ANIMATED_SCENE_H
#define KOV_ANIMATED_SCENE_H

#include "host/api/IkovAnimatedScene.h"

// The module's answer to the host's engine: the frame of the animation being
// edited when it belongs to the drawing asked about, else of the drawing's
// first animation, so that a drawing opened without the editor (a headless
// production) shows its animation too.
class kovAnimatedScene : public IkovAnimatedScene {
public:
  Frame frame(OdDbDatabase* db) const override;
};

#endif
