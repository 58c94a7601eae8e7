// The animation entity's own rules: unique track names, total duration,
// copying an animation, the selection accessors and erasing; what it shows in
// the viewport: paths, icons, grips, extents, moving it as a whole; and the
// scene around playback: saving and restoring a viewport's view, named views
// of camera cuts, and looking through a camera track.
#include "animation/kovOdDbEx.h"
#include "db/kovAnimationIcons.h"
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "host/api/IkovApplication.h"
#include "host/api/IkovViewSystem.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbViewTable.h"
#include "Db/OdDbViewTableRecord.h"
#include "Gi/OdGiWorldDrawRecorder.h"
#include "Rx/OdRxDictionary.h"
#include "Rx/OdStaticRxObject.h"
#include "kovAnimationDbFixture.h"
#include "kovAnimationTestValues.h"
#include "kovFilingSamples.h"
#include "kovSampleDrawing.h"
#include "kovTestHostDefaults.h"

#include <QCoreApplication>
#include <QVariantList>

#include <climits>
#include <cmath>

namespace {

using Item = kovAnimationItem;

class AnimationEntity : public kovAnimationDbFixture {
protected:
  void SetUp() override
  {
    kovAnimationDbFixture::SetUp();
    animation = kovDbAnimation::createObject();
  }
  void TearDown() override
  {
    animation = nullptr;
    kovAnimationDbFixture::TearDown();
  }

  kovAnimationTrackPtr addTrack(kovDbAnimation* owner, const char* name, int start = 0)
  {
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(str(name));
    track->setStartMillisecond(start);
    owner->editTracks().push_back(track);
    return track;
  }

  kovDbAnimationPtr animation;
};

TEST_F(AnimationEntity, uniqueNamesCountUpFromTheOriginalName)
{
  const struct {
    std::initializer_list<const char*> others;
    const char* name;
    const char* expected;
  } cases[] = {
    { {}, "Sun", "Sun" },
    { { "Sun" }, "Sun", "Sun 1" },
    { { "Sun", "Sun 1" }, "Sun", "Sun 2" },
    { { "Sun 1", "Sun" }, "Sun", "Sun 2" },
    { { "Sun", "Sun 2" }, "Sun", "Sun 1" },
    { { "Sun 1" }, "Sun 1", "Sun 1 1" },
    { { "sun", "Sun " }, "Sun", "Sun" },
    { { "" }, "", " 1" },
  };
  for (const auto& c : cases) {
    kovDbAnimationPtr owner = kovDbAnimation::createObject();
    for (const char* other : c.others)
      addTrack(owner.get(), other);
    const kovAnimationTrackPtr track = addTrack(owner.get(), c.name);
    owner->makeTrackNameUnique(track.get());
    EXPECT_EQ(track->trackName(), str(c.expected)) << c.name << " among " << c.others.size();
  }
}

TEST_F(AnimationEntity, totalDurationIsTheLatestTrackEnd)
{
  struct Track {
    int start;
    std::vector<std::vector<int>> items;
  };
  const struct {
    std::vector<Track> tracks;
    int expected;
  } cases[] = {
    { {}, 0 },
    { { { 1000, { { 0, 4000 } } } }, 5000 },
    { { { 1000, { { 0, 4000 } } }, { 0, { {}, { 6000 } } } }, 6000 },
    { { { 2000, { {} } }, { 3000, {} } }, 3000 },
    { { { 1000, { { -500 } } } }, 500 },
    { { { -5000, { { 100 } } } }, 0 },
    { { { INT_MAX, { { INT_MAX } } } }, INT_MAX },
  };
  for (const auto& c : cases) {
    kovDbAnimationPtr owner = kovDbAnimation::createObject();
    for (const Track& t : c.tracks) {
      const kovAnimationTrackPtr track = addTrack(owner.get(), "T", t.start);
      for (const auto& keys : t.items) {
        Item& item = addItem(*track, Item::Scale, {});
        for (int key : keys)
          item.setValue(key, 1.0);
      }
    }
    EXPECT_EQ(owner->totalDurationMs(), c.expected);
  }
}

TEST_F(AnimationEntity, copyingDuplicatesTracksAndRebindsCuts)
{
  animation->setName(str("Source"));
  animation->setDescription(str("Described"));
  animation->setCurrentPosition(500);
  animation->setSelectedTrackIndex(1);
  animation->setSelectedElementIndex(0);
  animation->hideAnimationGizmos() = true;
  const kovAnimationTrackPtr first = addTrack(animation.get(), "Camera Track", 1000);
  first->setEntityUniqueName(nullptr, str("Camera"));
  first->setDescription(str("eye"));
  first->setBlockMatrix(OdGeMatrix3d::scaling(2.0));
  addItem(*first, Item::Scale, { { 10, 2.5 } });
  const kovAnimationTrackPtr second = addTrack(animation.get(), "Second");
  animation->editTracks().push_back(kovAnimationTrackPtr());
  kovCameraCut cut;
  cut.name = str("Cut");
  cut.track = second;
  cut.startMs = 7;
  cut.frameRate = 29.97;
  cut.quality = kovQuality::Extreme;
  animation->sceneCuts().append(cut);

  kovDbAnimationPtr target = kovDbAnimation::createObject();
  target->setName(str("Target"));
  addTrack(target.get(), "Old");
  target->sceneCuts().append(kovCameraCut());
  animation->copyContent(target.get());

  EXPECT_EQ(target->animationName(), str("Target"));
  EXPECT_EQ(target->animationDescription(), str("Described"));
  EXPECT_EQ(target->currentPositionMs(), -1);
  EXPECT_EQ(target->selectedTrackIndex(), -1);
  EXPECT_FALSE(target->areGizmosHidden());
  ASSERT_EQ(target->constTracks().size(), 2u);
  for (size_t i = 0; i < 2; ++i) {
    const kovAnimationTrack& copy = *target->constTracks()[i];
    EXPECT_NE(&copy, animation->constTracks()[i].get());
    EXPECT_EQ(kovSamples::filedFields(copy), kovSamples::filedFields(*animation->constTracks()[i])) << i;
    EXPECT_TRUE(copy.blockMatrix().isEqualTo(animation->constTracks()[i]->blockMatrix()));
    if (copy.numElements()) {
      EXPECT_EQ(copy.elementAt(0).parentTrack(), &copy);
    }
  }
  ASSERT_EQ(target->sceneCuts().size(), 1);
  const kovCameraCut& copied = target->sceneCuts()[0];
  EXPECT_EQ(copied.track.get(), target->constTracks()[1].get());
  EXPECT_EQ(copied.name, str("Cut"));
  EXPECT_EQ(copied.frameRate, 29.97);
}

TEST_F(AnimationEntity, copiedTracksKeepTheirDependentKeyframesUpToDate)
{
  const kovAnimationTrackPtr walker = addTrack(animation.get(), "Walker");
  walker->setEntityUniqueName(nullptr, str("Oak"));
  addItem(*walker, Item::LocationByPoints, { { 0, pointValue(0, 0, 0) }, { 10, pointValue(1, 0, 0) } });
  kovDbAnimationPtr target = kovDbAnimation::createObject();
  animation->copyContent(target.get());
  // An object walking by speed is re-timed by its path as soon as it changes.
  target->editTracks()[0]->elementAt(0).setValue(10, pointValue(3, 4, 0));
  EXPECT_EQ(target->constTracks()[0]->elementAt(0).values().lastKey(), 5000);
}

TEST_F(AnimationEntity, selectionOutOfRangeGivesNull)
{
  const kovAnimationTrackPtr first = addTrack(animation.get(), "A");
  first->addElement();
  first->addElement();
  addTrack(animation.get(), "B");
  const struct {
    int track, element;
    bool hasTrack;
    int expectedElement;
  } cases[] = { { -1, 0, false, -1 },     { 2, 0, false, -1 },  { INT_MAX, 0, false, -1 }, { INT_MIN, 0, false, -1 },
                { 0, -1, true, -1 },      { 0, 2, true, -1 },   { 0, INT_MIN, true, -1 },  { 0, 1, true, 1 },
                { 1, 0, true, -1 } };
  for (const auto& c : cases) {
    animation->setSelectedTrackIndex(c.track);
    animation->setSelectedElementIndex(c.element);
    EXPECT_EQ(!animation->selectedTrack().isNull(), c.hasTrack) << c.track;
    kovAnimationItem* expected =
        c.expectedElement < 0 ? nullptr : &animation->selectedTrack()->elementAt(c.expectedElement);
    EXPECT_EQ(animation->selectedElement(), expected) << c.track << ", " << c.element;
  }
}

TEST_F(AnimationEntity, erasingTakesTheTracksBlocksWithIt)
{
  kovAddBlock(db, OdString(L"Oak"), OdDbLight::createObject());
  const OdDbObjectId id = OdDbBlockTableRecordPtr(db->getModelSpaceId().safeOpenObject(OdDb::kForWrite))
                            ->appendOdDbEntity(animation);
  const kovAnimationTrackPtr oak = addTrack(animation.get(), "Oak");
  oak->setEntityUniqueName(db, str("Oak"));
  const OdDbObjectId reference = oak->blockId();
  ASSERT_FALSE(reference.isNull());
  animation = nullptr;

  kovDbAnimationPtr opened = id.safeOpenObject(OdDb::kForWrite);
  ASSERT_EQ(opened->erase(), eOk);
  EXPECT_TRUE(reference.isErased());
  EXPECT_TRUE(oak->blockId().isNull());
  ASSERT_EQ(opened->erase(false), eOk);
  EXPECT_TRUE(oak->blockId().isNull()) << "un-erasing only restores the entity";
  opened = nullptr;
  db = nullptr;
}

} // namespace

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
    addItem(*camera, Item::LocationBySpline,
            { { 0, sixValue(0, 0, 2, 1, 0, 0) }, { 1000, sixValue(10, 5, 2, 0, 0, 0) },
              { 2000, sixValue(20, 0, 2, 0, 0, 0) } });

    kovAnimationTrackPtr walker(new kovAnimationTrack);
    walker->setEntityUniqueName(nullptr, QStringLiteral("Walker"));
    addItem(*walker, Item::LocationByPoints, { { 0, pointValue(0, -3, 0) }, { 500, pointValue(4, -3, 0) } });
    addItem(*walker, Item::Scale, { { 0, 2.0 } });

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

TEST_F(AnimationViewport, drawsEveryPathAndAnIconPerSubjectUnlessHidden)
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

  animation->hideAnimationGizmos() = true;
  EXPECT_TRUE(drawn().empty());
}

TEST_F(AnimationViewport, gripsStandOnEveryPathKeyframeAndMoveItOnly)
{
  OdGePoint3dArray grips;
  ASSERT_EQ(animation->getGripPoints(grips), eOk);
  const OdGePoint3dArray expected { { 0, 0, 2 }, { 10, 5, 2 }, { 20, 0, 2 }, { 0, -3, 0 }, { 4, -3, 0 } };
  ASSERT_EQ(grips.size(), expected.size());
  for (unsigned i = 0; i < grips.size(); ++i)
    EXPECT_TRUE(grips[i].isEqualTo(expected[i])) << i;

  OdIntArray indices { 1, 4 };
  ASSERT_EQ(animation->moveGripPointsAt(indices, OdGeVector3d(0, 0, 3)), eOk);
  const kovAnimationItem& path = animation->constTracks()[0]->elementAt(0);
  EXPECT_EQ(path.values().value(1000).toList(), (QVariantList { 10.0, 5.0, 5.0, 0.0, 0.0, 0.0 }));
  EXPECT_EQ(path.values().value(0).toList(), (QVariantList { 0.0, 0.0, 2.0, 1.0, 0.0, 0.0 }));
  EXPECT_EQ(animation->constTracks()[1]->elementAt(0).values().value(500).toList(),
            (QVariantList { 4.0, -3.0, 3.0 }));

  // An index beyond the grips refuses the whole move.
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

// A host without windows whose settings live in a map.
class SceneTestHost : public QCoreApplication, public kovTestHostDefaults {
  Q_OBJECT
  Q_INTERFACES(IkovApplication)
public:
  SceneTestHost(int& argc, char** argv) : QCoreApplication(argc, argv) {}
  QVariant setting(const QString& key, const QVariant& def) const override { return settings.value(key, def); }
  void setSetting(const QString& key, const QVariant& value) override { settings.insert(key, value); }

  QMap<QString, QVariant> settings;
};

namespace {

class TestViews : public IkovViewSystem {
public:
  int activeViewport(OdDbDatabase* db) const override { return db ? 0 : -1; }
  kovViewCamera viewCamera(int viewport) const override { return cameras.value(viewport); }
  void setViewCamera(int viewport, const kovViewCamera& camera) override { cameras[viewport] = camera; }
  QString activeRenderEngine(OdDbDatabase*) const override { return QStringLiteral("Test"); }
  void refresh(const OdDbObjectId& id) override { refreshed << id; }
  OdGiRasterImagePtr viewRaster(OdDbDatabase*, int, const QSize&, QString&) override { return OdGiRasterImagePtr(); }

  QMap<int, kovViewCamera> cameras;
  QList<OdDbObjectId> refreshed;
};

bool sameCamera(const kovViewCamera& a, const kovViewCamera& b)
{
  return a.eye.isEqualTo(b.eye, OdGeTol(1e-9)) && a.target.isEqualTo(b.target, OdGeTol(1e-9))
         && a.up.isEqualTo(b.up, OdGeTol(1e-9)) && std::fabs(a.fieldOfView - b.fieldOfView) < 1e-9;
}

kovViewCamera camera(double x, double fov)
{
  kovViewCamera c;
  c.eye.set(x, -5.0, 1.0);
  c.target.set(x, 0.0, 1.0);
  c.fieldOfView = fov;
  return c;
}

class AnimationScene : public kovAnimationDbFixture {
protected:
  static void SetUpTestSuite()
  {
    static int argc = 1;
    static char name[] = "tst_animationentity";
    static char* argv[] = { name, nullptr };
    s_host = new SceneTestHost(argc, argv);
  }
  static void TearDownTestSuite()
  {
    delete s_host;
    s_host = nullptr;
  }

  void SetUp() override
  {
    kovAnimationDbFixture::SetUp();
    views = new TestViews;
    odrxSysRegistry()->putAt(OdString(IkovViewSystem::serviceId()), views);
    s_host->settings.clear();
    animation = kovDbAnimation::createObject();
    animation->setDatabaseDefaults(db);
    OdDbBlockTableRecordPtr space = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    animationId = space->appendOdDbEntity(animation.get());
  }
  void TearDown() override
  {
    kovDbAnimation::restoreSceneState(animationId, 0);
    odrxSysRegistry()->remove(OdString(IkovViewSystem::serviceId()));
    animation = nullptr;
    kovAnimationDbFixture::TearDown();
  }

  static SceneTestHost* s_host;
  TestViews* views = nullptr;
  kovDbAnimationPtr animation;
  OdDbObjectId animationId;
};

SceneTestHost* AnimationScene::s_host = nullptr;

} // namespace

TEST_F(AnimationScene, savedViewComesBackOnceAndIsForgotten)
{
  views->cameras[0] = camera(1.0, 50.0);
  kovCameraCut cut;
  EXPECT_FALSE(kovDbAnimation::sceneHasSavedState(animationId, 0));
  kovDbAnimation::saveSceneState(animationId, 0, cut);
  EXPECT_TRUE(kovDbAnimation::sceneHasSavedState(animationId, 0));
  EXPECT_FALSE(kovDbAnimation::sceneHasSavedState(animationId, 1));
  EXPECT_FALSE(kovDbAnimation::sceneHasSavedState(OdDbObjectId(), 0));

  views->cameras[0] = camera(9.0, 20.0);
  kovDbAnimation::restoreSceneState(animationId, 0);
  EXPECT_TRUE(sameCamera(views->cameras[0], camera(1.0, 50.0)));
  EXPECT_FALSE(kovDbAnimation::sceneHasSavedState(animationId, 0));
  ASSERT_EQ(views->refreshed.size(), 1);
  EXPECT_EQ(views->refreshed.first(), animationId);

  // Nothing saved: restoring changes nothing.
  views->cameras[0] = camera(3.0, 30.0);
  kovDbAnimation::restoreSceneState(animationId, 0);
  EXPECT_TRUE(sameCamera(views->cameras[0], camera(3.0, 30.0)));
}

TEST_F(AnimationScene, savingWritesTheCutsImageSettingsByKind)
{
  struct Case { bool still; const char* prefix; };
  for (const Case& c : { Case { false, "AnimationProduction/" }, Case { true, "ImageProduction/" } }) {
    SCOPED_TRACE(c.prefix);
    s_host->settings.clear();
    kovCameraCut cut;
    cut.stillImage = c.still;
    cut.imageWidth = 640;
    cut.imageHeight = 360;
    cut.maxIterations = 7;
    cut.pathTracing = true;
    kovDbAnimation::saveSceneState(animationId, 0, cut);
    const QString prefix = QLatin1String(c.prefix);
    EXPECT_EQ(s_host->settings.value(prefix + QStringLiteral("ImageWidth")).toInt(), 640);
    EXPECT_EQ(s_host->settings.value(prefix + QStringLiteral("ImageHeight")).toInt(), 360);
    EXPECT_EQ(s_host->settings.value(prefix + QStringLiteral("MaxIterations")).toInt(), 7);
    EXPECT_TRUE(s_host->settings.value(prefix + QStringLiteral("EnablePathTracing")).toBool());
    EXPECT_EQ(s_host->settings.size(), 4);
    kovDbAnimation::restoreSceneState(animationId, 0);
  }
}

TEST_F(AnimationScene, namedViewOfACutShowsInTheActiveViewport)
{
  OdDbViewTablePtr table = db->getViewTableId().safeOpenObject(OdDb::kForWrite);
  OdDbViewTableRecordPtr view = OdDbViewTableRecord::createObject();
  view->setName(OdString(L"Front door"));
  view->setCamera(OdGePoint3d(0, -20, 2), OdGePoint3d(0, 0, 2), OdGeVector3d::kZAxis);
  view->setFieldOfView(3.14159265358979323846 / 3.0);
  kovCameraCut cut;
  cut.viewId = table->add(view.get());
  table = nullptr;
  view = nullptr;

  animation->setNamedView(cut);
  const kovViewCamera shown = views->cameras.value(0);
  EXPECT_TRUE(shown.eye.isEqualTo(OdGePoint3d(0, -20, 2), OdGeTol(1e-9)));
  EXPECT_TRUE(shown.target.isEqualTo(OdGePoint3d(0, 0, 2), OdGeTol(1e-9)));
  EXPECT_NEAR(shown.fieldOfView, 60.0, 1e-9);

  // A cut without a view leaves the viewport alone.
  views->cameras.clear();
  animation->setNamedView(kovCameraCut());
  EXPECT_TRUE(views->cameras.isEmpty());
}

TEST_F(AnimationScene, cameraTrackDrivesTheViewAndDepthOfField)
{
  kovAnimationTrack track;
  track.setEntityUniqueName(db, QStringLiteral("Camera"));
  addItem(track, Item::LocationByPoints, { { 0, pointValue(0, 0, 2) }, { 1000, pointValue(10, 0, 2) } });
  for (const auto& parameter : { std::make_pair("Fov", 45.0), std::make_pair("Focus Distance", 12.0),
                                 std::make_pair("Depth Of Field", 3.0) }) {
    track.addElement();
    kovAnimationItem& item = track.elementAt(track.numElements() - 1);
    kovAnimationItem::setSpecialCustomParamType(item, QString::fromLatin1(parameter.first));
    item.setValue(0, parameter.second);
  }
  animation->setCurrentPosition(500);
  animation->updateCurrentView(&track);

  const kovViewCamera shown = views->cameras.value(0);
  EXPECT_TRUE(shown.eye.isEqualTo(OdGePoint3d(5, 0, 2), OdGeTol(1e-9)));
  // It looks at the focus distance, where the thin lens focuses; the lens
  // blurs the edges of the focal region by a thousandth of a radian.
  EXPECT_TRUE(shown.target.isEqualTo(OdGePoint3d(11, 0, 2), OdGeTol(1e-9)));
  EXPECT_TRUE(shown.depthOfField);
  EXPECT_DOUBLE_EQ(shown.focusDistance, 6.0);
  EXPECT_NEAR(shown.lensRadius * 1.5 / (2.0 * 6.0 * 6.0), 0.001, 1e-12);
  EXPECT_TRUE(shown.up.isEqualTo(OdGeVector3d::kZAxis, OdGeTol(1e-9)));
  // Parameters after a track's first sub-track are averaged with the value
  // they default to, as every value of a track is: the view's 60 degrees, and
  // no depth of field yet.
  EXPECT_DOUBLE_EQ(shown.fieldOfView, (60.0 + 45.0) * 0.5);
  EXPECT_TRUE(s_host->settings.value(QStringLiteral("Camera/DepthOfFieldEnaled")).toBool());
  EXPECT_DOUBLE_EQ(s_host->settings.value(QStringLiteral("Camera/DepthOfFieldFocalDistance")).toDouble(), 6.0);
  EXPECT_DOUBLE_EQ(s_host->settings.value(QStringLiteral("Camera/DepthOfFieldFocalRegion")).toDouble(), 1.5);
}

TEST_F(AnimationScene, valuesTheTrackDoesNotAnimateKeepTheHostsSettings)
{
  s_host->settings.insert(QStringLiteral("Camera/DepthOfFieldFocalDistance"), 7.5);
  views->cameras[0] = camera(0.0, 33.0);
  kovAnimationTrack track;
  track.setEntityUniqueName(db, QStringLiteral("Camera"));
  animation->setCurrentPosition(0);
  animation->updateCurrentView(&track);
  EXPECT_DOUBLE_EQ(views->cameras[0].fieldOfView, 33.0);
  EXPECT_DOUBLE_EQ(s_host->settings.value(QStringLiteral("Camera/DepthOfFieldFocalDistance")).toDouble(), 7.5);
  EXPECT_FALSE(s_host->settings.value(QStringLiteral("Camera/DepthOfFieldEnaled")).toBool());
}

namespace {

// A library whose one subject holds one clip, "Spin", that moves the node
// "Wheel" by a metre per second of the clip.
class TestLibrary : public kovOdDbEx {
public:
  QStringList libraryBlockNames(OdDbDatabase*) const override { return {}; }
  QStringList animationNames(OdDbDatabase*, const QString&) const override { return { QStringLiteral("Spin") }; }
  OdDbObjectId blockDefinition(OdDbDatabase*, const QString&) const override { return OdDbObjectId(); }
  OdDbObjectId entityByName(OdDbDatabase*, const QString&) const override { return OdDbObjectId(); }
  QMap<QString, OdGeMatrix3d> nestedTransforms(OdDbDatabase*, const QString& subject, const QString& clip,
                                               int ms) const override
  {
    if (subject != QLatin1String("Cart") || clip != QLatin1String("Spin"))
      return {};
    return { { QStringLiteral("Wheel"), OdGeMatrix3d::translation(OdGeVector3d(ms / 1000.0, 0, 0)) } };
  }
};

kovAnimationItem& addParameter(kovAnimationTrack& track, const char* name, const QMap<int, QVariant>& values)
{
  track.addElement();
  kovAnimationItem& item = track.elementAt(track.numElements() - 1);
  kovAnimationItem::setSpecialCustomParamType(item, str(name));
  item.setValues(values);
  return item;
}

} // namespace

TEST_F(AnimationScene, frameMovesHidesAndPosesTheSubjectsFromWhereTheyStandAtTheFirstKeyframe)
{
  OdStaticRxObject<TestLibrary> library;
  odrxSysRegistry()->putAt(OdString(kovOdDbEx::serviceId()), &library);
  const OdDbObjectId post = kovAddReference(db, kovAddBlock(db, OdString(L"Post")));
  auto track = kovAnimationTrackPtr(new kovAnimationTrack);
  track->setEntityId(post);
  track->setEntityUniqueName(db, QStringLiteral("Cart"));
  track->setStartMillisecond(1000);
  addItem(*track, Item::LocationByPoints, { { 0, pointValue(2, 0, 0) }, { 1000, pointValue(12, 0, 0) } });
  addParameter(*track, "Visibility", { { 0, true }, { 800, false } });
  addParameter(*track, "Object Animation", { { 200, QStringLiteral("Spin") } });
  animation->editTracks().push_back(track);

  struct Case {
    int ms;
    bool hidden;
    double moved;
    double wheel;
  };
  for (const Case& c : { Case { 1000, false, 0.0, 0.0 }, Case { 1500, false, 5.0, 0.3 }, Case { 1900, true, 0, 0 } }) {
    SCOPED_TRACE(c.ms);
    animation->setCurrentPosition(c.ms);
    const IkovAnimatedScene::Frame frame = animation->sceneFrame();
    EXPECT_EQ(frame.hidden.size(), c.hidden ? 1u : 0u);
    if (c.hidden) {
      EXPECT_EQ(frame.hidden.front(), post);
      EXPECT_TRUE(frame.subjects.empty());
      continue;
    }
    // Before the clip starts the subject stands as drawn, so it is no subject.
    ASSERT_EQ(frame.subjects.size(), c.ms > 1200 ? 1u : 0u);
    if (frame.subjects.empty())
      continue;
    const IkovAnimatedScene::Subject& subject = frame.subjects.front();
    EXPECT_EQ(subject.entity, post);
    expectMatrixNear(subject.transform, OdGeMatrix3d::translation(OdGeVector3d(c.moved, 0, 0)));
    expectMatrixNear(subject.nodes.value(QStringLiteral("Wheel")), OdGeMatrix3d::translation(OdGeVector3d(c.wheel, 0, 0)));
  }
  odrxSysRegistry()->remove(OdString(kovOdDbEx::serviceId()));
}

TEST_F(AnimationScene, frameTakesTheSunAndSkyFromTheEnvironmentAndLooksThroughTheCamera)
{
  auto environment = kovAnimationTrackPtr(new kovAnimationTrack);
  environment->setEntityUniqueName(db, QStringLiteral("Environment"));
  // The clock first, so that it is not averaged with the present time as the
  // later parameters of a track are; date and place are the present day in
  // Rome, where the sun is down at half past midnight and up at half past
  // noon all year.
  addParameter(*environment, "Time", { { 0, 0.5 }, { 1000, 12.5 } });
  addParameter(*environment, "Sky Sequence", { { 0, QStringLiteral("Cumulus") }, { 600, QStringLiteral("Rainy") } });
  auto camera = kovAnimationTrackPtr(new kovAnimationTrack);
  camera->setEntityUniqueName(db, QStringLiteral("Camera"));
  addItem(*camera, Item::LocationByPoints, { { 0, pointValue(0, 0, 2) }, { 1000, pointValue(0, 10, 2) } });
  animation->editTracks().push_back(environment);
  animation->editTracks().push_back(camera);

  struct Case {
    int ms;
    bool sunUp;
    const char* sky;
  };
  for (const Case& c : { Case { 0, false, "Cumulus" }, Case { 1000, true, "Rainy" } }) {
    SCOPED_TRACE(c.ms);
    animation->setCurrentPosition(c.ms);
    const IkovAnimatedScene::Frame frame = animation->sceneFrame();
    ASSERT_TRUE(frame.hasSun);
    EXPECT_NEAR(frame.toSun.length(), 1.0, 1e-9);
    EXPECT_EQ(frame.toSun.z > 0.0, c.sunUp);
    EXPECT_EQ(frame.sky, str(c.sky));
    ASSERT_TRUE(frame.hasCamera);
    EXPECT_TRUE(frame.camera.eye.isEqualTo(OdGePoint3d(0, c.ms / 100.0, 2), OdGeTol(1e-9)));
  }
}

#include "tst_animationentity.moc"
