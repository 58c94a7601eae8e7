#ifndef OD_DB_FILE_FORMAT_H
#define OD_DB_FILE_FORMAT_H

#include "Rx/OdPlatform.h"

// The drawing file. All numbers are little-endian; strings are filed as by
// OdDbDwgFiler (a 32-bit count of UTF-16 code units, then the units).
//
//   offset  size  field
//   0       8     magic: 89 'K' 'D' 'B' 0D 0A 1A 0A
//   8       4     format version (kDbFileFormatVersion)
//   12      8     body length B in bytes
//   20      B     body
//   20+B    4     CRC-32 of the body (odDbCrc32)
//
// A file is exactly 24 + B bytes long.
//
// Body:
//   8   handle seed (the next free handle)
//   8   handle of the block table
//   8   handle of the view table
//   8   handle of the model space block
//   2   current colour index
//   4   object count N
//   N object records, each:
//       string  class name (a registered class derived from OdDbObject)
//       8       handle (non-null, unique in the file)
//       8       owner's handle (null for none)
//       4       field length L
//       L       the object's dwgOutFields, which its dwgInFields must read
//               exactly
//
// Erased objects are not filed; a handle that refers to one resolves to the
// null id when the file is read. The magic's CR LF, EOF and LF bytes catch a
// file mangled by a text-mode transfer.

const OdUInt8 kDbFileMagic[8] = { 0x89, 'K', 'D', 'B', 0x0D, 0x0A, 0x1A, 0x0A };
const OdUInt32 kDbFileFormatVersion = 1;
const OdUInt64 kDbFileHeaderSize = 20;
const OdUInt64 kDbFileTrailerSize = 4;
// The smallest object record: an empty class name, handles and length.
const OdUInt64 kDbFileMinRecordSize = 4 + 8 + 8 + 4;

#endif
