#include "Db/OdDbBlockReference.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDwgFiler.h"
#include "Gi/OdGiWorldDraw.h"
#include "Gi/OdGiWorldGeometry.h"

#include <cmath>

ODRX_DEFINE_MEMBERS_EX(OdDbBlockReference, OdDbEntity, DBOBJECT_CONSTR, 0, 0, 0, OdString(L"OdDbBlockReference"),
                       OdString::kEmpty, OdString::kEmpty, 0)

namespace {

// Blocks nest rarely more than a few levels; a file can make a block contain
// itself, which this bound turns into a failure instead of endless recursion.
const int kMaxNesting = 32;
thread_local int t_nesting = 0;

class NestingGuard {
public:
  NestingGuard() { ++t_nesting; }
  ~NestingGuard() { --t_nesting; }
  NestingGuard(const NestingGuard&) = delete;
  NestingGuard& operator=(const NestingGuard&) = delete;
  bool tooDeep() const { return t_nesting > kMaxNesting; }
};

// Pops the model transform however the drawing of the block's entities ends.
class ModelTransformGuard {
public:
  ModelTransformGuard(OdGiGeometry& geometry, const OdGeMatrix3d& xform) : m_geometry(geometry)
  {
    m_geometry.pushModelTransform(xform);
  }
  ~ModelTransformGuard() { m_geometry.popModelTransform(); }
  ModelTransformGuard(const ModelTransformGuard&) = delete;
  ModelTransformGuard& operator=(const ModelTransformGuard&) = delete;

private:
  OdGiGeometry& m_geometry;
};

bool isValidTransform(const OdGeMatrix3d& xform)
{
  for (const auto& row : xform.entry) {
    for (double value : row) {
      if (!std::isfinite(value))
        return false;
    }
  }
  return !xform.isSingular();
}

} // namespace

OdDbObjectId OdDbBlockReference::blockTableRecord() const
{
  assertReadEnabled();
  return m_blockId;
}

OdResult OdDbBlockReference::setBlockTableRecord(OdDbObjectId blockId)
{
  assertWriteEnabled();
  if (blockId.isNull())
    return eNullObjectId;
  const OdRxClass* cls = blockId.objectClass();
  if (!cls || !cls->isDerivedFrom(OdDbBlockTableRecord::desc()))
    return eWrongObjectType;
  if (isDBRO() && blockId.database() != database())
    return eWrongDatabase;
  m_blockId = blockId;
  return eOk;
}

OdGeMatrix3d OdDbBlockReference::blockTransform() const
{
  assertReadEnabled();
  return m_xform;
}

OdResult OdDbBlockReference::setBlockTransform(const OdGeMatrix3d& xform)
{
  assertWriteEnabled();
  if (!isValidTransform(xform))
    return eInvalidInput;
  m_xform = xform;
  return eOk;
}

OdGePoint3d OdDbBlockReference::position() const
{
  assertReadEnabled();
  return m_xform.getCsOrigin();
}

OdResult OdDbBlockReference::setPosition(const OdGePoint3d& position)
{
  assertWriteEnabled();
  if (!std::isfinite(position.x) || !std::isfinite(position.y) || !std::isfinite(position.z))
    return eInvalidInput;
  m_xform.setTranslation(position.asVector());
  return eOk;
}

OdResult OdDbBlockReference::subGetGeomExtents(OdGeExtents3d& extents) const
{
  NestingGuard guard;
  OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::cast(m_blockId.openObject().get());
  if (guard.tooDeep() || !block.get())
    return eInvalidExtents;
  OdGeExtents3d result;
  for (OdDbObjectIteratorPtr it = block->newIterator(); !it->done(); it->step()) {
    OdDbEntityPtr entity = it->entity();
    OdGeExtents3d part;
    if (entity.get() && entity->getGeomExtents(part) == eOk)
      result.addExt(part.transformBy(m_xform));
  }
  if (!result.isValidExtents())
    return eInvalidExtents;
  extents = result;
  return eOk;
}

bool OdDbBlockReference::subWorldDraw(OdGiWorldDraw* pWd) const
{
  NestingGuard guard;
  OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::cast(m_blockId.openObject().get());
  if (guard.tooDeep() || !block.get())
    return true;
  ModelTransformGuard transform(pWd->geometry(), m_xform);
  for (OdDbObjectIteratorPtr it = block->newIterator(); !it->done() && !pWd->regenAbort(); it->step()) {
    OdDbEntityPtr entity = it->entity();
    if (entity.get())
      entity->worldDraw(pWd);
  }
  return true;
}

OdResult OdDbBlockReference::subGetGripPoints(OdGePoint3dArray& gripPoints) const
{
  gripPoints.append(m_xform.getCsOrigin());
  return eOk;
}

OdResult OdDbBlockReference::subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset)
{
  for (int index : indices) {
    if (index != 0)
      return eInvalidIndex;
  }
  if (!indices.isEmpty())
    return subTransformBy(OdGeMatrix3d::translation(offset));
  return eOk;
}

OdResult OdDbBlockReference::subTransformBy(const OdGeMatrix3d& xform)
{
  const OdGeMatrix3d result = xform * m_xform;
  if (!isValidTransform(result))
    return eInvalidInput;
  m_xform = result;
  return eOk;
}

OdResult OdDbBlockReference::dwgInFields(OdDbDwgFiler* pFiler)
{
  const OdResult res = OdDbEntity::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  const OdDbObjectId blockId = pFiler->rdSoftPointerId();
  OdGeMatrix3d xform;
  for (auto& row : xform.entry) {
    for (double& value : row)
      value = pFiler->rdDouble();
  }
  if (!isValidTransform(xform))
    return eInvalidInput;
  const OdRxClass* cls = blockId.objectClass();
  if (!blockId.isNull() && (!cls || !cls->isDerivedFrom(OdDbBlockTableRecord::desc())))
    return eWrongObjectType;
  m_blockId = blockId;
  m_xform = xform;
  return pFiler->filerStatus();
}

void OdDbBlockReference::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  OdDbEntity::dwgOutFields(pFiler);
  pFiler->wrSoftPointerId(m_blockId);
  for (const auto& row : m_xform.entry) {
    for (double value : row)
      pFiler->wrDouble(value);
  }
}
