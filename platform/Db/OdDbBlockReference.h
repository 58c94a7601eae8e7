#ifndef OD_DB_BLOCK_REFERENCE_H
#define OD_DB_BLOCK_REFERENCE_H

#include "Db/OdDbEntity.h"

// An insertion of a block definition: the block's entities placed by the
// block transform (block coordinates to the reference's owner's coordinates).
// The position is the transform's translation.
class OdDbBlockReference : public OdDbEntity {
  ODDB_DECLARE_MEMBERS(OdDbBlockReference);

public:
  OdDbBlockReference() = default;

  OdDbObjectId blockTableRecord() const;
  // eNullObjectId for a null id, eWrongObjectType when the id is not a block
  // definition's, eWrongDatabase when the reference is in another database.
  OdResult setBlockTableRecord(OdDbObjectId blockId);

  OdGeMatrix3d blockTransform() const;
  // eInvalidInput for a singular or non-finite transform.
  OdResult setBlockTransform(const OdGeMatrix3d& xform);
  OdGePoint3d position() const;
  OdResult setPosition(const OdGePoint3d& position);

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

protected:
  // The block's entities' extents, each transformed by the block transform.
  // Nesting deeper than a limit (a block that contains itself) gives
  // eInvalidExtents.
  OdResult subGetGeomExtents(OdGeExtents3d& extents) const override;
  // The block's entities under the block transform, with the same nesting limit.
  bool subWorldDraw(OdGiWorldDraw* pWd) const override;
  // One grip: the position.
  OdResult subGetGripPoints(OdGePoint3dArray& gripPoints) const override;
  OdResult subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset) override;
  OdResult subTransformBy(const OdGeMatrix3d& xform) override;

private:
  OdDbObjectId m_blockId;
  OdGeMatrix3d m_xform;
};

typedef OdSmartPtr<OdDbBlockReference> OdDbBlockReferencePtr;

#endif
