// The entity classes: geometry, grips, transforms, drawing and the named view.

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbSpline.h"
#include "Db/OdDbViewTableRecord.h"
#include "Gi/OdGiWorldDrawRecorder.h"
#include "kovDbFixture.h"

#include <cmath>

namespace {

const double kTol = 1e-9;

void expectPointNear(const OdGePoint3d& actual, const OdGePoint3d& expected, double tol = kTol)
{
  EXPECT_NEAR(actual.x, expected.x, tol);
  EXPECT_NEAR(actual.y, expected.y, tol);
  EXPECT_NEAR(actual.z, expected.z, tol);
}

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
  void SetUp() override
  {
    kovDbFixture::SetUp();
    db = OdDbDatabase::createObject();
  }
  void TearDown() override
  {
    db = nullptr;
    kovDbFixture::TearDown();
  }

  OdDbObjectId addBlock(const OdChar* name, OdDbEntity* content)
  {
    OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
    OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::createObject();
    block->setName(OdString(name));
    const OdDbObjectId id = blocks->add(block);
    if (content)
      block->appendOdDbEntity(content);
    return id;
  }

  OdDbObjectId appendToModelSpace(OdDbEntity* entity)
  {
    OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    return modelSpace->appendOdDbEntity(entity);
  }

  OdDbDatabasePtr db;
};

TEST_F(DbEntities, SplineAnswersCurveQueriesThroughItsFitData)
{
  OdDbSplinePtr spline = makeSpline();
  EXPECT_TRUE(spline->hasFitData());
  EXPECT_EQ(spline->numFitPoints(), 4);
  EXPECT_EQ(spline->type(), OdDbSpline::kFitPoints);
  EXPECT_EQ(spline->setType(OdDbSpline::kControlPoints), eNotApplicable);

  double start = -1, end = -1;
  ASSERT_EQ(spline->getStartParam(start), eOk);
  ASSERT_EQ(spline->getEndParam(end), eOk);
  OdGePoint3d p;
  ASSERT_EQ(spline->getPointAtParam(start, p), eOk);
  expectPointNear(p, kFitPoints[0]);
  ASSERT_EQ(spline->getPointAtParam(end, p), eOk);
  expectPointNear(p, kFitPoints[3]);
  double param = 0, length = 0, back = 0;
  ASSERT_EQ(spline->getParamAtPoint(kFitPoints[2], param), eOk);
  ASSERT_EQ(spline->getPointAtParam(param, p), eOk);
  expectPointNear(p, kFitPoints[2], 1e-7);
  ASSERT_EQ(spline->getDistAtParam(end, length), eOk);
  EXPECT_GT(length, kFitPoints[0].distanceTo(kFitPoints[3]));
  ASSERT_EQ(spline->getParamAtDist(length / 2, back), eOk);
  EXPECT_GT(back, start);
  EXPECT_LT(back, end);
  OdGeVector3d deriv;
  EXPECT_EQ(spline->getFirstDeriv(start, deriv), eOk);
  EXPECT_FALSE(spline->isClosed());

  EXPECT_EQ(spline->reverseCurve(), eOk);
  ASSERT_EQ(spline->getFitPointAt(0, p), eOk);
  expectPointNear(p, kFitPoints[3]);
}

TEST_F(DbEntities, SplineRefusesBadFitDataAndKeepsItsOwn)
{
  OdDbSplinePtr spline = makeSpline();
  OdGePoint3dArray bad = kFitPoints;
  bad[1].x = std::nan("");
  EXPECT_EQ(spline->setFitData(bad, 3, 0.0, OdGeVector3d(), OdGeVector3d()), eInvalidInput);
  EXPECT_EQ(spline->setFitData(kFitPoints, 2, 0.0, OdGeVector3d(), OdGeVector3d()), eInvalidInput);
  EXPECT_EQ(spline->numFitPoints(), 4);
  OdDbSplinePtr empty = OdDbSpline::createObject();
  double start = 0;
  EXPECT_EQ(empty->getStartParam(start), eDegenerateGeometry);
  OdGeExtents3d extents;
  EXPECT_EQ(empty->getGeomExtents(extents), eInvalidExtents);
  OdGiWorldDrawRecorder draw;
  EXPECT_TRUE(empty->worldDraw(&draw));
  EXPECT_TRUE(draw.records().empty());
}

TEST_F(DbEntities, SplineGripsAreItsFitPoints)
{
  OdDbSplinePtr spline = makeSpline();
  OdGePoint3dArray grips;
  ASSERT_EQ(spline->getGripPoints(grips), eOk);
  ASSERT_EQ(grips.size(), 4u);
  expectPointNear(grips[2], kFitPoints[2]);

  ASSERT_EQ(spline->moveGripPointsAt(OdIntArray { 1, 3 }, OdGeVector3d(0, 0, 5)), eOk);
  OdGePoint3d p;
  spline->getFitPointAt(1, p);
  expectPointNear(p, kFitPoints[1] + OdGeVector3d(0, 0, 5));
  spline->getFitPointAt(3, p);
  expectPointNear(p, kFitPoints[3] + OdGeVector3d(0, 0, 5));
  EXPECT_EQ(spline->moveGripPointsAt(OdIntArray { 0, 4 }, OdGeVector3d(1, 0, 0)), eInvalidIndex);
  spline->getFitPointAt(0, p);
  expectPointNear(p, kFitPoints[0]);
}

TEST_F(DbEntities, SplineTransformsAndDrawsThroughItsFitPoints)
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
}

TEST_F(DbEntities, InvisibleEntityDrawsNothing)
{
  OdDbSplinePtr spline = makeSpline();
  spline->setVisibility(OdDb::kInvisible);
  OdGiWorldDrawRecorder draw;
  EXPECT_TRUE(spline->worldDraw(&draw));
  EXPECT_TRUE(draw.records().empty());
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

TEST_F(DbEntities, BlockReferenceMovesByGripAndTransform)
{
  OdDbBlockReferencePtr reference = OdDbBlockReference::createObject();
  reference->setPosition(OdGePoint3d(1, 2, 3));
  OdGePoint3dArray grips;
  reference->getGripPoints(grips);
  ASSERT_EQ(grips.size(), 1u);
  expectPointNear(grips[0], OdGePoint3d(1, 2, 3));
  ASSERT_EQ(reference->moveGripPointsAt(OdIntArray { 0 }, OdGeVector3d(1, 1, 1)), eOk);
  expectPointNear(reference->position(), OdGePoint3d(2, 3, 4));
  ASSERT_EQ(reference->transformBy(OdGeMatrix3d::scaling(2.0)), eOk);
  expectPointNear(reference->position(), OdGePoint3d(4, 6, 8));
  EXPECT_EQ(reference->transformBy(OdGeMatrix3d::scaling(0.0)), eInvalidInput);
  expectPointNear(reference->position(), OdGePoint3d(4, 6, 8));
  EXPECT_EQ(reference->moveGripPointsAt(OdIntArray { 1 }, OdGeVector3d(1, 1, 1)), eInvalidIndex);
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

TEST_F(DbEntities, LightKeepsValidSettingsOnly)
{
  OdDbLightPtr light = OdDbLight::createObject();
  EXPECT_TRUE(light->isOn());
  EXPECT_EQ(light->setIntensity(-1.0), eInvalidInput);
  EXPECT_EQ(light->setIntensity(std::nan("")), eInvalidInput);
  EXPECT_EQ(light->setLightType(static_cast<OdDbLight::LightType>(9)), eInvalidInput);
  EXPECT_EQ(light->setPosition(OdGePoint3d(INFINITY, 0, 0)), eInvalidInput);
  EXPECT_EQ(light->setIntensity(0.0), eOk);
  EXPECT_EQ(light->intensity(), 0.0);

  light->setPosition(OdGePoint3d(1, 0, 0));
  light->setTargetLocation(OdGePoint3d(0, 0, 0));
  ASSERT_EQ(light->transformBy(OdGeMatrix3d::translation(OdGeVector3d(0, 5, 0))), eOk);
  expectPointNear(light->position(), OdGePoint3d(1, 5, 0));
  expectPointNear(light->targetLocation(), OdGePoint3d(0, 5, 0));
  ASSERT_EQ(light->moveGripPointsAt(OdIntArray { 1 }, OdGeVector3d(0, 0, 1)), eOk);
  expectPointNear(light->targetLocation(), OdGePoint3d(0, 5, 1));
  OdGeExtents3d extents;
  ASSERT_EQ(light->getGeomExtents(extents), eOk);
  expectPointNear(extents.minPoint(), OdGePoint3d(0, 5, 0));
  expectPointNear(extents.maxPoint(), OdGePoint3d(1, 5, 1));
}

TEST_F(DbEntities, ViewEyeIsTargetPlusDirection)
{
  OdDbViewTableRecordPtr view = OdDbViewTableRecord::createObject();
  ASSERT_EQ(view->setCamera(OdGePoint3d(0, -10, 2), OdGePoint3d(0, 0, 2), OdGeVector3d::kZAxis), eOk);
  expectPointNear(view->eyePoint(), OdGePoint3d(0, -10, 2));
  EXPECT_TRUE(view->viewDirection().isEqualTo(OdGeVector3d(0, -10, 0)));
  EXPECT_EQ(view->setCamera(OdGePoint3d(0, 0, 2), OdGePoint3d(0, 0, 2), OdGeVector3d::kZAxis), eInvalidInput);
  EXPECT_EQ(view->setCamera(OdGePoint3d(0, 0, 9), OdGePoint3d(0, 0, 2), OdGeVector3d::kZAxis), eInvalidInput)
      << "up along the line of sight";
  EXPECT_EQ(view->setViewDirection(OdGeVector3d()), eInvalidInput);

  ASSERT_EQ(view->setLensLength(18.0), eOk);
  EXPECT_NEAR(view->fieldOfView(), 2 * std::atan(1.0), 1e-12) << "18 mm lens: 90 degrees across 36 mm";
  ASSERT_EQ(view->setFieldOfView(1.0), eOk);
  EXPECT_NEAR(view->fieldOfView(), 1.0, 1e-12);
  for (double bad : { 0.0, -1.0, 3.2, std::nan("") })
    EXPECT_EQ(view->setFieldOfView(bad), eInvalidInput) << bad;
  EXPECT_EQ(view->setLensLength(0.0), eInvalidInput);
  EXPECT_EQ(view->setHeight(-2.0), eInvalidInput);
}

} // namespace
