#ifndef KOV_IMPORTED_SCENE_H
#define KOV_IMPORTED_SCENE_H

#include "polymesh/Mesh.h"
#include "scene/kovDbBlockAnimation.h"

#include "Ge/OdGeExtents3d.h"
#include "Ge/OdGeMatrix3d.h"
#include "Rx/OdString.h"

#include <cstddef>
#include <vector>

// A model file's content as the readers leave it, before anything enters a
// drawing: a tree of nodes (each placed relative to its parent), the meshes
// hanging on them and the clips that move them. Lengths are in metres once the
// reader has applied the file's unit; upAxis turns the file's axes into the
// drawing's (z up).
class kovImportedScene {
public:
  struct Node {
    OdString name;
    OdGeMatrix3d transform;
    std::vector<std::size_t> parts;
    std::vector<std::size_t> children;
  };
  struct Part {
    OdString name;
    kov::polymesh::Mesh mesh;
  };
  struct Channel {
    std::size_t node = 0;
    std::vector<kovDbBlockAnimation::Key> keys;
  };
  struct Clip {
    OdString name;
    std::vector<Channel> channels;
  };

  // Starts with the root node, index 0.
  kovImportedScene();

  std::size_t addNode(std::size_t parent, const OdString& name, const OdGeMatrix3d& transform);
  // Parts without triangles are dropped (npos).
  std::size_t addPart(std::size_t node, const OdString& name, kov::polymesh::Mesh mesh);
  static const std::size_t npos = static_cast<std::size_t>(-1);

  OdUInt64 triangleCount() const;
  // Every part under its nodes' transforms and upAxis.
  OdGeExtents3d extents() const;
  // Converts lengths: corners, node and key translations. Rotations and
  // scales stay, so the shape is the same at any size.
  void scaleLengths(double factor);
  bool isAnimated(std::size_t node) const;
  // The first node of that name, npos when none.
  std::size_t findNode(const OdString& name) const;

  std::vector<Node> nodes;
  std::vector<Part> parts;
  std::vector<Clip> clips;
  OdGeMatrix3d upAxis;
};

#endif
