#include "Ed/OdEdBaseUserIO.h"

#include "Ed/OdEdEmptyInput.h"
#include "Ed/OdEdKeyword.h"
#include "Ed/OdEdKeywordList.h"
#include "Ed/OdEdPointTracker.h"
#include "Rx/OdRxSelfRegistering.h"

#include <charconv>
#include <cmath>
#include <string>

ODRX_SELF_REGISTERING_MEMBERS(OdEdBaseUserIO, OdEdUserIO, ODRX_NULL_CONSTR)

namespace {

// The text as ASCII with one leading '+' dropped (from_chars takes only '-');
// false when it holds anything beyond ASCII, which no number does.
bool toNumberText(const OdString& text, std::string& out)
{
  out.clear();
  for (int i = 0; i < text.getLength(); ++i) {
    const OdChar c = text.getAt(i);
    if (c <= 0 || c > 0x7F)
      return false;
    out += static_cast<char>(c);
  }
  if (out.size() > 1 && out[0] == '+' && out[1] != '-' && out[1] != '+')
    out.erase(0, 1);
  return !out.empty();
}

// Raises OdEdKeyword when the answer is one of the keywords; tells the user
// and returns true when it is an ambiguous start of several.
bool checkKeyword(OdEdUserIO& io, const OdEdKeywordList& keywords, const OdString& answer)
{
  const int index = keywords.match(answer);
  if (index >= 0)
    throw OdEdKeyword(index, keywords.at(index));
  if (index == OdEdKeywordList::kAmbiguous) {
    io.putString(OdString(L"Ambiguous option keyword."));
    return true;
  }
  return false;
}

OdString refusal(const OdChar* what, const OdEdKeywordList& keywords)
{
  return OdString(what) + (keywords.isEmpty() ? L" required." : L" or option keyword required.");
}

} // namespace

bool OdEdBaseUserIO::parseReal(const OdString& text, double& value)
{
  std::string ascii;
  if (!toNumberText(text, ascii))
    return false;
  double parsed = 0.0;
  const char* end = ascii.data() + ascii.size();
  const std::from_chars_result result = std::from_chars(ascii.data(), end, parsed, std::chars_format::general);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(parsed))
    return false;
  value = parsed;
  return true;
}

bool OdEdBaseUserIO::parseInt(const OdString& text, int& value)
{
  std::string ascii;
  if (!toNumberText(text, ascii))
    return false;
  int parsed = 0;
  const char* end = ascii.data() + ascii.size();
  const std::from_chars_result result = std::from_chars(ascii.data(), end, parsed);
  if (result.ec != std::errc() || result.ptr != end)
    return false;
  value = parsed;
  return true;
}

bool OdEdBaseUserIO::parsePoint(const OdString& text, OdGePoint3d& point)
{
  double coords[3] = { 0.0, 0.0, 0.0 };
  int count = 0;
  int start = 0;
  for (;;) {
    const int comma = text.find(L",", start);
    const OdString part = comma < 0 ? text.mid(start) : text.mid(start, comma - start);
    if (count == 3 || !parseReal(part, coords[count]))
      return false;
    ++count;
    if (comma < 0)
      break;
    start = comma + 1;
  }
  if (count < 2)
    return false;
  point.set(coords[0], coords[1], coords[2]);
  return true;
}

OdGePoint3d OdEdBaseUserIO::getPoint(const OdString& prompt, int, const OdGePoint3d* pDefault,
                                     const OdString& keywords, OdEdPointTracker* pTracker)
{
  const OdEdKeywordList list(keywords);
  for (;;) {
    const OdString answer = getInput(prompt);
    OdGePoint3d point;
    if (answer.isEmpty()) {
      if (!pDefault)
        throw OdEdEmptyInput();
      point = *pDefault;
    } else if (!parsePoint(answer, point)) {
      if (!checkKeyword(*this, list, answer))
        putString(refusal(L"Point", list));
      continue;
    }
    if (pTracker)
      pTracker->setValue(point);
    return point;
  }
}

int OdEdBaseUserIO::getKeyword(const OdString& prompt, const OdString& keywords, int defVal, int options)
{
  const OdEdKeywordList list(keywords);
  ODA_ASSERT(!list.isEmpty());
  for (;;) {
    const OdString answer = getInput(prompt);
    if (answer.isEmpty()) {
      if (defVal < 0 || defVal >= list.count() || (options & OdEd::kInpThrowEmpty))
        throw OdEdEmptyInput();
      return defVal;
    }
    const int index = list.match(answer);
    if (index >= 0)
      return index;
    putString(OdString(index == OdEdKeywordList::kAmbiguous ? L"Ambiguous option keyword."
                                                            : L"Invalid option keyword."));
  }
}

OdString OdEdBaseUserIO::getString(const OdString& prompt, int options, const OdString& defVal,
                                   const OdString& keywords)
{
  const OdEdKeywordList list(keywords);
  for (;;) {
    const OdString answer = getInput(prompt);
    if (answer.isEmpty()) {
      if (options & OdEd::kInpThrowEmpty)
        throw OdEdEmptyInput();
      return defVal;
    }
    if (!checkKeyword(*this, list, answer))
      return answer;
  }
}

double OdEdBaseUserIO::getReal(const OdString& prompt, int options, double defVal, const OdString& keywords)
{
  const OdEdKeywordList list(keywords);
  for (;;) {
    const OdString answer = getInput(prompt);
    double value = 0.0;
    if (answer.isEmpty()) {
      if (options & OdEd::kInpThrowEmpty)
        throw OdEdEmptyInput();
      return defVal;
    }
    if (!parseReal(answer, value)) {
      if (!checkKeyword(*this, list, answer))
        putString(refusal(L"Number", list));
    } else if ((options & OdEd::kInpNonZero) && value == 0.0) {
      putString(OdString(L"Value must not be zero."));
    } else if ((options & OdEd::kInpNonNeg) && value < 0.0) {
      putString(OdString(L"Value must not be negative."));
    } else {
      return value;
    }
  }
}

int OdEdBaseUserIO::getInt(const OdString& prompt, int options, int defVal, const OdString& keywords)
{
  const OdEdKeywordList list(keywords);
  for (;;) {
    const OdString answer = getInput(prompt);
    int value = 0;
    if (answer.isEmpty()) {
      if (options & OdEd::kInpThrowEmpty)
        throw OdEdEmptyInput();
      return defVal;
    }
    if (!parseInt(answer, value)) {
      if (!checkKeyword(*this, list, answer))
        putString(refusal(L"Integer", list));
    } else if ((options & OdEd::kInpNonZero) && value == 0) {
      putString(OdString(L"Value must not be zero."));
    } else if ((options & OdEd::kInpNonNeg) && value < 0) {
      putString(OdString(L"Value must not be negative."));
    } else {
      return value;
    }
  }
}
