// The host application and its main window without the animation module:
// refresh events, dock placement and the saved layout, the title, opening
// and saving drawings with their failures told in message boxes, and the
// viewport as the render engine draws it.
#include "kovHostTestEnvironment.h"
#include "kovPixels.h"

#include "host/api/IkovAnimatedScene.h"
#include "host/app/kovMainWindow.h"
#include "host/app/kovPropertiesDock.h"
#include "host/app/kovSelection.h"
#include "host/app/kovViewportWidget.h"

#include "kovSampleDrawing.h"

#include "Rx/OdRxDictionary.h"

#include <QAction>
#include <QDockWidget>
#include <QFile>
#include <QMenuBar>
#include <QStandardPaths>
#include <QTreeWidget>
#include <QWheelEvent>

using namespace kovHostTest;

Q_DECLARE_METATYPE(kovRenderView::VisualStyle)

namespace {

class RefreshLog : public QObject {
  Q_OBJECT
public:
  QStringList calls;

public slots:
  void refresh(const QString& key, const QString& argument) { calls << key + QLatin1Char(':') + argument; }
};

// The module's animated scene as far as the viewport asks it: a camera or none.
class FakeAnimatedScene : public IkovAnimatedScene {
public:
  Frame shown;

  Frame frame(OdDbDatabase*) const override { return shown; }
  // The test owns it; the registry only borrows it.
  void addRef() override {}
  void release() override {}
};

// The red of the drawing: right of the axes in the lower left corner, whose x
// axis is red too.
Red drawnRed(const QImage& image)
{
  return red(image, image.rect().adjusted(image.width() / 4, 0, 0, 0));
}

kovViewCamera lookAt(const OdGePoint3d& eye, const OdGePoint3d& target)
{
  kovViewCamera camera;
  camera.eye = eye;
  camera.target = target;
  camera.fieldOfView = 45.0;
  return camera;
}

} // namespace

class tst_MainWindow : public QObject {
  Q_OBJECT

private:
  std::unique_ptr<kovMainWindow> m_window;
  QTemporaryDir m_dir;

  void openWindow()
  {
    m_window = std::make_unique<kovMainWindow>(app(), services());
    app().setMainWindow(m_window.get());
    m_window->show();
  }

  QAction* viewMenuAction(const QString& name) const
  {
    for (QAction* menu : m_window->menuBar()->actions()) {
      if (menu->menu() && menu->text() == QStringLiteral("&View")) {
        for (QAction* action : menu->menu()->actions()) {
          if (action->objectName() == name)
            return action;
        }
      }
    }
    return nullptr;
  }

  void closeWindow()
  {
    m_window->close();
    app().setMainWindow(nullptr);
    m_window.reset();
  }

private slots:
  void init()
  {
    app().setDatabase(OdDbDatabase::createObject(), QString());
    openWindow();
  }

  void cleanup()
  {
    if (m_window)
      closeWindow();
    services().viewSystem()->setVisualStyle(0, kovRenderView::VisualStyle::Shaded);
  }

  void refreshEventsReachReceiversUntilUnregistered()
  {
    RefreshLog log;
    app().registerRefreshEvents(QStringLiteral("<a>|<b>"), &log);
    app().registerRefreshEvents(QStringLiteral("<a>"), &log);
    app().raiseRefreshEvent(QStringLiteral("<a>"), QStringLiteral("1"));
    app().raiseRefreshEvent(QStringLiteral("<b>"));
    app().raiseRefreshEvent(QStringLiteral("<c>"));
    QCOMPARE(log.calls, QStringList({ QStringLiteral("<a>:1"), QStringLiteral("<b>:") }));

    app().unregisterRefreshEvents(QStringLiteral("<a>"), &log);
    app().raiseRefreshEvent(QStringLiteral("<a>"));
    app().raiseRefreshEvent(QStringLiteral("<b>"), QStringLiteral("2"));
    QCOMPARE(log.calls.last(), QStringLiteral("<b>:2"));
    QCOMPARE(log.calls.size(), 3);
    app().unregisterRefreshEvents(QStringLiteral("<b>"), &log);
    app().raiseRefreshEvent(QStringLiteral("<b>"));
    QCOMPARE(log.calls.size(), 3);
  }


  void productionFoldersExpandToTheUsersOwn()
  {
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QString movies = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    QVERIFY(!pictures.isEmpty() && !movies.isEmpty());
    QCOMPARE(app().expandPath(QStringLiteral("{Pictures}/stills")), pictures + QStringLiteral("/stills"));
    QCOMPARE(app().expandPath(QStringLiteral("{Video}")), movies);
  }

  void showDockWidgetPlacesOnceThenOnlyShows()
  {
    auto* dock = new QDockWidget(QStringLiteral("Tool"), m_window.get());
    dock->setObjectName(QStringLiteral("ToolDock"));
    dock->setWidget(new QWidget);
    app().registerDockWidget(QStringLiteral("tool"), dock);
    QCOMPARE(app().dockWidget(QStringLiteral("tool")), dock);

    app().showDockWidget(QStringLiteral("tool"), Qt::BottomDockWidgetArea, QSize(500, 250));
    QCOMPARE(m_window->dockWidgetArea(dock), Qt::BottomDockWidgetArea);
    QVERIFY(dock->isVisible());
    // Across the bottom, above the command line, which keeps the window's edge.
    QDockWidget* commandDock = m_window->findChild<QDockWidget*>(QStringLiteral("CommandLineDock"));
    QTRY_VERIFY(dock->geometry().bottom() < commandDock->geometry().top());

    dock->hide();
    m_window->addDockWidget(Qt::LeftDockWidgetArea, dock);
    app().showDockWidget(QStringLiteral("tool"), Qt::BottomDockWidgetArea, QSize(500, 250));
    QCOMPARE(m_window->dockWidgetArea(dock), Qt::LeftDockWidgetArea);
    QVERIFY(dock->isVisible());

    // Unknown names are ignored.
    app().showDockWidget(QStringLiteral("nosuchdock"), Qt::TopDockWidgetArea, QSize(10, 10));
  }

  void movingADockRaisesLayoutChanged()
  {
    RefreshLog log;
    app().registerRefreshEvents(QStringLiteral("<event-refresh:layout_changed>"), &log);
    m_window->addDockWidget(Qt::LeftDockWidgetArea, m_window->propertiesDock());
    app().unregisterRefreshEvents(QStringLiteral("<event-refresh:layout_changed>"), &log);
    QVERIFY(!log.calls.isEmpty());
  }

  void dockLayoutIsRestoredInTheNextSession()
  {
    m_window->addDockWidget(Qt::LeftDockWidgetArea, m_window->propertiesDock());
    auto* late = new QDockWidget(QStringLiteral("Late"), m_window.get());
    late->setObjectName(QStringLiteral("LateDock"));
    app().registerDockWidget(QStringLiteral("late"), late);
    app().showDockWidget(QStringLiteral("late"), Qt::TopDockWidgetArea, QSize(300, 100));
    closeWindow();

    openWindow();
    QCOMPARE(m_window->dockWidgetArea(m_window->propertiesDock()), Qt::LeftDockWidgetArea);
    // A dock made after the window started goes where the saved layout had it.
    auto* again = new QDockWidget(QStringLiteral("Late"), m_window.get());
    again->setObjectName(QStringLiteral("LateDock"));
    app().registerDockWidget(QStringLiteral("late"), again);
    app().showDockWidget(QStringLiteral("late"), Qt::BottomDockWidgetArea, QSize(300, 100));
    QCOMPARE(m_window->dockWidgetArea(again), Qt::TopDockWidgetArea);
  }

  void saveAndOpenKeepTheDrawingAndNameTheWindow()
  {
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Untitled - kovhost"));
    const kovSampleDrawing sample = kovBuildSampleDrawing();
    const QString referenceClass = odToQString(sample.chairRef.objectClass()->name());
    app().setDatabase(sample.db, QString());
    const QString path = m_dir.filePath(QStringLiteral("sample.kdb"));
    QVERIFY(m_window->saveDrawing(path));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("sample.kdb - kovhost"));
    QCOMPARE(app().drawingPath(), path);

    app().setDatabase(OdDbDatabase::createObject(), QString());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Untitled - kovhost"));
    QVERIFY(m_window->openDrawing(path));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("sample.kdb - kovhost"));
    QCOMPARE(entitiesOfClass(referenceClass).size(), 2u);
  }

  void damagedDrawingIsRefusedWithTheLoadersMessage()
  {
    const QString path = m_dir.filePath(QStringLiteral("damaged.kdb"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("this is not a drawing at all, just some words");
    file.close();
    OdDbDatabase* before = app().currentDatabase();

    MessageBoxCatcher box;
    box.arm();
    QVERIFY(!m_window->openDrawing(path));
    QCOMPARE(box.title, QStringLiteral("Open Drawing"));
    QVERIFY2(box.text.contains(QStringLiteral("damaged.kdb")), qPrintable(box.text));
    QCOMPARE(app().currentDatabase(), before);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Untitled - kovhost"));
  }


  void saveThatFailsKeepsTheFileThere()
  {
    const QString folder = m_dir.filePath(QStringLiteral("saved"));
    QVERIFY(QDir().mkpath(folder));
    const QString path = folder + QStringLiteral("/kept.kdb");
    QVERIFY(m_window->saveDrawing(path));
    QFile saved(path);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const QByteArray bytes = saved.readAll();
    saved.close();

    // Saving over a folder fails: the message names the file, nothing changes.
    const QString folderPath = m_dir.filePath(QStringLiteral("afolder.kdb"));
    QVERIFY(QDir().mkpath(folderPath));
    MessageBoxCatcher box;
    box.arm();
    QVERIFY(!m_window->saveDrawing(folderPath));
    QCOMPARE(box.title, QStringLiteral("Save Drawing"));
    QVERIFY2(box.text.contains(QStringLiteral("afolder.kdb")), qPrintable(box.text));
    QCOMPARE(app().drawingPath(), path);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QCOMPARE(saved.readAll(), bytes);
  }

  void aRedBoxShowsInTheMiddleAndAClickSelectsIt()
  {
    kovViewportWidget* viewport = m_window->viewport();
    const QImage empty = viewport->grab().toImage();
    QVERIFY2(viewport->engineError().isEmpty(), qPrintable(viewport->engineError()));
    QCOMPARE(drawnRed(empty).count, 0);

    typeLine(m_window->commandLine(), QStringLiteral("box -1,-1,0 2,2,2 1"));
    viewport->zoomExtents();
    const OdDbObjectId box = entitiesOfClass(QStringLiteral("kovDbPolygonMesh")).first();
    const QPoint middle = viewport->rect().center();
    const QImage shown = viewport->grab().toImage();
    QVERIFY(isRed(shown.pixel(middle)));
    // Zoomed to its extents: big, and whole.
    QVERIFY(drawnRed(shown).count > shown.width() * shown.height() / 10);
    QCOMPARE(red(shown, shown.rect().adjusted(shown.width() / 4, 2, -2, -2)).count, drawnRed(shown).count);

    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, middle);
    QCOMPARE(m_window->selection()->ids(), OdDbObjectIdArray({ box }));
    // The engine highlights it.
    QVERIFY(drawnRed(viewport->grab().toImage()).count < drawnRed(shown).count / 4);

    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(middle.x(), 3));
    QVERIFY(m_window->selection()->ids().isEmpty());
    QCOMPARE(viewport->grab().toImage(), shown);
  }

  void theViewMenuSwitchesTheVisualStyle_data()
  {
    QTest::addColumn<QString>("action");
    QTest::addColumn<kovRenderView::VisualStyle>("style");
    QTest::addColumn<QString>("engine");
    // The share of the shaded picture's red pixels the style shows.
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::addColumn<int>("passes");
    QTest::newRow("wireframe") << "VisualStyleWireframe" << kovRenderView::VisualStyle::Wireframe
                               << kovHostViewSystem::rasterEngineLabel() << 0.0 << 0.2 << 1;
    QTest::newRow("edges") << "VisualStyleShadedWithEdges" << kovRenderView::VisualStyle::ShadedWithEdges
                           << kovHostViewSystem::rasterEngineLabel() << 0.8 << 1.0 << 1;
    QTest::newRow("rendered") << "VisualStyleRendered" << kovRenderView::VisualStyle::Rendered
                              << kovHostViewSystem::pathTracerLabel() << 0.5 << 1.2 << 32;
  }

  void theViewMenuSwitchesTheVisualStyle()
  {
    QFETCH(QString, action);
    QFETCH(kovRenderView::VisualStyle, style);
    QFETCH(QString, engine);
    QFETCH(double, least);
    QFETCH(double, most);
    QFETCH(int, passes);
    m_window->resize(640, 480);
    kovViewportWidget* viewport = m_window->viewport();
    typeLine(m_window->commandLine(), QStringLiteral("box -1,-1,0 2,2,2 1"));
    viewport->zoomExtents();
    const int shaded = drawnRed(viewport->grab().toImage()).count;
    QVERIFY(shaded > 0);

    QAction* chosen = viewMenuAction(action);
    QVERIFY(chosen);
    chosen->trigger();
    const int viewportNumber = viewport->viewportNumber();
    QCOMPARE(services().viewSystem()->visualStyle(viewportNumber), style);
    QCOMPARE(services().viewSystem()->activeRenderEngine(app().currentDatabase()), engine);
    // The path tracer's first passes come out dark.
    QTRY_VERIFY_WITH_TIMEOUT(viewport->passes() >= passes, 60000);
    const int seen = drawnRed(viewport->grab().toImage()).count;
    QVERIFY2(seen >= least * shaded && seen <= most * shaded, qPrintable(QStringLiteral("%1 of %2").arg(seen).arg(shaded)));

    // The command changes it too, and the menu follows.
    typeLine(m_window->commandLine(), QStringLiteral("visualstyle Shaded"));
    QVERIFY(!chosen->isChecked());
    QVERIFY(viewMenuAction(QStringLiteral("VisualStyleShaded"))->isChecked());
  }

  void theRenderedStyleAddsPassesWhileIdleUpToTheLimit()
  {
    app().setSetting(kovViewportWidget::maxPassesKey(), 4);
    m_window->resize(480, 360);
    kovViewportWidget* viewport = m_window->viewport();
    typeLine(m_window->commandLine(), QStringLiteral("box -1,-1,0 2,2,2 1"));
    viewport->zoomExtents();
    services().viewSystem()->setVisualStyle(viewport->viewportNumber(), kovRenderView::VisualStyle::Rendered);
    QTRY_COMPARE_WITH_TIMEOUT(viewport->passes(), 4, 60000);
    QTest::qWait(200);
    QCOMPARE(viewport->passes(), 4);

    // Any change starts again.
    services().viewSystem()->setViewCamera(viewport->viewportNumber(),
                                           kovViewProjection::orbit(viewport->camera(), 0.3, 0.0));
    viewport->grab();
    QCOMPARE(viewport->passes(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(viewport->passes(), 4, 60000);
  }

  void lookingThroughFollowsTheAnimationCamera()
  {
    FakeAnimatedScene scene;
    odrxSysRegistry()->putAt(OdString(IkovAnimatedScene::serviceId()), &scene);
    m_window->resize(480, 360);
    kovViewportWidget* viewport = m_window->viewport();
    typeLine(m_window->commandLine(), QStringLiteral("box -0.5,-0.5,0 1,1,1 1"));
    const kovViewCamera own = services().viewSystem()->viewCamera(viewport->viewportNumber());
    viewport->lookThroughAction()->setChecked(true);

    const kovViewCamera cameras[] = { lookAt(OdGePoint3d(-8, -3, 0.5), OdGePoint3d(0, -1, 0.5)),
                                      lookAt(OdGePoint3d(4, -9, 3), OdGePoint3d(1, 0, 0.5)) };
    for (const kovViewCamera& camera : cameras) {
      scene.shown.hasCamera = true;
      scene.shown.camera = camera;
      // The module refreshes the view system as the animation moves on.
      services().viewSystem()->refresh(OdDbObjectId());
      QPointF predicted;
      QVERIFY(viewport->projection().project(OdGePoint3d(0, 0, 0.5), predicted));
      const QPointF seen = drawnRed(viewport->grab().toImage()).centre;
      QVERIFY2(QLineF(seen, predicted).length() < 4.0,
               qPrintable(QStringLiteral("seen %1,%2 predicted %3,%4")
                              .arg(seen.x()).arg(seen.y()).arg(predicted.x()).arg(predicted.y())));
    }

    // Zooming leaves the animation's camera, from where it looked.
    QWheelEvent wheel(QPointF(viewport->rect().center()), QPointF(viewport->mapToGlobal(viewport->rect().center())),
                      QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &wheel);
    QVERIFY(!viewport->lookThroughAction()->isChecked());
    const kovViewCamera now = services().viewSystem()->viewCamera(viewport->viewportNumber());
    QVERIFY(!now.eye.isEqualTo(own.eye));
    QVERIFY(now.eye.distanceTo(cameras[1].target) < cameras[1].eye.distanceTo(cameras[1].target));
    odrxSysRegistry()->remove(OdString(IkovAnimatedScene::serviceId()));
  }

  void wheelZoomKeepsThePointUnderTheCursor()
  {
    kovViewportWidget* viewport = m_window->viewport();
    const QPointF pixel(viewport->width() * 0.3, viewport->height() * 0.7);
    const kovViewCamera before = services().viewSystem()->viewCamera(0);
    OdGePoint3d under;
    QVERIFY(viewport->projection().pointOnPlane(pixel, before.target.z, under));
    QWheelEvent wheel(pixel, QPointF(viewport->mapToGlobal(pixel.toPoint())), QPoint(), QPoint(0, 240), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &wheel);
    const kovViewCamera after = services().viewSystem()->viewCamera(0);
    QVERIFY(after.eye.distanceTo(under) < before.eye.distanceTo(under) * 0.8);
    QPointF still;
    QVERIFY(viewport->projection().project(under, still));
    QVERIFY(QLineF(still, pixel).length() < 1e-6);
  }

  void propertiesShowWhatTheProviderDescribes()
  {
    const QMap<QString, QString> node = kovPropertyNodes::parsePropLine(QStringLiteral(
        "<Prop Name=\"Name\" Type=\"string\" VisibleName=\"Name &amp; &quot;title&quot;\" Path=\"General\" "
        "Value=\"a&lt;b&#10;c\" />"));
    QCOMPARE(node.value(QStringLiteral("Name")), QStringLiteral("Name"));
    QCOMPARE(node.value(QStringLiteral("VisibleName")), QStringLiteral("Name & \"title\""));
    QCOMPARE(node.value(QStringLiteral("Path")), QStringLiteral("General"));
    QCOMPARE(node.value(QStringLiteral("Value")), QStringLiteral("a<b\nc"));
    QVERIFY(kovPropertyNodes::parsePropLine(QStringLiteral("not a node")).isEmpty());

    const kovSampleDrawing sample = kovBuildSampleDrawing();
    app().setDatabase(sample.db, QString());
    services().propSystem()->showProperties(sample.spline);
    QCOMPARE(m_window->propertiesDock()->value(QStringLiteral("Handle")),
             odToQString(sample.spline.getHandle().ascii()));
    QVERIFY(!m_window->propertiesDock()->value(QStringLiteral("Extents min")).isEmpty());
    // A new drawing empties the dock: the old ids are gone.
    app().setDatabase(OdDbDatabase::createObject(), QString());
    QCOMPARE(m_window->propertiesDock()->tree()->topLevelItemCount(), 0);
  }
};

KOV_HOST_TEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
