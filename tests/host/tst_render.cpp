// The render engine judged by its pictures: small scenes sketched with the
// scene commands, rendered offscreen, and checked pixel by pixel against
// what the camera's projection and the sun predict.

#include "kovHostTestEnvironment.h"
#include "kovPixels.h"
#include "kovScriptedCommands.h"

#include "host/app/kovViewProjection.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbEntity.h"
#include "Gi/OdGiWorldDraw.h"
#include "Gi/OdGiWorldGeometry.h"

#include <QImage>

#include <cmath>
#include <functional>
#include <limits>

using namespace kovHostTest;

Q_DECLARE_METATYPE(OdGePoint3d)

typedef std::function<void(OdGiWorldDraw&)> DrawFunction;
Q_DECLARE_METATYPE(DrawFunction)

// An entity that draws whatever a test gives it, through the world draw.
class tstDrawnEntity : public OdDbEntity {
  ODDB_DECLARE_MEMBERS(tstDrawnEntity);

public:
  DrawFunction draw;

protected:
  bool subWorldDraw(OdGiWorldDraw* pWd) const override
  {
    draw(*pWd);
    return true;
  }
};

ODRX_DEFINE_MEMBERS_EX(tstDrawnEntity, OdDbEntity, DBOBJECT_CONSTR, OdDb::kDHL_CURRENT, OdDb::kMReleaseCurrent, 0,
                       OdString(L"tstDrawnEntity"), OdString::kEmpty, OdString::kEmpty, 0)

namespace {

const QSize kSize(160, 120);

// How far two pictures differ over a patch: mean absolute luminance difference.
double difference(const QImage& a, const QImage& b, const QRect& patch)
{
  double sum = 0.0;
  for (int j = patch.top(); j <= patch.bottom(); ++j) {
    for (int i = patch.left(); i <= patch.right(); ++i)
      sum += std::fabs(luminance(a.pixel(i, j)) - luminance(b.pixel(i, j)));
  }
  return sum / (patch.width() * patch.height());
}

// The mean colour over a patch.
QColor meanColor(const QImage& image, const QRect& patch)
{
  double r = 0.0, g = 0.0, b = 0.0;
  for (int j = patch.top(); j <= patch.bottom(); ++j) {
    for (int i = patch.left(); i <= patch.right(); ++i) {
      const QRgb c = image.pixel(i, j);
      r += qRed(c);
      g += qGreen(c);
      b += qBlue(c);
    }
  }
  const double n = patch.width() * patch.height();
  return QColor(int(r / n), int(g / n), int(b / n));
}

} // namespace

class tst_Render : public QObject {
  Q_OBJECT

private:
  ScriptedCommands m_commands;

  void run(const QString& line) { QVERIFY2(m_commands.run(line), qPrintable(m_commands.transcript)); }

  kovHostViewSystem* views() { return services().viewSystem(); }

  QImage render(int samples = 1)
  {
    QString error;
    const QImage image = views()->render(app().currentDatabase(), 0, kSize, samples, error);
    if (image.isNull())
      qWarning() << error;
    return image;
  }

  kovViewCamera look(const OdGePoint3d& eye, const OdGePoint3d& target)
  {
    kovViewCamera camera;
    camera.eye = eye;
    camera.target = target;
    camera.fieldOfView = 50.0;
    views()->setViewCamera(0, camera);
    return camera;
  }

  QPointF project(const kovViewCamera& camera, const OdGePoint3d& point)
  {
    QPointF pixel;
    kovViewProjection(camera, QSizeF(kSize)).project(point, pixel);
    return pixel;
  }

private slots:
  void init()
  {
    m_commands.restart();
    views()->setVisualStyle(0, kovRenderView::VisualStyle::Shaded);
    run(QStringLiteral("sun 215 40 Clear"));
  }

  void aRedBoxInFrontFillsTheCentreAndTheSameFrameRendersTheSame()
  {
    run(QStringLiteral("box -1,-1,-1 2,2,2 1"));
    look(OdGePoint3d(0, -6, 0), OdGePoint3d(0, 0, 0));
    const QImage image = render();
    QVERIFY(!image.isNull());
    QCOMPARE(image.size(), kSize);
    QVERIFY(isRed(image.pixel(kSize.width() / 2, kSize.height() / 2)));
    QVERIFY(!isRed(image.pixel(2, 2)));
    QVERIFY(!isRed(image.pixel(kSize.width() - 3, kSize.height() - 3)));
    QCOMPARE(render(), image);
  }

  void movingTheCameraMovesTheBoxAsTheProjectionPredicts_data()
  {
    QTest::addColumn<OdGePoint3d>("eye");
    QTest::addColumn<OdGePoint3d>("target");
    QTest::newRow("ahead") << OdGePoint3d(0, -12, 1) << OdGePoint3d(0, 0, 0.5);
    QTest::newRow("slid left") << OdGePoint3d(-3, -12, 1) << OdGePoint3d(-3, 0, 0.5);
    QTest::newRow("from above and aside") << OdGePoint3d(4, -8, 6) << OdGePoint3d(1, 0, 0);
  }

  void movingTheCameraMovesTheBoxAsTheProjectionPredicts()
  {
    QFETCH(OdGePoint3d, eye);
    QFETCH(OdGePoint3d, target);
    run(QStringLiteral("box -0.5,-0.5,0 1,1,1 1"));
    const kovViewCamera camera = look(eye, target);
    const QPointF seen = redCentroid(render());
    const QPointF predicted = project(camera, OdGePoint3d(0, 0, 0.5));
    QVERIFY2(QLineF(seen, predicted).length() < 3.0,
             qPrintable(QStringLiteral("seen %1,%2 predicted %3,%4")
                            .arg(seen.x()).arg(seen.y()).arg(predicted.x()).arg(predicted.y())));
  }

  void anEntityChangedAfterARenderIsDrawnAnewAndAnErasedOneGoes()
  {
    run(QStringLiteral("box -0.5,-0.5,0 1,1,1 1"));
    const kovViewCamera camera = look(OdGePoint3d(0, -12, 1), OdGePoint3d(0, 0, 0.5));
    QVERIFY(QLineF(redCentroid(render()), project(camera, OdGePoint3d(0, 0, 0.5))).length() < 3.0);
    const OdDbObjectId box = entitiesOfClass(QStringLiteral("kovDbPolygonMesh")).first();
    {
      OdDbEntityPtr entity = box.safeOpenObject(OdDb::kForWrite);
      entity->transformBy(OdGeMatrix3d::translation(OdGeVector3d(2, 0, 0)));
    }
    QVERIFY(QLineF(redCentroid(render()), project(camera, OdGePoint3d(2, 0, 0.5))).length() < 3.0);
    {
      OdDbEntityPtr entity = box.safeOpenObject(OdDb::kForWrite);
      entity->erase();
    }
    QCOMPARE(redCentroid(render()), QPointF(-1, -1));
  }

  void theSunLightsTheGroundAndTheBoxShadowsTheSideAwayFromIt_data()
  {
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("samples");
    QTest::newRow("rasterizer") << "Shaded" << 1;
    QTest::newRow("path tracer") << "Rendered" << 24;
  }

  void theSunLightsTheGroundAndTheBoxShadowsTheSideAwayFromIt()
  {
    QFETCH(QString, style);
    QFETCH(int, samples);
    run(QStringLiteral("plane -20,-20,0 40 40 255,255,255"));
    run(QStringLiteral("box -1,-1,0 2,2,2 5"));
    const kovViewCamera camera = look(OdGePoint3d(0, -14, 9), OdGePoint3d(0, 0, 0));
    run(QStringLiteral("visualstyle ") + style);
    // The sun in the east, low: the shadow falls to the west.
    run(QStringLiteral("sun 90 25 Clear"));
    const QImage day = render(samples);
    const double west = meanAround(day, project(camera, OdGePoint3d(-3.5, 0, 0)));
    const double east = meanAround(day, project(camera, OdGePoint3d(3.5, 0, 0)));
    QVERIFY2(west < 0.75 * east, qPrintable(QStringLiteral("west %1 east %2").arg(west).arg(east)));

    run(QStringLiteral("sun 90 -12 Clear"));
    const double night = meanAround(render(samples), project(camera, OdGePoint3d(3.5, 0, 0)));
    QVERIFY2(night < 0.4 * east, qPrintable(QStringLiteral("night %1 day %2").arg(night).arg(east)));
  }

  void pathTracedNoiseFallsAsPassesGrow()
  {
    run(QStringLiteral("plane -20,-20,0 40 40 200,200,200"));
    look(OdGePoint3d(0, -10, 4), OdGePoint3d(0, 0, 1));
    run(QStringLiteral("visualstyle Rendered"));
    QCOMPARE(views()->activeRenderEngine(app().currentDatabase()), kovHostViewSystem::pathTracerLabel());
    const QRect ground(60, 85, 40, 20);
    const QImage few = render(4);
    const QImage many = render(64);
    const QImage converged = render(256);
    const double early = difference(few, converged, ground);
    const double late = difference(many, converged, ground);
    QVERIFY2(late < 0.5 * early, qPrintable(QStringLiteral("4 passes off by %1, 64 by %2").arg(early).arg(late)));

    // Lit by a blue sky and a white sun, a grey ground stays grey, and the
    // sky seen above it is blue.
    const QColor grey = meanColor(converged, ground);
    QVERIFY2(std::abs(grey.blue() - grey.red()) < 12, qPrintable(grey.name()));
    const QColor sky = meanColor(converged, QRect(0, 0, kSize.width(), 6));
    QVERIFY2(sky.blue() > sky.red() + 20, qPrintable(sky.name()));
  }

  void degenerateGeometryIsLeftOutAndTheRestDrawn_data()
  {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    QTest::addColumn<DrawFunction>("draw");
    // Far points through a scaling transform: the recorder checks what it is
    // given, and the product overflows after.
    const auto overflowing = [](const DrawFunction& draw) {
      return DrawFunction([draw](OdGiWorldDraw& wd) {
        wd.geometry().pushModelTransform(OdGeMatrix3d::scaling(1e300));
        draw(wd);
        wd.geometry().popModelTransform();
      });
    };
    const auto shell = [](const std::vector<OdGePoint3d>& points, const std::vector<OdInt32>& faces) {
      return DrawFunction([points, faces](OdGiWorldDraw& wd) {
        wd.geometry().shell(OdInt32(points.size()), points.data(), OdInt32(faces.size()), faces.data());
      });
    };
    QTest::newRow("faces of no area") << shell({ { 0, 0, 3 }, { 1, 0, 3 }, { 2, 0, 3 }, { 0, 0, 3 } },
                                               { 3, 0, 1, 2, 3, 0, 3, 0, 3, 1, 1, 1 });
    QTest::newRow("far shell") << shell({ { 0, 0, 1e20 }, { 1e20, 0, 0 }, { 0, 1e20, 0 } }, { 3, 0, 1, 2 });
    QTest::newRow("shell through infinity")
        << overflowing(shell({ { 0, 0, 0 }, { 1e10, 0, 0 }, { 0, 1, 0 } }, { 3, 0, 1, 2 }));
    QTest::newRow("shell with a NaN corner")
        << DrawFunction([nan](OdGiWorldDraw& wd) {
             const OdGePoint3d points[] = { { 0, 0, 0 }, { 1, 0, 0 }, { 0, 1, 0 } };
             const OdInt32 faces[] = { 3, 0, 1, 2 };
             wd.geometry().pushModelTransform(OdGeMatrix3d::translation(OdGeVector3d(nan, 0, 0)));
             wd.geometry().shell(3, points, 4, faces);
             wd.geometry().popModelTransform();
           });
    QTest::newRow("polyline through infinity") << overflowing([](OdGiWorldDraw& wd) {
      const OdGePoint3d points[] = { { 0, 0, 0 }, { 1e-300, 0, 0 }, { 1e10, 0, 0 }, { 0, 1e-300, 0 } };
      wd.geometry().polyline(4, points);
    });
    QTest::newRow("circles of no or endless radius") << DrawFunction([inf](OdGiWorldDraw& wd) {
      wd.geometry().circle(OdGePoint3d(0, 0, 3), 0.0, OdGeVector3d::kZAxis);
      wd.geometry().circle(OdGePoint3d(0, 0, 3), 1e300, OdGeVector3d::kZAxis);
      wd.geometry().circle(OdGePoint3d(inf, 0, 3), 1.0, OdGeVector3d::kZAxis);
    });
  }

  void degenerateGeometryIsLeftOutAndTheRestDrawn()
  {
    QFETCH(DrawFunction, draw);
    run(QStringLiteral("box -1,-1,-1 2,2,2 1"));
    tstDrawnEntity::rxInit();
    {
      OdSmartPtr<tstDrawnEntity> entity = tstDrawnEntity::createObject();
      entity->draw = draw;
      OdDbBlockTableRecordPtr space = app().currentDatabase()->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
      space->appendOdDbEntity(entity);
    }
    look(OdGePoint3d(0, -6, 0), OdGePoint3d(0, 0, 0));
    const QImage image = render();
    tstDrawnEntity::rxUninit();
    QVERIFY(!image.isNull());
    QVERIFY(isRed(image.pixel(kSize.width() / 2, kSize.height() / 2)));
    QVERIFY(QLineF(redCentroid(image), QPointF(kSize.width() / 2.0, kSize.height() / 2.0)).length() < 2.0);
  }

  void aNamedViewKeepsTheViewInTheDrawingAndShowsItAgain()
  {
    run(QStringLiteral("view 3,-20,4 0,0,1 35"));
    const kovViewCamera saved = views()->viewCamera(0);
    run(QStringLiteral("namedview Save Porch"));
    run(QStringLiteral("view 0,-5,1 0,0,1 60"));
    run(QStringLiteral("namedview Restore Porch"));
    const kovViewCamera shown = views()->viewCamera(0);
    QVERIFY(shown.eye.isEqualTo(saved.eye, OdGeTol(1e-9)));
    QVERIFY(shown.target.isEqualTo(saved.target, OdGeTol(1e-9)));
    QVERIFY(qAbs(shown.fieldOfView - 35.0) < 1e-9);
  }

  void refusesWhatItCannotRender_data()
  {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("no picture type") << "render out.txt 10 10" << "ending in .png or .jpg";
    QTest::newRow("zero width") << "render out.png 0 10 10" << "1 to 16384 pixels";
    QTest::newRow("too high") << "render out.png 10 16385 10" << "1 to 16384 pixels";
    QTest::newRow("eye on target") << "view 1,1,1 1,1,1 2,2,2 40" << "target must differ";
    QTest::newRow("field of view") << "view 0,0,0 1,1,1 180 60" << "1 to 170 degrees";
    QTest::newRow("unknown named view") << "namedview Restore Porch" << "No view is named \"Porch\"; the drawing has no named views";
  }

  void refusesWhatItCannotRender()
  {
    QFETCH(QString, line);
    QFETCH(QString, message);
    QDir::setCurrent(QDir::tempPath());
    m_commands.run(line);
    QVERIFY2(m_commands.transcript.contains(message), qPrintable(m_commands.transcript));
  }
};

KOV_HOST_TEST_MAIN(tst_Render)
#include "tst_render.moc"
