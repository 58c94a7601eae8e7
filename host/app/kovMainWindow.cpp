#include "host/app/kovMainWindow.h"

#include "host/app/kovHostApplication.h"

#include <QLabel>

kovMainWindow::kovMainWindow(kovHostApplication& app, kovHostServices& services, QWidget* parent)
  : QMainWindow(parent)
  , m_app(app)
  , m_services(services)
{
  setWindowTitle(QStringLiteral("kovhost"));
  setCentralWidget(new QLabel(tr("Viewport"), this));
  resize(1280, 800);
}
