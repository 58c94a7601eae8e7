// A module file that can't be loaded: the desktop says why in a message box
// and runs on without the module. Its own executable, because the linker
// keeps the folder with the broken file on its search path.
#include "kovHostTestEnvironment.h"

#include "host/app/kovCommandRunner.h"
#include "host/app/kovDesktop.h"
#include "host/app/kovMainWindow.h"

#include "Rx/OdRxDynamicLinker.h"

#include <QFile>

using namespace kovHostTest;

class tst_ModuleLoading : public QObject {
  Q_OBJECT

private slots:
  void brokenModuleFileIsReportedAndTheHostRunsOn()
  {
    QTemporaryDir folder;
    QFile broken(folder.filePath(QStringLiteral("kovAnimationModule_24.1_16.tx")));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("garbage, not a shared object");
    broken.close();
    odrxDynamicLinker()->addSearchPath(odFromQString(folder.path()));

    kovDesktop desktop(app(), services());
    MessageBoxCatcher box;
    box.arm();
    QVERIFY(!desktop.loadAnimationModule());
    QCOMPARE(box.title, QStringLiteral("Animation Module"));
    QVERIFY2(box.text.startsWith(QStringLiteral("The animation module was not loaded: ")), qPrintable(box.text));
    QVERIFY2(box.text.contains(broken.fileName()), qPrintable(box.text));
    QVERIFY(!app().isAnimationModuleLoaded());

    // Without the module, the host and its own commands still work.
    QVERIFY(desktop.openDrawing(QString()));
    QVERIFY(app().currentDatabase());
    QVERIFY(app().executeCommand(QStringLiteral("list")));
    QVERIFY(!app().executeCommand(QStringLiteral("createcameraanimation 0,0,0 1,1,0 Finish")));
    QVERIFY(desktop.window()->findChild<QPlainTextEdit*>(QStringLiteral("CommandHistory"))
                ->toPlainText()
                .contains(QStringLiteral("Unknown command \"createcameraanimation\".")));
  }

  void unreadableDrawingFallsBackToANewOne()
  {
    kovDesktop desktop(app(), services());
    MessageBoxCatcher box;
    box.arm();
    QVERIFY(!desktop.openDrawing(QStringLiteral("/nonexistent/folder/drawing.kdb")));
    QCOMPARE(box.title, QStringLiteral("Open Drawing"));
    QVERIFY(app().currentDatabase());
    QVERIFY(app().drawingPath().isEmpty());
  }

  void windowIsGoneWithTheDesktop()
  {
    QPointer<QMainWindow> window;
    {
      kovDesktop desktop(app(), services());
      window = desktop.window();
      QCOMPARE(app().mainWindow(), window.data());
    }
    QVERIFY(window.isNull());
    QVERIFY(!app().mainWindow());
    // The runner went with the window: command lines are refused, not run.
    QVERIFY(!app().executeCommand(QStringLiteral("list")));
  }
};

KOV_HOST_TEST_MAIN(tst_ModuleLoading)
#include "tst_moduleloading.moc"
