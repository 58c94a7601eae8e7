#ifndef OD_DB_DWG_FILER_H
#define OD_DB_DWG_FILER_H

#include "Db/OdDbFiler.h"
#include "Db/OdDbHandle.h"
#include "Db/OdDbObjectId.h"
#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeVector3d.h"
#include "Rx/OdString.h"

// A binary filer: typed reads and writes at a position.
//
// Readers get what was written, bit for bit: doubles keep NaN payloads and
// signed zeros, strings are UTF-16 (a 32-bit count of code units, then the
// units) so that any string, lone surrogates included, comes back unchanged.
// Reading past the end raises OdError(eEndOfFile) naming what was being read and
// sets the filer status; a reader that takes a count or a length from the data
// checks it against bytesLeft() before allocating for it.
class OdDbDwgFiler : public OdDbFiler {
  ODRX_DECLARE_MEMBERS(OdDbDwgFiler);

public:
  virtual bool rdBool() = 0;
  virtual OdInt8 rdInt8() = 0;
  virtual OdInt16 rdInt16() = 0;
  virtual OdInt32 rdInt32() = 0;
  virtual OdInt64 rdInt64() = 0;
  virtual double rdDouble() = 0;
  virtual OdString rdString() = 0;
  virtual void rdBytes(void* buffer, OdUInt32 numBytes) = 0;
  virtual OdDbHandle rdDbHandle() = 0;
  virtual OdGePoint3d rdPoint3d() = 0;
  virtual OdGeVector3d rdVector3d() = 0;

  virtual void wrBool(bool value) = 0;
  virtual void wrInt8(OdInt8 value) = 0;
  virtual void wrInt16(OdInt16 value) = 0;
  virtual void wrInt32(OdInt32 value) = 0;
  virtual void wrInt64(OdInt64 value) = 0;
  virtual void wrDouble(double value) = 0;
  virtual void wrString(const OdString& value) = 0;
  virtual void wrBytes(const void* buffer, OdUInt32 numBytes) = 0;
  virtual void wrDbHandle(const OdDbHandle& value) = 0;
  virtual void wrPoint3d(const OdGePoint3d& value) = 0;
  virtual void wrVector3d(const OdGeVector3d& value) = 0;

  // A reference to another object, filed as its handle. Reading resolves the
  // handle in database(): the null id when there is no database or no object
  // of that handle (an object that was erased when the data was written).
  OdDbObjectId rdSoftPointerId();
  void wrSoftPointerId(const OdDbObjectId& id);

  // The position in bytes from the start.
  virtual OdUInt64 tell() const = 0;
  // Moves the position; raises OdError(eEndOfFile) for a target outside the data.
  virtual void seek(OdInt64 offset, OdDb::FilerSeekType seekType = OdDb::kSeekFromStart) = 0;
  // Not an SDK call: the bytes between the position and the end, which readers
  // check a count or a length against before allocating for it.
  virtual OdUInt64 bytesLeft() const = 0;

protected:
  OdDbDwgFiler() = default;
};

typedef OdSmartPtr<OdDbDwgFiler> OdDbDwgFilerPtr;

#endif
