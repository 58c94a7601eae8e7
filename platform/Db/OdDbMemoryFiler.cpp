#include "Db/OdDbMemoryFiler.h"

#include "Rx/OdError.h"

#include <algorithm>
#include <cstring>

ODRX_CONS_DEFINE_MEMBERS(OdDbMemoryFiler, OdDbDwgFiler, RXIMPL_CONSTR)

OdDbMemoryFiler::OdDbMemoryFiler(OdDbDatabase* db, OdDb::FilerType type)
  : m_db(db)
  , m_type(type)
{
}

void OdDbMemoryFiler::setExternalBuffer(const void* data, OdUInt64 size)
{
  m_own.clear();
  m_data = static_cast<const OdUInt8*>(data);
  m_size = data ? size : 0;
  m_pos = 0;
  m_external = true;
  resetFilerStatus();
}

void OdDbMemoryFiler::reset()
{
  m_own.clear();
  m_data = nullptr;
  m_size = 0;
  m_pos = 0;
  m_external = false;
  resetFilerStatus();
}

const OdUInt8* OdDbMemoryFiler::take(OdUInt64 n, const OdChar* what)
{
  if (n > bytesLeft()) {
    setFilerStatus(eEndOfFile);
    OdString message;
    message.format(L"Unexpected end of data reading %ls at offset %llu: %llu bytes needed, %llu left", what,
                   static_cast<unsigned long long>(m_pos), static_cast<unsigned long long>(n),
                   static_cast<unsigned long long>(bytesLeft()));
    throw OdError(eEndOfFile, message);
  }
  const OdUInt8* at = m_data + m_pos;
  m_pos += n;
  return at;
}

OdUInt8* OdDbMemoryFiler::put(OdUInt64 n)
{
  if (m_external)
    throw OdError(eNotApplicable, OdString(L"A memory filer reading an external buffer can't be written"));
  const OdUInt64 end = m_pos + n;
  if (end > m_own.size()) {
    // The buffer grows by doubling, ahead of the data, so that appending is
    // amortised constant time; m_size marks the end of what was written.
    m_own.resize(std::max<OdUInt64>(end, m_own.size() * 2));
    m_data = m_own.data();
  }
  if (end > m_size)
    m_size = end;
  OdUInt8* at = m_own.data() + m_pos;
  m_pos = end;
  return at;
}

OdUInt64 OdDbMemoryFiler::readUInt(int bytes, const OdChar* what)
{
  const OdUInt8* p = take(static_cast<OdUInt64>(bytes), what);
  OdUInt64 value = 0;
  for (int i = bytes - 1; i >= 0; --i)
    value = (value << 8) | p[i];
  return value;
}

void OdDbMemoryFiler::writeUInt(OdUInt64 value, int bytes)
{
  OdUInt8* p = put(static_cast<OdUInt64>(bytes));
  for (int i = 0; i < bytes; ++i) {
    p[i] = static_cast<OdUInt8>(value & 0xFF);
    value >>= 8;
  }
}

bool OdDbMemoryFiler::rdBool()
{
  return readUInt(1, L"a boolean") != 0;
}

OdInt8 OdDbMemoryFiler::rdInt8()
{
  return static_cast<OdInt8>(readUInt(1, L"an 8-bit integer"));
}

OdInt16 OdDbMemoryFiler::rdInt16()
{
  return static_cast<OdInt16>(readUInt(2, L"a 16-bit integer"));
}

OdInt32 OdDbMemoryFiler::rdInt32()
{
  return static_cast<OdInt32>(readUInt(4, L"a 32-bit integer"));
}

OdInt64 OdDbMemoryFiler::rdInt64()
{
  return static_cast<OdInt64>(readUInt(8, L"a 64-bit integer"));
}

double OdDbMemoryFiler::rdDouble()
{
  const OdUInt64 bits = readUInt(8, L"a double");
  double value;
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

OdString OdDbMemoryFiler::rdString()
{
  const OdUInt64 units = readUInt(4, L"a string length");
  const OdUInt8* p = take(units * 2, L"a string");
  std::u16string text(static_cast<size_t>(units), u'\0');
  for (size_t i = 0; i < text.size(); ++i)
    text[i] = static_cast<char16_t>(p[2 * i] | (p[2 * i + 1] << 8));
  return OdString::fromUtf16(text.data(), text.size());
}

void OdDbMemoryFiler::rdBytes(void* buffer, OdUInt32 numBytes)
{
  const OdUInt8* p = take(numBytes, L"bytes");
  if (numBytes)
    std::memcpy(buffer, p, numBytes);
}

OdDbHandle OdDbMemoryFiler::rdDbHandle()
{
  return OdDbHandle(readUInt(8, L"a handle"));
}

OdGePoint3d OdDbMemoryFiler::rdPoint3d()
{
  OdGePoint3d p;
  p.x = rdDouble();
  p.y = rdDouble();
  p.z = rdDouble();
  return p;
}

OdGeVector3d OdDbMemoryFiler::rdVector3d()
{
  OdGeVector3d v;
  v.x = rdDouble();
  v.y = rdDouble();
  v.z = rdDouble();
  return v;
}

void OdDbMemoryFiler::wrBool(bool value)
{
  writeUInt(value ? 1 : 0, 1);
}

void OdDbMemoryFiler::wrInt8(OdInt8 value)
{
  writeUInt(static_cast<OdUInt8>(value), 1);
}

void OdDbMemoryFiler::wrInt16(OdInt16 value)
{
  writeUInt(static_cast<OdUInt16>(value), 2);
}

void OdDbMemoryFiler::wrInt32(OdInt32 value)
{
  writeUInt(static_cast<OdUInt32>(value), 4);
}

void OdDbMemoryFiler::wrInt64(OdInt64 value)
{
  writeUInt(static_cast<OdUInt64>(value), 8);
}

void OdDbMemoryFiler::wrDouble(double value)
{
  OdUInt64 bits;
  std::memcpy(&bits, &value, sizeof(bits));
  writeUInt(bits, 8);
}

void OdDbMemoryFiler::wrString(const OdString& value)
{
  const std::u16string text = value.toUtf16();
  if (text.size() > 0xFFFFFFFFu)
    throw OdError(eOutOfRange, OdString(L"A string of more than 4G code units can't be filed"));
  writeUInt(text.size(), 4);
  OdUInt8* p = put(text.size() * 2);
  for (char16_t unit : text) {
    *p++ = static_cast<OdUInt8>(unit & 0xFF);
    *p++ = static_cast<OdUInt8>(unit >> 8);
  }
}

void OdDbMemoryFiler::wrBytes(const void* buffer, OdUInt32 numBytes)
{
  OdUInt8* p = put(numBytes);
  if (numBytes)
    std::memcpy(p, buffer, numBytes);
}

void OdDbMemoryFiler::wrDbHandle(const OdDbHandle& value)
{
  writeUInt(value, 8);
}

void OdDbMemoryFiler::wrPoint3d(const OdGePoint3d& value)
{
  wrDouble(value.x);
  wrDouble(value.y);
  wrDouble(value.z);
}

void OdDbMemoryFiler::wrVector3d(const OdGeVector3d& value)
{
  wrDouble(value.x);
  wrDouble(value.y);
  wrDouble(value.z);
}

void OdDbMemoryFiler::seek(OdInt64 offset, OdDb::FilerSeekType seekType)
{
  OdInt64 base = 0;
  if (seekType == OdDb::kSeekFromCurrent)
    base = static_cast<OdInt64>(m_pos);
  else if (seekType == OdDb::kSeekFromEnd)
    base = static_cast<OdInt64>(m_size);
  const OdInt64 size = static_cast<OdInt64>(m_size);
  // Each bound is checked before adding, so that no offset can overflow.
  if ((offset < 0 && offset < -base) || (offset > 0 && offset > size - base)) {
    setFilerStatus(eEndOfFile);
    OdString message;
    message.format(L"Seek to %lld from %lld is outside the data (%lld bytes)", static_cast<long long>(offset),
                   static_cast<long long>(base), static_cast<long long>(size));
    throw OdError(eEndOfFile, message);
  }
  m_pos = static_cast<OdUInt64>(base + offset);
}
