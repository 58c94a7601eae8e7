#ifndef KOV_SCENE_IMPORT_H
#define KOV_SCENE_IMPORT_H

#include "import/kovImportedScene.h"

#include <QString>
#include <QStringList>

// Reads a model file into a scene in metres with z up, choosing the reader by
// the file's extension. Everything a user can get wrong (a missing, empty,
// damaged or unknown file, one without geometry) raises OdError with a
// message that names the file.
class kovSceneImport {
public:
  // Lower case, without the dot.
  static QStringList supportedExtensions();
  static kovImportedScene read(const QString& path);
};

#endif
