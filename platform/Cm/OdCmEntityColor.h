#ifndef OD_CM_ENTITY_COLOR_H
#define OD_CM_ENTITY_COLOR_H

#include "Rx/OdPlatform.h"
#include "Rx/OdResult.h"

// The colour of an entity: inherited from its layer or block, an index into
// the 256-entry colour palette (ACI), or a true RGB colour. Packed into one
// 32-bit value: the colour method in the top byte, then red, green and blue
// (blue in the lowest byte); an ACI colour keeps its index in the low 16 bits.
// The default colour is by layer.
class OdCmEntityColor {
public:
  enum ColorMethod {
    kByLayer = 0xC0,
    kByBlock = 0xC1,
    kByColor = 0xC2,
    kByACI = 0xC3,
    kForeground = 0xC5,
    kNone = 0xC8
  };

  // Colour indexes with a meaning of their own.
  enum ACIcolorMethod {
    kACIbyBlock = 0,
    kACIRed = 1,
    kACIYellow = 2,
    kACIGreen = 3,
    kACICyan = 4,
    kACIBlue = 5,
    kACIMagenta = 6,
    kACIforeground = 7,
    kACImaximum = 255,
    kACIbyLayer = 256,
    kACInone = 257
  };

  OdCmEntityColor() = default;
  explicit OdCmEntityColor(ColorMethod method);
  // A true colour.
  OdCmEntityColor(OdUInt8 red, OdUInt8 green, OdUInt8 blue);

  ColorMethod colorMethod() const { return static_cast<ColorMethod>(m_RGBM >> 24); }
  // Switches the method, clearing the colour data unless the method is kByColor.
  void setColorMethod(ColorMethod method);

  bool isByLayer() const { return colorMethod() == kByLayer; }
  bool isByBlock() const { return colorMethod() == kByBlock; }
  bool isByACI() const { return colorMethod() == kByACI; }
  bool isByColor() const { return colorMethod() == kByColor; }
  bool isForeground() const { return colorMethod() == kForeground; }
  bool isNone() const { return colorMethod() == kNone; }

  // Sets the colour by index: 0 is by block, 256 by layer, 257 none, 7 the
  // foreground colour, 1..255 a palette colour. Any other index leaves the
  // colour as it is and returns eOutOfRange.
  OdResult setColorIndex(OdInt16 colorIndex);
  // The index that stands for this colour: 0 by block, 256 by layer, 257 none,
  // 7 foreground, the palette index for kByACI and the nearest palette colour
  // for a true colour.
  OdInt16 colorIndex() const;

  // Makes this a true colour.
  void setRGB(OdUInt8 red, OdUInt8 green, OdUInt8 blue);
  // The colour's components: its own for a true colour, the palette's for an
  // ACI or foreground colour, zero for by layer, by block and none.
  OdUInt8 red() const { return static_cast<OdUInt8>(rgb() >> 16); }
  OdUInt8 green() const { return static_cast<OdUInt8>(rgb() >> 8); }
  OdUInt8 blue() const { return static_cast<OdUInt8>(rgb()); }

  // The packed value, for filing.
  OdUInt32 color() const { return m_RGBM; }
  // Restores a packed value; an unknown method byte gives eInvalidInput and
  // leaves the colour as it is.
  OdResult setColor(OdUInt32 rgbm);

  bool operator==(const OdCmEntityColor& other) const { return m_RGBM == other.m_RGBM; }
  bool operator!=(const OdCmEntityColor& other) const { return m_RGBM != other.m_RGBM; }

  // The palette colour of an index, packed with blue in byte 0, green in byte
  // 1 and red in byte 2. Index 0 (by block) gives black.
  static OdUInt32 lookUpRGB(OdUInt8 colorIndex);
  // The palette index 1..255 nearest to a colour (Euclidean distance in RGB;
  // on a tie the lowest index).
  static OdUInt8 lookUpACI(OdUInt8 red, OdUInt8 green, OdUInt8 blue);

private:
  OdUInt32 rgb() const;

  OdUInt32 m_RGBM = static_cast<OdUInt32>(kByLayer) << 24;
};

#endif
