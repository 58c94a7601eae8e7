#ifndef OD_DB_CRC32_H
#define OD_DB_CRC32_H

#include "Rx/OdPlatform.h"

#include <cstddef>

// The CRC-32 of the drawing file's body: the reflected polynomial 0xEDB88320,
// initial and final value 0xFFFFFFFF (the checksum zip and PNG use).
// Continue a running checksum by passing the previous result as crc.
OdUInt32 odDbCrc32(const void* data, size_t size, OdUInt32 crc = 0);

#endif
