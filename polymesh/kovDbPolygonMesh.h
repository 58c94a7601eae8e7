#ifndef KOV_DB_POLYGON_MESH_H
#define KOV_DB_POLYGON_MESH_H

#include "polymesh/Mesh.h"

#include "Db/OdDbEntity.h"

// A polygon mesh in the drawing: imported models and the solids built by the
// scene commands. Draws one shell per surface in the surface's colour.
class kovDbPolygonMesh : public OdDbEntity {
public:
  ODDB_DECLARE_MEMBERS(kovDbPolygonMesh);
  kovDbPolygonMesh() = default;

  const kov::polymesh::Mesh& mesh() const;
  // Refuses (eInvalidInput, message filled) a mesh that does not validate;
  // the entity keeps its mesh then.
  OdResult setMesh(const kov::polymesh::Mesh& mesh, OdString* message = nullptr);
  // The same without a copy, for meshes of millions of faces; a refused mesh
  // is left to the caller.
  OdResult setMesh(kov::polymesh::Mesh&& mesh, OdString* message = nullptr);

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

protected:
  OdResult subGetGeomExtents(OdGeExtents3d& extents) const override;
  bool subWorldDraw(OdGiWorldDraw* pWd) const override;
  OdResult subTransformBy(const OdGeMatrix3d& xform) override;

private:
  kov::polymesh::Mesh m_mesh;
};

typedef OdSmartPtr<kovDbPolygonMesh> kovDbPolygonMeshPtr;

#endif
