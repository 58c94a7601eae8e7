#ifndef KOV_FILER_COUNT_H
#define KOV_FILER_COUNT_H

#include "Db/OdDbDwgFiler.h"

// Reads a count of records that take at least minBytesEach bytes each, and
// throws eDwgObjectImproperlyRead ("impossible <what> count <n>") when it is
// negative or more than the bytes left could hold: readers check a count
// before they allocate for it.
OdInt32 kovReadCount(OdDbDwgFiler* filer, OdUInt64 minBytesEach, const char* what);

#endif
