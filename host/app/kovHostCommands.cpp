#include "host/app/kovHostCommands.h"

#include "host/app/kovHostApplication.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbEntity.h"
#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbObjectIterator.h"
#include "Ed/OdEdCommandContext.h"
#include "Ed/OdEdCommandStack.h"
#include "Ed/OdEdUserIO.h"

#include <QDir>
#include <QFileInfo>

namespace {

void listDrawing(OdDbDatabase* db, OdEdUserIO* io)
{
  OdDbObjectPtr space = db->getModelSpaceId().openObject(OdDb::kForRead);
  OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::cast(space.get());
  int count = 0;
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(); !it->done(); it->step()) {
    OdDbObjectPtr object = it->objectId().openObject(OdDb::kForRead);
    OdDbEntityPtr entity = OdDbEntity::cast(object.get());
    if (entity.isNull())
      continue;
    ++count;
    OdString line = entity->isA()->name() + L" " + it->objectId().getHandle().ascii();
    OdDbBlockReferencePtr reference = OdDbBlockReference::cast(entity.get());
    if (!reference.isNull()) {
      OdDbSymbolTableRecordPtr block = OdDbSymbolTableRecord::cast(reference->blockTableRecord().openObject().get());
      if (!block.isNull())
        line += L" \"" + block->getName() + L"\"";
    }
    OdGeExtents3d extents;
    if (entity->getGeomExtents(extents) == eOk) {
      OdString where;
      where.format(L" from %g,%g,%g to %g,%g,%g", extents.minPoint().x, extents.minPoint().y, extents.minPoint().z,
                   extents.maxPoint().x, extents.maxPoint().y, extents.maxPoint().z);
      line += where;
    }
    io->putString(line);
  }
  OdString total;
  total.format(L"%d entities in model space.", count);
  io->putString(total);
}

} // namespace

void kovHostCommand::execute(OdEdCommandContext* pCmdCtx)
{
  kovHostApplication* app = kovHostApplication::instance();
  OdEdUserIO* io = pCmdCtx->userIO();
  if (!app)
    throw OdError(eNotApplicable, OdString(L"This command needs the host application"));

  if (m_name == L"new") {
    app->setDatabase(OdDbDatabase::createObject(), QString());
    return;
  }
  if (m_name == L"open") {
    const QString path = odToQString(io->getString(OdString(L"Drawing to open:")));
    OdDbDatabasePtr db = OdDbFileReader::readFile(odFromQString(QFileInfo(path).absoluteFilePath()));
    app->setDatabase(db, QFileInfo(path).absoluteFilePath());
    io->putString(OdString(L"Opened ") + odFromQString(path));
    return;
  }
  OdDbDatabase* db = openDrawing();
  if (m_name == L"save") {
    QString path = odToQString(io->getString(OdString(L"Save drawing as:"), OdEd::kInpDefault,
                                             odFromQString(app->drawingPath())));
    if (path.isEmpty())
      throw OdError(eInvalidInput, OdString(L"The drawing has no file name yet: give one"));
    path = QFileInfo(path).absoluteFilePath();
    QDir().mkpath(QFileInfo(path).absolutePath());
    OdDbFileWriter::writeFile(db, odFromQString(path));
    app->setDrawingPath(path);
    io->putString(OdString(L"Saved ") + odFromQString(path));
    return;
  }
  if (m_name == L"undo" || m_name == L"redo") {
    const bool undo = m_name == L"undo";
    if (!(undo ? db->hasUndo() : db->hasRedo())) {
      io->putString(OdString(undo ? L"Nothing to undo." : L"Nothing to redo."));
      return;
    }
    undo ? db->undo() : db->redo();
    return;
  }
  listDrawing(db, io);
}

kovHostCommands::kovHostCommands()
{
  OdEdCommandStackPtr stack = odedRegCmds();
  for (OdEdCommand* command : { static_cast<OdEdCommand*>(&m_new), static_cast<OdEdCommand*>(&m_open),
                                static_cast<OdEdCommand*>(&m_save), static_cast<OdEdCommand*>(&m_list),
                                static_cast<OdEdCommand*>(&m_box), static_cast<OdEdCommand*>(&m_sphere),
                                static_cast<OdEdCommand*>(&m_cylinder), static_cast<OdEdCommand*>(&m_plane),
                                static_cast<OdEdCommand*>(&m_block), static_cast<OdEdCommand*>(&m_insert),
                                static_cast<OdEdCommand*>(&m_importScene), static_cast<OdEdCommand*>(&m_render),
                                static_cast<OdEdCommand*>(&m_view), static_cast<OdEdCommand*>(&m_visualStyle),
                                static_cast<OdEdCommand*>(&m_sun), static_cast<OdEdCommand*>(&m_namedView),
                                static_cast<OdEdCommand*>(&m_undo), static_cast<OdEdCommand*>(&m_redo) })
    stack->addCommand(command);
}

kovHostCommands::~kovHostCommands()
{
  odedRegCmds()->removeGroup(OdString(L"kovHost"));
}
