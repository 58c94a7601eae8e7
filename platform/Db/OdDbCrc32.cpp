#include "Db/OdDbCrc32.h"

#include <array>

namespace {

// Eight tables let the loop fold eight bytes per step (slicing by eight).
using Tables = std::array<std::array<OdUInt32, 256>, 8>;

Tables makeTables()
{
  Tables t {};
  for (OdUInt32 i = 0; i < 256; ++i) {
    OdUInt32 c = i;
    for (int k = 0; k < 8; ++k)
      c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
    t[0][i] = c;
  }
  for (OdUInt32 i = 0; i < 256; ++i) {
    for (size_t s = 1; s < t.size(); ++s)
      t[s][i] = (t[s - 1][i] >> 8) ^ t[0][t[s - 1][i] & 0xFF];
  }
  return t;
}

} // namespace

OdUInt32 odDbCrc32(const void* data, size_t size, OdUInt32 crc)
{
  static const Tables t = makeTables();
  const auto* p = static_cast<const OdUInt8*>(data);
  OdUInt32 c = ~crc;
  for (; size >= 8; size -= 8, p += 8) {
    const OdUInt32 lo = c ^ (OdUInt32(p[0]) | OdUInt32(p[1]) << 8 | OdUInt32(p[2]) << 16 | OdUInt32(p[3]) << 24);
    const OdUInt32 hi = OdUInt32(p[4]) | OdUInt32(p[5]) << 8 | OdUInt32(p[6]) << 16 | OdUInt32(p[7]) << 24;
    c = t[7][lo & 0xFF] ^ t[6][(lo >> 8) & 0xFF] ^ t[5][(lo >> 16) & 0xFF] ^ t[4][lo >> 24] ^ t[3][hi & 0xFF]
        ^ t[2][(hi >> 8) & 0xFF] ^ t[1][(hi >> 16) & 0xFF] ^ t[0][hi >> 24];
  }
  for (; size > 0; --size, ++p)
    c = t[0][(c ^ *p) & 0xFF] ^ (c >> 8);
  return ~c;
}
