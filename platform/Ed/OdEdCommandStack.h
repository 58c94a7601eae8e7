#ifndef OD_ED_COMMAND_STACK_H
#define OD_ED_COMMAND_STACK_H

#include "Ed/OdEdCommand.h"
#include "Rx/OdArray.h"

#include <vector>

class OdEdCommandContext;

// The commands users can run, by name. Names are matched ignoring case, as
// users type them in any case; global names are unique across all groups.
class OdEdCommandStack : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdEdCommandStack);

public:
  // Which names lookupCmd matches.
  enum LookupFlags { kGlobal = 1, kLocal = 2 };

  // Adds a command, holding a reference to it. Raises OdError(eDuplicateKey)
  // when a command of the same global name is registered (in any group) and
  // OdError(eInvalidInput) for an empty global name or one with blanks,
  // OdError(eNullPtr) for no command.
  void addCommand(OdEdCommand* pCommand);

  // The command of that name, or null. Global names are tried before local
  // ones; a name typed with a leading '_' matches global names only. A
  // non-empty group restricts the search to that group.
  OdEdCommandPtr lookupCmd(const OdString& name, int flags = kGlobal | kLocal,
                           const OdString& groupName = OdString::kEmpty) const;

  // eKeyNotFound when there is no such command.
  OdResult removeCmd(const OdString& groupName, const OdString& globalName);
  // Removes every command of the group; eKeyNotFound when it has none.
  OdResult removeGroup(const OdString& groupName);

  // The registered commands in the order they were added.
  OdArray<OdEdCommandPtr> commands() const;

  // Looks the command up (global and local names) and runs it. Raises
  // OdError(eKeyNotFound) "Unknown command ..." for an unknown name; whatever
  // the command raises passes through.
  void executeCommand(const OdString& name, OdEdCommandContext* pCmdCtx);

protected:
  OdEdCommandStack() = default;

private:
  std::vector<OdEdCommandPtr> m_commands;
};

typedef OdSmartPtr<OdEdCommandStack> OdEdCommandStackPtr;

// The process's command stack, created and kept in the system registry on
// first use.
OdEdCommandStackPtr odedRegCmds();

#endif
