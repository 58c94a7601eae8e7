#ifndef KOV_TEST_HOST_DEFAULTS_H
#define KOV_TEST_HOST_DEFAULTS_H

// What a test's host answers where the test does not care: no windows, no
// drawing, settings that keep nothing, commands that do not run. A test's
// application class derives from its Qt application and this, declares
// Q_INTERFACES(IkovApplication), and overrides what it watches.
#include "host/api/IkovApplication.h"

class kovTestHostDefaults : public IkovApplication {
public:
  QMainWindow* mainWindow() const override { return nullptr; }
  void registerDockWidget(const QString&, QDockWidget*) override {}
  void showDockWidget(const QString&, Qt::DockWidgetArea, const QSize&) override {}
  QString toQString(const OdString& text) const override { return odToQString(text); }
  OdString toOdString(const QString& text) const override { return odFromQString(text); }
  QVariant setting(const QString&, const QVariant& def) const override { return def; }
  void setSetting(const QString&, const QVariant&) override {}
  QString expandPath(const QString& path) const override { return path; }
  bool executeCommand(const QString&) override { return false; }
  OdDbDatabase* currentDatabase() const override { return nullptr; }
  void registerRefreshEvents(const QString&, QObject*) override {}
  void unregisterRefreshEvents(const QString&, QObject*) override {}
};

#endif
