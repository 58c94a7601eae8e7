// The desktop's command line: typed lines run commands with the animation
// module loaded, later lines answer the prompts of a waiting command, clicks
// in the viewport answer point and object prompts, Escape and closing the
// window cancel, and earlier lines come back with Up and Down.
#include "kovHostTestEnvironment.h"

#include "host/app/OdGsView.h"
#include "host/app/kovCommandRunner.h"
#include "host/app/kovMainWindow.h"
#include "host/app/kovPropertiesDock.h"
#include "host/app/kovSelection.h"
#include "host/app/kovViewportWidget.h"
#include "module/kovAnimationModule.h"

#include "kovSampleDrawing.h"

#include "Db/OdDbFileWriter.h"

#include <QMenuBar>


using namespace kovHostTest;

namespace {

const QString kFullLine = QStringLiteral("createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 Finish");

// Receives refresh events and counts them by key.
class RefreshCounter : public QObject {
  Q_OBJECT
public:
  QMap<QString, int> counts;

public slots:
  void refresh(const QString& key, const QString& argument)
  {
    Q_UNUSED(argument);
    ++counts[key];
  }
};

} // namespace

class tst_CommandLine : public QObject {
  Q_OBJECT

private:
  QString transcript() const { return m_window->commandLine()->history()->toPlainText(); }
  kovCommandLineWidget* commandLine() const { return m_window->commandLine(); }
  // Runs the full line, shows the whole path and finds its middle point on the screen.
  bool showPath(QPointF& onPath)
  {
    typeLine(commandLine(), kFullLine);
    m_window->viewport()->zoomExtents();
    return m_window->viewport()->projection().project(OdGePoint3d(20.0, 10.0, 1.8), onPath);
  }

  std::unique_ptr<kovMainWindow> m_window;

private slots:
  void initTestCase()
  {
    QString message;
    QVERIFY2(app().loadAnimationModule(message), qPrintable(message));
  }

  void init()
  {
    QVERIFY(openMainWindow(m_window));
  }

  void cleanup()
  {
    app().setMainWindow(nullptr);
    m_window.reset();
  }

  void fullLineRunsTheCommandThrough()
  {
    typeLine(commandLine(), kFullLine);
    QCOMPARE(entitiesOfClass(QStringLiteral("kovDbAnimation")).size(), 1u);
    QVERIFY(transcript().contains(QStringLiteral("Specify next point or [Finish/Undo/Reverse/Close]: Finish")));
    QCOMPARE(commandLine()->promptLabel()->text(), QStringLiteral("Command:"));
    QVERIFY(commandLine()->input()->text().isEmpty());
    // The module docks its editor in the window when it creates an animation.
    QDockWidget* editor = app().dockWidget(QLatin1String(kovAnimationModule::editorDockName));
    QVERIFY(editor);
    QCOMPARE(m_window->dockWidgetArea(editor), Qt::BottomDockWidgetArea);
  }

  void editUndoAndRedoTakeBackWholeCommands_data()
  {
    QTest::addColumn<QString>("line");
    QTest::newRow("a camera animation") << kFullLine;
    QTest::newRow("a mesh") << "box 0,0,0 1,1,1 2";
  }

  void editUndoAndRedoTakeBackWholeCommands()
  {
    QFETCH(QString, line);
    const std::vector<OdUInt8> before = OdDbFileWriter::fileImage(app().currentDatabase());
    typeLine(commandLine(), line);
    const std::vector<OdUInt8> after = OdDbFileWriter::fileImage(app().currentDatabase());
    QVERIFY(after != before);
    QMenu* edit = m_window->menuBar()->findChildren<QMenu*>().value(1);
    QVERIFY(edit);
    const QList<QAction*> actions = edit->actions();
    QCOMPARE(actions.value(0)->shortcut(), QKeySequence(QStringLiteral("Ctrl+Z")));
    QCOMPARE(actions.value(1)->shortcut(), QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
    // The keys reach the drawing from the empty command line too.
    QTest::keyClick(commandLine()->input(), Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(OdDbFileWriter::fileImage(app().currentDatabase()) == before);
    actions.value(0)->trigger();
    QVERIFY2(transcript().endsWith(QStringLiteral("Nothing to undo.")), qPrintable(transcript()));
    QVERIFY(OdDbFileWriter::fileImage(app().currentDatabase()) == before);
    actions.value(1)->trigger();
    QVERIFY(OdDbFileWriter::fileImage(app().currentDatabase()) == after);
  }

  void waitingCommandTakesLaterLinesAsAnswers()
  {
    bool first = false;
    bool second = false;
    bool third = false;
    whenAsked(commandLine(), QStringLiteral("Specify first point:"), [&] {
      typeLine(commandLine(), QStringLiteral("10,0,1.8"));
      whenAsked(commandLine(), QStringLiteral("[Finish/Undo/Reverse]"), [&] {
        // Two answers in one line: the second waits for the next prompt.
        typeLine(commandLine(), QStringLiteral("20,10,1.8 30,0,1.8"));
        whenAsked(commandLine(), QStringLiteral("[Finish/Undo/Reverse/Close]"),
                  [&] { typeLine(commandLine(), QStringLiteral("Finish")); }, &third);
      }, &second);
    }, &first);
    typeLine(commandLine(), QStringLiteral("createcameraanimation"));
    QVERIFY(first && second && third);
    QCOMPARE(entitiesOfClass(QStringLiteral("kovDbAnimation")).size(), 1u);
    QVERIFY(transcript().contains(QStringLiteral("Specify first point: 10,0,1.8")));
  }

  void cancellingTheWaitingCommandCreatesNothing_data()
  {
    QTest::addColumn<bool>("closeWindow");
    QTest::newRow("escape") << false;
    QTest::newRow("closing the window") << true;
  }

  void cancellingTheWaitingCommandCreatesNothing()
  {
    QFETCH(bool, closeWindow);
    bool asked = false;
    whenAsked(commandLine(), QStringLiteral("[Finish/Undo/Reverse]"), [&] {
      if (closeWindow)
        m_window->close();
      else
        QTest::keyClick(commandLine()->input(), Qt::Key_Escape);
    }, &asked);
    typeLine(commandLine(), QStringLiteral("createcameraanimation 10,0,1.8"));
    QVERIFY(asked);
    QVERIFY(entitiesOfClass(QStringLiteral("kovDbAnimation")).isEmpty());
    QVERIFY(transcript().endsWith(QStringLiteral("*Cancel*")));
    QVERIFY(!m_window->runner()->isRunning());
    QVERIFY(!m_window->viewport()->gsView()->tracker());
    // A close asked for comes once the command has unwound.
    QTRY_COMPARE(m_window->isVisible(), !closeWindow);
  }

  void refusalsAreReportedInTheTranscript_data()
  {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown command") << "nosuchcommand 1,2" << "Unknown command \"nosuchcommand\".";
    QTest::newRow("open quote") << "createcameraanimation \"10,0" << "is not closed";
    QTest::newRow("words left over") << "list extra" << "left input unused: extra";
    QTest::newRow("refused answer") << "createcameraanimation nonsense ^C" << "Point required.";
  }

  void refusalsAreReportedInTheTranscript()
  {
    QFETCH(QString, line);
    QFETCH(QString, message);
    typeLine(commandLine(), line);
    QVERIFY2(transcript().contains(message), qPrintable(transcript()));
    QVERIFY(!m_window->runner()->isRunning());
    QVERIFY(entitiesOfClass(QStringLiteral("kovDbAnimation")).isEmpty());
  }

  void upAndDownRecallEarlierLines()
  {
    QLineEdit* input = commandLine()->input();
    typeLine(commandLine(), QStringLiteral("list"));
    typeLine(commandLine(), QStringLiteral("nosuchcommand"));
    typeLine(commandLine(), QStringLiteral("nosuchcommand"));
    // The line typed twice is recalled once; past the oldest line Up stays.
    const std::pair<Qt::Key, const char*> steps[] = { { Qt::Key_Up, "nosuchcommand" }, { Qt::Key_Up, "list" },
                                                      { Qt::Key_Up, "list" },           { Qt::Key_Down, "nosuchcommand" },
                                                      { Qt::Key_Down, "" },             { Qt::Key_Up, "nosuchcommand" } };
    for (const auto& step : steps) {
      QTest::keyClick(input, step.first);
      QCOMPARE(input->text(), QString::fromLatin1(step.second));
    }
    QTest::keyClick(input, Qt::Key_Return);
    QCOMPARE(transcript().count(QStringLiteral("Unknown command \"nosuchcommand\".")), 3);
  }


  void secondCommandIsRefusedWhileOneWaits()
  {
    bool asked = false;
    bool ranSecond = true;
    whenAsked(commandLine(), QStringLiteral("Specify first point:"), [&] {
      ranSecond = app().executeCommand(QStringLiteral("list"));
      QTest::keyClick(commandLine()->input(), Qt::Key_Escape);
    }, &asked);
    typeLine(commandLine(), QStringLiteral("createcameraanimation"));
    QVERIFY(asked);
    QVERIFY(!ranSecond);
    QVERIFY(transcript().contains(QStringLiteral("A command is running")));
    QVERIFY(!transcript().contains(QStringLiteral("entities in model space")));
  }

  void everyCommandRaisesDatabaseChanged()
  {
    RefreshCounter counter;
    app().registerRefreshEvents(QStringLiteral("<event-refresh:database_changed>"), &counter);
    typeLine(commandLine(), QStringLiteral("list"));
    typeLine(commandLine(), QStringLiteral("nosuchcommand"));
    app().unregisterRefreshEvents(QStringLiteral("<event-refresh:database_changed>"), &counter);
    QCOMPARE(counter.counts.value(QStringLiteral("<event-refresh:database_changed>")), 2);
  }

  void consoleMessagesLandInTheTranscript()
  {
    services().console()->putString(QStringLiteral("from the module"));
    QVERIFY(transcript().endsWith(QStringLiteral("from the module")));
  }

  void viewportClicksAnswerPointPrompts()
  {
    kovViewportWidget* viewport = m_window->viewport();
    const QPoint pixels[] = { QPoint(viewport->width() / 3, viewport->height() * 2 / 3),
                              QPoint(viewport->width() / 2, viewport->height() / 2),
                              QPoint(viewport->width() * 2 / 3, viewport->height() * 2 / 3) };
    OdGePoint3d expected[3];
    for (int i = 0; i < 3; ++i)
      QVERIFY(viewport->pointAt(pixels[i], expected[i]));
    bool asked = false;
    whenAsked(commandLine(), QStringLiteral("Specify first point:"), [&] {
      for (const QPoint& pixel : pixels)
        QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, pixel);
      QTest::qWait(50);
      typeLine(commandLine(), QStringLiteral("Finish"));
    }, &asked);
    typeLine(commandLine(), QStringLiteral("createcameraanimation"));
    QVERIFY(asked);
    const OdDbObjectIdArray animations = entitiesOfClass(QStringLiteral("kovDbAnimation"));
    QCOMPARE(animations.size(), 1u);
    OdDbObjectPtr object = animations.first().openObject();
    OdGeExtents3d extents;
    QCOMPARE(OdDbEntityPtr(object.get())->getGeomExtents(extents), eOk);
    // The path passes through the clicked ground points.
    for (const OdGePoint3d& p : expected)
      QVERIFY(extents.contains(p, OdGeTol(0.01)));
    QVERIFY(std::fabs(extents.minPoint().z) < 1e-9 && std::fabs(extents.maxPoint().z) < 1e-9);
  }

  void trackerFollowsTheCursorDuringPointPrompts()
  {
    kovViewportWidget* viewport = m_window->viewport();
    bool asked = false;
    bool trackerAttached = false;
    bool rubberBandMoved = false;
    whenAsked(commandLine(), QStringLiteral("[Finish/Undo/Reverse]"), [&] {
      trackerAttached = viewport->gsView()->tracker() != nullptr;
      QTest::mouseMove(viewport, QPoint(viewport->width() / 4, viewport->height() / 2));
      const QImage before = viewport->grab().toImage();
      QTest::mouseMove(viewport, QPoint(viewport->width() * 3 / 4, viewport->height() / 3));
      const QImage after = viewport->grab().toImage();
      rubberBandMoved = before != after;
      QTest::keyClick(commandLine()->input(), Qt::Key_Escape);
    }, &asked);
    typeLine(commandLine(), QStringLiteral("createcameraanimation 0,0,0"));
    QVERIFY(asked);
    QVERIFY(trackerAttached);
    QVERIFY(rubberBandMoved);
    QVERIFY(!viewport->gsView()->tracker());
  }

  void clickSelectsShowsAndAnnouncesTheEntity()
  {
    QPointF onPath;
    QVERIFY(showPath(onPath));
    const OdDbObjectId animation = entitiesOfClass(QStringLiteral("kovDbAnimation")).first();
    kovViewportWidget* viewport = m_window->viewport();
    RefreshCounter counter;
    app().registerRefreshEvents(QStringLiteral("<event-refresh:selection_changed>"), &counter);

    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, onPath.toPoint());
    QCOMPARE(m_window->selection()->ids().size(), 1u);
    QCOMPARE(m_window->selection()->ids().first(), animation);
    QCOMPARE(m_window->propertiesDock()->value(QStringLiteral("Class")), QStringLiteral("kovDbAnimation"));
    QCOMPARE(m_window->propertiesDock()->value(QStringLiteral("Handle")),
             odToQString(animation.getHandle().ascii()));

    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    QVERIFY(m_window->selection()->ids().isEmpty());
    QVERIFY(m_window->propertiesDock()->value(QStringLiteral("Class")).isEmpty());
    app().unregisterRefreshEvents(QStringLiteral("<event-refresh:selection_changed>"), &counter);
    QCOMPARE(counter.counts.value(QStringLiteral("<event-refresh:selection_changed>")), 2);
  }

  void dragOrbitsInsteadOfSelecting()
  {
    QPointF onPath;
    QVERIFY(showPath(onPath));
    kovViewportWidget* viewport = m_window->viewport();
    const kovViewCamera before = services().viewSystem()->viewCamera(0);
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, onPath.toPoint());
    QMouseEvent move(QEvent::MouseMove, onPath + QPointF(60, 0), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &move);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, (onPath + QPointF(60, 0)).toPoint());
    const kovViewCamera after = services().viewSystem()->viewCamera(0);
    QVERIFY(m_window->selection()->ids().isEmpty());
    QVERIFY(!before.eye.isEqualTo(after.eye));
    QVERIFY(before.target.isEqualTo(after.target));
    QCOMPARE(before.eye.distanceTo(before.target), after.eye.distanceTo(after.target));
  }

  void selectTakesTheViewportSelectionOrTypedHandles()
  {
    const kovSampleDrawing sample = kovBuildSampleDrawing();
    app().setDatabase(sample.db, QString());
    m_window->selection()->select(sample.chairRef);
    typeLine(commandLine(), QStringLiteral("dumpblockcontent"));
    QVERIFY(transcript().contains(QStringLiteral("1 found")));
    QVERIFY(transcript().contains(QStringLiteral("1 block references dumped.")));

    m_window->selection()->clear();
    const QString handle = odToQString(sample.tableRef.getHandle().ascii());
    typeLine(commandLine(), QStringLiteral("dumpblockcontent ffff %1 \"\"").arg(handle));
    QVERIFY(transcript().contains(QStringLiteral("No object has the handle ffff.")));
    QVERIFY(transcript().endsWith(QStringLiteral("1 block references dumped.")));
  }
};

KOV_HOST_TEST_MAIN(tst_CommandLine)
#include "tst_commandline.moc"
