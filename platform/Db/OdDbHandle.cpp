#include "Db/OdDbHandle.h"

OdDbHandle::OdDbHandle(const OdString& hex)
{
  const int length = hex.getLength();
  if (length == 0 || length > 16)
    return;
  OdUInt64 value = 0;
  for (int i = 0; i < length; ++i) {
    const OdChar c = hex.getAt(i);
    OdUInt64 digit = 0;
    if (c >= L'0' && c <= L'9')
      digit = static_cast<OdUInt64>(c - L'0');
    else if (c >= L'A' && c <= L'F')
      digit = static_cast<OdUInt64>(c - L'A' + 10);
    else if (c >= L'a' && c <= L'f')
      digit = static_cast<OdUInt64>(c - L'a' + 10);
    else
      return;
    value = (value << 4) | digit;
  }
  m_value = value;
}

OdString OdDbHandle::ascii() const
{
  static const OdChar kDigits[] = L"0123456789ABCDEF";
  OdChar buffer[17];
  int pos = 16;
  buffer[pos] = 0;
  OdUInt64 value = m_value;
  do {
    buffer[--pos] = kDigits[value & 0xF];
    value >>= 4;
  } while (value != 0);
  return OdString(buffer + pos);
}
