#include "Cm/OdCmEntityColor.h"

#include <gtest/gtest.h>

namespace {

struct PaletteEntry {
  int index;
  int red, green, blue;
};

// Entries of the standard palette: the named colours, the two greys after
// them, samples of the hue rows (saturated and pale shades at several
// brightness steps) and the grey ramp.
const PaletteEntry kPaletteSamples[] = {
  { 1, 255, 0, 0 },     { 2, 255, 255, 0 },   { 3, 0, 255, 0 },     { 4, 0, 255, 255 },
  { 5, 0, 0, 255 },     { 6, 255, 0, 255 },   { 7, 255, 255, 255 }, { 8, 65, 65, 65 },
  { 9, 128, 128, 128 }, { 10, 255, 0, 0 },    { 11, 255, 170, 170 }, { 12, 189, 0, 0 },
  { 19, 79, 53, 53 },   { 21, 255, 191, 170 }, { 30, 255, 127, 0 }, { 36, 104, 52, 0 },
  { 47, 104, 95, 69 },  { 84, 31, 129, 0 },   { 93, 126, 189, 126 }, { 130, 0, 255, 255 },
  { 141, 170, 234, 255 }, { 155, 86, 107, 129 }, { 176, 0, 0, 104 }, { 208, 59, 0, 79 },
  { 223, 189, 126, 173 }, { 249, 79, 53, 59 }, { 250, 51, 51, 51 }, { 251, 80, 80, 80 },
  { 252, 105, 105, 105 }, { 253, 130, 130, 130 }, { 254, 190, 190, 190 }, { 255, 255, 255, 255 },
};

} // namespace

TEST(CmPalette, LookUpRgbGivesStandardEntriesBlueInLowestByte)
{
  for (const PaletteEntry& e : kPaletteSamples) {
    SCOPED_TRACE(e.index);
    const OdUInt32 rgb = OdCmEntityColor::lookUpRGB(static_cast<OdUInt8>(e.index));
    EXPECT_EQ(rgb & 0xFFu, static_cast<OdUInt32>(e.blue));
    EXPECT_EQ((rgb >> 8) & 0xFFu, static_cast<OdUInt32>(e.green));
    EXPECT_EQ((rgb >> 16) & 0xFFu, static_cast<OdUInt32>(e.red));
    EXPECT_EQ(rgb >> 24, 0u);
  }
}

TEST(CmPalette, LookUpAciFindsExactEntriesAndNearestForOthers)
{
  // Exact colours map to the first index that has them.
  EXPECT_EQ(OdCmEntityColor::lookUpACI(255, 0, 0), 1);
  EXPECT_EQ(OdCmEntityColor::lookUpACI(0, 0, 255), 5);
  EXPECT_EQ(OdCmEntityColor::lookUpACI(255, 255, 255), 7);
  EXPECT_EQ(OdCmEntityColor::lookUpACI(130, 130, 130), 253);
  EXPECT_EQ(OdCmEntityColor::lookUpACI(189, 126, 173), 223);
  // Near misses go to the nearest entry.
  EXPECT_EQ(OdCmEntityColor::lookUpACI(250, 5, 3), 1);
  EXPECT_EQ(OdCmEntityColor::lookUpACI(66, 64, 66), 8);
  EXPECT_EQ(OdCmEntityColor::lookUpACI(52, 50, 51), 250);
}

TEST(CmPalette, EveryIndexRoundTripsToAnEntryOfTheSameColour)
{
  for (int i = 1; i <= 255; ++i) {
    const OdUInt32 rgb = OdCmEntityColor::lookUpRGB(static_cast<OdUInt8>(i));
    const OdUInt8 back = OdCmEntityColor::lookUpACI(static_cast<OdUInt8>(rgb >> 16), static_cast<OdUInt8>(rgb >> 8),
                                                     static_cast<OdUInt8>(rgb));
    EXPECT_EQ(OdCmEntityColor::lookUpRGB(back), rgb) << "index " << i;
    EXPECT_LE(back, i) << "index " << i;
  }
}

TEST(CmEntityColor, DefaultIsByLayer)
{
  const OdCmEntityColor color;
  EXPECT_TRUE(color.isByLayer());
  EXPECT_EQ(color.colorIndex(), OdCmEntityColor::kACIbyLayer);
  EXPECT_EQ(color.red(), 0);
}

TEST(CmEntityColor, ColorIndexSelectsTheMethod)
{
  struct Case {
    OdInt16 index;
    OdCmEntityColor::ColorMethod method;
  };
  const Case cases[] = {
    { 0, OdCmEntityColor::kByBlock },  { 256, OdCmEntityColor::kByLayer },   { 257, OdCmEntityColor::kNone },
    { 7, OdCmEntityColor::kForeground }, { 1, OdCmEntityColor::kByACI },     { 255, OdCmEntityColor::kByACI },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.index);
    OdCmEntityColor color(OdCmEntityColor::kByColor);
    EXPECT_EQ(color.setColorIndex(c.index), eOk);
    EXPECT_EQ(color.colorMethod(), c.method);
    EXPECT_EQ(color.colorIndex(), c.index);
  }
}

TEST(CmEntityColor, AciColourGivesPaletteComponents)
{
  OdCmEntityColor color;
  ASSERT_EQ(color.setColorIndex(30), eOk);
  EXPECT_TRUE(color.isByACI());
  EXPECT_EQ(color.red(), 255);
  EXPECT_EQ(color.green(), 127);
  EXPECT_EQ(color.blue(), 0);
}

TEST(CmEntityColor, OutOfRangeIndexIsRefusedAndLeavesColour)
{
  for (OdInt16 bad : { OdInt16(-1), OdInt16(258), OdInt16(-255), OdInt16(32767) }) {
    OdCmEntityColor color(10, 20, 30);
    EXPECT_EQ(color.setColorIndex(bad), eOutOfRange) << bad;
    EXPECT_TRUE(color.isByColor());
    EXPECT_EQ(color.red(), 10);
  }
}

TEST(CmEntityColor, TrueColourKeepsComponentsAndPacksRedGreenBlue)
{
  OdCmEntityColor color;
  color.setRGB(0x12, 0x34, 0x56);
  EXPECT_TRUE(color.isByColor());
  EXPECT_EQ(color.red(), 0x12);
  EXPECT_EQ(color.green(), 0x34);
  EXPECT_EQ(color.blue(), 0x56);
  EXPECT_EQ(color.color(), 0xC2123456u);
  // Its index is the nearest palette colour.
  color.setRGB(254, 1, 1);
  EXPECT_EQ(color.colorIndex(), 1);
}

TEST(CmEntityColor, SetColorRestoresPackedValuesAndRefusesUnknownMethods)
{
  OdCmEntityColor color;
  EXPECT_EQ(color.setColor(0xC3000005u), eOk);
  EXPECT_TRUE(color.isByACI());
  EXPECT_EQ(color.colorIndex(), 5);
  EXPECT_EQ(color.blue(), 255);

  for (OdUInt32 bad : { 0x00000001u, 0xC4000000u, 0xFF123456u, 0xC3000000u, 0xC3000100u }) {
    OdCmEntityColor kept(1, 2, 3);
    EXPECT_EQ(kept.setColor(bad), eInvalidInput) << std::hex << bad;
    EXPECT_EQ(kept, OdCmEntityColor(1, 2, 3));
  }
}

TEST(CmEntityColor, SwitchingMethodClearsColourData)
{
  OdCmEntityColor color(9, 8, 7);
  color.setColorMethod(OdCmEntityColor::kByBlock);
  EXPECT_TRUE(color.isByBlock());
  EXPECT_EQ(color.color(), 0xC1000000u);
  EXPECT_EQ(color.red(), 0);
}
