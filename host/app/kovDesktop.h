#ifndef KOV_DESKTOP_H
#define KOV_DESKTOP_H

#include <QString>
#include <QStringList>

#include <memory>

class kovHostApplication;
class kovHostServices;
class kovMainWindow;

// The desktop session: the main window first, so that the animation module
// finds it when it starts and docks its editor in it; then the module and the
// drawing. Failures are told in message boxes and the host runs on. The
// window, and the module's docks inside it, go with this object: destroy it
// before the module is unloaded.
class kovDesktop {
public:
  kovDesktop(kovHostApplication& app, kovHostServices& services);
  ~kovDesktop();
  kovDesktop(const kovDesktop&) = delete;
  kovDesktop& operator=(const kovDesktop&) = delete;

  kovMainWindow* window() const { return m_window.get(); }

  // False, after a warning, when the module can't be loaded.
  bool loadAnimationModule();
  // Opens the drawing at path, or a new one for an empty path. False, after
  // a warning, when it can't be read: a new drawing is open instead.
  bool openDrawing(const QString& path);

private:
  kovHostApplication& m_app;
  std::unique_ptr<kovMainWindow> m_window;
};

// Runs the desktop until its window closes; the window and everything in it
// are gone when this returns. The lines are typed into the command line once
// the drawing is open, up to the first that fails.
int runDesktop(kovHostApplication& app, kovHostServices& services, const QString& drawingPath,
               const QStringList& lines = QStringList());

#endif
