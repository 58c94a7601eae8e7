#ifndef KOV_ANIMATION_MODULE_H
#define KOV_ANIMATION_MODULE_H

#include "module/kovAnimatedScene.h"
#include "module/kovAnimationCommands.h"
#include "module/kovAnimationListing.h"
#include "module/kovCutCommands.h"
#include "module/kovProduceCommand.h"
#include "module/kovTrackCommands.h"

#include "Db/OdDbObjectId.h"
#include "Rx/OdRxModule.h"
#include "Rx/OdStaticRxObject.h"

#include <QPointer>
#include <QSize>

class IkovApplication;
class QDockWidget;

// The animation module: what the host loads from kovAnimationModule_24.1_16.tx.
// Starting it registers the entity classes, the commands of the group
// "kovAnimation" (the editor's and the creation commands, then those that
// build, list and produce an animation from a script) and the editor's dock;
// stopping it takes them down in reverse.
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
  // Makes the animation the one being edited, and forgets it when its drawing
  // goes (its id would point into a freed drawing).
  static void setEditingAnimation(const OdDbObjectId& id);
  static bool& isPlaying();
  static bool& isProducing();

  // The editor's dock, made on first need; null in a host without a main window.
  QDockWidget* dockWidget();
  void createAnimationEditor();

  // The name the host knows the editor's dock by, and the size it first shows at.
  static constexpr const char* editorDockName = "animation_editor";
  static constexpr QSize editorDockSize { 500, 250 };
  // Docks the editor at the bottom of the host's main window and shows it.
  static void showEditorDock(IkovApplication* app);

private:
  // Added to the command stack in this order, and removed in the same order.
  OdStaticRxObject<kovAnimationCommand> m_commands[15] = {
    { L"animationeditor", &kovAnimationCommands::animationEditor },
    { L"createanimation", &kovAnimationCommands::createAnimation },
    { L"createcameraanimation", &kovAnimationCommands::createCameraAnimation },
    { L"dumpblockcontent", &kovAnimationCommands::dumpBlockContent },
    { L"animationcreate", &kovAnimationCommands::createAnimation },
    { L"animationcameracreate", &kovAnimationCommands::createCameraAnimation },
    { L"animationselect", &kovTrackCommands::selectAnimation },
    { L"animationtrack", &kovTrackCommands::addTrack },
    { L"animationsubtrack", &kovTrackCommands::addSubTrack },
    { L"animationkey", &kovTrackCommands::addKeyframe },
    { L"animationspeed", &kovTrackCommands::retime },
    { L"animationcut", &kovCutCommands::addCut },
    { L"animationcutset", &kovCutCommands::setCut },
    { L"animationlist", &kovAnimationListing::list },
    { L"animationproduce", &kovProduceCommand::produce },
  };
  // Published to the host while the module runs.
  OdStaticRxObject<kovAnimatedScene> m_scene;
  QPointer<QDockWidget> m_dockWidget;
  OdRxModulePtr m_dbModule;
};

#endif
