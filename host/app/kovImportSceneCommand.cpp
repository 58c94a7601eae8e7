#include "host/app/kovImportSceneCommand.h"

#include "import/kovImportedSceneWriter.h"
#include "import/kovSceneImport.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbDatabase.h"
#include "Ed/OdEdCommandContext.h"
#include "Ed/OdEdUserIO.h"

#include <QFileInfo>

#include <cmath>

namespace {

// Block names with this word are the library objects the animation module
// animates.
const QString kLibraryWord = QStringLiteral("xblock");

struct Options {
  QString blockName;
  OdGePoint3d at;
  double scale = 1.0;
};

Options askOptions(OdEdUserIO* io)
{
  Options options;
  for (;;) {
    const QString word = odToQString(io->getString(OdString(L"Options [--xblock NAME] [--at X,Y,Z] [--scale S] <none>:")))
                           .trimmed();
    if (word.isEmpty())
      return options;
    if (word == QLatin1String("--xblock")) {
      options.blockName = odToQString(io->getString(OdString(L"Block name:"), OdEd::kInpThrowEmpty)).trimmed();
      if (!options.blockName.contains(kLibraryWord, Qt::CaseInsensitive))
        options.blockName += QLatin1Char(' ') + kLibraryWord;
    } else if (word == QLatin1String("--at")) {
      options.at = io->getPoint(OdString(L"Insertion point:"));
    } else if (word == QLatin1String("--scale")) {
      for (;;) {
        options.scale = io->getReal(OdString(L"Scale:"), OdEd::kInpThrowEmpty);
        if (std::isfinite(options.scale) && options.scale > 0.0)
          break;
        io->putString(OdString(L"The scale must be a positive number."));
      }
    } else {
      io->putString(odFromQString(QStringLiteral("Unknown option %1: the options are --xblock NAME, --at X,Y,Z and "
                                                 "--scale S; Enter ends them.")
                                    .arg(word)));
    }
  }
}

} // namespace

void kovImportSceneCommand::execute(OdEdCommandContext* pCmdCtx)
{
  OdDbDatabase* db = openDrawing();
  OdEdUserIO* io = pCmdCtx->userIO();
  const QString path = odToQString(io->getString(OdString(L"File to import:"), OdEd::kInpThrowEmpty)).trimmed();
  const Options options = askOptions(io);

  kovImportedScene scene = kovSceneImport::read(path);
  const OdUInt64 triangles = scene.triangleCount();
  const std::size_t meshes = scene.parts.size();
  const QString name = options.blockName.isEmpty() ? QFileInfo(path).completeBaseName() : options.blockName;
  const OdGeMatrix3d placement =
    OdGeMatrix3d::translation(options.at.asVector()) * OdGeMatrix3d::scaling(options.scale);
  const kovImportedSceneWriter::Result result =
    kovImportedSceneWriter::write(db, scene, odFromQString(name), placement);

  OdGeExtents3d extents;
  OdDbBlockReferencePtr reference = result.reference.safeOpenObject();
  reference->getGeomExtents(extents);
  OdString report;
  report.format(L"Imported %ls as block \"%ls\": %llu meshes, %llu triangles, %d blocks, %d animations, extents "
                L"%g,%g,%g to %g,%g,%g.",
                odFromQString(QFileInfo(path).fileName()).c_str(), result.blockName.c_str(),
                static_cast<unsigned long long>(meshes), static_cast<unsigned long long>(triangles), result.blocks,
                result.animations, extents.minPoint().x, extents.minPoint().y, extents.minPoint().z,
                extents.maxPoint().x, extents.maxPoint().y, extents.maxPoint().z);
  io->putString(report);
}
