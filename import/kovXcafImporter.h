#ifndef KOV_XCAF_IMPORTER_H
#define KOV_XCAF_IMPORTER_H

#include "import/kovImportedScene.h"

#include <QString>

// Reads the formats Open CASCADE brings into an XCAF document: STEP and IGES
// (exact shapes, meshed here) and glTF and OBJ (meshes already). The
// document's assembly tree becomes the scene's nodes, each part one mesh with
// a surface per colour or material. Raises OdError when the file can't be read.
class kovXcafImporter {
public:
  enum class Format { Step, Iges, Gltf, Obj };
  static kovImportedScene read(const QString& path, Format format);
};

#endif
