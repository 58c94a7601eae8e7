#ifndef IKOV_ANIMATED_SCENE_H
#define IKOV_ANIMATED_SCENE_H

#include "host/api/kovViewCamera.h"

#include "Db/OdDbObjectId.h"
#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGeVector3d.h"
#include "Rx/OdRxObject.h"

#include <QMap>
#include <QString>

#include <vector>

class OdDbDatabase;

// What the drawing's animation shows at its current position, computed by the
// module that owns the animation ("kov.IAnimatedScene"). The host's engine
// draws it over the drawing without changing the drawing: subjects stand where
// their tracks put them, the sun and sky follow the environment, and a view can
// look through the animation's camera.
class IkovAnimatedScene : public OdRxObject {
public:
  static const OdChar* serviceId() { return L"kov.IAnimatedScene"; }

  // An entity shown elsewhere than the drawing has it.
  struct Subject {
    OdDbObjectId entity;
    // Applied to the entity's own geometry, in world coordinates.
    OdGeMatrix3d transform;
    // For a block reference: the transforms, relative to the block, of its
    // nested blocks by block name (a clip of the block's node animation).
    QMap<QString, OdGeMatrix3d> nodes;
  };

  struct Frame {
    std::vector<Subject> subjects;
    // Entities hidden at this position.
    std::vector<OdDbObjectId> hidden;
    // The environment's sun, when the animation has one.
    bool hasSun = false;
    // Unit vector from the scene toward the sun.
    OdGeVector3d toSun;
    // The sky sequence name at this position (empty: the host's default).
    QString sky;
    // The camera track's view at this position, when there is one.
    bool hasCamera = false;
    kovViewCamera camera;
  };

  // The editing animation of db at its current position; an empty frame when
  // db has none.
  virtual Frame frame(OdDbDatabase* db) const = 0;
};

#endif
