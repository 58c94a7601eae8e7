#include "Ed/OdEdCommandStack.h"

#include "Db/OdDbDatabase.h"
#include "Ed/OdEdCommandContext.h"

#include "Rx/OdRxSelfRegistering.h"
#include "Rx/OdRxDictionary.h"

#include <algorithm>
#include <cwctype>

ODRX_SELF_REGISTERING_MEMBERS(OdEdCommandStack, OdRxObject, RXIMPL_CONSTR)

namespace {

const OdChar* const kRegistryKey = L"OdEdCommandStack";

bool sameName(const OdString& a, const OdString& b)
{
  return a.iCompare(b) == 0;
}

bool isUsableName(const OdString& name)
{
  if (name.isEmpty())
    return false;
  const std::wstring& text = name.toStdWString();
  return std::none_of(text.begin(), text.end(), [](wchar_t c) { return std::iswspace(static_cast<wint_t>(c)) != 0; });
}

} // namespace

void OdEdCommandStack::addCommand(OdEdCommand* pCommand)
{
  if (!pCommand)
    throw OdError(eNullPtr, OdString(L"No command to add"));
  const OdString name = pCommand->globalName();
  if (!isUsableName(name))
    throw OdError(eInvalidInput, OdString(L"Command name \"") + name + L"\" is empty or has blanks");
  for (const OdEdCommandPtr& command : m_commands) {
    if (sameName(command->globalName(), name))
      throw OdError(eDuplicateKey, OdString(L"Command \"") + name + L"\" is already defined in group \""
                                       + command->groupName() + L"\"");
  }
  m_commands.emplace_back(pCommand);
}

OdEdCommandPtr OdEdCommandStack::lookupCmd(const OdString& name, int flags, const OdString& groupName) const
{
  OdString key = name;
  if (key.getLength() > 1 && key.getAt(0) == L'_') {
    key = key.mid(1);
    flags &= kGlobal;
  }
  const auto inGroup = [&groupName](const OdEdCommandPtr& command) {
    return groupName.isEmpty() || sameName(command->groupName(), groupName);
  };
  if (flags & kGlobal) {
    for (const OdEdCommandPtr& command : m_commands) {
      if (inGroup(command) && sameName(command->globalName(), key))
        return command;
    }
  }
  if (flags & kLocal) {
    for (const OdEdCommandPtr& command : m_commands) {
      if (inGroup(command) && sameName(command->localName(), key))
        return command;
    }
  }
  return OdEdCommandPtr();
}

OdResult OdEdCommandStack::removeCmd(const OdString& groupName, const OdString& globalName)
{
  const auto it = std::find_if(m_commands.begin(), m_commands.end(), [&](const OdEdCommandPtr& command) {
    return sameName(command->groupName(), groupName) && sameName(command->globalName(), globalName);
  });
  if (it == m_commands.end())
    return eKeyNotFound;
  m_commands.erase(it);
  return eOk;
}

OdResult OdEdCommandStack::removeGroup(const OdString& groupName)
{
  const auto end = std::remove_if(m_commands.begin(), m_commands.end(), [&](const OdEdCommandPtr& command) {
    return sameName(command->groupName(), groupName);
  });
  if (end == m_commands.end())
    return eKeyNotFound;
  m_commands.erase(end, m_commands.end());
  return eOk;
}

OdArray<OdEdCommandPtr> OdEdCommandStack::commands() const
{
  OdArray<OdEdCommandPtr> result;
  for (const OdEdCommandPtr& command : m_commands)
    result.append(command);
  return result;
}

void OdEdCommandStack::executeCommand(const OdString& name, OdEdCommandContext* pCmdCtx)
{
  // Held here so that a command that removes itself stays alive until it ends.
  const OdEdCommandPtr command = lookupCmd(name);
  if (command.isNull())
    throw OdError(eKeyNotFound, OdString(L"Unknown command \"") + name + L"\".");
  // What a command changes in its drawing is one undo step.
  if (OdDbDatabasePtr db = OdDbDatabase::cast(pCmdCtx ? pCmdCtx->baseDatabase() : nullptr); !db.isNull())
    db->startUndoRecord();
  command->execute(pCmdCtx);
}

OdEdCommandStackPtr odedRegCmds()
{
  const OdString key(kRegistryKey);
  OdEdCommandStackPtr stack = OdEdCommandStack::cast(odrxSysRegistry()->getAt(key).get());
  if (stack.isNull()) {
    stack = OdEdCommandStack::createObject();
    odrxSysRegistry()->putAt(key, stack.get());
  }
  return stack;
}
