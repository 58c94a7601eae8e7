#ifndef OD_DB_FILE_WRITER_H
#define OD_DB_FILE_WRITER_H

#include "Rx/OdPlatform.h"
#include "Rx/OdString.h"

#include <vector>

class OdDbDatabase;

// Writes a database as a drawing file (layout in Db/OdDbFileFormat.h).
class OdDbFileWriter {
public:
  // The whole file as bytes. Raises what an object's dwgOutFields raises.
  static std::vector<OdUInt8> fileImage(OdDbDatabase* db);
  // Saves atomically: the bytes go to a temporary file beside path, which is
  // flushed to disk and then renamed over path, so a failure at any point
  // leaves a previous file at path as it was. Raises OdError naming the file.
  static void writeFile(OdDbDatabase* db, const OdString& path);
};

#endif
