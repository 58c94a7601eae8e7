#ifndef OD_ED_COMMAND_H
#define OD_ED_COMMAND_H

#include "Rx/OdRxClass.h"

class OdEdCommandContext;

// A command users run by name. Modules usually keep their commands as members
// of type OdStaticRxObject<MyCommand> and add them to odedRegCmds() when they
// load.
class OdEdCommand : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdEdCommand);

public:
  enum {
    kModal = 0,        // runs alone
    kTransparent = 1,  // may run while another command waits for input
    kUsePickset = 2,   // works on the objects selected before it started
    kRedraw = 4        // the views are redrawn when it ends
  };

  // The group the command belongs to, usually the module's name; removeGroup
  // removes a module's commands together.
  virtual const OdString groupName() const = 0;
  // The language-independent name: no blanks, unique across all groups.
  virtual const OdString globalName() const = 0;
  // The name in the user's language; by default the global name.
  virtual const OdString localName() const;
  virtual OdInt32 flags() const;
  // Runs the command. User input raises OdEdCancel when the user cancels; the
  // command lets it pass after cleaning up.
  virtual void execute(OdEdCommandContext* pCmdCtx) = 0;
};

typedef OdSmartPtr<OdEdCommand> OdEdCommandPtr;

#endif
