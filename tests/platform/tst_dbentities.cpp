// The entity classes: geometry, grips, transforms, drawing and the named view.

#include "kovChecks.h"
#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbSpline.h"
#include "Db/OdDbViewTableRecord.h"
#include "Gi/OdGiWorldDrawRecorder.h"
#include "kovDbFixture.h"
#include "kovSampleDrawing.h"

#include <cmath>

namespace {

const double kTol = 1e-9;

const OdGePoint3dArray kFitPoints { OdGePoint3d(0, 0, 0), OdGePoint3d(1, 2, 0), OdGePoint3d(3, 2, 1),
                                    OdGePoint3d(4, 0, 1) };

OdDbSplinePtr makeSpline(const OdGePoint3dArray& points = kFitPoints)
{
  OdDbSplinePtr spline = OdDbSpline::createObject();
  EXPECT_EQ(spline->setFitData(points, 3, 0.0, OdGeVector3d(), OdGeVector3d()), eOk);
  return spline;
}

class DbEntities : public kovDbFixture {
protected:
  OdDbObjectId addBlock(const OdChar* name, OdDbEntity* content) { return kovAddBlock(db, OdString(name), content); }

  OdDbObjectId appendToModelSpace(OdDbEntity* entity)
  {
    OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    return modelSpace->appendOdDbEntity(entity);
  }
};

TEST_F(DbEntities, SplineTransformsAndDrawsThroughItsFitPointsUnlessInvisible)
{
  OdDbSplinePtr spline = makeSpline();
  const OdGeMatrix3d move = OdGeMatrix3d::translation(OdGeVector3d(10, 0, 0));
  ASSERT_EQ(spline->transformBy(move), eOk);
  OdGeExtents3d extents;
  ASSERT_EQ(spline->getGeomExtents(extents), eOk);
  EXPECT_LE(extents.minPoint().x, 10.0 + kTol);
  EXPECT_GE(extents.maxPoint().x, 14.0 - kTol);

  spline->setColorIndex(6);
  OdGiWorldDrawRecorder draw;
  spline->worldDraw(&draw);
  ASSERT_EQ(draw.records().size(), 1u);
  const OdGePoint3dArray& drawn = draw.records()[0].points;
  EXPECT_EQ(draw.records()[0].color.colorIndex(), 6);
  ASSERT_GT(drawn.size(), 4u * 3);
  for (const OdGePoint3d& fit : kFitPoints) {
    const OdGePoint3d moved = move * fit;
    bool hit = false;
    for (const OdGePoint3d& q : drawn)
      hit = hit || q.isEqualTo(moved, OdGeTol(1e-9));
    EXPECT_TRUE(hit) << "the drawing passes through each fit point";
  }
  for (const OdGePoint3d& q : drawn)
    EXPECT_TRUE(extents.contains(q, OdGeTol(1e-9)));

  spline->setVisibility(OdDb::kInvisible);
  OdGiWorldDrawRecorder hidden;
  EXPECT_TRUE(spline->worldDraw(&hidden));
  EXPECT_TRUE(hidden.records().empty());
}

TEST_F(DbEntities, BlockReferencePlacesItsBlocksEntities)
{
  const OdDbObjectId blockId = addBlock(L"Path", makeSpline());
  OdDbBlockReferencePtr reference = OdDbBlockReference::createObject();
  ASSERT_EQ(reference->setBlockTableRecord(blockId), eOk);
  const OdGeMatrix3d xform = OdGeMatrix3d::translation(OdGeVector3d(0, 0, 100)) * OdGeMatrix3d::scaling(2.0);
  ASSERT_EQ(reference->setBlockTransform(xform), eOk);
  appendToModelSpace(reference);
  expectPointNear(reference->position(), OdGePoint3d(0, 0, 100));

  OdGeExtents3d own, placed;
  {
    OdDbBlockTableRecordPtr block = blockId.safeOpenObject();
    block->newIterator()->entity()->getGeomExtents(own);
  }
  ASSERT_EQ(reference->getGeomExtents(placed), eOk);
  expectPointNear(placed.minPoint(), xform * own.minPoint());
  expectPointNear(placed.maxPoint(), xform * own.maxPoint());

  OdGiWorldDrawRecorder draw;
  reference->worldDraw(&draw);
  EXPECT_TRUE(draw.getModelToWorldTransform().isEqualTo(OdGeMatrix3d::kIdentity)) << "pushes and pops balance";
  ASSERT_EQ(draw.records().size(), 1u);
  expectPointNear(draw.records()[0].points.first(), xform * kFitPoints[0]);
  expectPointNear(draw.records()[0].points.last(), xform * kFitPoints[3]);
}

TEST_F(DbEntities, BlockContainingItselfFailsInsteadOfRecursingForever)
{
  const OdDbObjectId blockId = addBlock(L"Loop", nullptr);
  OdDbBlockReferencePtr inner = OdDbBlockReference::createObject();
  ASSERT_EQ(inner->setBlockTableRecord(blockId), eOk);
  {
    OdDbBlockTableRecordPtr block = blockId.safeOpenObject(OdDb::kForWrite);
    block->appendOdDbEntity(inner);
    block->appendOdDbEntity(makeSpline());
  }
  OdDbBlockReferencePtr outer = OdDbBlockReference::createObject();
  outer->setBlockTableRecord(blockId);
  appendToModelSpace(outer);
  OdGeExtents3d extents;
  EXPECT_EQ(outer->getGeomExtents(extents), eOk) << "the nesting limit cuts the loop; the spline still counts";
  OdGiWorldDrawRecorder draw;
  EXPECT_TRUE(outer->worldDraw(&draw));
  EXPECT_TRUE(draw.getModelToWorldTransform().isEqualTo(OdGeMatrix3d::kIdentity)) << "pushes and pops balance";
  EXPECT_FALSE(draw.records().empty());
}

} // namespace
