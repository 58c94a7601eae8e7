#ifndef KOV_HOST_COMMANDS_H
#define KOV_HOST_COMMANDS_H

#include "host/app/kovBlockCommand.h"
#include "host/app/kovHostNamedCommand.h"
#include "host/app/kovImportSceneCommand.h"
#include "host/app/kovRenderCommand.h"
#include "host/app/kovSceneCommand.h"

#include "Rx/OdStaticRxObject.h"

// The host's own commands (group "kovHost"): new, open, save and list.
class kovHostCommand : public kovHostNamedCommand {
public:
  using kovHostNamedCommand::kovHostNamedCommand;
  void execute(OdEdCommandContext* pCmdCtx) override;
};

// Adds the host's commands, the scene commands and the model import to the command stack for
// the life of this object.
class kovHostCommands {
public:
  kovHostCommands();
  ~kovHostCommands();

private:
  OdStaticRxObject<kovHostCommand> m_new { L"new" };
  OdStaticRxObject<kovHostCommand> m_open { L"open" };
  OdStaticRxObject<kovHostCommand> m_save { L"save" };
  OdStaticRxObject<kovHostCommand> m_list { L"list" };
  OdStaticRxObject<kovHostCommand> m_undo { L"undo" };
  OdStaticRxObject<kovHostCommand> m_redo { L"redo" };
  OdStaticRxObject<kovSceneCommand> m_box { L"box" };
  OdStaticRxObject<kovSceneCommand> m_sphere { L"sphere" };
  OdStaticRxObject<kovSceneCommand> m_cylinder { L"cylinder" };
  OdStaticRxObject<kovSceneCommand> m_plane { L"plane" };
  OdStaticRxObject<kovBlockCommand> m_block { L"block" };
  OdStaticRxObject<kovBlockCommand> m_insert { L"insert" };
  OdStaticRxObject<kovImportSceneCommand> m_importScene { L"importscene" };
  OdStaticRxObject<kovRenderCommand> m_render { L"render" };
  OdStaticRxObject<kovRenderCommand> m_view { L"view" };
  OdStaticRxObject<kovRenderCommand> m_visualStyle { L"visualstyle" };
  OdStaticRxObject<kovRenderCommand> m_sun { L"sun" };
  OdStaticRxObject<kovRenderCommand> m_namedView { L"namedview" };
};

#endif
