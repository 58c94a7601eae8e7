#include "host/app/kovHostEntityLibrary.h"

#include "host/api/IkovApplication.h"

#include "scene/kovDbBlockAnimation.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbObjectIterator.h"
#include "Db/OdDbSymbolTableIterator.h"
#include "Db/OdDbDatabase.h"

namespace {

OdDbDatabase* drawing(OdDbDatabase* db)
{
  if (db)
    return db;
  IkovApplication* app = kovApp();
  return app ? app->currentDatabase() : nullptr;
}

// The block animations inside a block definition, in drawing order.
std::vector<kovDbBlockAnimationPtr> animationsOf(const OdDbObjectId& blockId)
{
  std::vector<kovDbBlockAnimationPtr> animations;
  OdDbObjectPtr object = blockId.openObject(OdDb::kForRead);
  OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::cast(object.get());
  if (block.isNull())
    return animations;
  for (OdDbObjectIteratorPtr it = block->newIterator(); !it->done(); it->step()) {
    kovDbBlockAnimationPtr animation = kovDbBlockAnimation::cast(it->objectId().openObject(OdDb::kForRead).get());
    if (!animation.isNull())
      animations.push_back(animation);
  }
  return animations;
}

} // namespace

QStringList kovHostEntityLibrary::libraryBlockNames(OdDbDatabase* db) const
{
  QStringList names;
  OdDbDatabase* target = drawing(db);
  OdDbBlockTablePtr blocks = target ? OdDbBlockTable::cast(target->getBlockTableId().openObject().get()) : OdDbBlockTablePtr();
  if (blocks.isNull())
    return names;
  for (OdDbSymbolTableIteratorPtr it = blocks->newIterator(); !it->done(); it->step()) {
    OdDbSymbolTableRecordPtr record = it->getRecordId().safeOpenObject();
    const QString name = odToQString(record->getName());
    if (name.contains(QLatin1String("xblock"), Qt::CaseInsensitive))
      names.append(name);
  }
  names.sort(Qt::CaseInsensitive);
  return names;
}

QStringList kovHostEntityLibrary::animationNames(OdDbDatabase* db, const QString& uniqueName) const
{
  QStringList names;
  for (const kovDbBlockAnimationPtr& animation : animationsOf(blockDefinition(db, uniqueName)))
    names.append(odToQString(animation->name()));
  return names;
}

QMap<QString, OdGeMatrix3d> kovHostEntityLibrary::nestedTransforms(OdDbDatabase* db, const QString& uniqueName,
                                                                   const QString& animationName, int ms) const
{
  QMap<QString, OdGeMatrix3d> transforms;
  for (const kovDbBlockAnimationPtr& animation : animationsOf(blockDefinition(db, uniqueName))) {
    if (odToQString(animation->name()) != animationName)
      continue;
    for (const kovDbBlockAnimation::Channel& channel : animation->channels()) {
      OdGeMatrix3d transform;
      animation->transformAt(channel.node, ms, transform);
      transforms.insert(odToQString(channel.node), transform);
    }
    break;
  }
  return transforms;
}

OdDbObjectId kovHostEntityLibrary::blockDefinition(OdDbDatabase* db, const QString& uniqueName) const
{
  OdDbDatabase* target = drawing(db);
  if (!target || uniqueName.isEmpty())
    return OdDbObjectId();
  OdDbObjectPtr table = target->getBlockTableId().openObject(OdDb::kForRead);
  OdDbBlockTablePtr blocks = OdDbBlockTable::cast(table.get());
  return blocks.isNull() ? OdDbObjectId() : blocks->getAt(odFromQString(uniqueName));
}

OdDbObjectId kovHostEntityLibrary::entityByName(OdDbDatabase* db, const QString& name) const
{
  OdDbDatabase* target = drawing(db);
  const OdDbHandle handle(odFromQString(name));
  if (!target || handle.isNull())
    return OdDbObjectId();
  return target->getOdDbObjectId(handle, false);
}
