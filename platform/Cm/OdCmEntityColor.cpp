#include "Cm/OdCmEntityColor.h"

namespace {

// The standard colour palette as 0xRRGGBB. 1..9 are the named colours and two
// greys; 10..249 are 24 hues 15 degrees apart, each as five brightness steps
// of a saturated and a pale shade; 250..255 are a grey ramp.
const OdUInt32 kPalette[256] = {
  0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x0000FF, 0xFF00FF, 0xFFFFFF, 0x414141, 0x808080,
  0xFF0000, 0xFFAAAA, 0xBD0000, 0xBD7E7E, 0x810000, 0x815656, 0x680000, 0x684545, 0x4F0000, 0x4F3535,
  0xFF3F00, 0xFFBFAA, 0xBD2E00, 0xBD8D7E, 0x811F00, 0x816056, 0x681900, 0x684E45, 0x4F1300, 0x4F3B35,
  0xFF7F00, 0xFFD4AA, 0xBD5E00, 0xBD9D7E, 0x814000, 0x816B56, 0x683400, 0x685645, 0x4F2700, 0x4F4235,
  0xFFBF00, 0xFFEAAA, 0xBD8D00, 0xBDAD7E, 0x816000, 0x817656, 0x684E00, 0x685F45, 0x4F3B00, 0x4F4935,
  0xFFFF00, 0xFFFFAA, 0xBDBD00, 0xBDBD7E, 0x818100, 0x818156, 0x686800, 0x686845, 0x4F4F00, 0x4F4F35,
  0xBFFF00, 0xEAFFAA, 0x8DBD00, 0xADBD7E, 0x608100, 0x768156, 0x4E6800, 0x5F6845, 0x3B4F00, 0x494F35,
  0x7FFF00, 0xD4FFAA, 0x5EBD00, 0x9DBD7E, 0x408100, 0x6B8156, 0x346800, 0x566845, 0x274F00, 0x424F35,
  0x3FFF00, 0xBFFFAA, 0x2EBD00, 0x8DBD7E, 0x1F8100, 0x608156, 0x196800, 0x4E6845, 0x134F00, 0x3B4F35,
  0x00FF00, 0xAAFFAA, 0x00BD00, 0x7EBD7E, 0x008100, 0x568156, 0x006800, 0x456845, 0x004F00, 0x354F35,
  0x00FF3F, 0xAAFFBF, 0x00BD2E, 0x7EBD8D, 0x00811F, 0x568160, 0x006819, 0x45684E, 0x004F13, 0x354F3B,
  0x00FF7F, 0xAAFFD4, 0x00BD5E, 0x7EBD9D, 0x008140, 0x56816B, 0x006834, 0x456856, 0x004F27, 0x354F42,
  0x00FFBF, 0xAAFFEA, 0x00BD8D, 0x7EBDAD, 0x008160, 0x568176, 0x00684E, 0x45685F, 0x004F3B, 0x354F49,
  0x00FFFF, 0xAAFFFF, 0x00BDBD, 0x7EBDBD, 0x008181, 0x568181, 0x006868, 0x456868, 0x004F4F, 0x354F4F,
  0x00BFFF, 0xAAEAFF, 0x008DBD, 0x7EADBD, 0x006081, 0x567681, 0x004E68, 0x455F68, 0x003B4F, 0x35494F,
  0x007FFF, 0xAAD4FF, 0x005EBD, 0x7E9DBD, 0x004081, 0x566B81, 0x003468, 0x455668, 0x00274F, 0x35424F,
  0x003FFF, 0xAABFFF, 0x002EBD, 0x7E8DBD, 0x001F81, 0x566081, 0x001968, 0x454E68, 0x00134F, 0x353B4F,
  0x0000FF, 0xAAAAFF, 0x0000BD, 0x7E7EBD, 0x000081, 0x565681, 0x000068, 0x454568, 0x00004F, 0x35354F,
  0x3F00FF, 0xBFAAFF, 0x2E00BD, 0x8D7EBD, 0x1F0081, 0x605681, 0x190068, 0x4E4568, 0x13004F, 0x3B354F,
  0x7F00FF, 0xD4AAFF, 0x5E00BD, 0x9D7EBD, 0x400081, 0x6B5681, 0x340068, 0x564568, 0x27004F, 0x42354F,
  0xBF00FF, 0xEAAAFF, 0x8D00BD, 0xAD7EBD, 0x600081, 0x765681, 0x4E0068, 0x5F4568, 0x3B004F, 0x49354F,
  0xFF00FF, 0xFFAAFF, 0xBD00BD, 0xBD7EBD, 0x810081, 0x815681, 0x680068, 0x684568, 0x4F004F, 0x4F354F,
  0xFF00BF, 0xFFAAEA, 0xBD008D, 0xBD7EAD, 0x810060, 0x815676, 0x68004E, 0x68455F, 0x4F003B, 0x4F3549,
  0xFF007F, 0xFFAAD4, 0xBD005E, 0xBD7E9D, 0x810040, 0x81566B, 0x680034, 0x684556, 0x4F0027, 0x4F3542,
  0xFF003F, 0xFFAABF, 0xBD002E, 0xBD7E8D, 0x81001F, 0x815660, 0x680019, 0x68454E, 0x4F0013, 0x4F353B,
  0x333333, 0x505050, 0x696969, 0x828282, 0xBEBEBE, 0xFFFFFF,
};

OdUInt32 pack(OdCmEntityColor::ColorMethod method, OdUInt32 data)
{
  return (static_cast<OdUInt32>(method) << 24) | (data & 0xFFFFFFu);
}

bool isKnownMethod(OdUInt32 method)
{
  switch (method) {
  case OdCmEntityColor::kByLayer:
  case OdCmEntityColor::kByBlock:
  case OdCmEntityColor::kByColor:
  case OdCmEntityColor::kByACI:
  case OdCmEntityColor::kForeground:
  case OdCmEntityColor::kNone:
    return true;
  default:
    return false;
  }
}

} // namespace

OdCmEntityColor::OdCmEntityColor(ColorMethod method)
{
  setColorMethod(method);
}

OdCmEntityColor::OdCmEntityColor(OdUInt8 red, OdUInt8 green, OdUInt8 blue)
{
  setRGB(red, green, blue);
}

void OdCmEntityColor::setColorMethod(ColorMethod method)
{
  m_RGBM = pack(method, method == kByColor ? m_RGBM : 0u);
}

OdResult OdCmEntityColor::setColorIndex(OdInt16 colorIndex)
{
  if (colorIndex < kACIbyBlock || colorIndex > kACInone)
    return eOutOfRange;
  switch (colorIndex) {
  case kACIbyBlock:
    m_RGBM = pack(kByBlock, 0);
    break;
  case kACIforeground:
    m_RGBM = pack(kForeground, 0);
    break;
  case kACIbyLayer:
    m_RGBM = pack(kByLayer, 0);
    break;
  case kACInone:
    m_RGBM = pack(kNone, 0);
    break;
  default:
    m_RGBM = pack(kByACI, static_cast<OdUInt32>(colorIndex));
    break;
  }
  return eOk;
}

OdInt16 OdCmEntityColor::colorIndex() const
{
  switch (colorMethod()) {
  case kByBlock:
    return kACIbyBlock;
  case kByLayer:
    return kACIbyLayer;
  case kForeground:
    return kACIforeground;
  case kByACI:
    return static_cast<OdInt16>(m_RGBM & 0xFFFFu);
  case kByColor:
    return lookUpACI(red(), green(), blue());
  default:
    return kACInone;
  }
}

void OdCmEntityColor::setRGB(OdUInt8 red, OdUInt8 green, OdUInt8 blue)
{
  m_RGBM = pack(kByColor, (static_cast<OdUInt32>(red) << 16) | (static_cast<OdUInt32>(green) << 8) | blue);
}

OdResult OdCmEntityColor::setColor(OdUInt32 rgbm)
{
  const OdUInt32 method = rgbm >> 24;
  if (!isKnownMethod(method))
    return eInvalidInput;
  if (method == kByACI) {
    const OdUInt32 index = rgbm & 0xFFFFu;
    if (index < 1 || index > kACImaximum)
      return eInvalidInput;
  }
  m_RGBM = rgbm;
  return eOk;
}

OdUInt32 OdCmEntityColor::rgb() const
{
  switch (colorMethod()) {
  case kByColor:
    return m_RGBM & 0xFFFFFFu;
  case kByACI:
    return lookUpRGB(static_cast<OdUInt8>(m_RGBM & 0xFFu));
  case kForeground:
    return lookUpRGB(kACIforeground);
  default:
    return 0;
  }
}

OdUInt32 OdCmEntityColor::lookUpRGB(OdUInt8 colorIndex)
{
  return kPalette[colorIndex];
}

OdUInt8 OdCmEntityColor::lookUpACI(OdUInt8 red, OdUInt8 green, OdUInt8 blue)
{
  int best = 1;
  long bestDistance = -1;
  for (int i = 1; i <= kACImaximum; ++i) {
    const long dr = static_cast<long>((kPalette[i] >> 16) & 0xFFu) - red;
    const long dg = static_cast<long>((kPalette[i] >> 8) & 0xFFu) - green;
    const long db = static_cast<long>(kPalette[i] & 0xFFu) - blue;
    const long distance = dr * dr + dg * dg + db * db;
    if (bestDistance < 0 || distance < bestDistance) {
      best = i;
      bestDistance = distance;
    }
  }
  return static_cast<OdUInt8>(best);
}
