#ifndef KOV_POLYMESH_VERTEX_H
#define KOV_POLYMESH_VERTEX_H

#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeVector3d.h"

namespace kov::polymesh {

// A corner shared by the faces around it. The normal is optional: a zero
// normal lets the renderer derive one from the faces.
class Vertex {
public:
  Vertex() = default;
  explicit Vertex(const OdGePoint3d& position, const OdGeVector3d& normal = OdGeVector3d())
    : position(position)
    , normal(normal)
  {
  }

  bool hasNormal() const { return !normal.isZeroLength(); }
  bool operator==(const Vertex& other) const;
  bool operator!=(const Vertex& other) const { return !(*this == other); }

  OdGePoint3d position;
  OdGeVector3d normal;
};

} // namespace kov::polymesh

#endif
