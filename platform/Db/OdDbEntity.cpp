#include "Db/OdDbEntity.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbDwgFiler.h"
#include "Gi/OdGiSubEntityTraits.h"
#include "Gi/OdGiWorldDraw.h"

ODRX_NO_CONS_DEFINE_MEMBERS(OdDbEntity, OdDbObject)

namespace {

const OdUInt16 kColorByLayer = 256;

} // namespace

void OdDbEntity::setDatabaseDefaults(OdDbDatabase* db, bool doSubents)
{
  assertWriteEnabled();
  if (!db)
    db = database();
  m_colorIndex = db ? db->currentColorIndex() : kColorByLayer;
  subSetDatabaseDefaults(db, doSubents);
}

OdUInt16 OdDbEntity::colorIndex() const
{
  assertReadEnabled();
  return m_colorIndex;
}

OdResult OdDbEntity::setColorIndex(OdUInt16 colorIndex)
{
  assertWriteEnabled();
  if (colorIndex > kColorByLayer)
    return eOutOfRange;
  m_colorIndex = colorIndex;
  return eOk;
}

OdDb::Visibility OdDbEntity::visibility() const
{
  assertReadEnabled();
  return m_visibility;
}

OdResult OdDbEntity::setVisibility(OdDb::Visibility visibility)
{
  assertWriteEnabled();
  if (visibility != OdDb::kVisible && visibility != OdDb::kInvisible)
    return eInvalidInput;
  m_visibility = visibility;
  return eOk;
}

OdResult OdDbEntity::getGeomExtents(OdGeExtents3d& extents) const
{
  assertReadEnabled();
  return subGetGeomExtents(extents);
}

bool OdDbEntity::worldDraw(OdGiWorldDraw* pWd) const
{
  assertReadEnabled();
  if (m_visibility == OdDb::kInvisible)
    return true;
  pWd->subEntityTraits().setColor(m_colorIndex);
  return subWorldDraw(pWd);
}

OdResult OdDbEntity::getGripPoints(OdGePoint3dArray& gripPoints) const
{
  assertReadEnabled();
  return subGetGripPoints(gripPoints);
}

OdResult OdDbEntity::moveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset)
{
  assertWriteEnabled();
  return subMoveGripPointsAt(indices, offset);
}

OdResult OdDbEntity::transformBy(const OdGeMatrix3d& xform)
{
  assertWriteEnabled();
  return subTransformBy(xform);
}

OdResult OdDbEntity::dwgInFields(OdDbDwgFiler* pFiler)
{
  const OdResult res = OdDbObject::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  const OdInt16 colorIndex = pFiler->rdInt16();
  const OdInt8 visibility = pFiler->rdInt8();
  if (colorIndex < 0 || colorIndex > kColorByLayer || (visibility != OdDb::kVisible && visibility != OdDb::kInvisible))
    return eInvalidInput;
  m_colorIndex = static_cast<OdUInt16>(colorIndex);
  m_visibility = static_cast<OdDb::Visibility>(visibility);
  return pFiler->filerStatus();
}

void OdDbEntity::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  OdDbObject::dwgOutFields(pFiler);
  pFiler->wrInt16(static_cast<OdInt16>(m_colorIndex));
  pFiler->wrInt8(static_cast<OdInt8>(m_visibility));
}

void OdDbEntity::subSetDatabaseDefaults(OdDbDatabase*, bool)
{
}

OdResult OdDbEntity::subGetGeomExtents(OdGeExtents3d&) const
{
  return eInvalidExtents;
}

bool OdDbEntity::subWorldDraw(OdGiWorldDraw*) const
{
  return true;
}

OdResult OdDbEntity::subGetGripPoints(OdGePoint3dArray&) const
{
  return eOk;
}

OdResult OdDbEntity::subMoveGripPointsAt(const OdIntArray&, const OdGeVector3d&)
{
  return eNotApplicable;
}

OdResult OdDbEntity::subTransformBy(const OdGeMatrix3d&)
{
  return eNotApplicable;
}
