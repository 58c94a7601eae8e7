#ifndef OD_DB_DATABASE_H
#define OD_DB_DATABASE_H

#include "Db/OdDbHandle.h"
#include "Db/OdDbObjectId.h"
#include "Db/OdDbStub.h"
#include "Rx/OdRxClass.h"

#include <deque>
#include <functional>
#include <unordered_map>
#include <vector>

class OdDbDatabaseReactor;
class OdDbObject;

// A drawing: the objects it holds, by handle, and its root tables.
//
// OdDbDatabase::createObject() gives a new drawing: a block table holding the
// model space block "*Model_Space", and an empty view table. Objects are added
// with addOdDbObject (or through a table or a block) and live as long as the
// database; erasing only marks them. Ids and raw object pointers handed out
// are valid while the database lives.
class OdDbDatabase : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdDbDatabase);

public:
  ~OdDbDatabase() override;

  OdDbObjectId getBlockTableId() const { return m_blockTableId; }
  OdDbObjectId getViewTableId() const { return m_viewTableId; }
  OdDbObjectId getModelSpaceId() const { return m_modelSpaceId; }

  // The id of a handle: null when the database has no such handle, unless
  // createIfNotFound, which makes an id without an object (one that an object
  // added later with that handle takes).
  OdDbObjectId getOdDbObjectId(const OdDbHandle& handle, bool createIfNotFound = false);

  // Adds an object and returns its id. The object takes handle, or the next
  // handle from the seed when handle is null; it stays open for write while the
  // caller holds a pointer to it. Raises OdError: eNullObjectPointer,
  // eAlreadyInDb (the object is in a database), eDuplicateKey (the handle is
  // taken by another object).
  OdDbObjectId addOdDbObject(OdDbObject* object, OdDbObjectId ownerId = OdDbObjectId::kNull,
                             OdDbHandle handle = 0);

  // The handle the next added object gets; always above every handle in use.
  OdDbHandle handseed() const { return m_handseed; }
  // The number of handles in use (objects, erased ones included).
  OdInt32 approxNumObjects() const { return static_cast<OdInt32>(m_stubs.size()); }

  // Not an SDK call: the colour index new entities take in setDatabaseDefaults
  // (256: by layer).
  OdUInt16 currentColorIndex() const { return m_currentColorIndex; }
  void setCurrentColorIndex(OdUInt16 colorIndex) { m_currentColorIndex = colorIndex; }

  // The file the drawing was last read from or saved to; empty for a new one.
  const OdString& getFilename() const { return m_filename; }

  // Reactors hear of every object appended, modified (closed after a write
  // open) and erased; they are held weakly and told goodbye when the database
  // goes. Adding one twice adds it once.
  void addReactor(OdDbDatabaseReactor* pReactor);
  void removeReactor(OdDbDatabaseReactor* pReactor);

  // Saves the drawing to path, atomically: the previous file stays as it was
  // unless the save succeeds. Raises OdError with a message naming the file.
  void writeFile(const OdString& path);

private:
  friend class OdDbFileReader;
  friend class OdDbFileWriter;

  OdDbDatabase() = default;
  void createDefaultTables();
  friend class OdDbObject;
  void notify(const std::function<void(OdDbDatabaseReactor*)>& call) const;
  OdDbStub* newStub(const OdDbHandle& handle);

  // Stubs at fixed addresses (a deque never moves its elements on append),
  // in the order their handles came in.
  std::deque<OdDbStub> m_stubs;
  std::unordered_map<OdUInt64, OdDbStub*> m_byHandle;
  OdDbHandle m_handseed = 1;
  OdDbObjectId m_blockTableId;
  OdDbObjectId m_viewTableId;
  OdDbObjectId m_modelSpaceId;
  OdUInt16 m_currentColorIndex = 256;
  OdString m_filename;
  std::vector<OdDbDatabaseReactor*> m_reactors;
};

typedef OdSmartPtr<OdDbDatabase> OdDbDatabasePtr;

#endif
