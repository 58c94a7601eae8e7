#ifndef OD_PLATFORM_H
#define OD_PLATFORM_H

#include <cassert>
#include <cstdint>

// Fixed-width integer names used throughout the platform API.
typedef std::int8_t OdInt8;
typedef std::uint8_t OdUInt8;
typedef std::int16_t OdInt16;
typedef std::uint16_t OdUInt16;
typedef std::int32_t OdInt32;
typedef std::uint32_t OdUInt32;
typedef std::int64_t OdInt64;
typedef std::uint64_t OdUInt64;

// The platform's character type: wide characters, so that printf-style
// formatting with %ls works on every OdString.
typedef wchar_t OdChar;

#define ODA_ASSERT(exp) assert(exp)

#endif
