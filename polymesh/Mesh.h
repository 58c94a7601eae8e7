#ifndef KOV_POLYMESH_MESH_H
#define KOV_POLYMESH_MESH_H

#include "polymesh/Edge.h"
#include "polymesh/Face.h"
#include "polymesh/Surface.h"
#include "polymesh/Vertex.h"

#include "Ge/OdGeExtents3d.h"
#include "Ge/OdGeMatrix3d.h"
#include "Rx/OdResult.h"

#include <vector>

namespace kov::polymesh {

// A polygon mesh: vertices, faces over them, and the surfaces the faces take
// their look from. A mesh with no surface draws every face in the entity's
// colour. Pure data: every operation is a function of its members.
class Mesh {
public:
  std::vector<Vertex> vertices;
  std::vector<Face> faces;
  std::vector<Surface> surfaces;

  bool operator==(const Mesh& other) const;
  bool operator!=(const Mesh& other) const { return !(*this == other); }

  // eOk, or eInvalidInput with what is wrong (a face with fewer than three
  // corners, an index out of range, a surface that does not exist, a corner
  // that is not finite) in message.
  OdResult validate(OdString* message = nullptr) const;

  // Every edge once, sorted by its vertices, with the number of faces on it.
  std::vector<Edge> edges() const;
  // True when every edge has exactly two faces: a closed skin with an inside.
  bool isClosed() const;
  // Triangles when every face is split into a fan.
  OdUInt64 triangleCount() const;
  OdGeExtents3d extents() const;
  // The volume a closed mesh encloses (faces split into fans); negative when
  // its faces look inwards, meaningless when it is open.
  double volume() const;
  // Moves the corners; normals follow the inverse transpose and stay unit long.
  // A mirroring transform keeps the faces' fronts outside by reversing them.
  void transformBy(const OdGeMatrix3d& xform);
};

} // namespace kov::polymesh

#endif
