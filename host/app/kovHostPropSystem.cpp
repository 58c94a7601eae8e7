#include "host/app/kovHostPropSystem.h"

void kovHostPropSystem::showProperties(const OdDbObjectId& id)
{
  m_shown = id;
  emit shown(id);
}

void kovHostPropSystem::refreshProperties()
{
  emit shown(m_shown);
}
