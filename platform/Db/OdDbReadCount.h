#ifndef OD_DB_READ_COUNT_H
#define OD_DB_READ_COUNT_H

#include "Db/OdDbDwgFiler.h"

// Not of the SDK: the embedded platform's helper for readers of its filers.
// Reads a count of records that take at least minBytesEach bytes each, and
// throws eDwgObjectImproperlyRead ("impossible <what> count <n>") when it is
// negative or more than the bytes left could hold: readers check a count
// before they allocate for it.
OdInt32 odDbReadCount(OdDbDwgFiler* filer, OdUInt64 minBytesEach, const char* what);

#endif
