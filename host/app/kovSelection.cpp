#include "host/app/kovSelection.h"

void kovSelection::select(const OdDbObjectId& id)
{
  if (id.isNull()) {
    clear();
    return;
  }
  if (m_ids.size() == 1 && m_ids.first() == id)
    return;
  m_ids.clear();
  m_ids.append(id);
  emit changed();
}

void kovSelection::clear()
{
  if (m_ids.isEmpty())
    return;
  m_ids.clear();
  emit changed();
}

void kovSelection::validate(const OdDbDatabase* database)
{
  OdDbObjectIdArray kept;
  for (const OdDbObjectId& id : m_ids) {
    if (id.isValid() && id.database() == database)
      kept.append(id);
  }
  if (kept.size() == m_ids.size())
    return;
  m_ids = kept;
  emit changed();
}
