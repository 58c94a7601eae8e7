#ifndef OD_DB_FILE_READER_H
#define OD_DB_FILE_READER_H

#include "Db/OdDbDatabase.h"

// Reads drawing files (layout in Db/OdDbFileFormat.h). Nothing in a file is
// trusted: every count and length is checked against the bytes that are left
// before anything is allocated for it, and a file that is truncated, damaged
// (CRC), of a newer format, names an unknown class or holds data an object
// refuses raises OdError with a message naming the file and the fault. A
// failed read leaves nothing behind: the database is handed out only whole.
class OdDbFileReader {
public:
  static OdDbDatabasePtr readFile(const OdString& path);
  // Reads a file image in memory; name is what messages call it.
  static OdDbDatabasePtr readBuffer(const void* data, OdUInt64 size, const OdString& name);

private:
  class Reader;
};

// Reads the drawing at path: OdDbFileReader::readFile.
OdDbDatabasePtr odReadDrawing(const OdString& path);

#endif
