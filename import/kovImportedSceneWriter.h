#ifndef KOV_IMPORTED_SCENE_WRITER_H
#define KOV_IMPORTED_SCENE_WRITER_H

#include "import/kovImportedScene.h"

#include "Db/OdDbDatabase.h"

// Turns an imported scene into drawing objects: one block definition for the
// whole model, a nested block (with a reference placing it) for every node
// that has children, a transform of its own or an animation, the meshes as
// polygon mesh entities, each clip as a block animation in the top block, and
// one reference to the top block in model space. Every object is built and
// checked before the first one enters the drawing, so a failure (OdError)
// leaves the drawing as it was.
class kovImportedSceneWriter {
public:
  struct Result {
    OdDbObjectId reference;
    OdString blockName;
    int blocks = 0;
    int animations = 0;
  };

  // The scene's meshes move into the drawing. topName gets " 2", " 3"... when
  // a block of that name exists; placement puts the model in model space.
  static Result write(OdDbDatabase* db, kovImportedScene& scene, const OdString& topName,
                      const OdGeMatrix3d& placement);

  // name, or the first of "name 2", "name 3"... that is neither a block of the
  // drawing nor among taken (compared without regard to case).
  static OdString uniqueBlockName(OdDbDatabase* db, const OdString& name, const std::vector<OdString>& taken);
};

#endif
