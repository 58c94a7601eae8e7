#ifndef KOV_IMPORT_SCENE_COMMAND_H
#define KOV_IMPORT_SCENE_COMMAND_H

#include "host/app/kovHostNamedCommand.h"

// importscene (group "kovHost"): asks for a model file, then for options
// (--xblock NAME, --at X,Y,Z, --scale S) until Enter, and inserts the model
// as one block reference in model space.
class kovImportSceneCommand : public kovHostNamedCommand {
public:
  using kovHostNamedCommand::kovHostNamedCommand;
  void execute(OdEdCommandContext* pCmdCtx) override;
};

#endif
