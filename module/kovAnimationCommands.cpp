#include "module/kovAnimationCommands.h"

#include "module/kovAnimationModule.h"
#include "module/kovCameraAnimationBuilder.h"
#include "module/kovCameraPathInput.h"

#include "host/api/IkovApplication.h"
#include "host/api/IkovPropSystem.h"
#include "host/api/kovHostService.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbObjectIterator.h"
#include "Ed/OdDbCommandContext.h"
#include "Ed/OdDbUserIO.h"

#include <QCoreApplication>
#include <QMetaObject>

namespace {

OdString tr(const char* text)
{
  return odFromQString(QCoreApplication::translate("kovAnimationCommands", text));
}

// The command context and its drawing; both of the wrong kind, or no drawing
// at all, raise the wrong-class error.
OdDbCommandContextPtr drawingContext(OdEdCommandContext* pCmdCtx, OdDbDatabasePtr& db)
{
  OdDbCommandContextPtr context(pCmdCtx);
  OdRxObject* base = context->baseDatabase();
  if (!base)
    throw OdError_NotThatKindOfClass(nullptr, OdDbDatabase::desc());
  db = base;
  return context;
}

// The new animation becomes the one being edited; the palette shows it and
// the editor's dock comes up.
void announce(const kovDbAnimation* animation)
{
  kovAnimationModule::setEditingAnimation(animation->objectId());
  if (IkovPropSystem* props = kovHostService<IkovPropSystem>())
    props->showProperties(animation->objectId());
  if (kovAnimationModule* module = kovAnimationModule::instance())
    module->dockWidget();
}

void showEditorDock()
{
  kovAnimationModule* module = kovAnimationModule::instance();
  IkovApplication* app = kovApp();
  if (!module || !app || !module->dockWidget())
    return;
  kovAnimationModule::showEditorDock(app);
}

} // namespace

const OdString kovAnimationCommand::groupName() const
{
  return OdString(L"kovAnimation");
}

void kovAnimationCommands::animationEditor(OdEdCommandContext* pCmdCtx)
{
  IkovApplication* app = kovApp();
  if (!app || !app->mainWindow()) {
    pCmdCtx->userIO()->putString(tr("The animation editor needs a host with windows."));
    return;
  }
  // Widgets belong to the application's thread: show the dock from there.
  QMetaObject::invokeMethod(QCoreApplication::instance(), &showEditorDock, Qt::QueuedConnection);
}

void kovAnimationCommands::createAnimation(OdEdCommandContext* pCmdCtx)
{
  OdDbDatabasePtr db;
  drawingContext(pCmdCtx, db);
  OdDbSplinePtr path = kovCameraAnimationBuilder::defaultPath(db.get());
  kovDbAnimationPtr animation = kovCameraAnimationBuilder::build(db.get(), path.get());
  announce(animation.get());
}

void kovAnimationCommands::createCameraAnimation(OdEdCommandContext* pCmdCtx)
{
  OdDbDatabasePtr db;
  OdDbCommandContextPtr context = drawingContext(pCmdCtx, db);
  context->userIO()->putString(tr("Draw a camera path..."));
  OdDbSplinePtr path = kovCameraPathInput::run(context->dbUserIO());
  kovDbAnimationPtr animation = kovCameraAnimationBuilder::build(db.get(), path.get());
  announce(animation.get());
}

void kovAnimationCommands::dumpBlockContent(OdEdCommandContext* pCmdCtx)
{
  OdDbDatabasePtr db;
  OdDbCommandContextPtr context = drawingContext(pCmdCtx, db);
  OdDbUserIO* io = context->dbUserIO();
  const OdDbObjectIdArray selection = io->select(tr("Select Block References to Dump:"));
  int dumped = 0;
  for (const OdDbObjectId& id : selection) {
    OdDbObjectPtr object = id.openObject(OdDb::kForRead);
    OdDbBlockReferencePtr reference = OdDbBlockReference::cast(object.get());
    if (reference.isNull())
      continue;
    ++dumped;
    OdDbObjectPtr block = reference->blockTableRecord().openObject(OdDb::kForRead);
    OdDbBlockTableRecordPtr record = OdDbBlockTableRecord::cast(block.get());
    const OdGePoint3d at = reference->position();
    OdString line;
    line.format(L"%ls %ls: block \"%ls\" at %g,%g,%g", reference->isA()->name().c_str(),
                id.getHandle().ascii().c_str(), record.isNull() ? L"?" : record->getName().c_str(), at.x, at.y, at.z);
    io->putString(line);
    if (record.isNull())
      continue;
    int entities = 0;
    for (OdDbObjectIteratorPtr it = record->newIterator(); !it->done(); it->step()) {
      OdDbObjectPtr entity = it->objectId().openObject(OdDb::kForRead);
      if (entity.isNull())
        continue;
      OdString item;
      item.format(L"  %ls %ls", entity->isA()->name().c_str(), it->objectId().getHandle().ascii().c_str());
      io->putString(item);
      ++entities;
    }
    OdString total;
    total.format(L"  %d entities", entities);
    io->putString(total);
  }
  OdString summary;
  summary.format(L"%d block references dumped.", dumped);
  io->putString(summary);
}
