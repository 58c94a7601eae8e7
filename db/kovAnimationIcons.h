#ifndef KOV_ANIMATION_ICONS_H
#define KOV_ANIMATION_ICONS_H

#include "Gi/OdGiRasterImage.h"

// The two icons the animation entity draws in the viewport at its subjects:
// a camera, and a marker for any other subject. Drawn once at module start
// (pixels only, so that the entity needs no painting toolkit).
class kovAnimationIcons {
public:
  static constexpr int kSize = 32;

  static void create();
  static void destroy();
  // Null before create() and after destroy().
  static const OdGiRasterImage* camera();
  static const OdGiRasterImage* subject();
};

#endif
