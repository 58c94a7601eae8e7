#include "Ed/OdEdScriptWord.h"

namespace {

bool isBlank(wchar_t c)
{
  return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n';
}

} // namespace

OdResult OdEdScriptWord::split(const OdString& line, OdArray<OdEdScriptWord>& words, OdString& error)
{
  words.clear();
  const std::wstring& text = line.toStdWString();
  size_t i = 0;
  while (i < text.size()) {
    if (isBlank(text[i])) {
      ++i;
      continue;
    }
    const size_t start = i;
    OdEdScriptWord word;
    if (text[i] != L'"') {
      while (i < text.size() && !isBlank(text[i]))
        ++i;
      word.text = OdString(text.substr(start, i - start));
    } else {
      std::wstring unquoted;
      bool closed = false;
      for (++i; i < text.size() && !closed; ++i) {
        if (text[i] != L'"')
          unquoted += text[i];
        else if (i + 1 < text.size() && text[i + 1] == L'"')
          unquoted += text[++i];
        else
          closed = true;
      }
      if (!closed) {
        error = OdString(L"The quote at column ") + OdString(std::to_wstring(start + 1)) + L" is not closed.";
        return eInvalidInput;
      }
      if (i < text.size() && !isBlank(text[i])) {
        error = OdString(L"A blank must follow the closing quote at column ") + OdString(std::to_wstring(i)) + L".";
        return eInvalidInput;
      }
      word.text = OdString(unquoted);
    }
    word.typed = OdString(text.substr(start, i - start));
    words.append(word);
  }
  return eOk;
}
