#include "polymesh/kovDbPolygonMesh.h"

#include "Gi/OdGiGeometry.h"
#include "Gi/OdGiSubEntityTraits.h"
#include "Gi/OdGiWorldDraw.h"
#include "Gi/OdGiWorldGeometry.h"

#include <utility>

ODRX_DEFINE_MEMBERS_EX(kovDbPolygonMesh, OdDbEntity, DBOBJECT_CONSTR, 33, 55, 0, OdString(L"kovDbPolygonMesh"),
                       OdString(L"kovDbPolygonMesh"), OdString(L"kovDbPolygonMesh"), 0)

const kov::polymesh::Mesh& kovDbPolygonMesh::mesh() const
{
  assertReadEnabled();
  return m_mesh;
}

OdResult kovDbPolygonMesh::setMesh(const kov::polymesh::Mesh& mesh, OdString* message)
{
  assertWriteEnabled();
  const OdResult res = mesh.validate(message);
  if (res == eOk)
    m_mesh = mesh;
  return res;
}

OdResult kovDbPolygonMesh::setMesh(kov::polymesh::Mesh&& mesh, OdString* message)
{
  assertWriteEnabled();
  const OdResult res = mesh.validate(message);
  if (res == eOk)
    m_mesh = std::move(mesh);
  return res;
}

OdResult kovDbPolygonMesh::subGetGeomExtents(OdGeExtents3d& extents) const
{
  const OdGeExtents3d box = m_mesh.extents();
  if (!box.isValidExtents())
    return eInvalidExtents;
  extents = box;
  return eOk;
}

bool kovDbPolygonMesh::subWorldDraw(OdGiWorldDraw* pWd) const
{
  std::vector<OdGePoint3d> points;
  points.reserve(m_mesh.vertices.size());
  for (const kov::polymesh::Vertex& vertex : m_mesh.vertices)
    points.push_back(vertex.position);
  // One shell per surface, so that a renderer gets each colour as one mesh;
  // the face lists are sorted out in one pass over the faces.
  std::vector<std::vector<OdInt32>> faceLists(std::max<size_t>(m_mesh.surfaces.size(), 1));
  for (const kov::polymesh::Face& face : m_mesh.faces) {
    std::vector<OdInt32>& list = faceLists[static_cast<size_t>(face.surface)];
    list.push_back(static_cast<OdInt32>(face.vertices.size()));
    list.insert(list.end(), face.vertices.begin(), face.vertices.end());
  }
  const OdCmEntityColor own = pWd->subEntityTraits().trueColor();
  for (size_t group = 0; group < faceLists.size() && !pWd->regenAbort(); ++group) {
    const std::vector<OdInt32>& faceList = faceLists[group];
    if (faceList.empty())
      continue;
    const bool ownColor = m_mesh.surfaces.empty() || m_mesh.surfaces[group].color.isByBlock();
    pWd->subEntityTraits().setTrueColor(ownColor ? own : m_mesh.surfaces[group].color);
    pWd->geometry().shell(static_cast<OdInt32>(points.size()), points.data(), static_cast<OdInt32>(faceList.size()),
                          faceList.data());
  }
  pWd->subEntityTraits().setTrueColor(own);
  return true;
}

OdResult kovDbPolygonMesh::subTransformBy(const OdGeMatrix3d& xform)
{
  m_mesh.transformBy(xform);
  return eOk;
}
