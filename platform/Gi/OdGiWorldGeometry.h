#ifndef OD_GI_WORLD_GEOMETRY_H
#define OD_GI_WORLD_GEOMETRY_H

#include "Gi/OdGiGeometry.h"

// The geometry of a world draw: the primitives that do not depend on the
// viewport, plus the drawable's extents.
class OdGiWorldGeometry : public OdGiGeometry {
public:
  // Tells the drawing system the drawable's bounding box in model
  // coordinates: newExtents[0] is its minimum corner, newExtents[1] its
  // maximum one.
  virtual void setExtents(const OdGePoint3d* newExtents) = 0;
};

#endif
