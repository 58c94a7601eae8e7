#ifndef OD_DB_SYMBOL_TABLE_RECORD_H
#define OD_DB_SYMBOL_TABLE_RECORD_H

#include "Db/OdDbObject.h"

// A named entry of a symbol table. Names are compared without regard to case.
class OdDbSymbolTableRecord : public OdDbObject {
  ODDB_DECLARE_MEMBERS(OdDbSymbolTableRecord);

public:
  OdString getName() const;
  // eInvalidInput for an empty name; eDuplicateKey when another record of the
  // table the record is in has that name.
  OdResult setName(const OdString& name);

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

protected:
  OdDbSymbolTableRecord() = default;

private:
  OdString m_name;
};

typedef OdSmartPtr<OdDbSymbolTableRecord> OdDbSymbolTableRecordPtr;

#endif
