#include "host/app/kovDesktop.h"

#include "host/app/kovHostApplication.h"
#include "host/app/kovMainWindow.h"
#include "host/app/kovCommandRunner.h"
#include "host/app/kovViewportWidget.h"

#include <QTimer>

kovDesktop::kovDesktop(kovHostApplication& app, kovHostServices& services)
  : m_app(app)
  , m_window(std::make_unique<kovMainWindow>(app, services))
{
  m_app.setMainWindow(m_window.get());
}

kovDesktop::~kovDesktop()
{
  m_app.setMainWindow(nullptr);
  m_window.reset();
}

bool kovDesktop::loadAnimationModule()
{
  QString message;
  if (m_app.loadAnimationModule(message))
    return true;
  m_window->warn(QObject::tr("Animation Module"),
                 QObject::tr("The animation module was not loaded: %1").arg(message));
  return false;
}

bool kovDesktop::openDrawing(const QString& path)
{
  if (!path.isEmpty() && m_window->openDrawing(path))
    return true;
  m_app.setDatabase(OdDbDatabase::createObject(), QString());
  m_window->viewport()->zoomExtents();
  return path.isEmpty();
}

int runDesktop(kovHostApplication& app, kovHostServices& services, const QString& drawingPath,
               const QStringList& lines)
{
  int code = 0;
  {
    kovDesktop desktop(app, services);
    desktop.window()->show();
    desktop.loadAnimationModule();
    desktop.openDrawing(drawingPath);
    // From inside the event loop: a line may wait for input like a typed one.
    QTimer::singleShot(0, desktop.window(), [&desktop, lines] {
      for (const QString& line : lines) {
        if (!desktop.window()->runner()->run(line))
          break;
      }
    });
    code = app.exec();
  }
  return code;
}
