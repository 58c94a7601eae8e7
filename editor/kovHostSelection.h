#ifndef KOV_HOST_SELECTION_H
#define KOV_HOST_SELECTION_H

#include "Db/OdDbObjectId.h"

class OdDbDatabase;

// The editor's way to the host's selection ("kov.ISelectionSet").
class kovHostSelection {
public:
  // The first object selected in db; null when nothing is, or the host
  // offers no selection.
  static OdDbObjectId first(OdDbDatabase* db);
};

#endif
