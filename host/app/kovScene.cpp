#include "host/app/kovScene.h"

#include "host/app/kovHostLog.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbEntity.h"
#include "Db/OdDbObjectIterator.h"
#include "Gi/OdGiWorldDrawRecorder.h"

void kovScene::clear()
{
  m_items.clear();
  m_extents = OdGeExtents3d();
}

void kovScene::regenerate(OdDbDatabase* db)
{
  clear();
  if (!db)
    return;
  OdDbObjectPtr space = db->getModelSpaceId().openObject(OdDb::kForRead);
  OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::cast(space.get());
  if (modelSpace.isNull())
    return;
  OdGiWorldDrawRecorder recorder;
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(); !it->done(); it->step()) {
    OdDbObjectPtr object = it->objectId().openObject(OdDb::kForRead);
    OdDbEntityPtr entity = OdDbEntity::cast(object.get());
    if (entity.isNull())
      continue;
    recorder.clear();
    // One entity that cannot draw must not take the rest of the view with it.
    try {
      entity->worldDraw(&recorder);
    } catch (const OdError& error) {
      qCWarning(lcHostDesktop) << "entity" << odToQString(it->objectId().getHandle().ascii())
                               << "failed to draw:" << odToQString(error.description());
      continue;
    }
    if (recorder.records().empty())
      continue;
    Item item;
    item.id = it->objectId();
    item.records = recorder.records();
    for (const OdGiPrimitiveRecord& record : item.records)
      addToExtents(record, m_extents);
    m_items.push_back(std::move(item));
  }
}

void kovScene::addToExtents(const OdGiPrimitiveRecord& record, OdGeExtents3d& extents)
{
  switch (record.kind) {
  case OdGiPrimitiveRecord::kCircle:
    if (!record.points.isEmpty()) {
      const OdGeVector3d r(record.radius, record.radius, record.radius);
      extents.addPoint(record.points.first() - r).addPoint(record.points.first() + r);
    }
    break;
  case OdGiPrimitiveRecord::kRasterImage:
    if (!record.points.isEmpty()) {
      const OdGePoint3d& o = record.points.first();
      extents.addPoint(o).addPoint(o + record.direction).addPoint(o + record.secondDirection)
          .addPoint(o + record.direction + record.secondDirection);
    }
    break;
  default:
    for (const OdGePoint3d& p : record.points)
      extents.addPoint(p);
    break;
  }
}
