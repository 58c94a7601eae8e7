// The memory filer: every primitive round-trips bit for bit, and reading never
// goes past the data.

#include "Db/OdDbCrc32.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbMemoryFiler.h"
#include "kovDbFixture.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace {

template <class Fn>
OdError raised(Fn fn)
{
  try {
    fn();
  } catch (const OdError& error) {
    return error;
  }
  return OdError(eOk);
}

OdUInt64 bitsOf(double value)
{
  OdUInt64 bits;
  std::memcpy(&bits, &value, sizeof(bits));
  return bits;
}

double doubleOf(OdUInt64 bits)
{
  double value;
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

TEST(DbFiler, IntegersRoundTripAtTheirLimits)
{
  OdDbMemoryFiler filer;
  const OdInt32 ints[] = { 0, 1, -1, std::numeric_limits<OdInt32>::min(), std::numeric_limits<OdInt32>::max() };
  const OdInt64 longs[] = { std::numeric_limits<OdInt64>::min(), std::numeric_limits<OdInt64>::max(), -2 };
  filer.wrBool(true);
  filer.wrBool(false);
  filer.wrInt8(-128);
  filer.wrInt8(127);
  filer.wrInt16(-32768);
  filer.wrInt16(32767);
  for (OdInt32 v : ints)
    filer.wrInt32(v);
  for (OdInt64 v : longs)
    filer.wrInt64(v);
  filer.rewind();
  EXPECT_TRUE(filer.rdBool());
  EXPECT_FALSE(filer.rdBool());
  EXPECT_EQ(filer.rdInt8(), -128);
  EXPECT_EQ(filer.rdInt8(), 127);
  EXPECT_EQ(filer.rdInt16(), -32768);
  EXPECT_EQ(filer.rdInt16(), 32767);
  for (OdInt32 v : ints)
    EXPECT_EQ(filer.rdInt32(), v);
  for (OdInt64 v : longs)
    EXPECT_EQ(filer.rdInt64(), v);
  EXPECT_EQ(filer.bytesLeft(), 0u);
}

TEST(DbFiler, IntegersAreLittleEndian)
{
  OdDbMemoryFiler filer;
  filer.wrInt32(0x01020304);
  ASSERT_EQ(filer.size(), 4u);
  EXPECT_EQ(filer.data()[0], 0x04);
  EXPECT_EQ(filer.data()[3], 0x01);
}

TEST(DbFiler, DoublesRoundTripBitExact)
{
  const OdUInt64 patterns[] = {
    bitsOf(0.0), bitsOf(-0.0), bitsOf(1.0 / 3.0), bitsOf(std::numeric_limits<double>::infinity()),
    bitsOf(-std::numeric_limits<double>::infinity()), bitsOf(std::numeric_limits<double>::denorm_min()),
    bitsOf(std::numeric_limits<double>::max()),
    0x7FF8000000000001ull,  // quiet NaN with a payload
    0x7FF0000000000001ull,  // signalling NaN
    0xFFF8000000000000ull,  // negative quiet NaN
  };
  OdDbMemoryFiler filer;
  for (OdUInt64 bits : patterns)
    filer.wrDouble(doubleOf(bits));
  filer.wrPoint3d(OdGePoint3d(doubleOf(patterns[7]), -0.0, 1e300));
  filer.wrVector3d(OdGeVector3d(1, doubleOf(patterns[3]), -5));
  filer.rewind();
  for (OdUInt64 bits : patterns)
    EXPECT_EQ(bitsOf(filer.rdDouble()), bits);
  const OdGePoint3d p = filer.rdPoint3d();
  EXPECT_EQ(bitsOf(p.x), patterns[7]);
  EXPECT_EQ(bitsOf(p.y), bitsOf(-0.0));
  EXPECT_EQ(p.z, 1e300);
  const OdGeVector3d v = filer.rdVector3d();
  EXPECT_EQ(v.x, 1.0);
  EXPECT_TRUE(std::isinf(v.y));
  EXPECT_EQ(v.z, -5.0);
}

TEST(DbFiler, StringsRoundTripLosslessly)
{
  const std::u16string samples[] = {
    u"",
    u"Camera 1",
    u"Kamerafahrt \u00FC\u00DF \u65E5\u672C",
    u"\U0001F3A5 take \U0001F600",     // non-BMP: surrogate pairs
    std::u16string(1, char16_t(0xD83C)),  // lone high surrogate
    std::u16string(1, char16_t(0xDC00)) + u"x",  // lone low surrogate
    std::u16string { char16_t(0xDE00), char16_t(0xD83D) },  // pair in the wrong order
    std::u16string(1, char16_t(0)) + u"after a NUL",
  };
  OdDbMemoryFiler filer;
  for (const std::u16string& s : samples)
    filer.wrString(OdString::fromUtf16(s.data(), s.size()));
  filer.rewind();
  for (const std::u16string& s : samples)
    EXPECT_EQ(filer.rdString().toUtf16(), s);
  EXPECT_EQ(filer.bytesLeft(), 0u);
}

TEST(DbFiler, BytesAndHandlesRoundTrip)
{
  const OdUInt8 bytes[] = { 0, 1, 0xFF, 0x80 };
  OdDbMemoryFiler filer;
  filer.wrBytes(bytes, sizeof(bytes));
  filer.wrDbHandle(OdDbHandle(0xFEDCBA9876543210ull));
  filer.wrDbHandle(OdDbHandle());
  filer.rewind();
  OdUInt8 back[4] = {};
  filer.rdBytes(back, sizeof(back));
  EXPECT_EQ(std::memcmp(back, bytes, sizeof(bytes)), 0);
  EXPECT_EQ(filer.rdDbHandle(), OdDbHandle(0xFEDCBA9876543210ull));
  EXPECT_TRUE(filer.rdDbHandle().isNull());
}

// Each primitive read with one byte fewer than it needs.
TEST(DbFiler, ReadingPastTheEndRaisesAndNamesWhatWasRead)
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
    const OdError error = raised([&] { c.read(filer); });
    EXPECT_EQ(error.code(), eEndOfFile) << c.what;
    EXPECT_NE(error.description().toUtf8().find(c.what), std::string::npos) << error.description().toUtf8();
    EXPECT_EQ(filer.filerStatus(), eEndOfFile);
  }
}

TEST(DbFiler, StringLongerThanTheDataIsRefusedBeforeAllocating)
{
  OdDbMemoryFiler writer;
  writer.wrInt32(-1);  // 4G code units claimed
  writer.wrInt16(0x41);
  OdDbMemoryFiler reader;
  reader.setExternalBuffer(writer.data(), writer.size());
  const OdError error = raised([&] { reader.rdString(); });
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
  EXPECT_EQ(raised([&] { filer.seek(9); }).code(), eEndOfFile);
  EXPECT_EQ(raised([&] { filer.seek(-7, OdDb::kSeekFromCurrent); }).code(), eEndOfFile);
  EXPECT_EQ(raised([&] { filer.seek(std::numeric_limits<OdInt64>::max(), OdDb::kSeekFromEnd); }).code(), eEndOfFile);
  EXPECT_EQ(raised([&] { filer.seek(std::numeric_limits<OdInt64>::min(), OdDb::kSeekFromEnd); }).code(), eEndOfFile);
}

TEST(DbFiler, WritingAfterSeekOverwrites)
{
  OdDbMemoryFiler filer;
  filer.wrInt32(1);
  filer.wrInt32(2);
  filer.rewind();
  filer.wrInt32(7);
  EXPECT_EQ(filer.size(), 8u);
  filer.rewind();
  EXPECT_EQ(filer.rdInt32(), 7);
  EXPECT_EQ(filer.rdInt32(), 2);
}

TEST(DbFiler, ExternalBufferIsReadOnly)
{
  const OdUInt8 data[4] = { 1, 0, 0, 0 };
  OdDbMemoryFiler filer;
  filer.setExternalBuffer(data, sizeof(data));
  EXPECT_EQ(filer.rdInt32(), 1);
  EXPECT_EQ(raised([&] { filer.wrInt8(1); }).code(), eNotApplicable);
  filer.reset();
  filer.wrInt8(1);
  EXPECT_EQ(filer.size(), 1u);
}

TEST(DbFiler, Crc32MatchesTheStandardCheckValue)
{
  const char text[] = "123456789";
  EXPECT_EQ(odDbCrc32(text, 9), 0xCBF43926u);
  EXPECT_EQ(odDbCrc32(text + 4, 5, odDbCrc32(text, 4)), 0xCBF43926u) << "a running checksum continues";
  EXPECT_EQ(odDbCrc32(text, 0), 0u);
  std::vector<OdUInt8> large(1000);
  for (size_t i = 0; i < large.size(); ++i)
    large[i] = static_cast<OdUInt8>(i * 7 + 3);
  OdUInt32 running = 0;
  for (size_t i = 0; i < large.size(); i += 13)
    running = odDbCrc32(large.data() + i, std::min<size_t>(13, large.size() - i), running);
  EXPECT_EQ(running, odDbCrc32(large.data(), large.size()));
}

class DbFilerWithDatabase : public kovDbFixture {};

TEST_F(DbFilerWithDatabase, SoftPointersResolveInTheFilersDatabase)
{
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  OdDbMemoryFiler filer(db);
  filer.wrSoftPointerId(db->getModelSpaceId());
  filer.wrSoftPointerId(OdDbObjectId::kNull);
  filer.wrDbHandle(OdDbHandle(0x7777));
  filer.rewind();
  EXPECT_EQ(filer.rdSoftPointerId(), db->getModelSpaceId());
  EXPECT_TRUE(filer.rdSoftPointerId().isNull());
  EXPECT_TRUE(filer.rdSoftPointerId().isNull()) << "a handle without an object";
  filer.rewind();
  filer.setDatabase(nullptr);
  EXPECT_TRUE(filer.rdSoftPointerId().isNull()) << "no database to resolve in";
}

TEST_F(DbFilerWithDatabase, ObjectFieldsNeedTheRightOpenMode)
{
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  OdDbLight* light = new OdDbLight;
  db->addOdDbObject(light);
  OdDbMemoryFiler filer(db);
  EXPECT_EQ(raised([&] { light->dwgOutFields(&filer); }).code(), eNotOpenForRead);
  OdDbObjectPtr reading = light->objectId().openObject();
  light->dwgOutFields(&filer);
  filer.rewind();
  EXPECT_EQ(raised([&] { light->dwgInFields(&filer); }).code(), eNotOpenForWrite);
  reading->upgradeOpen();
  EXPECT_EQ(light->dwgInFields(&filer), eOk);
}

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
