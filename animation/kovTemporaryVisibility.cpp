#include "animation/kovTemporaryVisibility.h"

#include "Db/OdDbEntity.h"

#include <set>

namespace {

std::set<OdDbObjectId>& hidden()
{
  static std::set<OdDbObjectId> ids;
  return ids;
}

} // namespace

int kovTemporaryVisibility::state(const OdDbObjectId& entityId)
{
  return hidden().count(entityId) ? 1 : 0;
}

void kovTemporaryVisibility::hide(const OdDbObjectId& entityId)
{
  OdDbObjectPtr object = entityId.openObject(OdDb::kForWrite);
  OdDbEntityPtr entity = OdDbEntity::cast(object.get());
  if (entity.isNull() || entity->visibility() == OdDb::kInvisible)
    return;
  entity->setVisibility(OdDb::kInvisible);
  hidden().insert(entityId);
}

bool kovTemporaryVisibility::restore(const OdDbObjectId& entityId)
{
  if (!hidden().erase(entityId))
    return false;
  OdDbObjectPtr object = entityId.openObject(OdDb::kForRead);
  OdDbEntityPtr entity = OdDbEntity::cast(object.get());
  if (entity.isNull())
    return false;
  entity->upgradeOpen();
  entity->setVisibility(OdDb::kVisible);
  return true;
}
