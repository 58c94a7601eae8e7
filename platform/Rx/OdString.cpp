#include "Rx/OdString.h"

#include <QString>

#include <cstdarg>
#include <cwchar>
#include <cwctype>
#include <vector>

const OdString OdString::kEmpty;

namespace {

bool isHighSurrogate(char32_t u) { return u >= 0xD800 && u <= 0xDBFF; }
bool isLowSurrogate(char32_t u) { return u >= 0xDC00 && u <= 0xDFFF; }

// Joins valid surrogate pairs into one code point and keeps a lone surrogate as
// the code unit it was, which is what makes the conversion lossless.
std::wstring wideFromUtf16(const char16_t* units, size_t count)
{
  std::wstring out;
  out.reserve(count);
  for (size_t i = 0; i < count; ++i) {
    const char32_t u = units[i];
    if (isHighSurrogate(u) && i + 1 < count && isLowSurrogate(units[i + 1])) {
      const char32_t lo = units[++i];
      out += static_cast<wchar_t>(0x10000 + ((u - 0xD800) << 10) + (lo - 0xDC00));
    } else {
      out += static_cast<wchar_t>(u);
    }
  }
  return out;
}

} // namespace

OdString::OdString(const char* utf8)
{
  if (utf8)
    *this = odFromQString(QString::fromUtf8(utf8));
}

OdString& OdString::format(const OdChar* fmt, ...)
{
  std::vector<wchar_t> buffer(256);
  for (;;) {
    va_list args;
    va_start(args, fmt);
    const int written = std::vswprintf(buffer.data(), buffer.size(), fmt, args);
    va_end(args);
    if (written >= 0 && static_cast<size_t>(written) < buffer.size()) {
      m_data.assign(buffer.data(), static_cast<size_t>(written));
      return *this;
    }
    // vswprintf reports only failure, not the size it needs: grow and retry,
    // up to a limit that no message of this system comes near.
    if (buffer.size() > (1u << 24)) {
      m_data.clear();
      return *this;
    }
    buffer.resize(buffer.size() * 4);
  }
}

OdString& OdString::makeUpper()
{
  for (auto& c : m_data)
    c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return *this;
}

OdString& OdString::makeLower()
{
  for (auto& c : m_data)
    c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return *this;
}

int OdString::find(const OdChar* text, int start) const
{
  if (!text || start < 0)
    return -1;
  const size_t pos = m_data.find(text, static_cast<size_t>(start));
  return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

OdString OdString::mid(int start, int length) const
{
  if (start < 0 || static_cast<size_t>(start) >= m_data.size())
    return OdString();
  const size_t n = length < 0 ? std::wstring::npos : static_cast<size_t>(length);
  return OdString(m_data.substr(static_cast<size_t>(start), n));
}

int OdString::iCompare(const OdChar* other) const
{
  OdString a(*this), b(other);
  a.makeLower();
  b.makeLower();
  return a.m_data.compare(b.m_data);
}

std::u16string OdString::toUtf16() const
{
  std::u16string out;
  out.reserve(m_data.size());
  for (wchar_t wc : m_data) {
    const char32_t c = static_cast<char32_t>(wc);
    if (c > 0xFFFF && c <= 0x10FFFF) {
      const char32_t v = c - 0x10000;
      out += static_cast<char16_t>(0xD800 + (v >> 10));
      out += static_cast<char16_t>(0xDC00 + (v & 0x3FF));
    } else {
      // Beyond Unicode cannot come from UTF-16 input; keep the low unit.
      out += static_cast<char16_t>(c & 0xFFFF);
    }
  }
  return out;
}

OdString OdString::fromUtf16(const char16_t* units, size_t count)
{
  return OdString(wideFromUtf16(units, count));
}

std::string OdString::toUtf8() const
{
  return odToQString(*this).toStdString();
}

OdString odFromQString(const QString& text)
{
  return OdString::fromUtf16(reinterpret_cast<const char16_t*>(text.utf16()),
                             static_cast<size_t>(text.size()));
}

QString odToQString(const OdString& text)
{
  const std::u16string units = text.toUtf16();
  return QString::fromUtf16(units.data(), static_cast<int>(units.size()));
}
