#ifndef KOV_HOST_APPLICATION_H
#define KOV_HOST_APPLICATION_H

#include "host/api/IkovApplication.h"

#include "Db/OdDbDatabase.h"

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <QSettings>

#include <functional>
#include <memory>


// The reference host: the application object the module finds through
// kovApp(). Holds the open drawing, the docks by name, the settings and the
// refresh events; runs command lines through whatever runner the front end
// (the desktop's command line, or the headless script runner) installs.
class kovHostApplication : public QApplication, public IkovApplication {
  Q_OBJECT
  Q_INTERFACES(IkovApplication)
public:
  // settingsFile: an ini file for the settings; empty for the user's own.
  kovHostApplication(int& argc, char** argv, const QString& settingsFile = QString());
  ~kovHostApplication() override;

  static kovHostApplication* instance();

  QMainWindow* mainWindow() const override { return m_mainWindow; }
  void setMainWindow(QMainWindow* window) { m_mainWindow = window; }
  void registerDockWidget(const QString& name, QDockWidget* dock) override;
  void showDockWidget(const QString& name, Qt::DockWidgetArea area, const QSize& defaultSize) override;
  QDockWidget* dockWidget(const QString& name) const;

  QString toQString(const OdString& text) const override;
  OdString toOdString(const QString& text) const override;
  QVariant setting(const QString& key, const QVariant& defaultValue = QVariant()) const override;
  void setSetting(const QString& key, const QVariant& value) override;
  QString expandPath(const QString& path) const override;

  // Runs a command line through the installed runner.
  bool executeCommand(const QString& commandLine) override;
  void setCommandRunner(std::function<bool(const QString&)> runner) { m_runner = std::move(runner); }

  OdDbDatabase* currentDatabase() const override { return m_database.get(); }
  const QString& drawingPath() const { return m_drawingPath; }
  // Makes db the open drawing (announcing the old one closed); path is where
  // it was read from or is saved to (empty for a new drawing).
  void setDatabase(const OdDbDatabasePtr& db, const QString& path);
  void setDrawingPath(const QString& path) { m_drawingPath = path; }

  void registerRefreshEvents(const QString& keys, QObject* receiver) override;
  void unregisterRefreshEvents(const QString& keys, QObject* receiver) override;
  // Calls refresh(key, argument) on every receiver registered for key.
  void raiseRefreshEvent(const QString& key, const QString& argument = QString());

  // Starts the animation module from its file beside the host. False, with
  // the reason in message, when it cannot; the host runs on without it.
  bool loadAnimationModule(QString& message);
  void unloadAnimationModule();
  bool isAnimationModuleLoaded() const { return m_moduleLoaded; }

signals:
  void databaseChanged();
  // A dock was registered by name, so that the main window can list and watch it.
  void dockRegistered(const QString& name, QDockWidget* dock);

private:
  void placeDock(QDockWidget* dock, Qt::DockWidgetArea area);

  QPointer<QMainWindow> m_mainWindow;
  QMap<QString, QPointer<QDockWidget>> m_docks;
  std::unique_ptr<QSettings> m_settings;
  std::function<bool(const QString&)> m_runner;
  OdDbDatabasePtr m_database;
  QString m_drawingPath;
  QMap<QString, QList<QPointer<QObject>>> m_refreshReceivers;
  bool m_moduleLoaded = false;
};

#endif
