// Polygon meshes: topology answers, refusal of broken meshes, transforms, the
// entity's drawing, and its filing (golden bytes, the older layout, damage).
// Drawings of meshes are read by the fuzz replay of the seed drawings.

#include "kovAllocationLimit.h"
#include "kovDbFixture.h"

#include "polymesh/Primitives.h"
#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbMemoryFiler.h"
#include "Gi/OdGiWorldDrawRecorder.h"
#include "Rx/OdError.h"

#include <QByteArray>

#include <cmath>
#include <functional>
#include <limits>

using namespace kov::polymesh;

namespace {

using Bytes = std::vector<OdUInt8>;

// A unit cube of quads, the top in a red surface and the rest by block.
Mesh cube()
{
  Mesh mesh = Primitives::box(OdGeVector3d(1, 1, 1));
  mesh.surfaces = { Surface(OdString(L"walls"), OdCmEntityColor(OdCmEntityColor::kByBlock)),
                    Surface(OdString(L"roof"), OdCmEntityColor(200, 30, 20), OdString(L"tiles")) };
  mesh.faces[1].surface = 1;
  return mesh;
}

Mesh triangle()
{
  Mesh mesh;
  mesh.vertices = { Vertex(OdGePoint3d(0, 0, 0), OdGeVector3d(0, 0, 1)), Vertex(OdGePoint3d(2, 0, 0)),
                    Vertex(OdGePoint3d(0, 1, 0)) };
  mesh.surfaces = { Surface(OdString(L"s"), OdCmEntityColor(1, 2, 3), OdString(L"m")) };
  mesh.faces = { Face({ 0, 1, 2 }) };
  return mesh;
}

// The mesh read from bytes, or the error the reader gave (as a result or raised).
OdResult readMesh(const Bytes& bytes, Mesh& mesh)
{
  OdDbMemoryFiler filer;
  filer.setExternalBuffer(bytes.data(), bytes.size());
  kovDbPolygonMeshPtr entity = kovDbPolygonMesh::createObject();
  try {
    const OdResult res = entity->dwgInFields(&filer);
    mesh = entity->mesh();
    return res == eOk && filer.bytesLeft() != 0 ? eDwgObjectImproperlyRead : res;
  } catch (const OdError& error) {
    return error.code();
  }
}

class PolygonMesh : public kovDbFixtureWith<kovDbPolygonMesh> {
protected:
  static kovDbPolygonMeshPtr entityOf(const Mesh& mesh)
  {
    kovDbPolygonMeshPtr entity = kovDbPolygonMesh::createObject();
    EXPECT_EQ(entity->setMesh(mesh), eOk);
    return entity;
  }
};

// Primitives are closed solids of their size whose faces look outwards (their
// volume is positive and right); meshes with holes have border edges.
TEST(MeshTopology, edgesClosednessTrianglesExtentsAndVolume)
{
  const double pi = 3.14159265358979323846;
  // A 32-gon holds 32 / (2 pi) sin(2 pi / 32) of its circle's area.
  const double polygon = 32 / (2 * pi) * std::sin(2 * pi / 32);
  const double none = std::numeric_limits<double>::quiet_NaN();
  Mesh open = Primitives::box(OdGeVector3d(1, 1, 1));
  open.faces.pop_back();
  Mesh strip = open;
  strip.faces = { Face({ 0, 1, 3 }), Face({ 0, 3, 2 }) };
  const struct {
    const char* name;
    Mesh mesh;
    size_t edges;
    size_t borders;
    OdUInt64 triangles;
    OdGePoint3d max;
    double volume;
    double tolerance;
  } rows[] = {
    { "box", Primitives::box(OdGeVector3d(4, 3, 2)), 12, 0, 12, OdGePoint3d(4, 3, 2), 24, 1e-12 },
    { "sphere", Primitives::sphere(2, 32), 992, 0, 32 * 2 + 32 * 14 * 2, OdGePoint3d(2, 2, 2), 4.0 / 3 * pi * 8, 0.02 },
    { "cylinder", Primitives::cylinder(1, 3, 32), 96, 0, 2 * 30 + 32 * 2, OdGePoint3d(1, 1, 3), pi * polygon * 3, 1e-9 },
    { "plane", Primitives::plane(10, 5), 4, 4, 2, OdGePoint3d(10, 5, 0), none, 0 },
    { "box without a side", open, 12, 4, 10, OdGePoint3d(1, 1, 1), none, 0 },
    { "two triangles", strip, 5, 4, 2, OdGePoint3d(1, 1, 1), none, 0 },
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.mesh.validate(), eOk);
    const std::vector<Edge> edges = row.mesh.edges();
    EXPECT_EQ(edges.size(), row.edges);
    EXPECT_EQ(size_t(std::count_if(edges.begin(), edges.end(), [](const Edge& e) { return e.isBorder(); })),
              row.borders);
    EXPECT_EQ(row.mesh.isClosed(), row.borders == 0);
    EXPECT_EQ(row.mesh.triangleCount(), row.triangles);
    EXPECT_TRUE(row.mesh.extents().maxPoint().isEqualTo(row.max, OdGeTol(1e-9)));
    if (!std::isnan(row.volume)) {
      EXPECT_NEAR(row.mesh.volume(), row.volume, row.volume * row.tolerance);
    }
    for (const Vertex& v : row.mesh.vertices) {
      if (v.hasNormal()) {
        EXPECT_NEAR(v.normal.length(), 1.0, 1e-12);
      }
    }
  }
  EXPECT_FALSE(Mesh().isClosed());
}

TEST(MeshTopology, brokenMeshesAreRefusedSayingWhy)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    const char* name;
    std::function<void(Mesh&)> breakIt;
    const wchar_t* message;
  } rows[] = {
    { "two corners", [](Mesh& m) { m.faces[2].vertices = { 0, 1 }; }, L"face 2 has fewer than three corners" },
    { "index past the end", [](Mesh& m) { m.faces[0].vertices[1] = 8; }, L"face 0 uses vertex 8 of 8" },
    { "negative index", [](Mesh& m) { m.faces[5].vertices[0] = -1; }, L"face 5 uses vertex -1 of 8" },
    { "missing surface", [](Mesh& m) { m.faces[1].surface = 2; }, L"face 1 takes surface 2 of 2" },
    { "surface of none", [](Mesh& m) { m.surfaces.clear(); m.faces[1].surface = 1; }, L"face 1 takes surface 1 of 0" },
    { "corner not finite", [nan](Mesh& m) { m.vertices[3].position.y = nan; }, L"vertex 3 is not a finite point" },
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Mesh mesh = cube();
    row.breakIt(mesh);
    OdString message;
    EXPECT_EQ(mesh.validate(&message), eInvalidInput);
    EXPECT_EQ(message, OdString(row.message)) << message.toUtf8();
  }
  Mesh plain = cube();
  plain.surfaces.clear();
  for (Face& face : plain.faces)
    face.surface = 0;
  EXPECT_EQ(plain.validate(), eOk) << "faces of a mesh without surfaces take the entity's colour";
}

TEST(MeshTopology, transformsMoveCornersTurnNormalsAndKeepFrontsOutside)
{
  Mesh mesh;
  mesh.vertices = { Vertex(OdGePoint3d(1, 0, 0), OdGeVector3d(1, 1, 0).normal()), Vertex(OdGePoint3d(0, 1, 0)),
                    Vertex(OdGePoint3d(0, 0, 1)) };
  mesh.faces = { Face({ 0, 1, 2 }) };
  // Stretching x by 2 tilts a diagonal plane's normal towards y.
  Mesh stretched = mesh;
  OdGeMatrix3d stretch;
  stretch.entry[0][0] = 2.0;
  stretch.entry[2][3] = 5.0;
  stretched.transformBy(stretch);
  EXPECT_TRUE(stretched.vertices[0].position.isEqualTo(OdGePoint3d(2, 0, 5)));
  EXPECT_TRUE(stretched.vertices[0].normal.isEqualTo(OdGeVector3d(1, 2, 0).normal(), OdGeTol(1e-12)));
  EXPECT_FALSE(stretched.vertices[1].hasNormal());
  EXPECT_EQ(stretched.faces[0].vertices, (std::vector<OdInt32> { 0, 1, 2 }));

  Mesh mirrored = mesh;
  OdGeMatrix3d mirror;
  mirror.entry[1][1] = -1.0;
  mirrored.transformBy(mirror);
  EXPECT_EQ(mirrored.faces[0].vertices, (std::vector<OdInt32> { 2, 1, 0 }));
  EXPECT_TRUE(mirrored.vertices[1].position.isEqualTo(OdGePoint3d(0, -1, 0)));
}

TEST_F(PolygonMesh, drawsOneShellPerSurfaceInItsColourAndAnswersExtents)
{
  kovDbPolygonMeshPtr entity = entityOf(cube());
  Mesh broken = triangle();
  broken.faces[0].vertices = { 0, 9, 1 };
  EXPECT_EQ(entity->setMesh(broken), eInvalidInput) << "a broken mesh leaves the entity as it was";
  entity->setColorIndex(OdCmEntityColor::kACIGreen);
  ASSERT_EQ(entity->transformBy(OdGeMatrix3d::translation(OdGeVector3d(10, 0, 0))), eOk);
  OdGiWorldDrawRecorder recorder;
  entity->worldDraw(&recorder);
  ASSERT_EQ(recorder.records().size(), 2u);
  const OdGiPrimitiveRecord& walls = recorder.records()[0];
  const OdGiPrimitiveRecord& roof = recorder.records()[1];
  EXPECT_EQ(walls.kind, OdGiPrimitiveRecord::kShell);
  EXPECT_EQ(walls.faceList.size(), 5u * 5u);
  EXPECT_EQ(walls.color.colorIndex(), OdCmEntityColor::kACIGreen) << "by block takes the entity's colour";
  EXPECT_EQ(roof.faceList.size(), 5u);
  EXPECT_EQ(roof.faceList[1], 4);
  EXPECT_EQ(roof.color, OdCmEntityColor(200, 30, 20));
  EXPECT_TRUE(roof.points[7].isEqualTo(OdGePoint3d(11, 1, 1)));

  OdGeExtents3d extents;
  ASSERT_EQ(entity->getGeomExtents(extents), eOk);
  EXPECT_TRUE(extents.minPoint().isEqualTo(OdGePoint3d(10, 0, 0)));
  EXPECT_TRUE(extents.maxPoint().isEqualTo(OdGePoint3d(11, 1, 1)));
  EXPECT_EQ(kovDbPolygonMesh::createObject()->getGeomExtents(extents), eInvalidExtents);
}

// The layout of version 2, byte for byte: a triangle with a normal on its
// first corner and one surface.
TEST_F(PolygonMesh, filesTheCurrentLayoutByteForByte)
{
  kovDbPolygonMeshPtr entity = entityOf(triangle());
  const Bytes entityFields = kovFiled([&](OdDbDwgFiler* f) { entity->OdDbEntity::dwgOutFields(f); });
  const Bytes all = kovFiled([&](OdDbDwgFiler* f) { entity->dwgOutFields(f); });
  const Bytes own(all.begin() + static_cast<std::ptrdiff_t>(entityFields.size()), all.end());
  const std::string golden = "02000000"                                           // version
                             "03000000"                                           // vertices
                             "000000000000000000000000000000000000000000000000"   // (0,0,0)
                             "000000000000004000000000000000000000000000000000"   // (2,0,0)
                             "0000000000000000000000000000f03f0000000000000000"   // (0,1,0)
                             "01"                                                 // normals
                             "00000000000000000000000000000000000000000000f03f"   // (0,0,1)
                             "000000000000000000000000000000000000000000000000"
                             "000000000000000000000000000000000000000000000000"
                             "01000000"                                           // surfaces
                             "010000007300"                                       // "s"
                             "030201c2"                                           // true colour 1,2,3
                             "010000006d00"                                       // "m"
                             "01000000"                                           // faces
                             "00000000" "03000000" "00000000" "01000000" "02000000";
  EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(own.data()), int(own.size())).toHex().toStdString(), golden);
  Mesh back;
  ASSERT_EQ(readMesh(all, back), eOk);
  EXPECT_EQ(back, triangle());
}

TEST_F(PolygonMesh, readsTheFirstLayoutWithFacesInTheEntitysColour)
{
  const Mesh expected = [] {
    Mesh m = triangle();
    m.vertices[0].normal = OdGeVector3d();
    m.surfaces.clear();
    return m;
  }();
  const Bytes v1 = kovFiled([&](OdDbDwgFiler* f) {
    kovDbPolygonMesh::createObject()->OdDbEntity::dwgOutFields(f);
    f->wrInt32(1);
    f->wrInt32(3);
    for (const Vertex& v : expected.vertices)
      f->wrPoint3d(v.position);
    f->wrInt32(1);
    f->wrInt32(3);
    for (OdInt32 i : { 0, 1, 2 })
      f->wrInt32(i);
  });
  Mesh back;
  ASSERT_EQ(readMesh(v1, back), eOk);
  EXPECT_EQ(back, expected);
}

TEST_F(PolygonMesh, damagedFieldsAreRefusedBeforeAnythingIsAllocated)
{
  const Bytes good = kovFiled([&](OdDbDwgFiler* f) { entityOf(cube())->dwgOutFields(f); });
  Mesh back;
  ASSERT_EQ(readMesh(good, back), eOk);
  EXPECT_EQ(back, cube());
  for (size_t length = 0; length < good.size(); ++length) {
    Mesh ignored;
    ASSERT_NE(readMesh(Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)), ignored), eOk)
      << "prefix of " << length;
  }
  // Every four-byte field in turn claims a billion, or points past the mesh.
  for (size_t at = 0; at + 4 <= good.size(); ++at) {
    for (OdUInt32 value : { 1000000000u, 0xFFFFFFFFu, 8u }) {
      Bytes damaged = good;
      for (int i = 0; i < 4; ++i)
        damaged[at + static_cast<size_t>(i)] = static_cast<OdUInt8>(value >> (8 * i));
      Mesh read;
      if (readMesh(damaged, read) == eOk) {
        EXPECT_EQ(read.validate(), eOk) << "at " << at;
      }
    }
  }
}

} // namespace
