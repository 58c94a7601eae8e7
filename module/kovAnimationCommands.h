#ifndef KOV_ANIMATION_COMMANDS_H
#define KOV_ANIMATION_COMMANDS_H

#include "Ed/OdEdCommand.h"

// The commands of the group "kovAnimation". Each is a static member of the
// module; the two creation commands also answer to a second name.
class kovAnimationCommand : public OdEdCommand {
public:
  explicit kovAnimationCommand(const OdChar* globalName) : m_globalName(globalName) {}
  const OdString groupName() const override;
  const OdString globalName() const override { return m_globalName; }

private:
  OdString m_globalName;
};

// Shows the editor's dock.
class kovAnimationEditorCommand : public kovAnimationCommand {
public:
  kovAnimationEditorCommand() : kovAnimationCommand(L"animationeditor") {}
  void execute(OdEdCommandContext* pCmdCtx) override;
};

// Creates a camera animation along a default three-point path.
class kovCreateAnimationCommand : public kovAnimationCommand {
public:
  using kovAnimationCommand::kovAnimationCommand;
  void execute(OdEdCommandContext* pCmdCtx) override;
};

// Draws a camera path and creates a camera animation along it.
class kovCreateCameraAnimationCommand : public kovAnimationCommand {
public:
  using kovAnimationCommand::kovAnimationCommand;
  void execute(OdEdCommandContext* pCmdCtx) override;
};

// Reports the content of the block references the user selects.
class kovDumpBlockContentCommand : public kovAnimationCommand {
public:
  kovDumpBlockContentCommand() : kovAnimationCommand(L"dumpblockcontent") {}
  void execute(OdEdCommandContext* pCmdCtx) override;
};

#endif
