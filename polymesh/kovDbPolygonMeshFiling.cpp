// Filing of the polygon mesh, after the entity's own fields.
//
// Layout, version 2:
//
//   Int32   layout version (2)
//   Int32   number of vertices V, then V x Point3d
//   Bool    the vertices have normals; when true V x Vector3d follow
//   Int32   number of surfaces S, then S surfaces:
//             String name, Int32 colour (method and value, as
//             OdCmEntityColor::color()), String material
//   Int32   number of faces F, then F faces:
//             Int32 surface, Int32 corner count N, N x Int32 vertex index
//
// Version 1 had neither normals nor surfaces: V, the points, then F faces of
// N and the indices; its faces take the entity's colour.
//
// Reading checks every count against the bytes left before allocating for
// it, and the mesh as a whole (indices in range) before taking it.
#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbReadCount.h"

namespace {

const OdInt32 kLayoutVersion = 2;
const OdUInt64 kPointBytes = 24;
// A surface: two empty strings and a colour.
const OdUInt64 kMinSurfaceBytes = 12;
// A face: its surface (from version 2), its count and three corners.
const OdUInt64 kMinFaceBytes = 16;

} // namespace

void kovDbPolygonMesh::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  assertReadEnabled();
  OdDbEntity::dwgOutFields(pFiler);
  pFiler->wrInt32(kLayoutVersion);
  pFiler->wrInt32(static_cast<OdInt32>(m_mesh.vertices.size()));
  for (const kov::polymesh::Vertex& vertex : m_mesh.vertices)
    pFiler->wrPoint3d(vertex.position);
  const bool normals = std::any_of(m_mesh.vertices.begin(), m_mesh.vertices.end(),
                                   [](const kov::polymesh::Vertex& v) { return v.hasNormal(); });
  pFiler->wrBool(normals);
  if (normals) {
    for (const kov::polymesh::Vertex& vertex : m_mesh.vertices)
      pFiler->wrVector3d(vertex.normal);
  }
  pFiler->wrInt32(static_cast<OdInt32>(m_mesh.surfaces.size()));
  for (const kov::polymesh::Surface& surface : m_mesh.surfaces) {
    pFiler->wrString(surface.name);
    pFiler->wrInt32(static_cast<OdInt32>(surface.color.color()));
    pFiler->wrString(surface.material);
  }
  pFiler->wrInt32(static_cast<OdInt32>(m_mesh.faces.size()));
  for (const kov::polymesh::Face& face : m_mesh.faces) {
    pFiler->wrInt32(face.surface);
    pFiler->wrInt32(static_cast<OdInt32>(face.vertices.size()));
    for (OdInt32 index : face.vertices)
      pFiler->wrInt32(index);
  }
}

OdResult kovDbPolygonMesh::dwgInFields(OdDbDwgFiler* pFiler)
{
  assertWriteEnabled();
  const OdResult res = OdDbEntity::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  const OdInt32 version = pFiler->rdInt32();
  if (version < 1)
    return eDwgObjectImproperlyRead;
  kov::polymesh::Mesh mesh;
  mesh.vertices.resize(static_cast<size_t>(odDbReadCount(pFiler, kPointBytes, "vertex")));
  for (kov::polymesh::Vertex& vertex : mesh.vertices)
    vertex.position = pFiler->rdPoint3d();
  if (version >= 2) {
    if (pFiler->rdBool()) {
      if (mesh.vertices.size() > pFiler->bytesLeft() / kPointBytes)
        return eDwgObjectImproperlyRead;
      for (kov::polymesh::Vertex& vertex : mesh.vertices)
        vertex.normal = pFiler->rdVector3d();
    }
    mesh.surfaces.resize(static_cast<size_t>(odDbReadCount(pFiler, kMinSurfaceBytes, "surface")));
    for (kov::polymesh::Surface& surface : mesh.surfaces) {
      surface.name = pFiler->rdString();
      if (surface.color.setColor(static_cast<OdUInt32>(pFiler->rdInt32())) != eOk)
        return eDwgObjectImproperlyRead;
      surface.material = pFiler->rdString();
    }
  }
  const OdUInt64 minFaceBytes = version >= 2 ? kMinFaceBytes : kMinFaceBytes - 4;
  mesh.faces.resize(static_cast<size_t>(odDbReadCount(pFiler, minFaceBytes, "face")));
  for (kov::polymesh::Face& face : mesh.faces) {
    if (version >= 2)
      face.surface = pFiler->rdInt32();
    face.vertices.resize(static_cast<size_t>(odDbReadCount(pFiler, 4, "corner")));
    for (OdInt32& index : face.vertices)
      index = pFiler->rdInt32();
  }
  if (mesh.validate() != eOk)
    return eDwgObjectImproperlyRead;
  m_mesh = std::move(mesh);
  return pFiler->filerStatus();
}
