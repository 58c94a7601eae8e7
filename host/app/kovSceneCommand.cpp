#include "host/app/kovSceneCommand.h"

#include "polymesh/Primitives.h"
#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Ed/OdEdCommandContext.h"
#include "Ed/OdEdUserIO.h"

#include <QStringList>

#include <cmath>

using kov::polymesh::Mesh;
using kov::polymesh::Primitives;

namespace {

// Round solids get this many sides: smooth enough on screen, few triangles.
const int kSegments = 32;

bool isPositive(double value)
{
  return std::isfinite(value) && value > 0.0;
}

// Asks again until the answer is a positive number, as a drafter expects.
double positive(OdEdUserIO* io, const OdString& prompt)
{
  for (;;) {
    const double value = io->getReal(prompt, OdEd::kInpThrowEmpty);
    if (isPositive(value))
      return value;
    io->putString(OdString(L"The value must be positive."));
  }
}

OdGeVector3d positiveSize(OdEdUserIO* io)
{
  for (;;) {
    const OdGeVector3d size = io->getPoint(OdString(L"Size as x,y,z:")).asVector();
    if (isPositive(size.x) && isPositive(size.y) && isPositive(size.z))
      return size;
    io->putString(OdString(L"The size must be positive in x, y and z."));
  }
}

// "ByLayer", a palette index or r,g,b: the entity's colour, or for a true
// colour the one surface every face takes.
void applyColor(OdEdUserIO* io, kovDbPolygonMesh* entity, Mesh& mesh)
{
  for (;;) {
    const QString text =
      odToQString(io->getString(OdString(L"Colour (ByLayer, 1 to 255 or r,g,b) <ByLayer>:"), OdEd::kInpDefault,
                                OdString(L"ByLayer")))
        .trimmed();
    if (text.compare(QStringLiteral("ByLayer"), Qt::CaseInsensitive) == 0) {
      entity->setColorIndex(OdCmEntityColor::kACIbyLayer);
      return;
    }
    bool ok = false;
    const int index = text.toInt(&ok);
    if (ok && index >= 1 && index <= 255) {
      entity->setColorIndex(static_cast<OdUInt16>(index));
      return;
    }
    const QStringList parts = text.split(QLatin1Char(','));
    int rgb[3] = { -1, -1, -1 };
    for (int i = 0; parts.size() == 3 && i < 3; ++i) {
      rgb[i] = parts[i].trimmed().toInt(&ok);
      if (!ok || rgb[i] < 0 || rgb[i] > 255)
        rgb[i] = -1;
    }
    if (rgb[0] >= 0 && rgb[1] >= 0 && rgb[2] >= 0) {
      mesh.surfaces = { kov::polymesh::Surface(OdString(L"colour"),
                                               OdCmEntityColor(static_cast<OdUInt8>(rgb[0]), static_cast<OdUInt8>(rgb[1]),
                                                               static_cast<OdUInt8>(rgb[2]))) };
      return;
    }
    io->putString(OdString(L"A colour is ByLayer, an index from 1 to 255, or red,green,blue from 0 to 255."));
  }
}

} // namespace

void kovSceneCommand::execute(OdEdCommandContext* pCmdCtx)
{
  OdDbDatabase* db = openDrawing();
  OdEdUserIO* io = pCmdCtx->userIO();

  OdGePoint3d at;
  Mesh mesh;
  if (m_name == L"box") {
    at = io->getPoint(OdString(L"Base corner:"));
    mesh = Primitives::box(positiveSize(io));
  } else if (m_name == L"sphere") {
    at = io->getPoint(OdString(L"Centre:"));
    mesh = Primitives::sphere(positive(io, OdString(L"Radius:")), kSegments);
  } else if (m_name == L"cylinder") {
    at = io->getPoint(OdString(L"Base centre:"));
    const double radius = positive(io, OdString(L"Radius:"));
    mesh = Primitives::cylinder(radius, positive(io, OdString(L"Height:")), kSegments);
  } else {
    at = io->getPoint(OdString(L"Corner:"));
    const double width = positive(io, OdString(L"Width:"));
    mesh = Primitives::plane(width, positive(io, OdString(L"Depth:")));
  }
  mesh.transformBy(OdGeMatrix3d::translation(at.asVector()));

  kovDbPolygonMeshPtr entity = kovDbPolygonMesh::createObject();
  entity->setDatabaseDefaults(db);
  applyColor(io, entity.get(), mesh);
  OdString message;
  if (entity->setMesh(mesh, &message) != eOk)
    throw OdError(eInvalidInput, OdString(L"The ") + m_name + L" can't be made: " + message);
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  modelSpace->appendOdDbEntity(entity.get());

  const OdGeExtents3d box = mesh.extents();
  OdString report;
  report.format(L"Added a %ls of %llu triangles from %g,%g,%g to %g,%g,%g.", m_name.c_str(),
                static_cast<unsigned long long>(mesh.triangleCount()), box.minPoint().x, box.minPoint().y,
                box.minPoint().z, box.maxPoint().x, box.maxPoint().y, box.maxPoint().z);
  io->putString(report);
}
