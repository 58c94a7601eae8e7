#ifndef OD_DB_UNDO_HISTORY_H
#define OD_DB_UNDO_HISTORY_H

#include "Db/OdDbHandle.h"
#include "Db/OdDbStub.h"
#include "Rx/OdSmartPtr.h"

#include <deque>
#include <vector>

class OdDbDatabase;
class OdDbObject;

// A database's undo and redo steps. Internal to the database classes, which
// reach it through OdDbDatabase's undo calls.
//
// A step holds, for every object first opened for write in it, the object's
// filed state (dwgOutFields through an undo filer) and its erased flag from
// just before that open, and for every object added in it, the object itself.
// Undoing a step swaps each object's state with the one kept, so that the same
// step, now holding the undone states, redoes it; an added object is taken out
// of the database (its id opens nothing) and put back on redo. The handle seed
// goes back and forth with the step, so that a drawing saved after an undo is
// the drawing saved before the step.
//
// Recording starts with the database's first startUndoRecord(): a drawing
// being read or built by a program records nothing until an edit session
// marks its first step. After that every change belongs to a step; one made
// with no step open (after an undo, say) opens one.
class OdDbUndoHistory {
public:
  explicit OdDbUndoHistory(OdDbDatabase* db) : m_db(db) {}
  ~OdDbUndoHistory();

  void startStep();
  bool hasUndo() const { return !m_undo.empty(); }
  bool hasRedo() const { return !m_redo.empty(); }
  void undo();
  void redo();
  void setDisabled(bool disabled) { m_disabled = disabled; }
  bool isDisabled() const { return m_disabled; }
  // From startStep() until an undo or a redo: changes then belong to a step
  // that was asked for.
  bool isStepOpen() const { return m_started; }
  void setLimit(int steps);
  int limit() const { return m_limit; }
  // Bytes held by the kept states of all steps.
  OdUInt64 memoryUsed() const;

  // Called by the object before its first write in a step.
  bool wantsModification(const OdDbStub* stub) const
  {
    return m_armed && !m_disabled && !m_applying && stub->undoStep != m_serial;
  }
  void recordModification(OdDbStub* stub);
  void recordCreation(OdDbStub* stub);
  // A new object may take a handle an undone one had: nothing redone may
  // take it back.
  void objectAdded() { m_redo.clear(); }

private:
  struct Record {
    OdDbStub* stub = nullptr;
    bool created = false;
    bool erased = false;
    std::vector<OdUInt8> state;
    // An added object while its step is undone.
    OdSmartPtr<OdDbObject> detached;
  };
  struct Step {
    std::vector<Record> records;
    OdDbHandle handseed;
  };

  Step& openStep();
  void apply(Step& step, bool undoing);
  void swapState(Record& record);

  OdDbDatabase* m_db;
  std::deque<Step> m_undo;
  std::deque<Step> m_redo;
  bool m_armed = false;
  bool m_open = false;
  bool m_started = false;
  bool m_disabled = false;
  bool m_applying = false;
  int m_limit = 100;
  // Tells the steps apart in the stubs, so that an object is kept once per
  // step without a lookup.
  OdUInt32 m_serial = 1;
};

#endif
