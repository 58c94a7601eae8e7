// The scene around playback: saving and restoring a viewport's view, named
// views of camera cuts, and looking through a camera track.
#include "kovAnimationDbFixture.h"

#include "host/api/IkovApplication.h"
#include "host/api/IkovViewSystem.h"

#include "Rx/OdRxDictionary.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbViewTable.h"
#include "Db/OdDbViewTableRecord.h"

#include <QCoreApplication>
#include <QVariantList>

#include <gtest/gtest.h>

#include <cmath>

// A host without windows whose settings live in a map.
class SceneTestHost : public QCoreApplication, public IkovApplication {
  Q_OBJECT
  Q_INTERFACES(IkovApplication)
public:
  SceneTestHost(int& argc, char** argv) : QCoreApplication(argc, argv) {}
  QMainWindow* mainWindow() const override { return nullptr; }
  void registerDockWidget(const QString&, QDockWidget*) override {}
  void showDockWidget(const QString&, Qt::DockWidgetArea, const QSize&) override {}
  QString toQString(const OdString& text) const override { return odToQString(text); }
  OdString toOdString(const QString& text) const override { return odFromQString(text); }
  QVariant setting(const QString& key, const QVariant& def) const override { return settings.value(key, def); }
  void setSetting(const QString& key, const QVariant& value) override { settings.insert(key, value); }
  QString expandPath(const QString& path) const override { return path; }
  bool executeCommand(const QString&) override { return false; }
  OdDbDatabase* currentDatabase() const override { return nullptr; }
  void registerRefreshEvents(const QString&, QObject*) override {}
  void unregisterRefreshEvents(const QString&, QObject*) override {}

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
    static char name[] = "tst_animationscene";
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
    db = OdDbDatabase::createObject();
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
    db = nullptr;
    kovAnimationDbFixture::TearDown();
  }

  static SceneTestHost* s_host;
  TestViews* views = nullptr;
  OdDbDatabasePtr db;
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
  track.addElement();
  track.elementAt(0).setValue(0, QVariantList { 0.0, 0.0, 2.0 });
  track.elementAt(0).setValue(1000, QVariantList { 10.0, 0.0, 2.0 });
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
  EXPECT_TRUE(shown.target.isEqualTo(OdGePoint3d(6, 0, 2), OdGeTol(1e-9)));
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

#include "tst_animationscene.moc"
