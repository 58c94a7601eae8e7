#include "Ed/OdDbScriptUserIO.h"

#include "Db/OdDbDatabase.h"
#include "Ed/OdEdCancel.h"
#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdDbScriptUserIO, OdDbUserIO, RXIMPL_CONSTR)

OdSmartPtr<OdDbScriptUserIO> OdDbScriptUserIO::createObject(const OdArray<OdEdScriptWord>& words,
                                                            OdEdUserIO* pConsole, OdRxObject* pDatabase)
{
  OdSmartPtr<OdDbScriptUserIO> io = createObject();
  io->m_words = words;
  io->m_pConsole = pConsole;
  io->m_pDatabase = pDatabase;
  return io;
}

OdArray<OdEdScriptWord> OdDbScriptUserIO::remainingWords() const
{
  OdArray<OdEdScriptWord> rest;
  for (unsigned i = m_next; i < m_words.size(); ++i)
    rest.append(m_words[i]);
  return rest;
}

void OdDbScriptUserIO::putString(const OdString& string)
{
  if (!m_pConsole.isNull())
    m_pConsole->putString(string);
}

OdString OdDbScriptUserIO::getInput(const OdString& prompt)
{
  if (m_next >= m_words.size()) {
    putString(prompt);
    throw OdEdCancel();
  }
  const OdEdScriptWord& word = m_words[m_next++];
  putString(prompt.isEmpty() ? word.typed : prompt + L" " + word.typed);
  if (word.isCancel())
    throw OdEdCancel();
  return word.text;
}

OdDbObjectIdArray OdDbScriptUserIO::select(const OdString& prompt, int options)
{
  const OdDbDatabasePtr database(m_pDatabase.get());
  if (database.isNull())
    throw OdError(eNoDatabase, OdString(L"Selecting objects needs a drawing"));
  return selectByHandles(database.get(), prompt, options);
}
