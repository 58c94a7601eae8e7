#ifndef OD_ED_SCRIPT_WORD_H
#define OD_ED_SCRIPT_WORD_H

#include "Rx/OdArray.h"
#include "Rx/OdResult.h"
#include "Rx/OdString.h"

// One word of a command line typed as a script: what it says and how it was
// typed.
//
// Words are separated by blanks (spaces and tabs). A word that starts with a
// double quote runs to the closing quote, blanks included, and must be
// followed by a blank or the end of the line; inside it a doubled quote stands
// for one quote. So "two words" is one word, "" is an empty word (Enter), and
// "say ""hi""" is: say "hi". The unquoted word ^C stands for cancel.
struct OdEdScriptWord {
  OdString text;
  OdString typed;

  bool isCancel() const { return typed.iCompare(L"^C") == 0; }

  // Splits a line into words. eInvalidInput, with error saying why, for a
  // quote that is not closed or a closing quote followed by more text.
  static OdResult split(const OdString& line, OdArray<OdEdScriptWord>& words, OdString& error);
};

#endif
