#include "db/kovEditingState.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbDatabaseReactor.h"

namespace {

class EditingDrawingWatch : public OdDbDatabaseReactor {
public:
  void watch(OdDbDatabase* db)
  {
    if (db == m_db)
      return;
    if (m_db)
      m_db->removeReactor(this);
    m_db = db;
    if (m_db)
      m_db->addReactor(this);
  }
  void goodbye(const OdDbDatabase* pDb) override
  {
    if (pDb != m_db)
      return;
    m_db = nullptr;
    kovEditingState::editingAnimationId().setNull();
  }
  void addRef() override {}
  void release() override {}

private:
  OdDbDatabase* m_db = nullptr;
};

EditingDrawingWatch& editingDrawingWatch()
{
  static EditingDrawingWatch watch;
  return watch;
}

} // namespace

OdDbObjectId& kovEditingState::editingAnimationId()
{
  static OdDbObjectId id;
  return id;
}

void kovEditingState::setEditingAnimation(const OdDbObjectId& id)
{
  editingAnimationId() = id;
  editingDrawingWatch().watch(id.database());
}

bool& kovEditingState::isPlaying()
{
  static bool playing = false;
  return playing;
}

bool& kovEditingState::isProducing()
{
  static bool producing = false;
  return producing;
}
