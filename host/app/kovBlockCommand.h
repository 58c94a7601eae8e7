#ifndef KOV_BLOCK_COMMAND_H
#define KOV_BLOCK_COMMAND_H

#include "host/app/kovHostNamedCommand.h"

// Blocks by hand (group "kovHost"): "block" moves chosen entities into a new
// block definition and puts a reference to it where they were; "insert"
// places a reference to a block by name, scaled and turned about z.
class kovBlockCommand : public kovHostNamedCommand {
public:
  using kovHostNamedCommand::kovHostNamedCommand;
  void execute(OdEdCommandContext* pCmdCtx) override;
};

#endif
