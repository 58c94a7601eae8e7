#ifndef OD_GI_WORLD_DRAW_H
#define OD_GI_WORLD_DRAW_H

#include "Gi/OdGi.h"

class OdGiSubEntityTraits;
class OdGiWorldGeometry;

// What a drawable's worldDraw() receives: where to send its primitives, the
// traits to set before them, and why it is drawn.
class OdGiWorldDraw {
public:
  virtual ~OdGiWorldDraw() = default;

  virtual OdGiWorldGeometry& geometry() const = 0;
  virtual OdGiSubEntityTraits& subEntityTraits() const = 0;
  virtual OdGiRegenType regenType() const = 0;
  // True when the drawing should stop early (the user cancelled); a drawable
  // drawing many primitives checks it now and then.
  virtual bool regenAbort() const = 0;
};

#endif
