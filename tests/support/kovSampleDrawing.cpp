#include "kovSampleDrawing.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbSpline.h"
#include "Db/OdDbViewTable.h"
#include "Db/OdDbViewTableRecord.h"

namespace {

OdDbSplinePtr makeSpline(double offset)
{
  OdDbSplinePtr spline = OdDbSpline::createObject();
  OdGePoint3dArray points { OdGePoint3d(offset, 0, 0), OdGePoint3d(offset + 1, 2, 0.5), OdGePoint3d(offset + 3, 2, 1),
                            OdGePoint3d(offset + 4, 0, 1.5) };
  spline->setFitData(points, 3, 0.0, OdGeVector3d(1, 1, 0), OdGeVector3d(1, -1, 0));
  return spline;
}

} // namespace

OdDbObjectId kovAddBlock(OdDbDatabase* db, const OdString& name, OdDbEntity* content)
{
  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
  OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::createObject();
  block->setName(name);
  const OdDbObjectId id = blocks->add(block);
  if (content)
    block->appendOdDbEntity(content);
  return id;
}

OdDbObjectId kovAddReference(OdDbDatabase* db, const OdDbObjectId& block)
{
  OdDbBlockReferencePtr reference = OdDbBlockReference::createObject();
  reference->setBlockTableRecord(block);
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  return modelSpace->appendOdDbEntity(reference);
}

kovSampleDrawing kovBuildSampleDrawing()
{
  kovSampleDrawing s;
  s.db = OdDbDatabase::createObject();
  OdDbDatabase* db = s.db.get();
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);

  OdDbSplinePtr spline = makeSpline(0.0);
  spline->setColorIndex(1);
  s.spline = modelSpace->appendOdDbEntity(spline);

  OdDbLightPtr light = OdDbLight::createObject();
  light->setName(OdString(L"Key light \U0001F4A1"));
  light->setLightType(OdDbLight::kSpotLight);
  light->setPosition(OdGePoint3d(10, -5, 8));
  light->setTargetLocation(OdGePoint3d(0, 0, 0));
  light->setIntensity(2.5);
  s.light = modelSpace->appendOdDbEntity(light);

  OdDbLightPtr erased = OdDbLight::createObject();
  s.erased = modelSpace->appendOdDbEntity(erased);
  erased->erase();

  s.chairBlock = kovAddBlock(db, OdString(L"Chair"), makeSpline(-2.0));
  OdDbBlockReferencePtr chairRef = OdDbBlockReference::createObject();
  chairRef->setBlockTableRecord(s.chairBlock);
  chairRef->setBlockTransform(OdGeMatrix3d::rotation(0.5, OdGeVector3d::kZAxis)
                              * OdGeMatrix3d::scaling(2.0));
  chairRef->setPosition(OdGePoint3d(20, 0, 0));
  s.chairRef = modelSpace->appendOdDbEntity(chairRef);

  OdDbBlockReferencePtr tableRef = OdDbBlockReference::createObject();
  tableRef->setPosition(OdGePoint3d(-20, 5, 0));
  tableRef->setVisibility(OdDb::kInvisible);
  s.tableRef = modelSpace->appendOdDbEntity(tableRef);
  OdDbLightPtr lamp = OdDbLight::createObject();
  lamp->setPosition(OdGePoint3d(0, 0, 1));
  lamp->setOn(false);
  s.tableBlock = kovAddBlock(db, OdString(L"Table"), lamp);
  tableRef->setBlockTableRecord(s.tableBlock);

  OdDbViewTablePtr views = db->getViewTableId().safeOpenObject(OdDb::kForWrite);
  OdDbViewTableRecordPtr view = OdDbViewTableRecord::createObject();
  view->setName(OdString(L"Front"));
  view->setCamera(OdGePoint3d(0, -30, 5), OdGePoint3d(0, 0, 2), OdGeVector3d::kZAxis);
  view->setLensLength(35.0);
  view->setPerspectiveEnabled(true);
  view->setHeight(12.0);
  view->setWidth(16.0);
  s.view = views->add(view);
  db->setCurrentColorIndex(3);
  return s;
}
