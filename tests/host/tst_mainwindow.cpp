// The host application and its main window without the animation module:
// refresh events, dock placement and the saved layout, the title, and
// opening and saving drawings with their failures told in message boxes.
#include "kovHostTestEnvironment.h"

#include "host/app/kovMainWindow.h"
#include "host/app/kovPropertiesDock.h"
#include "host/app/kovViewportWidget.h"

#include "kovSampleDrawing.h"

#include <QDockWidget>
#include <QFile>
#include <QTreeWidget>
#include <QWheelEvent>

using namespace kovHostTest;

namespace {

class RefreshLog : public QObject {
  Q_OBJECT
public:
  QStringList calls;

public slots:
  void refresh(const QString& key, const QString& argument) { calls << key + QLatin1Char(':') + argument; }
};

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

  void zoomExtentsBringsTheWholeDrawingIntoView()
  {
    const kovSampleDrawing sample = kovBuildSampleDrawing();
    app().setDatabase(sample.db, QString());
    kovViewportWidget* viewport = m_window->viewport();
    viewport->zoomExtents();
    const kovViewProjection projection = viewport->projection();
    int points = 0;
    for (const kovScene::Item& item : viewport->scene().items()) {
      for (const OdGiPrimitiveRecord& record : item.records) {
        for (const OdGePoint3d& p : record.points) {
          QPointF pixel;
          QVERIFY(projection.project(p, pixel));
          QVERIFY(QRectF(viewport->rect()).contains(pixel));
          ++points;
        }
      }
    }
    QVERIFY(points > 0);
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
    const QMap<QString, QString> node = kovPropertiesDock::parsePropLine(QStringLiteral(
        "<Prop Name=\"Name\" Type=\"string\" VisibleName=\"Name &amp; &quot;title&quot;\" Path=\"General\" "
        "Value=\"a&lt;b&#10;c\" />"));
    QCOMPARE(node.value(QStringLiteral("Name")), QStringLiteral("Name"));
    QCOMPARE(node.value(QStringLiteral("VisibleName")), QStringLiteral("Name & \"title\""));
    QCOMPARE(node.value(QStringLiteral("Path")), QStringLiteral("General"));
    QCOMPARE(node.value(QStringLiteral("Value")), QStringLiteral("a<b\nc"));
    QVERIFY(kovPropertiesDock::parsePropLine(QStringLiteral("not a node")).isEmpty());

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
