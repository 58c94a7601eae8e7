#include "Db/OdDbObjectId.h"

#include "Db/OdDbObject.h"
#include "Db/OdDbStub.h"
#include "Rx/OdError.h"

const OdDbObjectId OdDbObjectId::kNull;

bool OdDbObjectId::isErased() const
{
  return m_id && m_id->erased;
}

bool OdDbObjectId::isValid() const
{
  return m_id && m_id->object && !m_id->erased;
}

OdDbDatabase* OdDbObjectId::database() const
{
  return m_id ? m_id->database : nullptr;
}

OdDbHandle OdDbObjectId::getHandle() const
{
  return m_id ? m_id->handle : OdDbHandle();
}

OdRxClass* OdDbObjectId::objectClass() const
{
  return m_id && m_id->object ? m_id->object->isA() : nullptr;
}

OdDbObjectPtr OdDbObjectId::openObject(OdDb::OpenMode mode, bool openErased) const
{
  // The hot path of every read: no allocation, no lookup, one reference.
  if (!m_id || mode == OdDb::kNotOpen)
    return OdDbObjectPtr();
  OdDbObject* object = m_id->object.get();
  if (!object || (m_id->erased && !openErased))
    return OdDbObjectPtr();
  object->openAs(mode);
  return OdDbObjectPtr(object);
}

OdResult OdDbObjectId::openObject(OdDbObjectPtr& object, OdDb::OpenMode mode, bool openErased) const
{
  object = nullptr;
  if (!m_id)
    return eNullObjectId;
  if (mode == OdDb::kNotOpen)
    return eInvalidInput;
  if (!m_id->object)
    return ePermanentlyErased;
  if (m_id->erased && !openErased)
    return eWasErased;
  object = openObject(mode, openErased);
  return eOk;
}

OdDbObjectPtr OdDbObjectId::safeOpenObject(OdDb::OpenMode mode, bool openErased) const
{
  OdDbObjectPtr object;
  const OdResult res = openObject(object, mode, openErased);
  if (res != eOk)
    throw OdError(res, OdString(L"Object ") + getHandle().ascii() + L" can't be opened: "
                           + odResultDescription(res));
  return object;
}

bool OdDbObjectId::operator<(const OdDbObjectId& other) const
{
  const OdUInt64 a = getHandle();
  const OdUInt64 b = other.getHandle();
  if (a != b)
    return a < b;
  return std::less<const OdDbDatabase*>()(database(), other.database());
}
