#ifndef OD_DB_HANDLE_H
#define OD_DB_HANDLE_H

#include "Rx/OdPlatform.h"
#include "Rx/OdString.h"

#include <type_traits>

// The persistent name of an object inside one database: a 64-bit number that
// never changes and is never reused. Zero is the null handle.
class OdDbHandle {
public:
  OdDbHandle() = default;
  OdDbHandle(OdUInt64 value) : m_value(value) {}
  // Parses hexadecimal digits (either case, at most 16). Anything else,
  // including an empty string, gives the null handle.
  explicit OdDbHandle(const OdString& hex);

  bool isNull() const { return m_value == 0; }
  // Upper-case hexadecimal without leading zeros; "0" for the null handle.
  OdString ascii() const;

  operator OdUInt64() const { return m_value; }
  OdDbHandle& operator++() { ++m_value; return *this; }
  OdDbHandle operator++(int) { OdDbHandle old = *this; ++m_value; return old; }

  bool operator==(const OdDbHandle& other) const { return m_value == other.m_value; }
  bool operator!=(const OdDbHandle& other) const { return m_value != other.m_value; }
  bool operator<(const OdDbHandle& other) const { return m_value < other.m_value; }
  bool operator>(const OdDbHandle& other) const { return m_value > other.m_value; }
  bool operator<=(const OdDbHandle& other) const { return m_value <= other.m_value; }
  bool operator>=(const OdDbHandle& other) const { return m_value >= other.m_value; }
  // Exact matches for any integer, so that comparing with a number does not
  // compete with the built-in comparison through operator OdUInt64.
  template <class T, typename std::enable_if<std::is_integral<T>::value, int>::type = 0>
  bool operator==(T value) const { return m_value == static_cast<OdUInt64>(value); }
  template <class T, typename std::enable_if<std::is_integral<T>::value, int>::type = 0>
  bool operator!=(T value) const { return m_value != static_cast<OdUInt64>(value); }
  template <class T, typename std::enable_if<std::is_integral<T>::value, int>::type = 0>
  bool operator<(T value) const { return m_value < static_cast<OdUInt64>(value); }
  template <class T, typename std::enable_if<std::is_integral<T>::value, int>::type = 0>
  bool operator>(T value) const { return m_value > static_cast<OdUInt64>(value); }

private:
  OdUInt64 m_value = 0;
};

#endif
