#include "host/app/kovHostApplication.h"

#include "Rx/OdRxDynamicLinker.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QStandardPaths>
#include <QTimer>

namespace {

const OdChar* const kAnimationModule = L"kovAnimationModule";

} // namespace

kovHostApplication::kovHostApplication(int& argc, char** argv, const QString& settingsFile)
  : QApplication(argc, argv)
{
  setOrganizationName(QStringLiteral("kovAnimation"));
  setApplicationName(QStringLiteral("kovhost"));
  m_settings = settingsFile.isEmpty() ? std::make_unique<QSettings>()
                                      : std::make_unique<QSettings>(settingsFile, QSettings::IniFormat);
}

kovHostApplication::~kovHostApplication()
{
  unloadAnimationModule();
}

kovHostApplication* kovHostApplication::instance()
{
  return qobject_cast<kovHostApplication*>(QCoreApplication::instance());
}

void kovHostApplication::registerDockWidget(const QString& name, QDockWidget* dock)
{
  m_docks.insert(name, dock);
  emit dockRegistered(name, dock);
}

QDockWidget* kovHostApplication::dockWidget(const QString& name) const
{
  return m_docks.value(name);
}

void kovHostApplication::showDockWidget(const QString& name, Qt::DockWidgetArea area, const QSize& defaultSize)
{
  QDockWidget* dock = m_docks.value(name);
  if (!dock || !m_mainWindow)
    return;
  // A dock the saved layout knows goes back where the user left it.
  if (m_mainWindow->dockWidgetArea(dock) == Qt::NoDockWidgetArea && !m_mainWindow->restoreDockWidget(dock)) {
    const bool sideways = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
    placeDock(dock, area);
    const int extent = sideways ? defaultSize.width() : defaultSize.height();
    const Qt::Orientation orientation = sideways ? Qt::Horizontal : Qt::Vertical;
    m_mainWindow->resizeDocks({ dock }, { extent }, orientation);
    // A layout that has not run yet ignores sizes: ask again once it has.
    QPointer<QMainWindow> window = m_mainWindow;
    QPointer<QDockWidget> placed = dock;
    QTimer::singleShot(0, this, [window, placed, extent, orientation] {
      if (window && placed)
        window->resizeDocks({ placed }, { extent }, orientation);
    });
  }
  dock->show();
  dock->raise();
  raiseRefreshEvent(QStringLiteral("<event-refresh:layout_changed>"));
}

void kovHostApplication::placeDock(QDockWidget* dock, Qt::DockWidgetArea area)
{
  QList<QDockWidget*> neighbours;
  for (QDockWidget* other : m_mainWindow->findChildren<QDockWidget*>()) {
    if (other != dock && !other->isFloating() && other->isVisibleTo(m_mainWindow)
        && m_mainWindow->dockWidgetArea(other) == area)
      neighbours << other;
  }
  // Across the whole edge, next to the docks there already: a bottom dock
  // above them, a right dock left of them, so that they keep the window's edge.
  const bool sideways = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
  const Qt::Orientation across = sideways ? Qt::Horizontal : Qt::Vertical;
  m_mainWindow->addDockWidget(area, dock, across);
  if (area == Qt::BottomDockWidgetArea || area == Qt::RightDockWidgetArea) {
    for (auto it = neighbours.crbegin(); it != neighbours.crend(); ++it)
      m_mainWindow->splitDockWidget(dock, *it, across);
  }
}

QString kovHostApplication::toQString(const OdString& text) const
{
  return odToQString(text);
}

OdString kovHostApplication::toOdString(const QString& text) const
{
  return odFromQString(text);
}

QVariant kovHostApplication::setting(const QString& key, const QVariant& defaultValue) const
{
  return m_settings->value(key, defaultValue);
}

void kovHostApplication::setSetting(const QString& key, const QVariant& value)
{
  m_settings->setValue(key, value);
}

QString kovHostApplication::expandPath(const QString& path) const
{
  QString expanded = path;
  expanded.replace(QLatin1String("{Pictures}"), QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
  expanded.replace(QLatin1String("{Video}"), QStandardPaths::writableLocation(QStandardPaths::MoviesLocation));
  expanded.replace(QLatin1String("{Documents}"),
                   QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  return expanded;
}

bool kovHostApplication::executeCommand(const QString& commandLine)
{
  return m_runner ? m_runner(commandLine) : false;
}

void kovHostApplication::setDatabase(const OdDbDatabasePtr& db, const QString& path)
{
  if (!m_database.isNull())
    raiseRefreshEvent(QStringLiteral("<event-refresh:database_closed>"));
  m_database = db;
  m_drawingPath = path;
  if (!m_database.isNull())
    m_database->setUndoLimit(setting(QStringLiteral("UndoSteps"), 100).toInt());
  emit databaseChanged();
  if (!m_database.isNull())
    raiseRefreshEvent(QStringLiteral("<event-refresh:database_changed>"));
}

void kovHostApplication::registerRefreshEvents(const QString& keys, QObject* receiver)
{
  for (const QString& key : keys.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
    QList<QPointer<QObject>>& receivers = m_refreshReceivers[key];
    if (!receivers.contains(receiver))
      receivers.append(receiver);
  }
}

void kovHostApplication::unregisterRefreshEvents(const QString& keys, QObject* receiver)
{
  for (const QString& key : keys.split(QLatin1Char('|'), Qt::SkipEmptyParts))
    m_refreshReceivers[key].removeAll(receiver);
}

void kovHostApplication::raiseRefreshEvent(const QString& key, const QString& argument)
{
  // A receiver may unregister while being called: walk a copy.
  const QList<QPointer<QObject>> receivers = m_refreshReceivers.value(key);
  for (const QPointer<QObject>& receiver : receivers) {
    if (receiver)
      QMetaObject::invokeMethod(receiver, "refresh", Qt::DirectConnection, Q_ARG(QString, key),
                                Q_ARG(QString, argument));
  }
}

bool kovHostApplication::loadAnimationModule(QString& message)
{
  OdRxDynamicLinker* linker = odrxDynamicLinker();
  linker->addSearchPath(odFromQString(applicationDirPath()));
  try {
    linker->loadModule(OdString(kAnimationModule), false);
  } catch (const OdError& error) {
    message = odToQString(error.description());
    return false;
  }
  m_moduleLoaded = true;
  return true;
}

void kovHostApplication::unloadAnimationModule()
{
  if (!m_moduleLoaded)
    return;
  m_moduleLoaded = false;
  // The drawing's animation entities run the module's code: they go first.
  setDatabase(OdDbDatabasePtr(), QString());
  odrxDynamicLinker()->unloadModule(OdString(kAnimationModule));
}
