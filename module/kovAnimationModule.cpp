#include "module/kovAnimationModule.h"

#include "db/AnimationGripAppData.h"
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "db/kovEditingState.h"
#include "editor/kovAnimationEditorWidget.h"
#include "host/api/IkovApplication.h"
#include "production/kovProductionPanel.h"
#include "props/OdDbXmlPropAnimation.h"

#include "Db/OdDbEntity.h"
#include "Ed/OdEdCommandStack.h"
#include "Rx/OdRxDictionary.h"
#include "Rx/OdRxDynamicLinker.h"

#include <QApplication>
#include <QDockWidget>
#include <QLayout>
#include <QMainWindow>
#include <QThread>

namespace {

kovAnimationModule* g_instance = nullptr;
const OdChar* const kDbModule = L"TD_Db.dll";

} // namespace

kovAnimationModule::kovAnimationModule()
{
  g_instance = this;
}

kovAnimationModule::~kovAnimationModule()
{
  g_instance = nullptr;
}

kovAnimationModule* kovAnimationModule::instance()
{
  return g_instance;
}

OdDbObjectId& kovAnimationModule::globalEditingAnimationId()
{
  return kovEditingState::editingAnimationId();
}

void kovAnimationModule::setEditingAnimation(const OdDbObjectId& id)
{
  kovEditingState::setEditingAnimation(id);
}

bool& kovAnimationModule::isPlaying()
{
  return kovEditingState::isPlaying();
}

bool& kovAnimationModule::isProducing()
{
  return kovEditingState::isProducing();
}

void kovAnimationModule::initApp()
{
  if (!OdDbEntity::desc())
    throw OdError(eNotInitializedYet, OdString(L"The database classes are not registered: start the database first"));
  m_dbModule = odrxDynamicLinker()->loadModule(OdString(kDbModule), false);

  kovDbTempBlockReference::rxInit();
  kovDbAnimation::rxInit();
  AnimationGripAppData::rxInit();
  OdDbXmlPropAnimation::rxInit();
  kovDbAnimation::initializeGlobalObjects();

  OdEdCommandStackPtr commands = odedRegCmds();
  for (OdEdCommand& command : m_commands)
    commands->addCommand(&command);

  odrxSysRegistry()->putAt(OdString(IkovAnimatedScene::serviceId()), &m_scene);
  createAnimationEditor();
}

void kovAnimationModule::uninitApp()
{
  setEditingAnimation(OdDbObjectId());
  odrxSysRegistry()->remove(OdString(IkovAnimatedScene::serviceId()));
  OdEdCommandStackPtr commands = odedRegCmds();
  for (const OdEdCommand& command : m_commands)
    commands->removeCmd(command.groupName(), command.globalName());

  m_dbModule = nullptr;
  odrxDynamicLinker()->unloadModule(OdString(kDbModule));
  kovDbAnimation::uninitializeGlobalObjects();

  OdDbXmlPropAnimation::rxUninit();
  AnimationGripAppData::rxUninit();
  kovDbAnimation::rxUninit();
  kovDbTempBlockReference::rxUninit();
}

QDockWidget* kovAnimationModule::dockWidget()
{
  if (!m_dockWidget)
    createAnimationEditor();
  return m_dockWidget;
}

void kovAnimationModule::createAnimationEditor()
{
  IkovApplication* app = kovApp();
  QMainWindow* mainWindow = app ? app->mainWindow() : nullptr;
  // Without a main window (a headless host) there is nowhere to dock.
  if (!mainWindow || !qobject_cast<QApplication*>(QCoreApplication::instance()))
    return;

  auto* dock = new QDockWidget(QCoreApplication::translate("kovAnimationModule", "Animation Editor"), mainWindow);
  dock->setAttribute(Qt::WA_DeleteOnClose, false);
  dock->setObjectName(QStringLiteral("AnimationEditor"));
  dock->setAllowedAreas(Qt::AllDockWidgetAreas);
  dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable
                    | QDockWidget::DockWidgetFloatable);
  auto* editor = new kovAnimationEditorWidget(dock);
  kovProductionPanel::install(editor);
  dock->setWidget(editor);
  app->registerDockWidget(QLatin1String(editorDockName), dock);
  if (QThread::currentThread() != mainWindow->thread())
    dock->moveToThread(mainWindow->thread());
  showEditorDock(app);
  if (mainWindow->layout())
    mainWindow->layout()->activate();
  m_dockWidget = dock;
}

void kovAnimationModule::showEditorDock(IkovApplication* app)
{
  app->showDockWidget(QLatin1String(editorDockName), Qt::BottomDockWidgetArea, editorDockSize);
}
