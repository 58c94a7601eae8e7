#include "import/kovSceneImport.h"

#include "import/kovAssimpImporter.h"
#include "import/kovGltfGuard.h"
#include "import/kovStlImporter.h"
#include "import/kovXcafImporter.h"

#include "Rx/OdError.h"

#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <Standard_Failure.hxx>

#include <QFileInfo>

#include <new>

namespace {

[[noreturn]] void refuse(OdResult code, const QString& message)
{
  throw OdError(code, odFromQString(message));
}

// The exchange readers report their progress to the default messenger, which
// prints to standard output: that would fill the command line's transcript
// (and a headless run's output). Only failures are let through.
void quietenReaders()
{
  static const bool quiet = [] {
    for (const Handle(Message_Printer)& printer : Message::DefaultMessenger()->Printers())
      printer->SetTraceLevel(Message_Fail);
    return true;
  }();
  Q_UNUSED(quiet);
}

kovImportedScene readByExtension(const QString& path, const QString& suffix)
{
  quietenReaders();
  if (suffix == QLatin1String("stl"))
    return kovStlImporter::read(path);
  if (suffix == QLatin1String("step") || suffix == QLatin1String("stp"))
    return kovXcafImporter::read(path, kovXcafImporter::Format::Step);
  if (suffix == QLatin1String("iges") || suffix == QLatin1String("igs"))
    return kovXcafImporter::read(path, kovXcafImporter::Format::Iges);
  if (suffix == QLatin1String("obj"))
    return kovXcafImporter::read(path, kovXcafImporter::Format::Obj);
  if (suffix == QLatin1String("gltf") || suffix == QLatin1String("glb")) {
    const kovGltfGuard::Summary summary = kovGltfGuard::check(path);
    kovImportedScene scene = kovXcafImporter::read(path, kovXcafImporter::Format::Gltf);
    // Open CASCADE's reader leaves animations out; glTF counts in metres with
    // y up.
    if (summary.animated)
      kovAssimpImporter::readClips(path, scene);
    scene.upAxis = OdGeMatrix3d::rotation(3.14159265358979323846 / 2.0, OdGeVector3d::kXAxis);
    return scene;
  }
  return kovAssimpImporter::read(path);
}

} // namespace

QStringList kovSceneImport::supportedExtensions()
{
  return { QStringLiteral("step"), QStringLiteral("stp"), QStringLiteral("iges"), QStringLiteral("igs"),
           QStringLiteral("gltf"), QStringLiteral("glb"),  QStringLiteral("obj"),  QStringLiteral("stl"),
           QStringLiteral("fbx"),  QStringLiteral("dae"),  QStringLiteral("3ds"),  QStringLiteral("ply") };
}

kovImportedScene kovSceneImport::read(const QString& path)
{
  const QFileInfo info(path);
  const QString suffix = info.suffix().toLower();
  if (!supportedExtensions().contains(suffix))
    refuse(eNotApplicable, QStringLiteral("Can't import %1: \"%2\" is not a supported model file extension; "
                                          "supported are .%3")
                             .arg(info.fileName(), suffix.isEmpty() ? QStringLiteral("(none)") : QStringLiteral(".") + suffix,
                                  supportedExtensions().join(QStringLiteral(", ."))));
  if (!info.exists())
    refuse(eFileNotFound, QStringLiteral("Can't import %1: the file does not exist").arg(path));
  if (!info.isFile() || !info.isReadable())
    refuse(eFileAccessErr, QStringLiteral("Can't import %1: it is not a readable file").arg(path));
  if (info.size() == 0)
    refuse(eEndOfFile, QStringLiteral("Can't import %1: the file is empty").arg(info.fileName()));
  kovImportedScene scene;
  try {
    scene = readByExtension(path, suffix);
  } catch (const std::bad_alloc&) {
    refuse(eOutOfMemory, QStringLiteral("Can't import %1: there is not enough memory for it").arg(info.fileName()));
  } catch (const Standard_Failure& failure) {
    refuse(eBadDwgFile, QStringLiteral("Can't import %1: %2").arg(info.fileName(), QString::fromUtf8(failure.GetMessageString())));
  }
  if (scene.triangleCount() == 0)
    refuse(eDegenerateGeometry, QStringLiteral("Can't import %1: it holds no triangles or surfaces").arg(info.fileName()));
  return scene;
}
