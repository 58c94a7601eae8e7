// The memory filer: every primitive round-trips bit for bit, and reading never
// goes past the data.

#include "Db/OdDbCrc32.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbMemoryFiler.h"
#include "kovChecks.h"
#include "kovDbFixture.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace {

// Each primitive read with one byte fewer than it needs.
TEST(DbFiler, ReadingPastTheEndRaisesNamingWhatWasReadBeforeAllocating)
{
  const struct {
    const char* what;
    unsigned bytesNeeded;
    void (*read)(OdDbMemoryFiler&);
  } cases[] = {
    { "boolean", 1, [](OdDbMemoryFiler& f) { f.rdBool(); } },
    { "16-bit", 2, [](OdDbMemoryFiler& f) { f.rdInt16(); } },
    { "32-bit", 4, [](OdDbMemoryFiler& f) { f.rdInt32(); } },
    { "64-bit", 8, [](OdDbMemoryFiler& f) { f.rdInt64(); } },
    { "double", 8, [](OdDbMemoryFiler& f) { f.rdDouble(); } },
    { "handle", 8, [](OdDbMemoryFiler& f) { f.rdDbHandle(); } },
    { "double", 24, [](OdDbMemoryFiler& f) { f.rdPoint3d(); } },
    { "string length", 4, [](OdDbMemoryFiler& f) { f.rdString(); } },
    { "bytes", 3, [](OdDbMemoryFiler& f) { OdUInt8 b[3]; f.rdBytes(b, 3); } },
  };
  const OdUInt8 data[32] = {};
  for (const auto& c : cases) {
    OdDbMemoryFiler filer;
    filer.setExternalBuffer(data, c.bytesNeeded - 1);
    const OdError error = raisedError([&] { c.read(filer); });
    EXPECT_EQ(error.code(), eEndOfFile) << c.what;
    EXPECT_NE(error.description().toUtf8().find(c.what), std::string::npos) << error.description().toUtf8();
    EXPECT_EQ(filer.filerStatus(), eEndOfFile);
  }

  // A string longer than the data is refused before it is allocated.
  OdDbMemoryFiler writer;
  writer.wrInt32(-1);  // 4G code units claimed
  writer.wrInt16(0x41);
  OdDbMemoryFiler reader;
  reader.setExternalBuffer(writer.data(), writer.size());
  const OdError error = raisedError([&] { reader.rdString(); });
  EXPECT_EQ(error.code(), eEndOfFile);
  EXPECT_NE(error.description().toUtf8().find("string"), std::string::npos);
}

TEST(DbFiler, SeekStaysWithinTheData)
{
  OdDbMemoryFiler filer;
  filer.wrInt64(1);
  filer.seek(-4, OdDb::kSeekFromEnd);
  EXPECT_EQ(filer.tell(), 4u);
  filer.seek(2, OdDb::kSeekFromCurrent);
  EXPECT_EQ(filer.bytesLeft(), 2u);
  EXPECT_EQ(raisedError([&] { filer.seek(9); }).code(), eEndOfFile);
  EXPECT_EQ(raisedError([&] { filer.seek(-7, OdDb::kSeekFromCurrent); }).code(), eEndOfFile);
  EXPECT_EQ(raisedError([&] { filer.seek(std::numeric_limits<OdInt64>::max(), OdDb::kSeekFromEnd); }).code(), eEndOfFile);
  EXPECT_EQ(raisedError([&] { filer.seek(std::numeric_limits<OdInt64>::min(), OdDb::kSeekFromEnd); }).code(), eEndOfFile);
}

class DbFilerWithDatabase : public kovDbFixture {};

TEST_F(DbFilerWithDatabase, EntityRefusesFiledValuesItsSettersRefuse)
{
  OdDbLightPtr light = OdDbLight::createObject();
  OdDbMemoryFiler filer;
  light->dwgOutFields(&filer);
  std::vector<OdUInt8> bytes(filer.data(), filer.data() + filer.size());
  bytes[0] = 0x01;  // colour index 257: low byte of the filed Int16 256 is 0x00
  bytes[1] = 0x01;
  OdDbMemoryFiler reader;
  reader.setExternalBuffer(bytes.data(), bytes.size());
  EXPECT_EQ(light->dwgInFields(&reader), eInvalidInput);
  EXPECT_EQ(light->colorIndex(), 256);
}

} // namespace
