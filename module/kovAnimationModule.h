#ifndef KOV_ANIMATION_MODULE_H
#define KOV_ANIMATION_MODULE_H

#include "module/kovAnimationCommands.h"

#include "Db/OdDbObjectId.h"
#include "Rx/OdRxModule.h"
#include "Rx/OdStaticRxObject.h"

#include <QPointer>

class QDockWidget;

// The animation module: what the host loads from kovAnimationModule_24.1_16.tx.
// Starting it registers the entity classes, the six commands of the group
// "kovAnimation" and the editor's dock; stopping it takes them down in reverse.
// It also keeps the values every part of the module reads: the animation being
// edited and whether one is playing or being produced.
class kovAnimationModule : public OdRxModule {
public:
  kovAnimationModule();
  ~kovAnimationModule() override;

  void initApp() override;
  void uninitApp() override;

  static kovAnimationModule* instance();
  static OdDbObjectId& globalEditingAnimationId();
  static bool& isPlaying();
  static bool& isProducing();

  // The editor's dock, made on first need; null in a host without a main window.
  QDockWidget* dockWidget();
  void createAnimationEditor();

private:
  OdStaticRxObject<kovAnimationEditorCommand> m_animationeditor;
  OdStaticRxObject<kovCreateAnimationCommand> m_createanimation { L"createanimation" };
  OdStaticRxObject<kovCreateCameraAnimationCommand> m_createcameraanimation { L"createcameraanimation" };
  OdStaticRxObject<kovDumpBlockContentCommand> m_dumpblockcontent;
  OdStaticRxObject<kovCreateAnimationCommand> m_animationcreate { L"animationcreate" };
  OdStaticRxObject<kovCreateCameraAnimationCommand> m_animationcameracreate { L"animationcameracreate" };
  QPointer<QDockWidget> m_dockWidget;
  OdRxModulePtr m_dbModule;
};

#endif
