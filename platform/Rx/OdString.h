#ifndef OD_STRING_H
#define OD_STRING_H

#include "Rx/OdPlatform.h"

#include <string>

class QString;

// The platform's Unicode string. Stored as wide characters; converts to and
// from UTF-16 (and QString) without loss, lone surrogates included, so that any
// text a user types survives a round trip through a drawing file.
class OdString {
public:
  static const OdString kEmpty;

  OdString() = default;
  OdString(const OdChar* text) : m_data(text ? text : L"") {}
  OdString(const OdChar* text, int length) : m_data(text, static_cast<size_t>(length)) {}
  OdString(const std::wstring& text) : m_data(text) {}
  // Narrow text is taken as UTF-8.
  explicit OdString(const char* utf8);

  const OdChar* c_str() const { return m_data.c_str(); }
  operator const OdChar*() const { return m_data.c_str(); }
  int getLength() const { return static_cast<int>(m_data.size()); }
  bool isEmpty() const { return m_data.empty(); }
  void empty() { m_data.clear(); }
  OdChar getAt(int index) const { return m_data.at(static_cast<size_t>(index)); }
  const std::wstring& toStdWString() const { return m_data; }

  OdString& format(const OdChar* fmt, ...);
  OdString& makeUpper();
  OdString& makeLower();
  int find(const OdChar* text, int start = 0) const;
  OdString mid(int start, int length = -1) const;
  OdString left(int length) const { return mid(0, length); }
  int compare(const OdChar* other) const { return m_data.compare(other ? other : L""); }
  int iCompare(const OdChar* other) const;

  OdString& operator+=(const OdString& other) { m_data += other.m_data; return *this; }
  OdString& operator+=(OdChar c) { m_data += c; return *this; }
  friend OdString operator+(const OdString& a, const OdString& b) { return OdString(a.m_data + b.m_data); }
  friend OdString operator+(const OdString& a, const OdChar* b) { return OdString(a.m_data + (b ? b : L"")); }
  friend OdString operator+(const OdChar* a, const OdString& b) { return OdString((a ? a : L"") + b.m_data); }

  bool operator==(const OdString& other) const { return m_data == other.m_data; }
  bool operator!=(const OdString& other) const { return m_data != other.m_data; }
  bool operator==(const OdChar* other) const { return m_data == (other ? other : L""); }
  bool operator!=(const OdChar* other) const { return !(*this == other); }
  bool operator<(const OdString& other) const { return m_data < other.m_data; }

  // UTF-16 code units, the form the drawing filer stores.
  std::u16string toUtf16() const;
  static OdString fromUtf16(const char16_t* units, size_t count);
  std::string toUtf8() const;

private:
  std::wstring m_data;
};

// Conversions between the platform string and the toolkit's QString.
OdString odFromQString(const QString& text);
QString odToQString(const OdString& text);

#endif
