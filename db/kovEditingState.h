#ifndef KOV_EDITING_STATE_H
#define KOV_EDITING_STATE_H

#include "Db/OdDbObjectId.h"

// What every part of the module reads of the editing session: the animation
// being edited and whether one is playing or being produced. The module object
// publishes these as its own; they live here, below the editor and
// production, which read and set them too.
class kovEditingState {
public:
  static OdDbObjectId& editingAnimationId();
  // Makes the animation the one being edited, and forgets it when its drawing
  // goes (its id would point into a freed drawing).
  static void setEditingAnimation(const OdDbObjectId& id);
  static bool& isPlaying();
  static bool& isProducing();
};

#endif
