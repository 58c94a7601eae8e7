#ifndef KOV_STL_IMPORTER_H
#define KOV_STL_IMPORTER_H

#include "import/kovImportedScene.h"

#include <QString>

// Reads an ASCII or binary STL file, after kovStlGuard has vouched for its
// size, into a scene of one uncoloured mesh. STL has no unit: lengths are
// taken as drawing units. Raises OdError when the file can't be read.
class kovStlImporter {
public:
  static kovImportedScene read(const QString& path);
};

#endif
