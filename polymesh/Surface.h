#ifndef KOV_POLYMESH_SURFACE_H
#define KOV_POLYMESH_SURFACE_H

#include "Cm/OdCmEntityColor.h"
#include "Rx/OdString.h"

namespace kov::polymesh {

// The look shared by a group of faces, as a model's part or material gives
// it: a name, a colour (by layer, by block, an index or a true colour; by
// block takes the mesh entity's own colour) and the name of a material.
class Surface {
public:
  Surface() = default;
  Surface(const OdString& name, const OdCmEntityColor& color, const OdString& material = OdString())
    : name(name)
    , color(color)
    , material(material)
  {
  }

  bool operator==(const Surface& other) const
  {
    return name == other.name && color == other.color && material == other.material;
  }
  bool operator!=(const Surface& other) const { return !(*this == other); }

  OdString name;
  OdCmEntityColor color { OdCmEntityColor::kByBlock };
  OdString material;
};

} // namespace kov::polymesh

#endif
