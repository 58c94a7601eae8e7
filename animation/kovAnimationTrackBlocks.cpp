// The block reference that shows a spawned or block-library subject.
#include "animation/kovAnimationTrack.h"

#include "animation/kovOdDbEx.h"
#include "animation/kovTemporaryVisibility.h"
#include "db/kovDbTempBlockReference.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"

namespace {

// The block definition that shows a subject: the host library's entry for its
// name, else a block of the drawing with that name.
OdDbObjectId subjectBlock(OdDbDatabase* db, const kovAnimationTrack& track, const QString& kind)
{
  if (kind == QLatin1String("Object")) {
    OdDbObjectPtr object = track.entityId().openObject(OdDb::kForRead);
    OdDbBlockReferencePtr reference = OdDbBlockReference::cast(object.get());
    return reference.isNull() ? OdDbObjectId() : reference->blockTableRecord();
  }
  if (const kovOdDbEx* library = kovOdDbEx::service()) {
    const OdDbObjectId id = library->blockDefinition(db, track.entityUniqueName());
    if (!id.isNull())
      return id;
  }
  OdDbObjectPtr table = db->getBlockTableId().openObject(OdDb::kForRead);
  OdDbBlockTablePtr blocks = OdDbBlockTable::cast(table.get());
  return blocks.isNull() ? OdDbObjectId() : blocks->getAt(odFromQString(track.entityUniqueName()));
}

} // namespace

void kovAnimationTrack::setEntityUniqueName(OdDbDatabase* db, const QString& name)
{
  m_entityUniqueName = name;
  if (trackTypeIdentifier() == QLatin1String("SpawnedObject"))
    regenerateBlock(db, true);
  else if (!m_blockId.isNull() && m_entityId.isNull())
    destroyBlock();
}

void kovAnimationTrack::regenerateBlock(OdDbDatabase* db, bool force)
{
  if (!db || (!force && m_blockId.isValid()))
    return;
  const QString kind = trackTypeIdentifier();
  if (kind != QLatin1String("SpawnedObject") && kind != QLatin1String("Object"))
    return;
  const OdDbObjectId definition = subjectBlock(db, *this, kind);
  if (definition.isNull())
    return;
  {
    // A reference that shows this very block is replaced on its own:
    // destroyBlock would erase the block with it.
    OdDbObjectPtr previous = m_blockId.openObject(OdDb::kForWrite);
    OdDbBlockReferencePtr reference = OdDbBlockReference::cast(previous.get());
    if (!reference.isNull() && reference->blockTableRecord() == definition) {
      reference->erase();
      m_blockId.setNull();
    }
  }
  destroyBlock();

  kovDbTempBlockReferencePtr reference = kovDbTempBlockReference::createObject();
  reference->setDatabaseDefaults(db);
  reference->setBlockTableRecord(definition);
  reference->setBlockTransform(m_blockMatrix);
  reference->setVisibility(OdDb::kVisible);
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  m_blockId = modelSpace->appendOdDbEntity(reference.get());
  // The stand-in moves in the entity's place; the entity waits hidden.
  if (kind == QLatin1String("Object"))
    kovTemporaryVisibility::hide(m_entityId);
}

void kovAnimationTrack::destroyBlock()
{
  if (!m_blockId.isNull()) {
    OdDbBlockReferencePtr reference = m_blockId.openObject(OdDb::kForWrite);
    if (!reference.isNull()) {
      const OdDbObjectId definition = reference->blockTableRecord();
      reference->erase();
      if (m_entityId.isNull()) {
        OdDbObjectPtr block = definition.openObject(OdDb::kForWrite);
        if (!block.isNull())
          block->erase();
      }
    }
    m_blockId.setNull();
  }
  if (!m_entityId.isNull()) {
    OdDbEntityPtr entity = m_entityId.openObject(OdDb::kForRead);
    if (!entity.isNull() && kovTemporaryVisibility::state(m_entityId) == 1)
      kovTemporaryVisibility::restore(m_entityId);
  }
}

void kovAnimationTrack::hideBlock(bool hide)
{
  OdDbObjectPtr object = m_blockId.openObject(OdDb::kForWrite);
  OdDbEntityPtr reference = OdDbEntity::cast(object.get());
  if (!reference.isNull())
    reference->setVisibility(hide ? OdDb::kInvisible : OdDb::kVisible);
}

OdDbObjectPtr kovAnimationTrack::getEntityForPaint(bool forWrite, bool preferBlock)
{
  const OdDb::OpenMode mode = forWrite ? OdDb::kForWrite : OdDb::kForRead;
  if (preferBlock && m_blockId.isValid()) {
    OdDbObjectPtr reference = m_blockId.openObject(mode);
    if (!reference.isNull())
      return reference;
  }
  return m_entityId.openObject(mode);
}
