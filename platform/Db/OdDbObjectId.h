#ifndef OD_DB_OBJECT_ID_H
#define OD_DB_OBJECT_ID_H

#include "Db/OdDb.h"
#include "Db/OdDbHandle.h"
#include "Rx/OdArray.h"
#include "Rx/OdResult.h"
#include "Rx/OdSmartPtr.h"

#include <cstddef>
#include <functional>

class OdDbDatabase;
class OdDbObject;
class OdRxClass;
struct OdDbStub;

typedef OdSmartPtr<OdDbObject> OdDbObjectPtr;

// A reference to an object of a database, valid while the database lives. Ids
// are cheap values: copying one copies a pointer. Opening an object through its
// id needs Db/OdDbObject.h.
class OdDbObjectId {
public:
  static const OdDbObjectId kNull;

  OdDbObjectId() = default;
  // Used by the database, which owns the stub.
  explicit OdDbObjectId(OdDbStub* stub) : m_id(stub) {}

  bool isNull() const { return m_id == nullptr; }
  void setNull() { m_id = nullptr; }
  // True when the object is erased (and may be unerased).
  bool isErased() const;
  // Not null, has an object and not erased.
  bool isValid() const;

  // The database the id belongs to, or null for the null id.
  OdDbDatabase* database() const;
  // The object's handle, or the null handle for the null id.
  OdDbHandle getHandle() const;
  // The class of the object, or null when there is none.
  OdRxClass* objectClass() const;

  // Opens the object; null when the id is null, has no object, or the object
  // is erased and openErased is false. See OdDbObject for what opening means.
  OdDbObjectPtr openObject(OdDb::OpenMode mode = OdDb::kForRead, bool openErased = false) const;
  // As above, saying why: eNullObjectId, ePermanentlyErased (a handle without
  // an object), eWasErased, eInvalidInput (mode kNotOpen).
  OdResult openObject(OdDbObjectPtr& object, OdDb::OpenMode mode = OdDb::kForRead,
                      bool openErased = false) const;
  // As above, raising OdError with that code instead of returning null.
  OdDbObjectPtr safeOpenObject(OdDb::OpenMode mode = OdDb::kForRead, bool openErased = false) const;

  bool operator==(const OdDbObjectId& other) const { return m_id == other.m_id; }
  bool operator!=(const OdDbObjectId& other) const { return m_id != other.m_id; }
  // Orders by handle, then by database, so that sorted ids follow handle order.
  bool operator<(const OdDbObjectId& other) const;
  bool operator>(const OdDbObjectId& other) const { return other < *this; }

  // The stub, for the database classes.
  OdDbStub* stub() const { return m_id; }

private:
  OdDbStub* m_id = nullptr;
};

typedef OdArray<OdDbObjectId> OdDbObjectIdArray;

namespace std {
template <>
struct hash<OdDbObjectId> {
  size_t operator()(const OdDbObjectId& id) const noexcept { return std::hash<const void*>()(id.stub()); }
};
} // namespace std

#endif
