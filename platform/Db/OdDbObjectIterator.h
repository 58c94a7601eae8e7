#ifndef OD_DB_OBJECT_ITERATOR_H
#define OD_DB_OBJECT_ITERATOR_H

#include "Db/OdDbEntity.h"
#include "Db/OdDbObjectId.h"

// Walks a list of object ids, forwards or backwards, skipping erased objects
// on request. It walks the ids the container held when the iterator was made:
// objects added afterwards are not visited, objects erased afterwards are
// skipped (when skipping) as the walk reaches them.
class OdDbObjectIterator : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdDbObjectIterator);

public:
  // Not an SDK call: an iterator over ids, for containers to hand out.
  static OdSmartPtr<OdDbObjectIterator> newIterator(const OdDbObjectIdArray& ids, bool atBeginning = true,
                                                    bool skipErased = true);

  // Goes to the first (or last) id, skipping erased ones on request.
  void start(bool atBeginning = true, bool skipErased = true);
  bool done() const;
  void step(bool forward = true, bool skipErased = true);
  // The current id; null when done.
  OdDbObjectId objectId() const;
  // The current object opened as an entity; null when done, when it can't be
  // opened or when it is not an entity.
  OdDbEntityPtr entity(OdDb::OpenMode mode = OdDb::kForRead, bool openErased = false) const;

protected:
  OdDbObjectIterator() = default;
  void setIds(const OdDbObjectIdArray& ids) { m_ids = ids; }

private:
  void skipErased(bool forward);

  OdDbObjectIdArray m_ids;
  long m_index = 0;
};

typedef OdSmartPtr<OdDbObjectIterator> OdDbObjectIteratorPtr;

#endif
