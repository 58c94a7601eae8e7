#include "Ed/OdEdCommandLine.h"

#include "Ed/OdDbCommandContext.h"
#include "Ed/OdDbScriptUserIO.h"
#include "Ed/OdEdCancel.h"
#include "Ed/OdEdCommandStack.h"

namespace {

OdResult failure(OdResult code, const OdString& message, OdString* pMessage)
{
  if (pMessage)
    *pMessage = message;
  return code;
}

OdString joined(const OdArray<OdEdScriptWord>& words)
{
  OdString text;
  for (const OdEdScriptWord& word : words)
    text += (text.isEmpty() ? OdString() : OdString(L" ")) + word.typed;
  return text;
}

} // namespace

OdResult odedExecuteCommandLine(const OdString& line, OdRxObject* pDatabase, OdEdUserIO* pConsole,
                                OdString* pMessage)
{
  if (pMessage)
    pMessage->empty();
  OdArray<OdEdScriptWord> words;
  OdString error;
  if (OdEdScriptWord::split(line, words, error) != eOk)
    return failure(eInvalidInput, error, pMessage);
  if (words.isEmpty())
    return eOk;

  const OdEdScriptWord name = words.first();
  words.removeAt(0);
  if (pConsole)
    pConsole->putString(OdString(L"Command: ") + name.typed);
  const OdDbScriptUserIOPtr io = OdDbScriptUserIO::createObject(words, pConsole, pDatabase);
  try {
    if (name.isCancel())
      throw OdEdCancel();
    odedRegCmds()->executeCommand(name.text, OdDbCommandContext::createObject(io, pDatabase));
  } catch (const OdEdCancel&) {
    io->putString(OdString(L"*Cancel*"));
    return eUserBreak;
  } catch (const OdError& e) {
    return failure(e.code(), e.description(), pMessage);
  }

  const OdArray<OdEdScriptWord> rest = io->remainingWords();
  if (!rest.isEmpty())
    return failure(eInvalidInput, OdString(L"Command ") + name.text + L" left input unused: " + joined(rest),
                   pMessage);
  return eOk;
}
