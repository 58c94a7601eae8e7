#ifndef IKOV_SELECTION_SET_H
#define IKOV_SELECTION_SET_H

#include "Db/OdDbObjectId.h"
#include "Rx/OdRxObject.h"

class OdDbDatabase;

// The objects the user selected in the host's views ("kov.ISelectionSet"):
// what the editor binds a new entity track to and what "Copy Selected" takes.
class IkovSelectionSet : public OdRxObject {
public:
  static const OdChar* serviceId() { return L"kov.ISelectionSet"; }

  // The selected objects of db, first picked first; empty when none.
  virtual OdDbObjectIdArray selectedIds(OdDbDatabase* db) const = 0;
};

#endif
