#include "host/app/kovMainWindow.h"

#include "host/app/kovCommandLineWidget.h"
#include "host/app/kovCommandRunner.h"
#include "host/app/kovHostApplication.h"
#include "host/app/kovHostConsole.h"
#include "host/app/kovHostLog.h"
#include "host/app/kovHostPropSystem.h"
#include "host/app/kovHostSelectionSet.h"
#include "host/app/kovHostServices.h"
#include "host/app/kovHostViewSystem.h"
#include "host/app/kovPropertiesDock.h"
#include "host/app/kovSelection.h"
#include "host/app/kovViewportWidget.h"

#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>

namespace {

const char* const kGeometryKey = "MainWindow/geometry";
const char* const kStateKey = "MainWindow/state";
const char* const kLayoutChanged = "<event-refresh:layout_changed>";

QString drawingFilter()
{
  return QCoreApplication::translate("kovMainWindow", "Drawings (*.kdb);;All files (*)");
}

} // namespace

kovMainWindow::kovMainWindow(kovHostApplication& app, kovHostServices& services, QWidget* parent)
  : QMainWindow(parent)
  , m_app(app)
  , m_services(services)
  , m_selection(new kovSelection(this))
  , m_viewport(new kovViewportWidget(app, services.viewSystem(), m_selection, -1, this))
{
  setObjectName(QStringLiteral("MainWindow"));
  setCentralWidget(m_viewport);
  m_services.selectionSet()->setSelection(m_selection);
  setDockNestingEnabled(true);
  resize(1440, 900);
  createDocks();
  createMenus();
  m_cursorLabel = new QLabel(this);
  m_cursorLabel->setMinimumWidth(220);
  statusBar()->addPermanentWidget(m_cursorLabel);
  connect(m_viewport, &kovViewportWidget::cursorMoved, m_cursorLabel, &QLabel::setText);

  // Ids of a drawing die with it: drop them before anyone looks at them again.
  connect(&m_app, &kovHostApplication::databaseChanged, this, [this] {
    m_selection->clear();
    updateTitle();
  });
  connect(m_selection, &kovSelection::changed, this, &kovMainWindow::selectionChanged);
  connect(m_services.propSystem(), &kovHostPropSystem::shown, m_properties, &kovPropertiesDock::showObject);
  connect(&m_app, &kovHostApplication::dockRegistered, this,
          [this](const QString&, QDockWidget* dock) { watchDock(dock); });
  m_app.registerRefreshEvents(QStringLiteral("<event-refresh:database_changed>"), this);

  kovViewCamera camera = m_services.viewSystem()->viewCamera(m_viewport->viewportNumber());
  camera.eye.set(-14.0, -24.0, 16.0);
  camera.target.set(0.0, 0.0, 0.0);
  m_services.viewSystem()->setViewCamera(m_viewport->viewportNumber(), camera);

  restoreGeometry(m_app.setting(QLatin1String(kGeometryKey)).toByteArray());
  restoreState(m_app.setting(QLatin1String(kStateKey)).toByteArray());
  updateTitle();
}

kovMainWindow::~kovMainWindow()
{
  // The runner and the sink point into this window.
  m_app.setCommandRunner(nullptr);
  m_services.console()->setSink(nullptr);
  m_app.unregisterRefreshEvents(QStringLiteral("<event-refresh:database_changed>"), this);
}

void kovMainWindow::createDocks()
{
  m_commandLine = new kovCommandLineWidget;
  m_commandDock = new QDockWidget(tr("Command Line"), this);
  m_commandDock->setObjectName(QStringLiteral("CommandLineDock"));
  m_commandDock->setWidget(m_commandLine);
  addDockWidget(Qt::BottomDockWidgetArea, m_commandDock);
  watchDock(m_commandDock);

  m_properties = new kovPropertiesDock(this);
  addDockWidget(Qt::RightDockWidgetArea, m_properties);
  resizeDocks({ m_properties }, { 300 }, Qt::Horizontal);
  watchDock(m_properties);

  kovInteractiveUserIO::FrontEnd frontEnd;
  frontEnd.output = [this](const QString& text) { m_commandLine->appendHistory(text); };
  frontEnd.prompt = [this](const QString& prompt) { m_commandLine->showPrompt(prompt); };
  frontEnd.selection = [this] { return m_selection->ids(); };
  m_io = kovInteractiveUserIO::createObject(frontEnd, m_viewport->gsView());
  m_viewport->setUserIO(m_io.get());
  m_runner = new kovCommandRunner(m_app, m_io, this);
  m_commandLine->setRunner(m_runner);
  connect(m_viewport, &kovViewportWidget::cancelRequested, m_runner, &kovCommandRunner::cancel);
  connect(m_runner, &kovCommandRunner::runningChanged, this, [this](bool running) {
    for (QAction* action : m_fileActions)
      action->setEnabled(!running);
  });
  m_app.setCommandRunner([this](const QString& line) { return m_runner->run(line); });
  m_services.console()->setSink([this](const QString& text) { m_commandLine->appendHistory(text); });
}

void kovMainWindow::createMenus()
{
  QMenu* file = menuBar()->addMenu(tr("&File"));
  m_fileActions << file->addAction(tr("&New"), this, &kovMainWindow::newDrawing, QKeySequence::New);
  m_fileActions << file->addAction(tr("&Open..."), this, &kovMainWindow::openWithDialog, QKeySequence::Open);
  m_fileActions << file->addAction(tr("&Save"), this, &kovMainWindow::save, QKeySequence::Save);
  m_fileActions << file->addAction(tr("Save &As..."), this, &kovMainWindow::saveAsWithDialog, QKeySequence::SaveAs);
  file->addSeparator();
  file->addAction(tr("E&xit"), this, &QWidget::close, QKeySequence::Quit);

  // Through the commands, so that the command line shows what happened and
  // the docks refresh as after any command.
  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  m_fileActions << edit->addAction(tr("&Undo"), this, [this] { m_runner->run(QStringLiteral("undo")); },
                                   QKeySequence(Qt::CTRL | Qt::Key_Z));
  m_fileActions << edit->addAction(tr("&Redo"), this, [this] { m_runner->run(QStringLiteral("redo")); },
                                   QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));

  m_viewMenu = menuBar()->addMenu(tr("&View"));
  m_viewMenu->addAction(m_commandDock->toggleViewAction());
  m_viewMenu->addAction(m_properties->toggleViewAction());
  m_dockSeparator = m_viewMenu->addSeparator();
  m_viewMenu->addAction(tr("Zoom &Extents"), m_viewport, &kovViewportWidget::zoomExtents,
                        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
  m_viewMenu->addSeparator();
  m_viewMenu->addActions(m_viewport->visualStyleActions());
  m_viewMenu->addSeparator();
  m_viewMenu->addAction(m_viewport->lookThroughAction());
}

void kovMainWindow::watchDock(QDockWidget* dock)
{
  if (!dock || dock->property("kovWatched").toBool())
    return;
  dock->setProperty("kovWatched", true);
  if (dock != m_commandDock && dock != m_properties && m_viewMenu)
    m_viewMenu->insertAction(m_dockSeparator, dock->toggleViewAction());
  const auto layoutChanged = [this] { m_app.raiseRefreshEvent(QLatin1String(kLayoutChanged)); };
  connect(dock, &QDockWidget::dockLocationChanged, this, layoutChanged);
  connect(dock, &QDockWidget::topLevelChanged, this, layoutChanged);
}

void kovMainWindow::updateTitle()
{
  const QString path = m_app.drawingPath();
  const QString name = path.isEmpty() ? tr("Untitled") : QFileInfo(path).fileName();
  setWindowTitle(tr("%1 - kovhost").arg(name));
  setWindowFilePath(path);
}

void kovMainWindow::warn(const QString& title, const QString& text)
{
  qCWarning(lcHostDesktop).noquote() << title << ":" << text;
  QMessageBox::warning(this, title, text);
}

void kovMainWindow::selectionChanged()
{
  const OdDbObjectIdArray& ids = m_selection->ids();
  m_services.propSystem()->showProperties(ids.isEmpty() ? OdDbObjectId() : ids.first());
  m_app.raiseRefreshEvent(QStringLiteral("<event-refresh:selection_changed>"));
}

void kovMainWindow::refresh(const QString& key, const QString& argument)
{
  Q_UNUSED(key);
  Q_UNUSED(argument);
  m_selection->validate(m_app.currentDatabase());
  m_services.propSystem()->refreshProperties();
}

void kovMainWindow::newDrawing()
{
  m_app.setDatabase(OdDbDatabase::createObject(), QString());
  m_viewport->zoomExtents();
}

bool kovMainWindow::openDrawing(const QString& path)
{
  const QString absolute = QFileInfo(path).absoluteFilePath();
  OdDbDatabasePtr db;
  try {
    db = OdDbFileReader::readFile(odFromQString(absolute));
  } catch (const OdError& error) {
    warn(tr("Open Drawing"), odToQString(error.description()));
    return false;
  }
  m_app.setDatabase(db, absolute);
  m_viewport->zoomExtents();
  statusBar()->showMessage(tr("Opened %1").arg(absolute), 5000);
  qCInfo(lcHostDesktop) << "opened" << absolute;
  return true;
}

bool kovMainWindow::saveDrawing(const QString& path)
{
  OdDbDatabase* db = m_app.currentDatabase();
  if (!db) {
    warn(tr("Save Drawing"), tr("No drawing is open."));
    return false;
  }
  const QString absolute = QFileInfo(path).absoluteFilePath();
  try {
    OdDbFileWriter::writeFile(db, odFromQString(absolute));
  } catch (const OdError& error) {
    warn(tr("Save Drawing"), odToQString(error.description()));
    return false;
  }
  m_app.setDrawingPath(absolute);
  updateTitle();
  statusBar()->showMessage(tr("Saved %1").arg(absolute), 5000);
  qCInfo(lcHostDesktop) << "saved" << absolute;
  return true;
}

void kovMainWindow::openWithDialog()
{
  const QString path = QFileDialog::getOpenFileName(this, tr("Open Drawing"), QFileInfo(m_app.drawingPath()).path(),
                                                    drawingFilter());
  if (!path.isEmpty())
    openDrawing(path);
}

void kovMainWindow::save()
{
  if (m_app.drawingPath().isEmpty())
    saveAsWithDialog();
  else
    saveDrawing(m_app.drawingPath());
}

void kovMainWindow::saveAsWithDialog()
{
  QString path = QFileDialog::getSaveFileName(this, tr("Save Drawing As"), m_app.drawingPath(), drawingFilter());
  if (path.isEmpty())
    return;
  if (QFileInfo(path).suffix().isEmpty())
    path += QLatin1String(".kdb");
  saveDrawing(path);
}

void kovMainWindow::closeEvent(QCloseEvent* event)
{
  // A command waiting for input runs inside this event: cancel it, and close
  // once it has unwound.
  if (m_runner->isRunning()) {
    m_runner->cancel();
    event->ignore();
    QTimer::singleShot(0, this, &QWidget::close);
    return;
  }
  m_app.setSetting(QLatin1String(kGeometryKey), saveGeometry());
  m_app.setSetting(QLatin1String(kStateKey), saveState());
  QMainWindow::closeEvent(event);
}
