#include "Ed/OdEdKeywordList.h"

#include <cwctype>

OdEdKeywordList::OdEdKeywordList(const OdString& keywords)
{
  const std::wstring& text = keywords.toStdWString();
  size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && std::iswspace(static_cast<wint_t>(text[i])))
      ++i;
    const size_t start = i;
    while (i < text.size() && !std::iswspace(static_cast<wint_t>(text[i])))
      ++i;
    if (i > start)
      m_keywords.emplace_back(text.substr(start, i - start));
  }
}

int OdEdKeywordList::match(const OdString& typed) const
{
  if (typed.isEmpty())
    return kNoMatch;
  for (size_t i = 0; i < m_keywords.size(); ++i) {
    if (m_keywords[i].iCompare(typed) == 0)
      return static_cast<int>(i);
  }
  int found = kNoMatch;
  for (size_t i = 0; i < m_keywords.size(); ++i) {
    if (m_keywords[i].left(typed.getLength()).iCompare(typed) == 0) {
      if (found != kNoMatch)
        return kAmbiguous;
      found = static_cast<int>(i);
    }
  }
  return found;
}
