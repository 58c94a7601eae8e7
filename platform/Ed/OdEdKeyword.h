#ifndef OD_ED_KEYWORD_H
#define OD_ED_KEYWORD_H

#include "Rx/OdError.h"

// Raised by getPoint, getString, getReal and getInt when the user answers with
// one of the prompt's keywords. Carries the keyword's position in the list and
// its full name as the list spells it.
class OdEdKeyword : public OdError {
public:
  OdEdKeyword(int index, const OdString& keyword)
    : OdError(eInvalidInput, OdString(L"Unhandled option keyword ") + keyword)
    , m_index(index)
    , m_keyword(keyword)
  {
  }

  int keywordIndex() const { return m_index; }
  const OdString& keyword() const { return m_keyword; }

private:
  int m_index;
  OdString m_keyword;
};

#endif
