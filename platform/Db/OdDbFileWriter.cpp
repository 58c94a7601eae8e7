#include "Db/OdDbFileWriter.h"

#include "Db/OdDbCrc32.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbFileFormat.h"
#include "Db/OdDbMemoryFiler.h"
#include "Db/OdDbObject.h"
#include "Rx/OdError.h"

#include <QSaveFile>

namespace {

void writeRecords(OdDbDatabase* db, const std::deque<OdDbStub>& stubs, OdDbMemoryFiler& out)
{
  const OdUInt64 countAt = out.tell();
  out.wrInt32(0);
  OdUInt32 count = 0;
  for (const OdDbStub& stub : stubs) {
    if (!stub.object || stub.erased)
      continue;
    const OdDbObjectPtr object = OdDbObjectId(const_cast<OdDbStub*>(&stub)).openObject();
    out.wrString(object->isA()->name());
    out.wrDbHandle(stub.handle);
    out.wrDbHandle(object->ownerId().database() == db ? object->ownerId().getHandle() : OdDbHandle());
    const OdUInt64 lengthAt = out.tell();
    out.wrInt32(0);
    object->dwgOutFields(&out);
    const OdUInt64 end = out.tell();
    const OdUInt64 length = end - lengthAt - 4;
    if (length > 0xFFFFFFFFu)
      throw OdError(eOutOfRange, OdString(L"object ") + stub.handle.ascii() + L" has more than 4 GB of data");
    out.seek(static_cast<OdInt64>(lengthAt));
    out.wrInt32(static_cast<OdInt32>(length));
    out.seek(static_cast<OdInt64>(end));
    ++count;
  }
  const OdUInt64 end = out.tell();
  out.seek(static_cast<OdInt64>(countAt));
  out.wrInt32(static_cast<OdInt32>(count));
  out.seek(static_cast<OdInt64>(end));
}

} // namespace

std::vector<OdUInt8> OdDbFileWriter::fileImage(OdDbDatabase* db)
{
  ODA_ASSERT(db);
  OdDbMemoryFiler out(db, OdDb::kFileFiler);
  out.wrBytes(kDbFileMagic, sizeof(kDbFileMagic));
  out.wrInt32(static_cast<OdInt32>(kDbFileFormatVersion));
  out.wrInt64(0);
  out.wrDbHandle(db->handseed());
  out.wrDbHandle(db->getBlockTableId().getHandle());
  out.wrDbHandle(db->getViewTableId().getHandle());
  out.wrDbHandle(db->getModelSpaceId().getHandle());
  out.wrInt16(static_cast<OdInt16>(db->currentColorIndex()));
  writeRecords(db, db->m_stubs, out);

  const OdUInt64 bodyLength = out.size() - kDbFileHeaderSize;
  const OdUInt32 crc = odDbCrc32(out.data() + kDbFileHeaderSize, bodyLength);
  out.wrInt32(static_cast<OdInt32>(crc));
  out.seek(kDbFileHeaderSize - 8);
  out.wrInt64(static_cast<OdInt64>(bodyLength));
  return std::vector<OdUInt8>(out.data(), out.data() + out.size());
}

void OdDbFileWriter::writeFile(OdDbDatabase* db, const OdString& path)
{
  const OdString prefix = OdString(L"The drawing can't be saved to '") + path + L"': ";
  std::vector<OdUInt8> image;
  try {
    image = fileImage(db);
  } catch (OdError& error) {
    error.prependContext(prefix);
    throw;
  }
  // QSaveFile writes a temporary file in the target's folder, syncs it to disk
  // on commit and renames it over the target; without a commit the temporary
  // file is removed and the target left alone.
  QSaveFile file(odToQString(path));
  if (!file.open(QIODevice::WriteOnly))
    throw OdError(eCantOpenFile, prefix + odFromQString(file.errorString()));
  const qint64 size = static_cast<qint64>(image.size());
  if (file.write(reinterpret_cast<const char*>(image.data()), size) != size)
    throw OdError(eFileAccessErr, prefix + odFromQString(file.errorString()));
  if (!file.commit())
    throw OdError(eFileAccessErr, prefix + odFromQString(file.errorString()));
}
