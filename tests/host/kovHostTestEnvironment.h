#ifndef KOV_HOST_TEST_ENVIRONMENT_H
#define KOV_HOST_TEST_ENVIRONMENT_H

// What the host's widget tests run in: the host's own application object
// (settings in a temporary file), the database classes (the platform's and
// the host's), the host's services and commands, and helpers to drive the
// main window.
#include "host/app/kovCommandLineWidget.h"
#include "host/app/kovHostClasses.h"
#include "host/app/kovHostApplication.h"
#include "host/app/kovHostCommands.h"
#include "host/app/kovHostConsole.h"
#include "host/app/kovHostPropSystem.h"
#include "host/app/kovHostServices.h"
#include "host/app/kovHostViewSystem.h"
#include "host/app/kovMainWindow.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbModule.h"
#include "Db/OdDbObjectIterator.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace kovHostTest {

inline kovHostServices*& servicesSlot()
{
  static kovHostServices* services = nullptr;
  return services;
}

inline kovHostServices& services()
{
  return *servicesSlot();
}

inline kovHostApplication& app()
{
  return *kovHostApplication::instance();
}

// The model space entities of the open drawing whose class has that name.
inline OdDbObjectIdArray entitiesOfClass(const QString& className)
{
  OdDbObjectIdArray ids;
  OdDbDatabase* db = app().currentDatabase();
  if (!db)
    return ids;
  OdDbObjectPtr space = db->getModelSpaceId().openObject(OdDb::kForRead);
  OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::cast(space.get());
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(); !it->done(); it->step()) {
    if (odToQString(it->objectId().objectClass()->name()) == className)
      ids.append(it->objectId());
  }
  return ids;
}

// The desktop's window on a new drawing, shown; false when it never shows.
inline bool openMainWindow(std::unique_ptr<kovMainWindow>& window)
{
  app().setDatabase(OdDbDatabase::createObject(), QString());
  window = std::make_unique<kovMainWindow>(app(), services());
  app().setMainWindow(window.get());
  window->show();
  return QTest::qWaitForWindowExposed(window.get());
}

// Types a line into the command line and presses Enter; returns when the
// command it starts has finished (its later answers come from timers).
inline void typeLine(kovCommandLineWidget* commandLine, const QString& line)
{
  QTest::keyClicks(commandLine->input(), line);
  QTest::keyClick(commandLine->input(), Qt::Key_Return);
}

// Runs step once the command line shows a prompt containing promptPart (as
// the running command waits for it), polling from inside the command's own
// event loop. Gives up after a few seconds, leaving *seen false.
inline void whenAsked(kovCommandLineWidget* commandLine, const QString& promptPart, std::function<void()> step,
                      bool* seen, int attemptsLeft = 500)
{
  QTimer::singleShot(10, commandLine, [=] {
    if (commandLine->promptLabel()->text().contains(promptPart)) {
      *seen = true;
      step();
    } else if (attemptsLeft > 0) {
      whenAsked(commandLine, promptPart, step, seen, attemptsLeft - 1);
    }
  });
}

// Accepts the next message box that comes up, keeping its title and text.
struct MessageBoxCatcher {
  QString title;
  QString text;

  void arm(int attemptsLeft = 500)
  {
    QTimer::singleShot(10, [this, attemptsLeft] {
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        title = box->windowTitle();
        text = box->text();
        box->accept();
      } else if (attemptsLeft > 0) {
        arm(attemptsLeft - 1);
      }
    });
  }
};

template <class TestObject>
int run(int argc, char** argv)
{
  QTemporaryDir settings;
  kovHostApplication application(argc, argv, settings.filePath(QStringLiteral("settings.ini")));
  odInitialize();
  int result = 0;
  {
    kovHostClasses classes;
    kovHostServices services;
    kovHostCommands commands;
    servicesSlot() = &services;
    {
      TestObject test;
      result = QTest::qExec(&test, argc, argv);
    }
    application.unloadAnimationModule();
    servicesSlot() = nullptr;
  }
  odUninitialize();
  return result;
}

} // namespace kovHostTest

#define KOV_HOST_TEST_MAIN(TestObject)                                                                              \
  int main(int argc, char** argv)                                                                                   \
  {                                                                                                                 \
    return kovHostTest::run<TestObject>(argc, argv);                                                                \
  }

#endif
