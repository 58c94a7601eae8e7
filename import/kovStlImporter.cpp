#include "import/kovStlImporter.h"

#include "import/kovStlGuard.h"

#include "Rx/OdError.h"

#include <Poly_Triangulation.hxx>
#include <RWStl.hxx>

#include <QFile>
#include <QFileInfo>

kovImportedScene kovStlImporter::read(const QString& path)
{
  kovStlGuard::check(path);
  const Handle(Poly_Triangulation) triangles = RWStl::ReadFile(QFile::encodeName(path).constData());
  const QString name = QFileInfo(path).completeBaseName();
  if (triangles.IsNull())
    throw OdError(eBadDwgFile, odFromQString(QFileInfo(path).fileName()
                                             + QStringLiteral(" can't be read: it is not an STL file or it is damaged")));
  kov::polymesh::Mesh mesh;
  mesh.vertices.reserve(static_cast<std::size_t>(triangles->NbNodes()));
  for (Standard_Integer i = 1; i <= triangles->NbNodes(); ++i) {
    const gp_Pnt p = triangles->Node(i);
    mesh.vertices.emplace_back(OdGePoint3d(p.X(), p.Y(), p.Z()));
  }
  mesh.faces.reserve(static_cast<std::size_t>(triangles->NbTriangles()));
  for (Standard_Integer t = 1; t <= triangles->NbTriangles(); ++t) {
    Standard_Integer a = 0, b = 0, c = 0;
    triangles->Triangle(t).Get(a, b, c);
    if (a != b && b != c && a != c)
      mesh.faces.emplace_back(std::vector<OdInt32> { a - 1, b - 1, c - 1 });
  }
  kovImportedScene scene;
  scene.addPart(0, odFromQString(name), std::move(mesh));
  return scene;
}
