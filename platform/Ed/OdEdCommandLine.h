#ifndef OD_ED_COMMAND_LINE_H
#define OD_ED_COMMAND_LINE_H

#include "Ed/OdEdUserIO.h"
#include "Rx/OdResult.h"

// Runs one line of a script as if the user typed it: the first word names the
// command (looked up in odedRegCmds()), the words after it answer its prompts
// in order (see OdDbScriptUserIO and OdEdScriptWord for the syntax). The
// command runs with an OdDbCommandContext over pDatabase (which may be null).
//
// "Command: NAME", every prompt with its answer and every message go to
// pConsole's putString (when pConsole is given). Errors are returned, not
// printed and not raised:
//   eOk          the command finished, or the line has no words
//   eUserBreak   the command was cancelled (^C, or the words ran out);
//                "*Cancel*" has been printed
//   eKeyNotFound no command of that name
//   eInvalidInput a quote not closed, or words the command left unused
//   other        the OdError the command raised
// The error's description goes to *pMessage when pMessage is given.
OdResult odedExecuteCommandLine(const OdString& line, OdRxObject* pDatabase, OdEdUserIO* pConsole,
                                OdString* pMessage = nullptr);

#endif
