#include "Db/OdDbFileReader.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbCrc32.h"
#include "Db/OdDbFileFormat.h"
#include "Db/OdDbMemoryFiler.h"
#include "Db/OdDbViewTable.h"
#include "Rx/OdError.h"
#include "Rx/OdRxDictionary.h"

#include <QFile>

#include <cstring>
#include <new>
#include <vector>

namespace {

OdString number(OdUInt64 value)
{
  return OdString(std::to_wstring(value));
}

// One object read in the first pass: its fields are read in the second.
struct Record {
  OdDbObjectPtr object;
  OdUInt64 offset;
  OdUInt32 length;
  OdDbHandle ownerHandle;
};

} // namespace

class OdDbFileReader::Reader {
public:
  Reader(const OdUInt8* data, OdUInt64 size) : m_data(data), m_size(size) {}

  OdDbDatabasePtr read(OdDbDatabasePtr db)
  {
    checkEnvelope();
    OdDbMemoryFiler body(db.get(), OdDb::kFileFiler);
    body.setExternalBuffer(m_data + kDbFileHeaderSize, m_size - kDbFileHeaderSize - kDbFileTrailerSize);
    const OdDbHandle handseed = body.rdDbHandle();
    const OdDbHandle blockTable = body.rdDbHandle();
    const OdDbHandle viewTable = body.rdDbHandle();
    const OdDbHandle modelSpace = body.rdDbHandle();
    const OdInt16 colorIndex = body.rdInt16();
    if (colorIndex < 0 || colorIndex > 256)
      throw OdError(eBadDwgFile, OdString(L"its current colour index is invalid"));

    std::vector<Record> records = readRecordHeaders(db.get(), body);
    for (Record& record : records)
      record.object->setOwnerId(db->getOdDbObjectId(record.ownerHandle));
    // The roots are set before any object reads its fields: an object may add
    // to model space while it is read (an animation from an older drawing
    // makes the block references it used to leave implicit).
    db->m_blockTableId = root(db.get(), blockTable, OdDbBlockTable::desc(), L"block table");
    db->m_viewTableId = root(db.get(), viewTable, OdDbViewTable::desc(), L"view table");
    db->m_modelSpaceId = root(db.get(), modelSpace, OdDbBlockTableRecord::desc(), L"model space");
    for (const Record& record : records)
      readFields(db.get(), body, record);

    if (handseed > db->m_handseed)
      db->m_handseed = handseed;
    db->setCurrentColorIndex(static_cast<OdUInt16>(colorIndex));
    return db;
  }

private:
  void checkEnvelope() const
  {
    if (m_size < sizeof(kDbFileMagic) || std::memcmp(m_data, kDbFileMagic, sizeof(kDbFileMagic)) != 0)
      throw OdError(eBadDwgFile, OdString(L"it is not a drawing file"));
    if (m_size < kDbFileHeaderSize + kDbFileTrailerSize)
      throw OdError(eEndOfFile, OdString(L"it is truncated: ") + number(m_size) + L" bytes");
    OdDbMemoryFiler header;
    header.setExternalBuffer(m_data, kDbFileHeaderSize);
    header.seek(sizeof(kDbFileMagic));
    const OdUInt32 version = static_cast<OdUInt32>(header.rdInt32());
    if (version > kDbFileFormatVersion || version == 0)
      throw OdError(eInvalidDwgVersion, OdString(L"its format version ") + number(version)
                                            + L" is not one this program reads (up to "
                                            + number(kDbFileFormatVersion) + L")");
    const OdUInt64 bodyLength = static_cast<OdUInt64>(header.rdInt64());
    const OdUInt64 actual = m_size - kDbFileHeaderSize - kDbFileTrailerSize;
    if (bodyLength > actual)
      throw OdError(eEndOfFile, OdString(L"it is truncated: ") + number(m_size) + L" bytes of "
                                    + (bodyLength > ~OdUInt64(0) - 24 ? OdString(L"an impossible size")
                                                                      : number(bodyLength + 24)));
    if (bodyLength < actual)
      throw OdError(eBadDwgFile, OdString(L"it has ") + number(actual - bodyLength)
                                     + L" unexpected bytes after its end");
    OdDbMemoryFiler trailer;
    trailer.setExternalBuffer(m_data + m_size - kDbFileTrailerSize, kDbFileTrailerSize);
    const OdUInt32 stored = static_cast<OdUInt32>(trailer.rdInt32());
    if (odDbCrc32(m_data + kDbFileHeaderSize, bodyLength) != stored)
      throw OdError(eBadDwgFile, OdString(L"it is damaged: its checksum does not match its contents"));
  }

  // First pass: every object is created under its handle before any fields are
  // read, so that references to objects later in the file resolve.
  std::vector<Record> readRecordHeaders(OdDbDatabase* db, OdDbMemoryFiler& body)
  {
    const OdUInt32 count = static_cast<OdUInt32>(body.rdInt32());
    if (count > body.bytesLeft() / kDbFileMinRecordSize)
      throw OdError(eBadDwgFile, OdString(L"it claims ") + number(count) + L" objects, more than its "
                                     + number(body.bytesLeft()) + L" bytes can hold");
    std::vector<Record> records;
    records.reserve(count);
    for (OdUInt32 i = 0; i < count; ++i) {
      const OdString className = body.rdString();
      const OdDbHandle handle = body.rdDbHandle();
      const OdDbHandle ownerHandle = body.rdDbHandle();
      const OdUInt32 length = static_cast<OdUInt32>(body.rdInt32());
      // Messages are built only when they are needed: loading stays cheap.
      const auto which = [&] {
        return OdString(L"object ") + number(i) + L" (handle " + handle.ascii() + L", class " + className + L")";
      };
      if (length > body.bytesLeft())
        throw OdError(eEndOfFile, which() + L" claims " + number(length) + L" bytes, more than the "
                                      + number(body.bytesLeft()) + L" left");
      if (handle.isNull())
        throw OdError(eBadDwgFile, which() + L" has a null handle");
      if (db->getOdDbObjectId(handle).objectClass())
        throw OdError(eBadDwgFile, which() + L" has the handle of an object before it");
      OdDbObjectPtr object = create(className, which);
      db->addOdDbObject(object.get(), OdDbObjectId::kNull, handle);
      records.push_back(Record { object, body.tell(), length, ownerHandle });
      body.seek(length, OdDb::kSeekFromCurrent);
    }
    if (body.bytesLeft() != 0)
      throw OdError(eBadDwgFile, OdString(L"it has ") + number(body.bytesLeft())
                                     + L" unexpected bytes after its last object");
    return records;
  }

  template <class Which>
  OdDbObjectPtr create(const OdString& className, const Which& which)
  {
    if (className != m_lastClassName) {
      m_lastClass = OdRxClass::cast(odrxClassDictionary()->getAt(className).get()).get();
      m_lastClassName = className;
    }
    if (!m_lastClass)
      throw OdError(eBadDwgFile, which() + L": the class is unknown (is the module that defines it loaded?)");
    if (!m_lastClass->isDerivedFrom(OdDbObject::desc()))
      throw OdError(eBadDwgFile, which() + L": the class is not a database object class");
    OdDbObjectPtr object = OdDbObject::cast(m_lastClass->create().get());
    if (object.isNull())
      throw OdError(eBadDwgFile, which() + L": the class can't be created (abstract)");
    return object;
  }

  static void readFields(OdDbDatabase* db, const OdDbMemoryFiler& body, const Record& record)
  {
    OdDbObject* object = record.object.get();
    const auto which = [&] {
      return OdString(L"object ") + object->handle().ascii() + L" (" + object->isA()->name() + L")";
    };
    OdDbMemoryFiler fields(db, OdDb::kFileFiler);
    fields.setExternalBuffer(body.data() + record.offset, record.length);
    OdResult res = eOk;
    try {
      res = object->dwgInFields(&fields);
    } catch (OdError& error) {
      error.prependContext(which() + L": ");
      throw;
    }
    if (res != eOk)
      throw OdError(eDwgObjectImproperlyRead, which() + L" holds invalid data (" + odResultDescription(res) + L")");
    if (fields.bytesLeft() != 0)
      throw OdError(eDwgObjectImproperlyRead, which() + L" read " + number(fields.tell()) + L" of its "
                                                  + number(record.length) + L" bytes");
  }

  static OdDbObjectId root(OdDbDatabase* db, const OdDbHandle& handle, const OdRxClass* cls, const OdChar* what)
  {
    const OdDbObjectId id = db->getOdDbObjectId(handle);
    const OdRxClass* found = id.objectClass();
    if (!found || !found->isDerivedFrom(cls))
      throw OdError(eBadDwgFile, OdString(L"it has no ") + what);
    return id;
  }

  const OdUInt8* m_data;
  OdUInt64 m_size;
  OdString m_lastClassName;
  OdRxClass* m_lastClass = nullptr;
};

OdDbDatabasePtr OdDbFileReader::readBuffer(const void* data, OdUInt64 size, const OdString& name)
{
  const OdString prefix = OdString(L"The drawing file '") + name + L"' can't be read: ";
  try {
    Reader reader(static_cast<const OdUInt8*>(data), data ? size : 0);
    return reader.read(OdDbDatabasePtr(new OdDbDatabase));
  } catch (OdError& error) {
    error.prependContext(prefix);
    throw;
  } catch (const std::bad_alloc&) {
    throw OdError(eOutOfMemory, prefix + L"there is not enough memory");
  }
}

OdDbDatabasePtr OdDbFileReader::readFile(const OdString& path)
{
  QFile file(odToQString(path));
  if (!file.open(QIODevice::ReadOnly))
    throw OdError(file.exists() ? eCantOpenFile : eFileNotFound,
                  OdString(L"The drawing file '") + path + L"' can't be opened: " + odFromQString(file.errorString()));
  std::vector<char> bytes(static_cast<size_t>(file.size()));
  if (file.read(bytes.data(), static_cast<qint64>(bytes.size())) != static_cast<qint64>(bytes.size()))
    throw OdError(eFileAccessErr,
                  OdString(L"The drawing file '") + path + L"' can't be read: " + odFromQString(file.errorString()));
  OdDbDatabasePtr db = readBuffer(bytes.data(), bytes.size(), path);
  db->m_filename = path;
  return db;
}

OdDbDatabasePtr odReadDrawing(const OdString& path)
{
  return OdDbFileReader::readFile(path);
}
