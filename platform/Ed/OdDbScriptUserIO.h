#ifndef OD_DB_SCRIPT_USER_IO_H
#define OD_DB_SCRIPT_USER_IO_H

#include "Ed/OdDbUserIO.h"
#include "Ed/OdEdScriptWord.h"

// User input from a script: each prompt takes the next word (see
// OdEdScriptWord for the syntax and OdEdBaseUserIO for how answers are read).
// ^C cancels; running out of words cancels too, so a script never waits.
// select takes object handles in hexadecimal until an empty word ("").
//
// Every prompt is echoed with its answer, and every message, to the console
// given (when one is), so that the host can print a transcript.
class OdDbScriptUserIO : public OdDbUserIO {
  ODRX_DECLARE_MEMBERS(OdDbScriptUserIO);

public:
  // pDatabase is the drawing select finds handles in; it may be null for
  // commands that select nothing.
  static OdSmartPtr<OdDbScriptUserIO> createObject(const OdArray<OdEdScriptWord>& words, OdEdUserIO* pConsole,
                                                   OdRxObject* pDatabase);

  // The words not taken yet.
  OdArray<OdEdScriptWord> remainingWords() const;

  void putString(const OdString& string) override;
  // Raises OdError(eNoDatabase) without a drawing.
  OdDbObjectIdArray select(const OdString& prompt = OdString::kEmpty, int options = OdEd::kSelDefault) override;

protected:
  OdString getInput(const OdString& prompt) override;
  OdDbScriptUserIO() = default;

private:
  OdArray<OdEdScriptWord> m_words;
  unsigned m_next = 0;
  OdEdUserIOPtr m_pConsole;
  OdRxObjectPtr m_pDatabase;
};

typedef OdSmartPtr<OdDbScriptUserIO> OdDbScriptUserIOPtr;

#endif
