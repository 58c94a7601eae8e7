#ifndef KOV_ASSIMP_IMPORTER_H
#define KOV_ASSIMP_IMPORTER_H

#include "import/kovImportedScene.h"

#include <QString>

// Reads the formats Open CASCADE has no reader for (FBX, Collada, 3DS, PLY)
// through the Open Asset Import Library: its node tree becomes the scene's,
// each of its meshes a part with its material's colour, and its node
// animations clips. Raises OdError when the file can't be read.
class kovAssimpImporter {
public:
  static kovImportedScene read(const QString& path);
  // Adds the file's node animations to a scene another reader made of the
  // same file, matching nodes by name; channels of nodes the scene lacks are
  // left out.
  static void readClips(const QString& path, kovImportedScene& scene);
};

#endif
