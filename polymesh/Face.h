#ifndef KOV_POLYMESH_FACE_H
#define KOV_POLYMESH_FACE_H

#include "Rx/OdPlatform.h"

#include <vector>

namespace kov::polymesh {

// A planar or nearly planar polygon: three or more vertex indices, counter-
// clockwise seen from its front, and the surface whose look it takes.
class Face {
public:
  Face() = default;
  Face(std::vector<OdInt32> vertices, OdInt32 surface = 0)
    : vertices(std::move(vertices))
    , surface(surface)
  {
  }

  bool operator==(const Face& other) const { return vertices == other.vertices && surface == other.surface; }
  bool operator!=(const Face& other) const { return !(*this == other); }

  std::vector<OdInt32> vertices;
  OdInt32 surface = 0;
};

} // namespace kov::polymesh

#endif
