#include "host/app/kovBlockCommand.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbMemoryFiler.h"
#include "Db/OdDbSymbolTableIterator.h"
#include "Ed/OdDbUserIO.h"
#include "Ed/OdEdCommandContext.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

const double kPi = 3.14159265358979323846;

// The names a user may insert: every block but the layouts' own ("*...").
QStringList insertableBlocks(OdDbBlockTable* blocks)
{
  QStringList names;
  for (OdDbSymbolTableIteratorPtr it = blocks->newIterator(); !it->done(); it->step()) {
    OdDbSymbolTableRecordPtr record = it->getRecordId().safeOpenObject();
    const QString name = odToQString(record->getName());
    if (!name.startsWith(QLatin1Char('*')))
      names.append(name);
  }
  return names;
}

// A copy of the entity, through its own filing, in the same drawing.
OdDbEntityPtr copyOf(OdDbDatabase* db, const OdDbEntity* entity)
{
  OdDbMemoryFiler filer(db);
  entity->dwgOutFields(&filer);
  filer.rewind();
  OdDbEntityPtr copy = entity->isA()->create();
  if (copy->dwgInFields(&filer) != eOk)
    return OdDbEntityPtr();
  return copy;
}

void makeBlock(OdDbDatabase* db, OdDbUserIO* io)
{
  const OdString name = io->getString(OdString(L"Block name:"), OdEd::kInpThrowEmpty);
  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
  if (name.c_str()[0] == L'*' || blocks->has(name))
    throw OdError(eDuplicateKey, OdString(L"A block named \"") + name
                                   + L"\" exists already, or the name is reserved: choose another name");
  const OdGePoint3d base = io->getPoint(OdString(L"Base point:"));
  OdDbObjectIdArray chosen = io->select(OdString(L"Select entities for the block:"));
  std::sort(chosen.begin(), chosen.end());
  chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
  if (chosen.isEmpty())
    throw OdError(eInvalidInput, OdString(L"No entities were selected: nothing to make a block of"));

  // Every copy is made and moved before the drawing changes, so that an
  // entity that can't go into a block leaves everything as it was.
  const OdGeMatrix3d toBase = OdGeMatrix3d::translation(-base.asVector());
  std::vector<OdDbEntityPtr> copies;
  for (const OdDbObjectId& id : chosen) {
    OdDbEntityPtr entity = OdDbEntity::cast(id.openObject(OdDb::kForRead).get());
    OdDbEntityPtr copy = entity.isNull() ? OdDbEntityPtr() : copyOf(db, entity.get());
    if (copy.isNull() || copy->transformBy(toBase) != eOk)
      throw OdError(eNotApplicable, OdString(L"Entity ") + id.getHandle().ascii()
                                      + L" can't be put into a block: nothing was changed");
    copies.push_back(copy);
  }
  OdDbBlockTableRecordPtr block = OdDbBlockTableRecord::createObject();
  block->setName(name);
  const OdDbObjectId blockId = blocks->add(block.get());
  for (const OdDbEntityPtr& copy : copies)
    block->appendOdDbEntity(copy.get());
  for (const OdDbObjectId& id : chosen)
    id.safeOpenObject(OdDb::kForWrite)->erase();

  OdDbBlockReferencePtr reference = OdDbBlockReference::createObject();
  reference->setDatabaseDefaults(db);
  reference->setBlockTableRecord(blockId);
  reference->setBlockTransform(OdGeMatrix3d::translation(base.asVector()));
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  modelSpace->appendOdDbEntity(reference.get());
  OdString report;
  report.format(L"Made block \"%ls\" of %d entities.", name.c_str(), static_cast<int>(copies.size()));
  io->putString(report);
}

void insertBlock(OdDbDatabase* db, OdDbUserIO* io)
{
  const OdString name = io->getString(OdString(L"Block name:"), OdEd::kInpThrowEmpty);
  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject();
  const OdDbObjectId blockId = name.c_str()[0] == L'*' ? OdDbObjectId() : blocks->getAt(name);
  if (blockId.isNull()) {
    const QStringList names = insertableBlocks(blocks.get());
    throw OdError(eKeyNotFound, OdString(L"No block is named \"") + name + L"\"; "
                                  + (names.isEmpty() ? OdString(L"the drawing has no blocks")
                                                     : L"the drawing's blocks are: " + odFromQString(names.join(QStringLiteral(", ")))));
  }
  const OdGePoint3d at = io->getPoint(OdString(L"Insertion point:"));
  double scale = 0.0;
  while (!(std::isfinite(scale) && scale > 0.0)) {
    scale = io->getReal(OdString(L"Scale <1>:"), OdEd::kInpDefault, 1.0);
    if (!(std::isfinite(scale) && scale > 0.0))
      io->putString(OdString(L"The value must be positive."));
  }
  const double degrees = io->getReal(OdString(L"Rotation in degrees <0>:"), OdEd::kInpDefault, 0.0);

  OdDbBlockReferencePtr reference = OdDbBlockReference::createObject();
  reference->setDatabaseDefaults(db);
  reference->setBlockTableRecord(blockId);
  reference->setBlockTransform(OdGeMatrix3d::translation(at.asVector())
                               * OdGeMatrix3d::rotation(degrees * kPi / 180.0, OdGeVector3d::kZAxis)
                               * OdGeMatrix3d::scaling(scale));
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  modelSpace->appendOdDbEntity(reference.get());
  OdString report;
  report.format(L"Inserted \"%ls\" at %g,%g,%g.", name.c_str(), at.x, at.y, at.z);
  io->putString(report);
}

} // namespace

void kovBlockCommand::execute(OdEdCommandContext* pCmdCtx)
{
  OdDbDatabase* db = openDrawing();
  OdDbUserIO* io = OdDbUserIO::cast(pCmdCtx->userIO()).get();
  if (!io)
    throw OdError(eNotApplicable, OdString(L"This command needs a drawing's user input"));
  if (m_name == L"block")
    makeBlock(db, io);
  else
    insertBlock(db, io);
}
