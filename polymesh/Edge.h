#ifndef KOV_POLYMESH_EDGE_H
#define KOV_POLYMESH_EDGE_H

#include "Rx/OdPlatform.h"

namespace kov::polymesh {

// A side of one or more faces, between two vertices (lower index first), and
// how many faces share it: one on an open border, two inside a closed skin.
class Edge {
public:
  OdInt32 from = 0;
  OdInt32 to = 0;
  OdInt32 faceCount = 0;

  bool isBorder() const { return faceCount == 1; }
};

} // namespace kov::polymesh

#endif
