#include "host/app/kovNamedViews.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbSymbolTableIterator.h"
#include "Db/OdDbViewTable.h"
#include "Db/OdDbViewTableRecord.h"

#include <cmath>

namespace {

const double kPi = 3.14159265358979323846;

OdDbViewTablePtr viewTable(OdDbDatabase* db, OdDb::OpenMode mode)
{
  OdDbObjectPtr table = db ? db->getViewTableId().openObject(mode) : OdDbObjectPtr();
  return OdDbViewTable::cast(table.get());
}

} // namespace

QStringList kovNamedViews::names(OdDbDatabase* db)
{
  QStringList names;
  OdDbViewTablePtr table = viewTable(db, OdDb::kForRead);
  for (OdDbSymbolTableIteratorPtr it = table.isNull() ? OdDbSymbolTableIteratorPtr() : table->newIterator();
       !it.isNull() && !it->done(); it->step()) {
    OdDbSymbolTableRecordPtr record = it->getRecord();
    if (!record.isNull())
      names << odToQString(record->getName());
  }
  return names;
}

OdResult kovNamedViews::store(OdDbDatabase* db, const OdString& name, const kovViewCamera& camera)
{
  OdDbViewTablePtr table = viewTable(db, OdDb::kForWrite);
  if (table.isNull())
    return eNoDatabase;
  const OdDbObjectId existing = table->getAt(name);
  OdDbViewTableRecordPtr view = existing.isNull()
                                    ? OdDbViewTableRecord::createObject()
                                    : OdDbViewTableRecord::cast(existing.openObject(OdDb::kForWrite).get());
  if (view.isNull())
    return eWrongObjectType;
  OdResult result = view->setCamera(camera.eye, camera.target, camera.up);
  if (result == eOk)
    result = view->setFieldOfView(camera.fieldOfView * kPi / 180.0);
  if (result != eOk)
    return result;
  view->setPerspectiveEnabled(true);
  if (existing.isNull()) {
    result = view->setName(name);
    if (result == eOk)
      table->add(view.get());
  }
  return result;
}

OdResult kovNamedViews::find(OdDbDatabase* db, const OdString& name, const kovViewCamera& base, kovViewCamera& camera)
{
  OdDbViewTablePtr table = viewTable(db, OdDb::kForRead);
  const OdDbObjectId id = table.isNull() ? OdDbObjectId() : table->getAt(name);
  OdDbViewTableRecordPtr view = OdDbViewTableRecord::cast(id.openObject(OdDb::kForRead).get());
  if (view.isNull())
    return eKeyNotFound;
  camera = base;
  camera.eye = view->eyePoint();
  camera.target = view->target();
  camera.up = view->upVector();
  camera.fieldOfView = view->fieldOfView() * 180.0 / kPi;
  return eOk;
}
