#ifndef OD_DB_OBJECT_H
#define OD_DB_OBJECT_H

#include "Db/OdDb.h"
#include "Db/OdDbHandle.h"
#include "Db/OdDbObjectId.h"
#include "Rx/OdRxClass.h"

class OdDbDatabase;
class OdDbDwgFiler;

// Base of every object a database can hold.
//
// Open model. An object outside any database is read- and write-enabled: a new
// object is open for write. Once added to a database it is closed whenever no
// one has it open. Opening through its id (OdDbObjectId::openObject) adds a
// reference; when the last pointer obtained by opening goes away, the object
// closes and subClose() runs. Opening for write an object that is open for
// read upgrades it for every opener: the host is single-threaded and the model
// is deliberately permissive there. Opening and closing take no lock, allocate
// nothing and look nothing up; they are not thread-safe.
//
// Filing. dwgOutFields/dwgInFields file the object's own data. The base class
// files nothing: an object's class, handle and owner are filed by whoever
// stores the object (the drawing file keeps them in the record header). An
// override calls its parent first and returns early unless that gave eOk.
class OdDbObject : public OdRxObject {
  ODDB_DECLARE_MEMBERS(OdDbObject);

public:
  ~OdDbObject() override;

  // Null until the object is added to a database.
  OdDbObjectId objectId() const;
  OdDbObjectId ownerId() const { return m_ownerId; }
  virtual void setOwnerId(OdDbObjectId ownerId);
  OdDbDatabase* database() const;
  // The null handle until the object is added to a database.
  OdDbHandle handle() const;
  // Database resident: added to a database.
  bool isDBRO() const { return m_pStub != nullptr; }

  OdDb::OpenMode openMode() const { return m_openMode; }
  bool isReadEnabled() const { return m_openMode != OdDb::kNotOpen; }
  bool isWriteEnabled() const { return m_openMode == OdDb::kForWrite; }
  bool isNotifyEnabled() const { return m_openMode == OdDb::kForNotify; }
  // Raise OdError(eNotOpenForRead) / OdError(eNotOpenForWrite).
  void assertReadEnabled() const;
  void assertWriteEnabled() const;
  // Read to write; raises OdError(eNotOpenForRead) when the object is closed.
  void upgradeOpen();
  // Write to read; raises OdError(eNotOpenForWrite) unless open for write.
  void downgradeOpen();

  // Erases (erasing) or unerases the object. Needs write access (else
  // eNotOpenForWrite) and a database (else eNoDatabase). subErase() is asked
  // first; the flag changes only when it answers eOk. Erasing an erased object
  // gives eWasErased, unerasing one that is not erased eWasNotErased.
  OdResult erase(bool erasing = true);
  bool isErased() const;

  // Reads the object's fields; returns the filer's status.
  virtual OdResult dwgInFields(OdDbDwgFiler* pFiler);
  virtual void dwgOutFields(OdDbDwgFiler* pFiler) const;

  // Closes the object when the reference going away is the last opener's.
  void release() override;

protected:
  OdDbObject() = default;

  // Asked before the object is erased or unerased; anything but eOk refuses.
  virtual OdResult subErase(bool erasing);
  // Called once the last opener let go. The object is already closed: it may
  // use its members but must not open itself again.
  virtual void subClose();

private:
  friend class OdDbDatabase;
  friend class OdDbObjectId;
  friend class OdDbUndoHistory;

  // Called by OdDbObjectId when opening; write wins over read and notify.
  void openAs(OdDb::OpenMode mode)
  {
    if (m_openMode == OdDb::kNotOpen || mode == OdDb::kForWrite)
      m_openMode = mode;
    if (mode == OdDb::kForWrite && m_pStub)
      keepForUndo();
  }
  // Keeps the state before the first write of an undo step.
  void keepForUndo();
  OdString describe() const;

  OdDbStub* m_pStub = nullptr;
  OdDbObjectId m_ownerId;
  OdDb::OpenMode m_openMode = OdDb::kForWrite;
};

#endif
