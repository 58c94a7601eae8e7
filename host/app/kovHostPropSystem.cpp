#include "host/app/kovHostPropSystem.h"

#include "host/app/kovHostApplication.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbDatabaseReactor.h"
#include "Db/OdDbObject.h"

// Hears of the changes of the shown object's drawing and passes on those of
// the shown object.
class kovHostPropSystem::Watch : public OdDbDatabaseReactor {
public:
  explicit Watch(kovHostPropSystem& owner) : m_owner(owner) {}
  ~Watch() override { watch(nullptr); }

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

  void objectModified(const OdDbDatabase*, const OdDbObject* pDbObj) override { changed(pDbObj); }
  void objectErased(const OdDbDatabase*, const OdDbObject* pDbObj, bool) override { changed(pDbObj); }
  void goodbye(const OdDbDatabase* pDb) override
  {
    if (pDb == m_db)
      m_db = nullptr;
  }
  void addRef() override {}
  void release() override {}

private:
  // Once the change is over, and once for all the changes of one event (each
  // move of a drag, each frame of a production): the dock reads the object
  // again, which it may not do while the object is being closed or undone.
  void changed(const OdDbObject* object)
  {
    if (!object || object->objectId() != m_owner.m_shown || m_pending)
      return;
    m_pending = true;
    QMetaObject::invokeMethod(
        &m_owner,
        [this] {
          m_pending = false;
          emit m_owner.shown(m_owner.m_shown);
        },
        Qt::QueuedConnection);
  }

  kovHostPropSystem& m_owner;
  OdDbDatabase* m_db = nullptr;
  bool m_pending = false;
};

kovHostPropSystem::kovHostPropSystem()
  : m_watch(std::make_unique<Watch>(*this))
{
  if (kovHostApplication* app = kovHostApplication::instance())
    connect(app, &kovHostApplication::databaseChanged, this, [this] { showProperties(OdDbObjectId()); });
}

kovHostPropSystem::~kovHostPropSystem() = default;

void kovHostPropSystem::showProperties(const OdDbObjectId& id)
{
  m_shown = id;
  m_watch->watch(id.database());
  emit shown(id);
}

void kovHostPropSystem::refreshProperties()
{
  emit shown(m_shown);
}
