// The module object: its entry point, start-up and shut-down, the editor's
// dock, and the camera animation commands run as typed.
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "module/kovAnimationModule.h"

#include "host/api/IkovApplication.h"
#include "kovTestHostDefaults.h"
#include "host/render/OdGsDevice.h"
#include "host/render/kovRenderView.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"
#include "Db/OdDbObjectIterator.h"
#include "Ed/OdEdBaseUserIO.h"
#include "Ed/OdEdCancel.h"
#include "Ed/OdEdCommandContext.h"
#include "Ed/OdEdCommandLine.h"
#include "Ed/OdEdCommandStack.h"
#include "Prop/OdPropServices.h"
#include "Rx/OdRxDictionary.h"

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QtTest>


// A host with a main window that records what the module asks of it.
class TestHost : public QApplication, public kovTestHostDefaults {
  Q_OBJECT
  Q_INTERFACES(IkovApplication)
public:
  TestHost(int& argc, char** argv) : QApplication(argc, argv) {}

  QMainWindow* mainWindow() const override { return window; }
  void registerDockWidget(const QString& name, QDockWidget* dock) override { docks.insert(name, dock); }
  void showDockWidget(const QString& name, Qt::DockWidgetArea area, const QSize& size) override
  {
    shown << name;
    lastArea = area;
    lastSize = size;
  }

  QMainWindow* window = nullptr;
  QMap<QString, QDockWidget*> docks;
  QStringList shown;
  Qt::DockWidgetArea lastArea = Qt::NoDockWidgetArea;
  QSize lastSize;
};

namespace {

const char* const kCommands[] = { "animationeditor", "createanimation", "createcameraanimation",
                                  "dumpblockcontent", "animationcreate", "animationcameracreate" };

// Keeps the transcript a command line writes.
class Transcript : public OdEdBaseUserIO {
public:
  void putString(const OdString& text) override { lines << odToQString(text); }
  QStringList lines;

protected:
  OdString getInput(const OdString&) override { throw OdEdCancel(); }
};

QList<kovDbAnimationPtr> animationsIn(OdDbDatabase* db)
{
  QList<kovDbAnimationPtr> found;
  OdDbBlockTableRecordPtr space = db->getModelSpaceId().safeOpenObject();
  for (OdDbObjectIteratorPtr it = space->newIterator(); !it->done(); it->step()) {
    kovDbAnimationPtr animation = kovDbAnimation::cast(it->objectId().openObject().get());
    if (!animation.isNull())
      found << animation;
  }
  return found;
}

OdResult run(const QString& line, OdDbDatabase* db, Transcript* transcript = nullptr)
{
  OdSmartPtr<Transcript> own(new Transcript);
  return odedExecuteCommandLine(odFromQString(line), db, transcript ? transcript : own.get());
}

} // namespace

class tst_AnimationModule : public QObject {
  Q_OBJECT
private slots:
  void initTestCase()
  {
    odInitialize();
    host()->window = new QMainWindow;
  }
  void cleanupTestCase()
  {
    delete host()->window;
    odUninitialize();
  }

  void dockIsCreatedOnDemandBeforeStartUp();
  void startUpRegistersAndShutDownRemovesEverything();
  void scriptedPathCreatesTheCameraAnimation();
  void promptsOfferCloseFromTheThirdPoint();
  void answersShapeThePath_data();
  void answersShapeThePath();
  void cancelAtAnyPromptCreatesNothing_data();
  void cancelAtAnyPromptCreatesNothing();
  void createanimationBuildsTheDefaultPath();
  void commandsRefuseAContextWithoutADrawing();
  void theEnginesPictureShowsThePathUntilTheGizmosAreHidden();

private:
  static TestHost* host() { return static_cast<TestHost*>(QCoreApplication::instance()); }
};

void tst_AnimationModule::dockIsCreatedOnDemandBeforeStartUp()
{
  kovAnimationModule module;
  QCOMPARE(kovAnimationModule::instance(), &module);
  QDockWidget* dock = module.dockWidget();
  QVERIFY(dock);
  QCOMPARE(dock->objectName(), QStringLiteral("AnimationEditor"));
  QCOMPARE(dock->windowTitle(), QStringLiteral("Animation Editor"));
  QCOMPARE(dock->parent(), host()->window);
  QVERIFY(!dock->testAttribute(Qt::WA_DeleteOnClose));
  QVERIFY(dock->widget() && dock->widget()->inherits("kovAnimationEditorWidget"));
  // The host knows the editor by this name and gives it this size at first.
  QCOMPARE(host()->docks.value(QStringLiteral("animation_editor")), dock);
  QCOMPARE(host()->lastArea, Qt::BottomDockWidgetArea);
  QCOMPARE(host()->lastSize, QSize(500, 250));
  QCOMPARE(module.dockWidget(), dock);
  delete dock;
}

void tst_AnimationModule::startUpRegistersAndShutDownRemovesEverything()
{
  {
    kovAnimationModule module;
    module.initApp();
    for (const char* name : kCommands) {
      OdEdCommandPtr command = odedRegCmds()->lookupCmd(OdString(name));
      QVERIFY2(!command.isNull(), name);
      QCOMPARE(command->groupName(), OdString(L"kovAnimation"));
      QCOMPARE(command->localName(), command->globalName());
    }
    QVERIFY(kovDbAnimation::desc());
    QVERIFY(odrxClassDictionary()->has(OdString(L"kovDbTempBlockReference")));
    QVERIFY(odrxClassDictionary()->has(OdString(L"AnimationGripAppData")));
    QVERIFY(odpropServices()->hasPropForClass(OdString(L"kovDbEntityAnimation")));
    QVERIFY(module.dockWidget());
    delete module.dockWidget();
    module.uninitApp();
  }
  for (const char* name : kCommands)
    QVERIFY2(odedRegCmds()->lookupCmd(OdString(name)).isNull(), name);
  for (const wchar_t* cls : { L"kovDbAnimation", L"kovDbTempBlockReference", L"AnimationGripAppData",
                              L"OdDbXmlPropAnimation" })
    QVERIFY(!odrxClassDictionary()->has(OdString(cls)));
  QVERIFY(!odpropServices()->hasPropForClass(OdString(L"kovDbEntityAnimation")));
  QCOMPARE(kovAnimationModule::instance(), nullptr);
}

// The commands below run with the module started and the drawing fresh.
namespace {

struct Started {
  Started()
  {
    module.initApp();
    db = OdDbDatabase::createObject();
  }
  ~Started()
  {
    db = nullptr;
    delete module.dockWidget();
    module.uninitApp();
  }
  kovAnimationModule module;
  OdDbDatabasePtr db;
};

// The points of an animation's camera path.
QList<QList<double>> pathOf(const kovDbAnimationPtr& animation)
{
  QList<QList<double>> path;
  for (const QVariant& value : animation->constTracks().front()->elementAt(0).values()) {
    const QVariantList list = value.toList();
    path.append({ list.value(0).toDouble(), list.value(1).toDouble(), list.value(2).toDouble() });
  }
  return path;
}

} // namespace

void tst_AnimationModule::scriptedPathCreatesTheCameraAnimation()
{
  Started started;
  QCOMPARE(run(QStringLiteral("createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 Finish"), started.db), eOk);
  const QList<kovDbAnimationPtr> animations = animationsIn(started.db);
  QCOMPARE(animations.size(), 1);
  const kovDbAnimationPtr& animation = animations.first();
  QCOMPARE(animation->animationName(), QStringLiteral("New Camera Animation"));
  QCOMPARE(animation->animationDescription(), QStringLiteral("New Camera Animation"));
  QCOMPARE(kovAnimationModule::globalEditingAnimationId(), animation->objectId());
  QCOMPARE(static_cast<int>(animation->constTracks().size()), 1);
  const kovAnimationTrack& track = *animation->constTracks().front();
  QCOMPARE(track.trackName(), QStringLiteral("Camera Track"));
  QCOMPARE(track.trackTypeIdentifier(), QStringLiteral("Camera"));
  QCOMPARE(track.numElements(), 2);
  QCOMPARE(track.elementAt(0).animationType(), kovAnimationItem::LocationBySpline);
  QCOMPARE(track.elementAt(1).animationType(), kovAnimationItem::RotationByAngles);

  // The path passes through the three points, timed at one unit per second
  // along the spline: longer than the two chords of 14.14 units each.
  QCOMPARE(pathOf(animation), (QList<QList<double>> { { 10, 0, 1.8 }, { 20, 10, 1.8 }, { 30, 0, 1.8 } }));
  const QList<int> keys = track.elementAt(0).values().keys();
  QCOMPARE(keys.first(), 0);
  QVERIFY(keys.at(1) > 14142 && keys.at(1) < 16000);
  QVERIFY(keys.last() > 28284 && keys.last() < 32000);

  // The drawing goes: the module forgets the animation instead of keeping an
  // id into freed memory.
  started.db = nullptr;
  QVERIFY(kovAnimationModule::globalEditingAnimationId().isNull());
}

void tst_AnimationModule::promptsOfferCloseFromTheThirdPoint()
{
  Started started;
  OdSmartPtr<Transcript> transcript(new Transcript);
  QCOMPARE(run(QStringLiteral("createcameraanimation 0,0,0 5,0,0 5,5,0 Finish"), started.db, transcript.get()), eOk);
  for (const char* line : { "Draw a camera path...", "Specify first point: 0,0,0",
                            "Specify next point or [Finish/Undo/Reverse]: 5,0,0",
                            "Specify next point or [Finish/Undo/Reverse]: 5,5,0",
                            "Specify next point or [Finish/Undo/Reverse/Close]: Finish" })
    QVERIFY2(transcript->lines.contains(QString::fromLatin1(line)), line);
}

void tst_AnimationModule::answersShapeThePath_data()
{
  QTest::addColumn<QString>("line");
  QTest::addColumn<QList<QList<double>>>("points");
  QTest::newRow("doubled point finishes") << QStringLiteral("createcameraanimation 0,0,0 5,0,0 5,0.0005,0")
                                          << QList<QList<double>> { { 0, 0, 0 }, { 5, 0, 0 } };
  // Undo of the only point asks for the first point again.
  QTest::newRow("undo and reverse")
    << QStringLiteral("createcameraanimation 9,9,9 Undo 0,0,0 1,0,0 2,0,0 Undo 3,0,0 Reverse -1,0,0 Finish")
    << QList<QList<double>> { { 3, 0, 0 }, { 1, 0, 0 }, { 0, 0, 0 }, { -1, 0, 0 } };
  QTest::newRow("close returns to the start") << QStringLiteral("createcameraanimation 0,0,0 10,0,0 10,10,0 Close")
                                              << QList<QList<double>> { { 0, 0, 0 }, { 10, 0, 0 }, { 10, 10, 0 }, { 0, 0, 0 } };
}

void tst_AnimationModule::answersShapeThePath()
{
  QFETCH(QString, line);
  QFETCH(QList<QList<double>>, points);
  Started started;
  QCOMPARE(run(line, started.db), eOk);
  QCOMPARE(pathOf(animationsIn(started.db).first()), points);
}

void tst_AnimationModule::cancelAtAnyPromptCreatesNothing_data()
{
  QTest::addColumn<QString>("line");
  QTest::newRow("first point") << QStringLiteral("createcameraanimation ^C");
  QTest::newRow("second point") << QStringLiteral("createcameraanimation 1,2,3 ^C");
  QTest::newRow("later point") << QStringLiteral("createcameraanimation 1,2,3 4,5,6 7,8,9 ^C");
  QTest::newRow("words run out") << QStringLiteral("createcameraanimation 1,2,3 4,5,6");
  QTest::newRow("second name") << QStringLiteral("animationcameracreate 1,2,3 ^C");
  // Close is not offered before the third point: there it is not a keyword.
  QTest::newRow("close too early") << QStringLiteral("createcameraanimation 0,0,0 10,0,0 Close");
}

void tst_AnimationModule::cancelAtAnyPromptCreatesNothing()
{
  QFETCH(QString, line);
  Started started;
  QCOMPARE(run(line, started.db), eUserBreak);
  QVERIFY(animationsIn(started.db).isEmpty());
}

void tst_AnimationModule::createanimationBuildsTheDefaultPath()
{
  Started started;
  QCOMPARE(run(QStringLiteral("createanimation"), started.db), eOk);
  QCOMPARE(run(QStringLiteral("animationcreate"), started.db), eOk);
  const QList<kovDbAnimationPtr> animations = animationsIn(started.db);
  QCOMPARE(animations.size(), 2);
  QCOMPARE(pathOf(animations.first()), (QList<QList<double>> { { -10, 0, 0 }, { 0, 10, 0 }, { 10, 0, 0 } }));
  const kovAnimationItem& path = animations.first()->constTracks().front()->elementAt(0);
  // The path's end tangents: along +X at the start, along -X at the end.
  QCOMPARE(path.valueAsPointGetTanget(path.values().firstKey(), OdGePoint3d()).x, 1.0);
  QCOMPARE(path.valueAsPointGetTanget(path.values().lastKey(), OdGePoint3d()).x, -1.0);
}

void tst_AnimationModule::commandsRefuseAContextWithoutADrawing()
{
  Started started;
  OdSmartPtr<Transcript> io(new Transcript);
  for (const char* name : { "createanimation", "createcameraanimation", "dumpblockcontent" }) {
    OdEdCommandPtr command = odedRegCmds()->lookupCmd(OdString(name));
    OdEdCommandContextPtr plain = OdEdCommandContext::createObject(io.get(), started.db.get());
    OdResult code = eOk;
    try {
      command->execute(plain.get());
    } catch (const OdError& error) {
      code = error.code();
    }
    QCOMPARE(code, eNotThatKindOfClass);
  }
  QCOMPARE(run(QStringLiteral("createanimation"), nullptr), eNotThatKindOfClass);
}

void tst_AnimationModule::theEnginesPictureShowsThePathUntilTheGizmosAreHidden()
{
  Started started;
  QCOMPARE(run(QStringLiteral("createcameraanimation -4,-2,0 0,3,0 4,-2,0 Finish"), started.db), eOk);
  QString error;
  std::unique_ptr<OdGsDevice> device = OdGsDevice::create(error);
  QVERIFY2(device, qPrintable(error));
  device->setDatabase(started.db);
  kovViewCamera above;
  above.eye.set(0, 0, 12);
  above.target.set(0, 0.5, 0);
  above.up = OdGeVector3d::kYAxis;
  QImage shown;
  QImage hidden;
  QImage empty;
  {
    kovRenderView view(*device, QSize(120, 90));
    view.setCamera(above);
    shown = view.render();
    {
      kovDbAnimationPtr animation = animationsIn(started.db).first();
      animation->upgradeOpen();
      animation->hideAnimationGizmos() = true;
    }
    hidden = view.render();
    {
      kovDbAnimationPtr animation = animationsIn(started.db).first();
      animation->upgradeOpen();
      animation->erase();
    }
    empty = view.render();
  }
  device.reset();
  int drawn = 0;
  for (int y = 0; y < shown.height(); ++y) {
    for (int x = 0; x < shown.width(); ++x)
      drawn += shown.pixel(x, y) != empty.pixel(x, y);
  }
  QVERIFY2(drawn > 40, qPrintable(QString::number(drawn)));
  QCOMPARE(hidden, empty);
}

int main(int argc, char** argv)
{
  TestHost app(argc, argv);
  tst_AnimationModule test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_animationmodule.moc"
