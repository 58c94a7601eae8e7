#include "host/app/kovHostEntityLibrary.h"

#include "host/api/IkovApplication.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbDatabase.h"

namespace {

OdDbDatabase* drawing(OdDbDatabase* db)
{
  if (db)
    return db;
  IkovApplication* app = kovApp();
  return app ? app->currentDatabase() : nullptr;
}

} // namespace

QStringList kovHostEntityLibrary::animationNames(OdDbDatabase* db, const QString& uniqueName) const
{
  Q_UNUSED(db);
  Q_UNUSED(uniqueName);
  return QStringList();
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
