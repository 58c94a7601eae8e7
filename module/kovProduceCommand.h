#ifndef KOV_PRODUCE_COMMAND_H
#define KOV_PRODUCE_COMMAND_H

class OdEdCommandContext;

// animationproduce [CUT] [FOLDER]: produces a camera cut (1 is the first) of
// the editing animation into FOLDER (else the host's production folder) and
// returns when the clip, the sequence or the still is made, naming it; the
// command fails, with the reason, unless it is complete. On the desktop the
// run shows its progress dialog and may ask to recover frames; without
// windows its progress is one line on the console, frames of an earlier run
// are kept, and Ctrl+C cancels it cleanly.
namespace kovProduceCommand {

void produce(OdEdCommandContext* pCmdCtx);

} // namespace kovProduceCommand

#endif
