#ifndef OD_DB_DATABASE_H
#define OD_DB_DATABASE_H

#include "Db/OdDbHandle.h"
#include "Db/OdDbObjectId.h"
#include "Db/OdDbStub.h"
#include "Rx/OdRxClass.h"

#include <deque>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

class OdDbDatabaseReactor;
class OdDbObject;
class OdDbUndoHistory;

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

  // Undo. startUndoRecord() ends the step being recorded: what changes next
  // is a new step, which undo() takes back whole and redo() makes again. The
  // first call starts recording; until then nothing is kept. A change made
  // after an undo drops what could have been redone. Saving keeps the history;
  // it goes with the database.
  void startUndoRecord();
  bool hasUndo() const;
  // Takes back the last step; nothing without one.
  void undo();
  bool hasRedo() const;
  // Makes the last undone step again; nothing without one.
  void redo();
  // While disabled, changes are kept in no step: for state that is not an
  // edit (an animation's current time while it plays).
  void disableUndoRecording(bool disable);
  // Not SDK calls: whether recording is disabled, whether a step is being
  // recorded (from startUndoRecord() to the next undo or redo), the number
  // of steps kept
  // (the oldest go first; at least 1, 100 unless set) and the bytes the kept
  // states take.
  bool isUndoRecordingDisabled() const;
  bool isUndoStepOpen() const;
  void setUndoLimit(int steps);
  int undoLimit() const;
  OdUInt64 undoMemoryUsed() const;

  // Saves the drawing to path, atomically: the previous file stays as it was
  // unless the save succeeds. Raises OdError with a message naming the file.
  void writeFile(const OdString& path);

private:
  friend class OdDbFileReader;
  friend class OdDbFileWriter;

  OdDbDatabase();
  void createDefaultTables();
  friend class OdDbObject;
  friend class OdDbUndoHistory;
  void notify(const std::function<void(OdDbDatabaseReactor*)>& call) const;
  OdDbStub* newStub(const OdDbHandle& handle);
  // An undone added object leaves its stub, which keeps its handle and
  // reads as erased; redo puts it back.
  void detachStub(OdDbStub* stub);
  void attachStub(OdDbStub* stub, OdDbObject* object);
  OdDbUndoHistory* undoHistory() const { return m_undoHistory.get(); }

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
  std::unique_ptr<OdDbUndoHistory> m_undoHistory;
};

typedef OdSmartPtr<OdDbDatabase> OdDbDatabasePtr;

#endif
