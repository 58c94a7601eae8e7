#ifndef KOV_SCENE_COMMAND_H
#define KOV_SCENE_COMMAND_H

#include "host/app/kovHostNamedCommand.h"

// The commands that sketch a scene with polygon meshes (group "kovHost"):
// box, sphere, cylinder and plane, each asked for its place, its size and a
// colour ("ByLayer", an index 1 to 255, or r,g,b).
class kovSceneCommand : public kovHostNamedCommand {
public:
  using kovHostNamedCommand::kovHostNamedCommand;
  void execute(OdEdCommandContext* pCmdCtx) override;
};

#endif
