#ifndef OD_ED_KEYWORD_LIST_H
#define OD_ED_KEYWORD_LIST_H

#include "Rx/OdString.h"

#include <vector>

// The keywords of a prompt, given as one blank-separated string
// ("Finish Undo Close"), and the matching of what the user typed against them.
class OdEdKeywordList {
public:
  enum { kNoMatch = -1, kAmbiguous = -2 };

  explicit OdEdKeywordList(const OdString& keywords);

  int count() const { return static_cast<int>(m_keywords.size()); }
  bool isEmpty() const { return m_keywords.empty(); }
  const OdString& at(int index) const { return m_keywords.at(static_cast<size_t>(index)); }

  // The index of the keyword typed, ignoring case: a keyword typed in full,
  // else the only keyword that starts with what was typed. kNoMatch for empty
  // or unmatched input, kAmbiguous when several keywords start with it.
  int match(const OdString& typed) const;

private:
  std::vector<OdString> m_keywords;
};

#endif
