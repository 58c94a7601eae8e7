#ifndef IKOV_APPLICATION_H
#define IKOV_APPLICATION_H

#include "Rx/OdString.h"

#include <QCoreApplication>
#include <QSize>
#include <QString>
#include <QVariant>

class OdDbDatabase;
class QDockWidget;
class QMainWindow;
class QObject;

// What the module needs of the host application: its main window and docks,
// string conversion, settings, the command service, path variables and
// refresh events. The host's application object (the QCoreApplication
// instance) implements it; kovApp() finds it.
class IkovApplication {
public:
  virtual ~IkovApplication() = default;

  // Null in a host without windows (headless).
  virtual QMainWindow* mainWindow() const = 0;
  virtual void registerDockWidget(const QString& name, QDockWidget* dock) = 0;
  // Shows the named dock, adding it to area at defaultSize when it is not placed yet.
  virtual void showDockWidget(const QString& name, Qt::DockWidgetArea area, const QSize& defaultSize) = 0;

  virtual QString toQString(const OdString& text) const = 0;
  virtual OdString toOdString(const QString& text) const = 0;

  virtual QVariant setting(const QString& key, const QVariant& defaultValue = QVariant()) const = 0;
  virtual void setSetting(const QString& key, const QVariant& value) = 0;
  // Expands the host's path variables such as "{Pictures}" and "{Video}".
  virtual QString expandPath(const QString& path) const = 0;

  // Runs a command line as if typed; false when it could not run.
  virtual bool executeCommand(const QString& commandLine) = 0;
  // The drawing the user works in, or null.
  virtual OdDbDatabase* currentDatabase() const = 0;

  // Calls receiver's slot refresh(QString key, QString argument) for each of
  // the "|"-separated event keys.
  virtual void registerRefreshEvents(const QString& keys, QObject* receiver) = 0;
  virtual void unregisterRefreshEvents(const QString& keys, QObject* receiver) = 0;
};

#define IkovApplication_iid "kov.IkovApplication/1.0"
Q_DECLARE_INTERFACE(IkovApplication, IkovApplication_iid)

// The host application, or null when the process has none (tests, tools).
inline IkovApplication* kovApp()
{
  return qobject_cast<IkovApplication*>(QCoreApplication::instance());
}

#endif
