#include "Db/OdDbUndoHistory.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbDatabaseReactor.h"
#include "Db/OdDbMemoryFiler.h"
#include "Db/OdDbObject.h"
#include "Rx/OdError.h"

#include <algorithm>

OdDbUndoHistory::~OdDbUndoHistory() = default;

void OdDbUndoHistory::startStep()
{
  // A step opens with its first change, so that marking twice makes no
  // empty step.
  m_armed = true;
  m_started = true;
  m_open = false;
  ++m_serial;
}

OdDbUndoHistory::Step& OdDbUndoHistory::openStep()
{
  if (!m_open) {
    m_redo.clear();
    m_undo.emplace_back();
    m_undo.back().handseed = m_db->handseed();
    m_open = true;
    while (static_cast<int>(m_undo.size()) > m_limit)
      m_undo.pop_front();
  }
  return m_undo.back();
}

void OdDbUndoHistory::recordModification(OdDbStub* stub)
{
  Step& step = openStep();
  stub->undoStep = m_serial;
  Record record;
  record.stub = stub;
  record.erased = stub->erased;
  OdDbMemoryFiler filer(m_db, OdDb::kUndoFiler);
  stub->object->dwgOutFields(&filer);
  record.state.assign(filer.data(), filer.data() + filer.size());
  step.records.push_back(std::move(record));
}

void OdDbUndoHistory::recordCreation(OdDbStub* stub)
{
  if (!m_armed || m_disabled || m_applying)
    return;
  Step& step = openStep();
  stub->undoStep = m_serial;
  Record record;
  record.stub = stub;
  record.created = true;
  step.records.push_back(std::move(record));
}

void OdDbUndoHistory::swapState(Record& record)
{
  OdDbStub* stub = record.stub;
  OdDbObject* object = stub->object.get();
  OdDbMemoryFiler current(m_db, OdDb::kUndoFiler);
  const OdDb::OpenMode mode = object->m_openMode;
  object->m_openMode = OdDb::kForWrite;
  object->dwgOutFields(&current);
  OdDbMemoryFiler kept(m_db, OdDb::kUndoFiler);
  kept.setExternalBuffer(record.state.data(), record.state.size());
  const OdResult res = object->dwgInFields(&kept);
  record.state.assign(current.data(), current.data() + current.size());
  const bool wasErased = stub->erased;
  stub->erased = record.erased;
  record.erased = wasErased;
  object->m_openMode = mode;
  if (mode == OdDb::kNotOpen)
    object->subClose();
  if (res != eOk)
    throw OdError(res, OdString(L"Object ") + stub->handle.ascii() + L" could not take back its kept state");
  const OdDbDatabase* db = m_db;
  if (wasErased != stub->erased) {
    const bool erased = stub->erased;
    db->notify([db, object, erased](OdDbDatabaseReactor* reactor) { reactor->objectErased(db, object, erased); });
  }
  db->notify([db, object](OdDbDatabaseReactor* reactor) { reactor->objectModified(db, object); });
}

void OdDbUndoHistory::apply(Step& step, bool undoing)
{
  m_applying = true;
  m_open = false;
  m_started = false;
  // What changes after this is kept again, in a new step.
  ++m_serial;
  const OdDbDatabase* db = m_db;
  // Added objects are out of the database only while nothing kept refers to
  // them: put back before the states that list them are read, taken out
  // after the states from before them are back.
  const auto addOrRemove = [&](Record& record) {
    if (!record.created)
      return;
    OdDbStub* stub = record.stub;
    if (undoing) {
      OdDbObject* object = stub->object.get();
      db->notify([db, object](OdDbDatabaseReactor* reactor) { reactor->objectErased(db, object, true); });
      record.detached = stub->object;
      m_db->detachStub(stub);
    } else {
      m_db->attachStub(stub, record.detached);
      record.detached = nullptr;
      OdDbObject* object = stub->object.get();
      db->notify([db, object](OdDbDatabaseReactor* reactor) { reactor->objectErased(db, object, false); });
    }
  };
  const auto swap = [&](Record& record) {
    if (!record.created)
      swapState(record);
  };
  try {
    if (undoing) {
      std::for_each(step.records.rbegin(), step.records.rend(), swap);
      std::for_each(step.records.rbegin(), step.records.rend(), addOrRemove);
    } else {
      std::for_each(step.records.begin(), step.records.end(), addOrRemove);
      std::for_each(step.records.begin(), step.records.end(), swap);
    }
  } catch (...) {
    m_applying = false;
    throw;
  }
  const OdDbHandle handseed = m_db->handseed();
  m_db->m_handseed = step.handseed;
  step.handseed = handseed;
  m_applying = false;
}

void OdDbUndoHistory::undo()
{
  if (m_undo.empty())
    return;
  Step step = std::move(m_undo.back());
  m_undo.pop_back();
  apply(step, true);
  m_redo.push_back(std::move(step));
}

void OdDbUndoHistory::redo()
{
  if (m_redo.empty())
    return;
  Step step = std::move(m_redo.back());
  m_redo.pop_back();
  apply(step, false);
  m_undo.push_back(std::move(step));
}

void OdDbUndoHistory::setLimit(int steps)
{
  m_limit = std::max(1, steps);
  while (static_cast<int>(m_undo.size()) > m_limit)
    m_undo.pop_front();
}

OdUInt64 OdDbUndoHistory::memoryUsed() const
{
  OdUInt64 bytes = 0;
  for (const std::deque<Step>* steps : { &m_undo, &m_redo })
    for (const Step& step : *steps)
      for (const Record& record : step.records)
        bytes += record.state.capacity() + sizeof(Record);
  return bytes;
}
