#ifndef KOV_MAIN_WINDOW_H
#define KOV_MAIN_WINDOW_H

#include "host/app/kovInteractiveUserIO.h"

#include <QMainWindow>

class kovCommandLineWidget;
class kovCommandRunner;
class kovHostApplication;
class kovHostServices;
class kovPropertiesDock;
class kovSelection;
class kovViewportWidget;
class QAction;
class QLabel;

// The desktop host's main window: the 3D viewport in the middle, the command
// line at the bottom, the properties on the right and the module's docks
// wherever they ask to be; the File and View menus and a status bar. While it
// lives, command lines (typed, or run by the module) go through its command
// line and the console's messages land in its transcript. The dock layout is
// kept in the settings from one session to the next.
class kovMainWindow : public QMainWindow {
  Q_OBJECT
public:
  kovMainWindow(kovHostApplication& app, kovHostServices& services, QWidget* parent = nullptr);
  ~kovMainWindow() override;

  // Reads the drawing at path and makes it the open one. False, after telling
  // the user why in a message box, when it can't be read; the open drawing
  // stays as it was.
  bool openDrawing(const QString& path);
  // Saves the open drawing to path, which becomes its file name. False, after
  // telling the user, when it can't be written; a file there before is kept.
  bool saveDrawing(const QString& path);

  // A refusal or failure the user must see: a warning box, also logged.
  void warn(const QString& title, const QString& text);

  kovCommandLineWidget* commandLine() const { return m_commandLine; }
  kovViewportWidget* viewport() const { return m_viewport; }
  kovPropertiesDock* propertiesDock() const { return m_properties; }
  kovCommandRunner* runner() const { return m_runner; }
  kovSelection* selection() const { return m_selection; }

public slots:
  // Refresh events of the host: after a command, the selection drops what
  // was erased and the properties read their values again.
  void refresh(const QString& key, const QString& argument);

protected:
  void closeEvent(QCloseEvent* event) override;

private:
  void createDocks();
  void createMenus();
  void watchDock(QDockWidget* dock);
  void updateTitle();
  void newDrawing();
  void openWithDialog();
  void save();
  void saveAsWithDialog();
  void selectionChanged();

  kovHostApplication& m_app;
  kovHostServices& m_services;
  kovSelection* m_selection;
  kovViewportWidget* m_viewport;
  kovCommandLineWidget* m_commandLine = nullptr;
  QDockWidget* m_commandDock = nullptr;
  kovPropertiesDock* m_properties = nullptr;
  kovInteractiveUserIOPtr m_io;
  kovCommandRunner* m_runner = nullptr;
  QMenu* m_viewMenu = nullptr;
  // The module's docks are listed before it, after the host's own.
  QAction* m_dockSeparator = nullptr;
  QList<QAction*> m_fileActions;
  QLabel* m_cursorLabel = nullptr;
};

#endif
