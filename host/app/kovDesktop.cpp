#include "host/app/kovDesktop.h"

#include "host/app/kovHostApplication.h"
#include "host/app/kovMainWindow.h"

#include <memory>

int runDesktop(kovHostApplication& app, kovHostServices& services)
{
  auto window = std::make_unique<kovMainWindow>(app, services);
  app.setMainWindow(window.get());
  window->show();
  const int code = app.exec();
  app.setMainWindow(nullptr);
  return code;
}
