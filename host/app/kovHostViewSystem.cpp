#include "host/app/kovHostViewSystem.h"

int kovHostViewSystem::activeViewport(OdDbDatabase* db) const
{
  return db ? 0 : -1;
}

kovViewCamera kovHostViewSystem::viewCamera(int viewport) const
{
  Q_UNUSED(viewport);
  return m_camera;
}

void kovHostViewSystem::setViewCamera(int viewport, const kovViewCamera& camera)
{
  if (viewport != 0)
    return;
  m_camera = camera;
  emit changed();
}

QString kovHostViewSystem::activeRenderEngine(OdDbDatabase* db) const
{
  Q_UNUSED(db);
  return engineLabel();
}

void kovHostViewSystem::refresh(const OdDbObjectId& id)
{
  emit refreshed(id);
  emit changed();
}
