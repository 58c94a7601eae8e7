#ifndef OD_DB_FILER_H
#define OD_DB_FILER_H

#include "Db/OdDb.h"
#include "Rx/OdRxClass.h"

class OdDbDatabase;

// Base of the objects that file database objects in and out: a status that
// readers check after filing, the purpose of the filing, and the database the
// filed handles belong to.
class OdDbFiler : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdDbFiler);

public:
  // eOk until something went wrong; stays failed until reset.
  virtual OdResult filerStatus() const { return m_status; }
  virtual void setFilerStatus(OdResult status) { m_status = status; }
  virtual void resetFilerStatus() { m_status = eOk; }
  virtual OdDb::FilerType filerType() const = 0;
  // The database handles are resolved in; may be null.
  virtual OdDbDatabase* database() const = 0;

protected:
  OdDbFiler() = default;

private:
  OdResult m_status = eOk;
};

typedef OdSmartPtr<OdDbFiler> OdDbFilerPtr;

#endif
