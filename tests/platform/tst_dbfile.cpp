// Drawing files: a whole drawing survives a save and a load, saving is atomic,
// and no damaged file gets past the reader.

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbCrc32.h"
#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbSpline.h"
#include "Db/OdDbViewTable.h"
#include "Db/OdDbViewTableRecord.h"
#include "kovDbFixture.h"
#include "kovSampleDrawing.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <new>
#include <random>

// Largest single allocation while g_trackAllocations is set: proves that no
// count or length read from a file sizes an allocation unchecked.
namespace {
bool g_trackAllocations = false;
size_t g_largestAllocation = 0;
} // namespace

void* operator new(size_t size)
{
  if (g_trackAllocations && size > g_largestAllocation)
    g_largestAllocation = size;
  if (void* p = std::malloc(size ? size : 1))
    return p;
  throw std::bad_alloc();
}
void* operator new[](size_t size)
{
  return operator new(size);
}
void operator delete(void* p) noexcept
{
  std::free(p);
}
void operator delete[](void* p) noexcept
{
  std::free(p);
}
void operator delete(void* p, size_t) noexcept
{
  std::free(p);
}
void operator delete[](void* p, size_t) noexcept
{
  std::free(p);
}

namespace {

const size_t kAllocationLimit = 256 * 1024;

class DbFile : public kovDbFixture {
protected:
  void SetUp() override
  {
    kovDbFixture::SetUp();
    ASSERT_TRUE(m_dir.isValid());
  }

  OdString path(const char* name) const { return odFromQString(m_dir.filePath(QString::fromUtf8(name))); }

  // Loads an image and returns the error it raised (eOk when it loaded), with
  // the largest allocation made while loading.
  OdError load(const std::vector<OdUInt8>& image, size_t* largest = nullptr, OdUInt64 size = ~OdUInt64(0))
  {
    g_largestAllocation = 0;
    g_trackAllocations = true;
    OdError result(eOk);
    try {
      OdDbFileReader::readBuffer(image.data(), std::min<OdUInt64>(size, image.size()), kName);
    } catch (const OdError& error) {
      result = error;
    }
    g_trackAllocations = false;
    if (largest)
      *largest = g_largestAllocation;
    return result;
  }

  QTemporaryDir m_dir;
  const OdString kName = OdString(L"/drawings/sample.kdb");
};

std::vector<OdUInt8> readAll(const OdString& path)
{
  QFile file(odToQString(path));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray bytes = file.readAll();
  return std::vector<OdUInt8>(bytes.begin(), bytes.end());
}

void writeAll(const OdString& path, const std::vector<OdUInt8>& bytes)
{
  QFile file(odToQString(path));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
}

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

// Recomputes the trailer so that the reader gets past the checksum.
void fixCrc(std::vector<OdUInt8>& image)
{
  putUInt32(image, image.size() - 4, odDbCrc32(image.data() + 20, image.size() - 24));
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

TEST_F(DbFile, SampleDrawingSurvivesSaveAndLoad)
{
  kovSampleDrawing s = kovBuildSampleDrawing();
  const OdString file = path("sample.kdb");
  s.db->writeFile(file);
  EXPECT_EQ(s.db->getFilename(), file);
  OdDbDatabasePtr loaded = odReadDrawing(file);
  EXPECT_EQ(loaded->getFilename(), file);
  EXPECT_EQ(kovCompareDrawings(s.db, loaded), "");
  EXPECT_EQ(loaded->currentColorIndex(), 3);

  auto idIn = [&](const OdDbObjectId& id) { return loaded->getOdDbObjectId(id.getHandle()); };
  EXPECT_FALSE(idIn(s.erased).isValid()) << "erased objects are not saved";

  OdDbLightPtr light = idIn(s.light).safeOpenObject();
  EXPECT_EQ(light->name(), OdString(L"Key light \U0001F4A1"));
  EXPECT_EQ(light->lightType(), OdDbLight::kSpotLight);
  EXPECT_EQ(light->intensity(), 2.5);
  EXPECT_EQ(light->ownerId(), loaded->getModelSpaceId());

  OdDbSplinePtr spline = idIn(s.spline).safeOpenObject();
  EXPECT_EQ(spline->colorIndex(), 1);
  OdGeVector3d startTangent, endTangent;
  ASSERT_EQ(spline->getFitTangents(startTangent, endTangent), eOk);
  EXPECT_TRUE(startTangent.isParallelTo(OdGeVector3d(1, 1, 0)));
  OdGePoint3d point;
  ASSERT_EQ(spline->getFitPointAt(2, point), eOk);
  EXPECT_TRUE(point.isEqualTo(OdGePoint3d(3, 2, 1)));

  OdDbBlockReferencePtr tableRef = idIn(s.tableRef).safeOpenObject();
  EXPECT_EQ(tableRef->blockTableRecord(), idIn(s.tableBlock)) << "a reference ahead of its block resolves";
  EXPECT_EQ(tableRef->visibility(), OdDb::kInvisible);
  OdDbBlockReferencePtr chairRef = idIn(s.chairRef).safeOpenObject();
  OdDbBlockReferencePtr original = s.chairRef.safeOpenObject();
  EXPECT_EQ(chairRef->blockTransform(), original->blockTransform());

  OdDbBlockTablePtr blocks = loaded->getBlockTableId().safeOpenObject();
  EXPECT_EQ(blocks->getAt(OdString(L"Table")), idIn(s.tableBlock));
  OdDbViewTablePtr views = loaded->getViewTableId().safeOpenObject();
  OdDbViewTableRecordPtr view = views->getAt(OdString(L"front")).safeOpenObject();
  EXPECT_TRUE(view->eyePoint().isEqualTo(OdGePoint3d(0, -30, 5)));
  EXPECT_TRUE(view->perspectiveEnabled());
  EXPECT_EQ(view->lensLength(), 35.0);

  std::vector<OdDbObjectId> modelSpace;
  OdDbBlockTableRecordPtr ms = loaded->getModelSpaceId().safeOpenObject();
  for (OdDbObjectIteratorPtr it = ms->newIterator(true, false); !it->done(); it->step(true, false))
    modelSpace.push_back(it->objectId());
  EXPECT_EQ(modelSpace, (std::vector<OdDbObjectId> { idIn(s.spline), idIn(s.light), idIn(s.chairRef),
                                                     idIn(s.tableRef) }));

  EXPECT_EQ(OdDbFileWriter::fileImage(loaded), readAll(file)) << "saving a loaded drawing gives the same bytes";
}

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
    const OdError error = load(image, nullptr, length);
    ASSERT_NE(error.code(), eOk) << "truncated to " << length;
    ASSERT_TRUE(mentions(error, "/drawings/sample.kdb")) << error.description().toUtf8();
  }
  const OdString truncated = path("truncated.kdb");
  writeAll(truncated, std::vector<OdUInt8>(image.begin(), image.begin() + image.size() / 2));
  try {
    odReadDrawing(truncated);
    FAIL() << "a truncated file loaded";
  } catch (const OdError& error) {
    EXPECT_EQ(error.code(), eEndOfFile);
    EXPECT_TRUE(mentions(error, "truncated.kdb"));
    EXPECT_TRUE(mentions(error, "truncated"));
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
    if (c.fixChecksum)
      fixCrc(damaged);
    size_t largest = 0;
    const OdError error = load(damaged, &largest);
    EXPECT_EQ(error.code(), c.code) << c.name << ": " << error.description().toUtf8();
    EXPECT_TRUE(mentions(error, c.message)) << c.name << ": " << error.description().toUtf8();
    EXPECT_TRUE(mentions(error, "/drawings/sample.kdb")) << c.name;
    EXPECT_LT(largest, kAllocationLimit) << c.name;
  }
}

TEST_F(DbFile, MissingRootTableIsRefused)
{
  kovSampleDrawing s = kovBuildSampleDrawing();
  std::vector<OdUInt8> image = OdDbFileWriter::fileImage(s.db);
  // The view table's handle in the body header points at the model space.
  std::memcpy(&image[20 + 16], &image[20 + 24], 8);
  fixCrc(image);
  const OdError error = load(image);
  EXPECT_EQ(error.code(), eBadDwgFile);
  EXPECT_TRUE(mentions(error, "has no view table")) << error.description().toUtf8();
}

// Random damage behind a valid checksum: every load either succeeds or raises
// OdError, and never allocates by an unchecked count. The sanitizer build
// checks that no read goes out of bounds.
TEST_F(DbFile, RandomDamageNeverGetsPastTheChecks)
{
  kovSampleDrawing s = kovBuildSampleDrawing();
  const std::vector<OdUInt8> image = OdDbFileWriter::fileImage(s.db);
  std::mt19937 rng(20240611);
  std::uniform_int_distribution<size_t> position(20, image.size() - 5);
  std::uniform_int_distribution<int> byte(0, 255);
  int refused = 0;
  for (int round = 0; round < 2000; ++round) {
    std::vector<OdUInt8> damaged = image;
    for (int k = 0; k < 1 + round % 3; ++k)
      damaged[position(rng)] = static_cast<OdUInt8>(byte(rng));
    fixCrc(damaged);
    size_t largest = 0;
    const OdError error = load(damaged, &largest);
    if (error.code() != eOk) {
      ++refused;
      ASSERT_TRUE(mentions(error, "/drawings/sample.kdb")) << error.description().toUtf8();
    }
    ASSERT_LT(largest, kAllocationLimit) << "round " << round;
  }
  EXPECT_GT(refused, 500);
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

TEST_F(DbFile, MissingFileIsNamed)
{
  try {
    odReadDrawing(path("nowhere.kdb"));
    FAIL() << "a missing file loaded";
  } catch (const OdError& error) {
    EXPECT_EQ(error.code(), eFileNotFound);
    EXPECT_TRUE(mentions(error, "nowhere.kdb"));
  }
}

TEST_F(DbFile, SavingOverAFileReplacesIt)
{
  const OdString file = path("drawing.kdb");
  kovSampleDrawing first = kovBuildSampleDrawing();
  first.db->writeFile(file);
  OdDbDatabasePtr second = OdDbDatabase::createObject();
  second->writeFile(file);
  EXPECT_EQ(readAll(file), OdDbFileWriter::fileImage(second));
  EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::Files).size(), 1) << "no temporary file left behind";
}

// The write fails part-way (the process may not write files that large): the
// previous file must come through unchanged.
TEST_F(DbFile, FailedSaveLeavesThePreviousFileIntact)
{
  const OdString file = path("drawing.kdb");
  OdDbDatabasePtr small = OdDbDatabase::createObject();
  small->writeFile(file);
  const std::vector<OdUInt8> before = readAll(file);

  OdDbDatabasePtr big = OdDbDatabase::createObject();
  {
    OdDbBlockTableRecordPtr ms = big->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    for (int i = 0; i < 2000; ++i)
      ms->appendOdDbEntity(OdDbLight::createObject());
  }
  ASSERT_GT(OdDbFileWriter::fileImage(big).size(), before.size() + 8192);

  rlimit saved {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limited = saved;
  limited.rlim_cur = before.size() + 4096;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
  OdError error(eOk);
  try {
    big->writeFile(file);
  } catch (const OdError& e) {
    error = e;
  }
  setrlimit(RLIMIT_FSIZE, &saved);
  std::signal(SIGXFSZ, oldHandler);

  EXPECT_EQ(error.code(), eFileAccessErr) << error.description().toUtf8();
  EXPECT_TRUE(mentions(error, "drawing.kdb"));
  EXPECT_EQ(readAll(file), before);
  EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::Files).size(), 1) << "no temporary file left behind";
  EXPECT_TRUE(big->getFilename().isEmpty());
}

TEST_F(DbFile, SavingWhereNoFileCanBeIsRefused)
{
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  QDir(m_dir.path()).mkdir(QStringLiteral("folder"));
  for (const char* name : { "missing/drawing.kdb", "folder" }) {
    try {
      db->writeFile(path(name));
      ADD_FAILURE() << name << " was written";
    } catch (const OdError& error) {
      EXPECT_TRUE(mentions(error, name)) << error.description().toUtf8();
    }
  }
  EXPECT_TRUE(QDir(m_dir.filePath(QStringLiteral("folder"))).exists());
}

} // namespace
