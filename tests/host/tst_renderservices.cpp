// The render services the module uses, judged by pictures: what the engine
// shows of an animation (subjects where the animation puts them, a block
// posed by its clip, the animation's sun), the path tracer that production
// polls and saves frames through, and the rasterizer's pictures as raster
// images with the raster services that write them.

#include "kovHostTestEnvironment.h"
#include "kovPixels.h"
#include "kovScriptedCommands.h"

#include "host/api/IkovAnimatedScene.h"
#include "host/api/IkovPhysicsRender.h"
#include "host/api/kovHostService.h"
#include "host/app/kovViewProjection.h"

#include "Rx/OdRxRasterServices.h"
#include "Rx/OdStaticRxObject.h"

using namespace kovHostTest;

Q_DECLARE_METATYPE(OdGePoint3d)
Q_DECLARE_METATYPE(OdGeMatrix3d)

namespace {

const QSize kSize(160, 120);

class FakeScene : public IkovAnimatedScene {
public:
  Frame frame(OdDbDatabase*) const override { return shown; }
  Frame shown;
};

} // namespace

class tst_RenderServices : public QObject {
  Q_OBJECT

private:
  ScriptedCommands m_commands;
  OdStaticRxObject<FakeScene> m_scene;
  kovViewCamera m_camera;

  void run(const QString& line) { QVERIFY2(m_commands.run(line), qPrintable(m_commands.transcript)); }

  kovHostViewSystem* views() { return services().viewSystem(); }

  QImage render()
  {
    QString error;
    const QImage image = views()->render(app().currentDatabase(), 0, kSize, 1, error);
    if (image.isNull())
      qWarning() << error;
    return image;
  }

  QPointF project(const OdGePoint3d& point)
  {
    QPointF pixel;
    kovViewProjection(m_camera, QSizeF(kSize)).project(point, pixel);
    return pixel;
  }

  bool near(const QPointF& seen, const OdGePoint3d& point)
  {
    const QPointF predicted = project(point);
    if (QLineF(seen, predicted).length() < 3.0)
      return true;
    qWarning() << "seen" << seen << "predicted" << predicted;
    return false;
  }

private slots:
  void initTestCase() { odrxSysRegistry()->putAt(OdString(IkovAnimatedScene::serviceId()), &m_scene); }
  void cleanupTestCase() { odrxSysRegistry()->remove(OdString(IkovAnimatedScene::serviceId())); }

  void init()
  {
    m_commands.restart();
    m_scene.shown = IkovAnimatedScene::Frame();
    views()->setVisualStyle(0, kovRenderView::VisualStyle::Shaded);
    run(QStringLiteral("sun 215 40 Clear"));
    m_camera.eye.set(0, -12, 1);
    m_camera.target.set(0, 0, 0.5);
    m_camera.fieldOfView = 50.0;
    views()->setViewCamera(0, m_camera);
  }

  void subjectsStandWhereTheAnimationPutsThem_data()
  {
    QTest::addColumn<OdGeMatrix3d>("transform");
    QTest::addColumn<bool>("hidden");
    QTest::addColumn<OdGePoint3d>("centre");
    QTest::addColumn<double>("heightRatio");
    OdGeMatrix3d stretched;
    stretched.setCoordSystem(OdGePoint3d::kOrigin, OdGeVector3d::kXAxis, OdGeVector3d::kYAxis, OdGeVector3d(0, 0, 3));
    QTest::newRow("moved") << OdGeMatrix3d::translation(OdGeVector3d(2, 0, 0)) << false << OdGePoint3d(2, 0, 0.5) << 1.0;
    QTest::newRow("stretched up") << stretched << false << OdGePoint3d(0, 0, 1.5) << 3.0;
    QTest::newRow("hidden") << OdGeMatrix3d() << true << OdGePoint3d() << 0.0;
  }

  void subjectsStandWhereTheAnimationPutsThem()
  {
    QFETCH(OdGeMatrix3d, transform);
    QFETCH(bool, hidden);
    QFETCH(OdGePoint3d, centre);
    QFETCH(double, heightRatio);
    run(QStringLiteral("box -0.5,-0.5,0 1,1,1 1"));
    const OdDbObjectId box = entitiesOfClass(QStringLiteral("kovDbPolygonMesh")).first();
    const int drawnHeight = redHeight(render());
    QVERIFY(drawnHeight > 5);

    if (hidden)
      m_scene.shown.hidden.push_back(box);
    else
      m_scene.shown.subjects.push_back(IkovAnimatedScene::Subject { box, transform, {} });
    const QImage posed = render();
    if (hidden) {
      QCOMPARE(redCentroid(posed), QPointF(-1, -1));
    } else {
      QVERIFY(near(redCentroid(posed), centre));
      QVERIFY(std::fabs(redHeight(posed) - heightRatio * drawnHeight) <= 2.0 + 0.1 * drawnHeight);
    }

    // The animation let go: the box stands as drawn again.
    m_scene.shown = IkovAnimatedScene::Frame();
    QVERIFY(near(redCentroid(render()), OdGePoint3d(0, 0, 0.5)));
  }

  void aBlocksClipPosesItsNestedParts()
  {
    run(QStringLiteral("box -0.5,-0.5,0 1,1,1 1"));
    run(QStringLiteral("block Wheel 0,0,0 Last \"\""));
    run(QStringLiteral("block Cart 0,0,0 Last \"\""));
    const OdDbObjectIdArray carts = entitiesOfClass(QStringLiteral("OdDbBlockReference"));
    QCOMPARE(carts.size(), 1u);
    QVERIFY(near(redCentroid(render()), OdGePoint3d(0, 0, 0.5)));
    m_scene.shown.subjects.push_back(IkovAnimatedScene::Subject {
        carts.first(), OdGeMatrix3d(), { { QStringLiteral("Wheel"), OdGeMatrix3d::translation(OdGeVector3d(-3, 0, 0)) } } });
    QVERIFY(near(redCentroid(render()), OdGePoint3d(-3, 0, 0.5)));
  }

  void theAnimationsSunLightsTheSceneInsteadOfTheHosts()
  {
    run(QStringLiteral("plane -20,-20,0 40 40 255,255,255"));
    m_camera.eye.set(0, -14, 9);
    m_camera.target.set(0, 0, 0);
    views()->setViewCamera(0, m_camera);
    const double hostsDay = meanAround(render(), project(OdGePoint3d(0, 0, 0)));
    m_scene.shown.hasSun = true;
    m_scene.shown.toSun = OdGeVector3d(0, -1, -0.3).normal();
    const double animatedNight = meanAround(render(), project(OdGePoint3d(0, 0, 0)));
    QVERIFY2(animatedNight < 0.4 * hostsDay, qPrintable(QStringLiteral("%1 %2").arg(animatedNight).arg(hostsDay)));
  }

  void thePathTracerCountsItsPassesAndSavesFramesOfTheTargetSize()
  {
    IkovPhysicsRender* tracer = kovHostService<IkovPhysicsRender>();
    QVERIFY(tracer);
    OdDbDatabase* db = app().currentDatabase();
    run(QStringLiteral("box -0.5,-0.5,0 1,1,1 1"));
    tracer->setTarget(QSize(64, 48), 3);
    QVector<int> passes;
    for (int i = 0; i < 4; ++i)
      passes << tracer->passesDone(db);
    QCOMPARE(passes, (QVector<int> { 1, 2, 3, 3 }));
    QVERIFY(tracer->frameFinished(db));

    QTemporaryDir folder;
    QString error;
    const QString frame = folder.filePath(QStringLiteral("frame_1.png"));
    QVERIFY2(tracer->saveFrame(db, frame, error), qPrintable(error));
    const QImage saved(frame);
    QCOMPARE(saved.size(), QSize(64, 48));
    QVERIFY(!isRed(saved.pixel(0, 0)));
    // Few passes may leave the box dark; its hue is already the box's.
    const QRgb box = saved.pixel(32, 24);
    QVERIFY(qRed(box) > 2 * qGreen(box) + 8 && qRed(box) > 2 * qBlue(box) + 8);
    const QString nowhere = folder.filePath(QStringLiteral("missing/frame_2.png"));
    QVERIFY(!tracer->saveFrame(db, nowhere, error));
    QVERIFY2(error.contains(nowhere), qPrintable(error));

    // A new camera starts the picture again.
    m_camera.eye.set(1, -12, 1);
    views()->setViewCamera(0, m_camera);
    QCOMPARE(tracer->passesDone(db), 1);
    QVERIFY(!tracer->frameFinished(db));
  }

  void theViewsRasterGoesThroughTheRasterServicesToFiles_data()
  {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("exact");
    QTest::newRow("png keeps every pixel") << "frame.png" << int(eOk) << true;
    QTest::newRow("jpg keeps the picture") << "frame.JPG" << int(eOk) << false;
    QTest::newRow("no codec for the extension") << "frame.xyz" << int(eNotApplicable) << false;
    QTest::newRow("folder that is not there") << "missing/frame.png" << int(eFileAccessErr) << false;
  }

  void theViewsRasterGoesThroughTheRasterServicesToFiles()
  {
    QFETCH(QString, name);
    QFETCH(int, result);
    QFETCH(bool, exact);
    run(QStringLiteral("box -0.5,-0.5,0 1,1,1 1"));
    QString error;
    const OdGiRasterImagePtr raster = views()->viewRaster(app().currentDatabase(), 0, kSize, error);
    QVERIFY2(!raster.isNull(), qPrintable(error));
    QCOMPARE(QSize(int(raster->pixelWidth()), int(raster->pixelHeight())), kSize);
    QVERIFY(isRed(raster->pixel(kSize.width() / 2, kSize.height() / 2)));

    OdRxRasterServicesPtr services = odrxRasterServices();
    QVERIFY(!services.isNull());
    QTemporaryDir folder;
    const QString path = folder.filePath(name);
    QCOMPARE(int(services->saveRasterImage(*raster, odFromQString(path))), result);
    const OdGiRasterImagePtr loaded = services->loadRasterImage(odFromQString(path));
    QCOMPARE(loaded.isNull(), result != eOk);
    if (loaded.isNull())
      return;
    QCOMPARE(loaded->pixelWidth(), raster->pixelWidth());
    if (exact)
      QVERIFY(*loaded == *raster);
    QVERIFY(isRed(loaded->pixel(kSize.width() / 2, kSize.height() / 2)));
  }

  void aViewRasterOfABadSizeSaysWhy()
  {
    QString error;
    QVERIFY(views()->viewRaster(app().currentDatabase(), 0, QSize(0, 10), error).isNull());
    QVERIFY2(error.contains(QStringLiteral("1 to 16384")), qPrintable(error));
  }
};

KOV_HOST_TEST_MAIN(tst_RenderServices)
#include "tst_renderservices.moc"
