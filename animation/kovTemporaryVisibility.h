#ifndef KOV_TEMPORARY_VISIBILITY_H
#define KOV_TEMPORARY_VISIBILITY_H

#include "Db/OdDbObjectId.h"

// Entities that an animation hides for a while (their animated stand-in shows
// instead). Hiding remembers the entity; restoring shows only what was hidden
// this way, so that entities the user made invisible stay invisible.
class kovTemporaryVisibility {
public:
  // 1 while the entity is hidden by an animation, else 0.
  static int state(const OdDbObjectId& entityId);
  static void hide(const OdDbObjectId& entityId);
  // Shows the entity again if an animation hid it; true when it did.
  static bool restore(const OdDbObjectId& entityId);
};

#endif
