#include "host/app/kovHostSelectionSet.h"

#include "host/app/kovSelection.h"

void kovHostSelectionSet::setSelection(kovSelection* selection)
{
  m_selection = selection;
}

OdDbObjectIdArray kovHostSelectionSet::selectedIds(OdDbDatabase* db) const
{
  OdDbObjectIdArray ids;
  if (!m_selection)
    return ids;
  for (const OdDbObjectId& id : m_selection->ids())
    if (id.database() == db && !id.isErased())
      ids.append(id);
  return ids;
}
