#include "host/app/kovHostPropSystem.h"

#include "host/app/kovHostApplication.h"

kovHostPropSystem::kovHostPropSystem()
{
  if (kovHostApplication* app = kovHostApplication::instance())
    connect(app, &kovHostApplication::databaseChanged, this, [this] { showProperties(OdDbObjectId()); });
}

void kovHostPropSystem::showProperties(const OdDbObjectId& id)
{
  m_shown = id;
  emit shown(id);
}

void kovHostPropSystem::refreshProperties()
{
  emit shown(m_shown);
}
