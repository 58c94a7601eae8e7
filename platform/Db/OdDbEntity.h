#ifndef OD_DB_ENTITY_H
#define OD_DB_ENTITY_H

#include "Db/OdDbObject.h"
#include "Ge/OdGeExtents3d.h"
#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3dArray.h"
#include "Rx/OdArray.h"

class OdGiWorldDraw;

// An object with geometry: drawn, measured, gripped and transformed. The
// public calls check the open mode and delegate to the protected sub* hooks
// that derived classes override.
class OdDbEntity : public OdDbObject {
  ODDB_DECLARE_MEMBERS(OdDbEntity);

public:
  // Takes the defaults of db (or of the entity's own database, or the
  // built-in ones when there is none): the current colour. Then
  // subSetDatabaseDefaults lets the class set its own.
  void setDatabaseDefaults(OdDbDatabase* db = nullptr, bool doSubents = false);

  // 0..256; 256 is "by layer", 0 "by block".
  OdUInt16 colorIndex() const;
  // eOutOfRange above 256.
  OdResult setColorIndex(OdUInt16 colorIndex);
  OdDb::Visibility visibility() const;
  OdResult setVisibility(OdDb::Visibility visibility);

  // The box around the entity's geometry; eInvalidExtents when it has none.
  OdResult getGeomExtents(OdGeExtents3d& extents) const;
  // Draws the entity in its colour; an invisible entity draws nothing. Returns
  // true when the drawing is complete (no view-dependent part).
  bool worldDraw(OdGiWorldDraw* pWd) const;
  OdResult getGripPoints(OdGePoint3dArray& gripPoints) const;
  OdResult moveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset);
  OdResult transformBy(const OdGeMatrix3d& xform);

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

protected:
  OdDbEntity() = default;

  virtual void subSetDatabaseDefaults(OdDbDatabase* db, bool doSubents);
  // Default: eInvalidExtents.
  virtual OdResult subGetGeomExtents(OdGeExtents3d& extents) const;
  // Default: draws nothing, returns true.
  virtual bool subWorldDraw(OdGiWorldDraw* pWd) const;
  // Defaults: no grips (eOk, nothing added); moving grips and transforming
  // give eNotApplicable.
  virtual OdResult subGetGripPoints(OdGePoint3dArray& gripPoints) const;
  virtual OdResult subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset);
  virtual OdResult subTransformBy(const OdGeMatrix3d& xform);

private:
  OdUInt16 m_colorIndex = 256;
  OdDb::Visibility m_visibility = OdDb::kVisible;
};

typedef OdSmartPtr<OdDbEntity> OdDbEntityPtr;

#endif
