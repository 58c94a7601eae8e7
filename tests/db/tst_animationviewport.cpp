// What the animation entity shows in the viewport: its paths and icons, its
// grips on the path points, its extents, and moving it as a whole.
#include "kovAnimationDbFixture.h"

#include "db/kovAnimationIcons.h"

#include "Gi/OdGiWorldDrawRecorder.h"

#include <QVariantList>

#include <gtest/gtest.h>

namespace {

class AnimationViewport : public kovAnimationDbFixture {
protected:
  void SetUp() override
  {
    kovAnimationDbFixture::SetUp();
    kovDbAnimation::initializeGlobalObjects();
    animation = kovDbAnimation::createObject();

    kovAnimationTrackPtr camera(new kovAnimationTrack);
    camera->setEntityUniqueName(nullptr, QStringLiteral("Camera"));
    camera->addElement();
    kovAnimationItem& path = camera->elementAt(0);
    path.setAnimationType(kovAnimationItem::LocationBySpline, OdGePoint3d::kOrigin);
    QMap<int, QVariant> keys;
    keys.insert(0, QVariantList { 0.0, 0.0, 2.0, 1.0, 0.0, 0.0 });
    keys.insert(1000, QVariantList { 10.0, 5.0, 2.0, 0.0, 0.0, 0.0 });
    keys.insert(2000, QVariantList { 20.0, 0.0, 2.0, 0.0, 0.0, 0.0 });
    path.setValues(keys);

    kovAnimationTrackPtr walker(new kovAnimationTrack);
    walker->setEntityUniqueName(nullptr, QStringLiteral("Walker"));
    walker->addElement();
    walker->elementAt(0).setValue(0, QVariantList { 0.0, -3.0, 0.0 });
    walker->elementAt(0).setValue(500, QVariantList { 4.0, -3.0, 0.0 });
    walker->addElement();
    walker->elementAt(1).setAnimationType(kovAnimationItem::Scale, OdGePoint3d::kOrigin);
    walker->elementAt(1).setValue(0, 2.0);

    animation->editTracks() = { camera, walker };
    animation->setCurrentPosition(0);
  }
  void TearDown() override
  {
    animation = nullptr;
    kovDbAnimation::uninitializeGlobalObjects();
    kovAnimationDbFixture::TearDown();
  }

  std::vector<OdGiPrimitiveRecord> drawn() const
  {
    OdGiWorldDrawRecorder recorder;
    animation->worldDraw(&recorder);
    return recorder.records();
  }

  kovDbAnimationPtr animation;
};

int countOf(const std::vector<OdGiPrimitiveRecord>& records, OdGiPrimitiveRecord::Kind kind)
{
  return static_cast<int>(std::count_if(records.begin(), records.end(),
                                        [kind](const OdGiPrimitiveRecord& r) { return r.kind == kind; }));
}

} // namespace

TEST_F(AnimationViewport, drawsEveryPathAndAnIconPerSubject)
{
  const std::vector<OdGiPrimitiveRecord> records = drawn();
  // Two paths and the camera's line of sight; one icon per track.
  EXPECT_EQ(countOf(records, OdGiPrimitiveRecord::kPolyline), 3);
  EXPECT_EQ(countOf(records, OdGiPrimitiveRecord::kRasterImage), 2);

  const OdGiPrimitiveRecord& spline = records.front();
  ASSERT_EQ(spline.kind, OdGiPrimitiveRecord::kPolyline);
  EXPECT_EQ(spline.color.colorIndex(),
            kovAnimationItem::colorIndexByAnimationType(kovAnimationItem::LocationBySpline));
  // Sampled along the curve, through the middle keyframe's point.
  EXPECT_GT(spline.points.size(), 3u);
  EXPECT_TRUE(spline.points.front().isEqualTo(OdGePoint3d(0, 0, 2), OdGeTol(1e-9)));
  EXPECT_TRUE(spline.points.back().isEqualTo(OdGePoint3d(20, 0, 2), OdGeTol(1e-9)));
  const bool passesMiddle = std::any_of(spline.points.begin(), spline.points.end(), [](const OdGePoint3d& p) {
    return p.isEqualTo(OdGePoint3d(10, 5, 2), OdGeTol(1e-6));
  });
  EXPECT_TRUE(passesMiddle);

  // The camera's icon stands centred where the camera is at the time cursor.
  int cameraIcons = 0;
  for (const OdGiPrimitiveRecord& r : records) {
    if (r.kind != OdGiPrimitiveRecord::kRasterImage || !(*r.image == *kovAnimationIcons::camera()))
      continue;
    const OdGePoint3d centre = r.points.front() + (r.direction + r.secondDirection) * 0.5;
    EXPECT_TRUE(centre.isEqualTo(OdGePoint3d(0, 0, 2), OdGeTol(1e-9)));
    ++cameraIcons;
  }
  EXPECT_EQ(cameraIcons, 1);
}

TEST_F(AnimationViewport, hiddenGizmosDrawNothing)
{
  animation->hideAnimationGizmos() = true;
  EXPECT_TRUE(drawn().empty());
}

TEST_F(AnimationViewport, gripsStandOnEveryPathKeyframe)
{
  OdGePoint3dArray grips;
  ASSERT_EQ(animation->getGripPoints(grips), eOk);
  const OdGePoint3dArray expected { { 0, 0, 2 }, { 10, 5, 2 }, { 20, 0, 2 }, { 0, -3, 0 }, { 4, -3, 0 } };
  ASSERT_EQ(grips.size(), expected.size());
  for (unsigned i = 0; i < grips.size(); ++i)
    EXPECT_TRUE(grips[i].isEqualTo(expected[i])) << i;
}

TEST_F(AnimationViewport, movingAGripMovesItsKeyframeOnly)
{
  OdIntArray indices { 1, 4 };
  ASSERT_EQ(animation->moveGripPointsAt(indices, OdGeVector3d(0, 0, 3)), eOk);
  const kovAnimationItem& path = animation->constTracks()[0]->elementAt(0);
  EXPECT_EQ(path.values().value(1000).toList(), (QVariantList { 10.0, 5.0, 5.0, 0.0, 0.0, 0.0 }));
  EXPECT_EQ(path.values().value(0).toList(), (QVariantList { 0.0, 0.0, 2.0, 1.0, 0.0, 0.0 }));
  EXPECT_EQ(animation->constTracks()[1]->elementAt(0).values().value(500).toList(),
            (QVariantList { 4.0, -3.0, 3.0 }));
}

TEST_F(AnimationViewport, gripIndexOutOfRangeMovesNothing)
{
  const QMap<int, QVariant> before = animation->constTracks()[0]->elementAt(0).values();
  for (int bad : { -1, 5, 1000 }) {
    OdIntArray indices { 0, bad };
    EXPECT_EQ(animation->moveGripPointsAt(indices, OdGeVector3d(1, 1, 1)), eInvalidIndex) << bad;
  }
  EXPECT_EQ(animation->constTracks()[0]->elementAt(0).values(), before);
}

TEST_F(AnimationViewport, extentsHoldEveryPath)
{
  OdGeExtents3d extents;
  ASSERT_EQ(animation->getGeomExtents(extents), eOk);
  EXPECT_DOUBLE_EQ(extents.minPoint().x, 0.0);
  EXPECT_DOUBLE_EQ(extents.maxPoint().x, 20.0);
  EXPECT_DOUBLE_EQ(extents.minPoint().y, -3.0);
  EXPECT_GE(extents.maxPoint().y, 5.0);
  EXPECT_DOUBLE_EQ(extents.maxPoint().z, 2.0);

  kovDbAnimationPtr empty = kovDbAnimation::createObject();
  EXPECT_EQ(empty->getGeomExtents(extents), eInvalidExtents);
}

TEST_F(AnimationViewport, transformMovesPointsAndTurnsTangents)
{
  const OdGeMatrix3d quarterTurn = OdGeMatrix3d::rotation(3.14159265358979323846 / 2.0, OdGeVector3d::kZAxis);
  ASSERT_EQ(animation->transformBy(OdGeMatrix3d::translation(OdGeVector3d(0, 0, 1)) * quarterTurn), eOk);
  const QVariantList first = animation->constTracks()[0]->elementAt(0).values().value(0).toList();
  ASSERT_EQ(first.size(), 6);
  const double expected[] = { 0, 0, 3, 0, 1, 0 };
  for (int i = 0; i < 6; ++i)
    EXPECT_NEAR(first[i].toDouble(), expected[i], 1e-12) << i;
  // Scale values are not points: they stay.
  EXPECT_EQ(animation->constTracks()[1]->elementAt(1).values().value(0).toDouble(), 2.0);
}
