#ifndef KOV_ANIMATION_COMMANDS_H
#define KOV_ANIMATION_COMMANDS_H

#include "Ed/OdEdCommand.h"

// A command of the group "kovAnimation": its name and what it runs. The
// module keeps them in one table (kovAnimationModule::m_commands); the two
// creation commands answer to a second name by a second entry with the same
// body.
class kovAnimationCommand : public OdEdCommand {
public:
  using Body = void (*)(OdEdCommandContext* pCmdCtx);

  kovAnimationCommand(const OdChar* globalName, Body body) : m_globalName(globalName), m_body(body) {}
  const OdString groupName() const override;
  const OdString globalName() const override { return m_globalName; }
  void execute(OdEdCommandContext* pCmdCtx) override { m_body(pCmdCtx); }

private:
  OdString m_globalName;
  Body m_body;
};

namespace kovAnimationCommands {

// Shows the editor's dock.
void animationEditor(OdEdCommandContext* pCmdCtx);
// Creates a camera animation along a default three-point path.
void createAnimation(OdEdCommandContext* pCmdCtx);
// Draws a camera path and creates a camera animation along it.
void createCameraAnimation(OdEdCommandContext* pCmdCtx);
// Reports the content of the block references the user selects.
void dumpBlockContent(OdEdCommandContext* pCmdCtx);

} // namespace kovAnimationCommands

#endif
