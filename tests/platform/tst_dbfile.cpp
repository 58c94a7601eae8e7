// Drawing files: no damaged or truncated file gets past the reader (nor, under
// AddressSanitizer, makes it allocate by a count it has not checked), and
// objects added after a load take fresh handles. Whole drawings surviving a
// save and a load are checked with the animation's filing and by the host.

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbLight.h"
#include "kovAllocationLimit.h"
#include "kovChecks.h"
#include "kovDbFixture.h"
#include "kovSampleDrawing.h"

#include <cstring>

namespace {

class DbFile : public kovDbFixture {
protected:
  // Loads an image and returns the error it raised (eOk when it loaded).
  OdError load(const std::vector<OdUInt8>& image, OdUInt64 size = ~OdUInt64(0))
  {
    return raisedError([&] { OdDbFileReader::readBuffer(image.data(), std::min<OdUInt64>(size, image.size()), kName); });
  }

  const OdString kName = OdString(L"/drawings/sample.kdb");
};

void putUInt32(std::vector<OdUInt8>& image, size_t offset, OdUInt32 value)
{
  for (int i = 0; i < 4; ++i)
    image[offset + i] = static_cast<OdUInt8>(value >> (8 * i));
}

OdUInt32 getUInt32(const std::vector<OdUInt8>& image, size_t offset)
{
  OdUInt32 value = 0;
  for (int i = 3; i >= 0; --i)
    value = (value << 8) | image[offset + i];
  return value;
}

// Offset of the first UTF-16 occurrence of text in the image.
size_t findText(const std::vector<OdUInt8>& image, const char* text)
{
  std::vector<OdUInt8> pattern;
  for (const char* c = text; *c; ++c) {
    pattern.push_back(static_cast<OdUInt8>(*c));
    pattern.push_back(0);
  }
  const auto it = std::search(image.begin(), image.end(), pattern.begin(), pattern.end());
  EXPECT_NE(it, image.end()) << text;
  return static_cast<size_t>(it - image.begin());
}

bool mentions(const OdError& error, const char* text)
{
  return error.description().toUtf8().find(text) != std::string::npos;
}

// Offsets in the body of the sample file: the object count, then the first
// record (the block table) and its fields.
const size_t kCountAt = 20 + 4 * 8 + 2;
const size_t kFirstRecordAt = kCountAt + 4;

TEST_F(DbFile, NewObjectsAfterLoadTakeFreshHandles)
{
  kovSampleDrawing s = kovBuildSampleDrawing();
  OdDbDatabasePtr loaded = OdDbFileReader::readBuffer(OdDbFileWriter::fileImage(s.db).data(),
                                                      OdDbFileWriter::fileImage(s.db).size(), kName);
  const OdDbObjectId added = loaded->addOdDbObject(OdDbLight::createObject());
  EXPECT_EQ(added.getHandle(), s.db->handseed());
}

TEST_F(DbFile, TruncatedFilesAreRefusedAtEveryLength)
{
  kovSampleDrawing s = kovBuildSampleDrawing();
  const std::vector<OdUInt8> image = OdDbFileWriter::fileImage(s.db);
  for (OdUInt64 length = 0; length < image.size(); ++length) {
    const OdError error = load(image, length);
    ASSERT_NE(error.code(), eOk) << "truncated to " << length;
    ASSERT_TRUE(mentions(error, "/drawings/sample.kdb")) << error.description().toUtf8();
  }
}

TEST_F(DbFile, DamagedFilesSayWhatIsWrong)
{
  kovSampleDrawing s = kovBuildSampleDrawing();
  const std::vector<OdUInt8> image = OdDbFileWriter::fileImage(s.db);
  const size_t firstNameLength = getUInt32(image, kFirstRecordAt);
  const size_t firstFieldLengthAt = kFirstRecordAt + 4 + 2 * firstNameLength + 16;
  const size_t firstFieldsAt = firstFieldLengthAt + 4;

  const struct {
    const char* name;
    void (*damage)(std::vector<OdUInt8>&, size_t fieldLengthAt, size_t fieldsAt);
    bool fixChecksum;
    OdResult code;
    const char* message;
  } cases[] = {
    { "bad magic", [](std::vector<OdUInt8>& f, size_t, size_t) { f[1] = 'X'; }, false, eBadDwgFile,
      "not a drawing file" },
    { "newer format", [](std::vector<OdUInt8>& f, size_t, size_t) { putUInt32(f, 8, 2); }, false,
      eInvalidDwgVersion, "format version 2" },
    { "flipped body byte", [](std::vector<OdUInt8>& f, size_t, size_t) { f[f.size() / 2] ^= 0x10; }, false,
      eBadDwgFile, "checksum" },
    { "flipped checksum byte", [](std::vector<OdUInt8>& f, size_t, size_t) { f[f.size() - 1] ^= 0x01; }, false,
      eBadDwgFile, "checksum" },
    { "extra bytes", [](std::vector<OdUInt8>& f, size_t, size_t) { f.push_back(0); }, false, eBadDwgFile,
      "unexpected bytes" },
    { "huge object count", [](std::vector<OdUInt8>& f, size_t, size_t) { putUInt32(f, kCountAt, 0xFFFFFFF0u); },
      true, eBadDwgFile, "claims 4294967280 objects" },
    { "huge class name length",
      [](std::vector<OdUInt8>& f, size_t, size_t) { putUInt32(f, kFirstRecordAt, 0x7FFFFFFFu); }, true, eEndOfFile,
      "string" },
    { "huge field length",
      [](std::vector<OdUInt8>& f, size_t at, size_t) { putUInt32(f, at, 0xFFFFFFFFu); }, true, eEndOfFile,
      "claims 4294967295 bytes" },
    { "huge record count inside an object",
      [](std::vector<OdUInt8>& f, size_t, size_t at) { putUInt32(f, at, 0x7FFFFFFFu); }, true,
      eDwgObjectImproperlyRead, "invalid data" },
    { "table listing an object of another class",
      [](std::vector<OdUInt8>& f, size_t, size_t at) {
        std::memset(&f[at + 4], 0, 8);
        f[at + 4] = 2;  // the view table's handle where a block belongs
      },
      true, eDwgObjectImproperlyRead, "invalid data" },
    { "unknown class",
      [](std::vector<OdUInt8>& f, size_t, size_t) { f[findText(f, "OdDbLight") + 16] = 'z'; }, true, eBadDwgFile,
      "OdDbLighz" },
    { "abstract class",
      [](std::vector<OdUInt8>& f, size_t, size_t) {
        const size_t at = findText(f, "OdDbLight");
        for (int i = 0; i < 9; ++i)
          f[at + 2 * i] = static_cast<OdUInt8>("OdDbCurve"[i]);
      },
      true, eBadDwgFile, "abstract" },
    { "class that is not an object",
      [](std::vector<OdUInt8>& f, size_t, size_t) {
        const size_t at = findText(f, "OdDbLight");
        for (int i = 0; i < 9; ++i)
          f[at + 2 * i] = static_cast<OdUInt8>("OdDbFiler"[i]);
      },
      true, eBadDwgFile, "not a database object class" },
    { "null handle",
      [](std::vector<OdUInt8>& f, size_t at, size_t) { std::memset(&f[at - 16], 0, 8); }, true, eBadDwgFile,
      "null handle" },
  };
  for (const auto& c : cases) {
    std::vector<OdUInt8> damaged = image;
    c.damage(damaged, firstFieldLengthAt, firstFieldsAt);
    const OdError error = load(c.fixChecksum ? kovSealDrawingImage(damaged) : damaged);
    EXPECT_EQ(error.code(), c.code) << c.name << ": " << error.description().toUtf8();
    EXPECT_TRUE(mentions(error, c.message)) << c.name << ": " << error.description().toUtf8();
    EXPECT_TRUE(mentions(error, "/drawings/sample.kdb")) << c.name;
  }
}

// An entity whose reading does not match its writing.
class MisfiledEntity : public OdDbEntity {
  ODDB_DECLARE_MEMBERS(MisfiledEntity);

public:
  static int extraWritten;

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override
  {
    const OdResult res = OdDbEntity::dwgInFields(pFiler);
    if (res != eOk)
      return res;
    pFiler->rdInt32();
    return pFiler->filerStatus();
  }
  void dwgOutFields(OdDbDwgFiler* pFiler) const override
  {
    OdDbEntity::dwgOutFields(pFiler);
    for (int i = 0; i < 4 + extraWritten; ++i)
      pFiler->wrInt8(0);
  }
};

int MisfiledEntity::extraWritten = 0;

ODRX_DEFINE_MEMBERS_EX(MisfiledEntity, OdDbEntity, DBOBJECT_CONSTR, OdDb::kDHL_CURRENT, OdDb::kMReleaseCurrent, 0,
                       OdString(L"MisfiledEntity"), OdString::kEmpty, OdString::kEmpty, 0)

TEST_F(DbFile, ObjectReadingMoreOrLessThanWrittenIsRefused)
{
  MisfiledEntity::rxInit();
  {
    OdDbDatabasePtr db = OdDbDatabase::createObject();
    OdDbBlockTableRecordPtr ms = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    ms->appendOdDbEntity(MisfiledEntity::createObject());
    ms = nullptr;
    const struct {
      int extra;
      OdResult code;
      const char* message;
    } cases[] = { { 3, eDwgObjectImproperlyRead, "read 7 of its 10 bytes" }, { -2, eEndOfFile, "MisfiledEntity" } };
    for (const auto& c : cases) {
      MisfiledEntity::extraWritten = c.extra;
      const OdError error = load(OdDbFileWriter::fileImage(db));
      EXPECT_EQ(error.code(), c.code) << error.description().toUtf8();
      EXPECT_TRUE(mentions(error, c.message)) << error.description().toUtf8();
    }
    MisfiledEntity::extraWritten = 0;
    EXPECT_EQ(load(OdDbFileWriter::fileImage(db)).code(), eOk);
  }
  MisfiledEntity::rxUninit();
}

} // namespace
