#ifndef OD_GI_SUB_ENTITY_TRAITS_H
#define OD_GI_SUB_ENTITY_TRAITS_H

#include "Cm/OdCmEntityColor.h"
#include "Gi/OdGi.h"

// The attributes applied to the primitives a drawable sends after setting
// them: colour, line weight and selection marker.
class OdGiSubEntityTraits {
public:
  virtual ~OdGiSubEntityTraits() = default;

  // Sets the colour by palette index (see OdCmEntityColor::setColorIndex); an
  // index out of range leaves the colour as it is.
  virtual void setColor(OdUInt16 colorIndex) = 0;
  virtual void setTrueColor(const OdCmEntityColor& color) = 0;
  // The current colour as an index (OdCmEntityColor::colorIndex()).
  virtual OdUInt16 color() const = 0;
  virtual OdCmEntityColor trueColor() const = 0;

  // Hundredths of a millimetre, or one of the OdGiLineWeight special values.
  virtual void setLineWeight(OdInt16 lineWeight) = 0;
  virtual OdInt16 lineWeight() const = 0;

  virtual void setSelectionMarker(OdGsMarker marker) = 0;
  virtual OdGsMarker selectionMarker() const = 0;
};

#endif
