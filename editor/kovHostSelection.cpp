#include "editor/kovHostSelection.h"

#include "host/api/IkovSelectionSet.h"
#include "host/api/kovHostService.h"

OdDbObjectId kovHostSelection::first(OdDbDatabase* db)
{
  const IkovSelectionSet* selection = db ? kovHostService<IkovSelectionSet>() : nullptr;
  if (!selection)
    return OdDbObjectId();
  for (const OdDbObjectId& id : selection->selectedIds(db)) {
    if (!id.isNull() && !id.isErased() && id.database() == db)
      return id;
  }
  return OdDbObjectId();
}
