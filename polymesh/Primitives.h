#ifndef KOV_POLYMESH_PRIMITIVES_H
#define KOV_POLYMESH_PRIMITIVES_H

#include "polymesh/Mesh.h"

namespace kov::polymesh {

// Closed solids and a ground, built at the origin: what a user sketches a
// scene with before real models come in. Faces look outwards. Every size must
// be positive and finite, and segments at least 3 (the caller checks).
class Primitives {
public:
  // From the origin to (size.x, size.y, size.z): six quads.
  static Mesh box(const OdGeVector3d& size);
  // Centred on the origin; segments around, segments / 2 from pole to pole,
  // with smooth normals.
  static Mesh sphere(double radius, int segments);
  // Standing on the origin along z, with flat caps; the side is faceted.
  static Mesh cylinder(double radius, double height, int segments);
  // One quad on z = 0 from the origin to (width, depth), facing up.
  static Mesh plane(double width, double depth);
};

} // namespace kov::polymesh

#endif
