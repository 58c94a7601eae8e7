#include "Db/OdDbObjectIterator.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbObjectIterator, OdRxObject)

OdSmartPtr<OdDbObjectIterator> OdDbObjectIterator::newIterator(const OdDbObjectIdArray& ids, bool atBeginning,
                                                               bool skipErased)
{
  OdSmartPtr<OdDbObjectIterator> it(new OdDbObjectIterator);
  it->setIds(ids);
  it->start(atBeginning, skipErased);
  return it;
}

void OdDbObjectIterator::start(bool atBeginning, bool skipErased)
{
  m_index = atBeginning ? 0 : static_cast<long>(m_ids.size()) - 1;
  if (skipErased)
    this->skipErased(atBeginning);
}

bool OdDbObjectIterator::done() const
{
  return m_index < 0 || m_index >= static_cast<long>(m_ids.size());
}

void OdDbObjectIterator::step(bool forward, bool skipErased)
{
  if (done())
    return;
  m_index += forward ? 1 : -1;
  if (skipErased)
    this->skipErased(forward);
}

OdDbObjectId OdDbObjectIterator::objectId() const
{
  return done() ? OdDbObjectId::kNull : m_ids[static_cast<size_t>(m_index)];
}

OdDbEntityPtr OdDbObjectIterator::entity(OdDb::OpenMode mode, bool openErased) const
{
  return OdDbEntity::cast(objectId().openObject(mode, openErased).get());
}

void OdDbObjectIterator::skipErased(bool forward)
{
  while (!done() && !m_ids[static_cast<size_t>(m_index)].isValid())
    m_index += forward ? 1 : -1;
}
