#include "module/kovAnimatedScene.h"

#include "module/kovAnimationModule.h"

#include "db/kovDbAnimation.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbObjectIterator.h"

namespace {

kovDbAnimationPtr animationOf(OdDbDatabase* db)
{
  OdDbObjectPtr editing = kovAnimationModule::globalEditingAnimationId().openObject(OdDb::kForRead);
  kovDbAnimationPtr animation = kovDbAnimation::cast(editing.get());
  if (!animation.isNull() && animation->database() == db)
    return animation;
  OdDbObjectPtr space = db->getModelSpaceId().openObject(OdDb::kForRead);
  OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::cast(space.get());
  for (OdDbObjectIteratorPtr it = modelSpace.isNull() ? OdDbObjectIteratorPtr() : modelSpace->newIterator();
       !it.isNull() && !it->done(); it->step()) {
    OdDbObjectPtr object = it->objectId().openObject(OdDb::kForRead);
    animation = kovDbAnimation::cast(object.get());
    if (!animation.isNull())
      return animation;
  }
  return kovDbAnimationPtr();
}

} // namespace

IkovAnimatedScene::Frame kovAnimatedScene::frame(OdDbDatabase* db) const
{
  if (!db)
    return Frame();
  const kovDbAnimationPtr animation = animationOf(db);
  return animation.isNull() ? Frame() : animation->sceneFrame();
}
