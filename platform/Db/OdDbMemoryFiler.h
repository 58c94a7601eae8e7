#ifndef OD_DB_MEMORY_FILER_H
#define OD_DB_MEMORY_FILER_H

#include "Db/OdDbDwgFiler.h"

#include <vector>

// A binary filer over bytes in memory, little-endian whatever the host. It
// writes into a buffer of its own (growing it; writing after a seek overwrites)
// or reads a caller's buffer without copying it (read-only). Usable on the
// stack: it needs no registration.
class OdDbMemoryFiler : public OdDbDwgFiler {
  ODRX_DECLARE_MEMBERS(OdDbMemoryFiler);

public:
  explicit OdDbMemoryFiler(OdDbDatabase* db = nullptr, OdDb::FilerType type = OdDb::kCopyFiler);

  OdDb::FilerType filerType() const override { return m_type; }
  void setFilerType(OdDb::FilerType type) { m_type = type; }
  OdDbDatabase* database() const override { return m_db; }
  void setDatabase(OdDbDatabase* db) { m_db = db; }

  // Reads size bytes at data from now on, from position 0. The bytes must
  // outlive the filer (or the next setExternalBuffer / reset). Writing raises
  // OdError(eNotApplicable) until reset().
  void setExternalBuffer(const void* data, OdUInt64 size);
  // Empties the filer (own buffer, position 0, status eOk).
  void reset();
  void rewind() { seek(0); }

  // The bytes: the filer's own or the external ones.
  const OdUInt8* data() const { return m_data; }
  OdUInt64 size() const { return m_size; }

  bool rdBool() override;
  OdInt8 rdInt8() override;
  OdInt16 rdInt16() override;
  OdInt32 rdInt32() override;
  OdInt64 rdInt64() override;
  double rdDouble() override;
  OdString rdString() override;
  void rdBytes(void* buffer, OdUInt32 numBytes) override;
  OdDbHandle rdDbHandle() override;
  OdGePoint3d rdPoint3d() override;
  OdGeVector3d rdVector3d() override;

  void wrBool(bool value) override;
  void wrInt8(OdInt8 value) override;
  void wrInt16(OdInt16 value) override;
  void wrInt32(OdInt32 value) override;
  void wrInt64(OdInt64 value) override;
  void wrDouble(double value) override;
  void wrString(const OdString& value) override;
  void wrBytes(const void* buffer, OdUInt32 numBytes) override;
  void wrDbHandle(const OdDbHandle& value) override;
  void wrPoint3d(const OdGePoint3d& value) override;
  void wrVector3d(const OdGeVector3d& value) override;

  OdUInt64 tell() const override { return m_pos; }
  void seek(OdInt64 offset, OdDb::FilerSeekType seekType = OdDb::kSeekFromStart) override;
  OdUInt64 bytesLeft() const override { return m_size - m_pos; }

private:
  // The next n bytes to read; raises when fewer are left.
  const OdUInt8* take(OdUInt64 n, const OdChar* what);
  // Room for the next n bytes to write.
  OdUInt8* put(OdUInt64 n);
  OdUInt64 readUInt(int bytes, const OdChar* what);
  void writeUInt(OdUInt64 value, int bytes);

  OdDbDatabase* m_db;
  OdDb::FilerType m_type;
  std::vector<OdUInt8> m_own;
  const OdUInt8* m_data = nullptr;
  OdUInt64 m_size = 0;
  OdUInt64 m_pos = 0;
  bool m_external = false;
};

typedef OdSmartPtr<OdDbMemoryFiler> OdDbMemoryFilerPtr;

#endif
