// Model import: each format from a small file written here, read into a scene
// and written into a drawing (triangles, extents in metres with z up, colours,
// names, blocks); damaged files refused before they cost memory; a glTF clip
// posing its nested block between keys.

#include "kovDbFixture.h"

#include "import/kovImportedSceneWriter.h"
#include "import/kovSceneImport.h"
#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Rx/OdError.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <IGESCAFControl_Writer.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>

#include <QFile>
#include <QTemporaryDir>

#include <functional>

namespace {

void writeText(const QString& path, const QByteArray& text)
{
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(text);
}

QByteArray le32(quint32 v)
{
  QByteArray bytes(4, '\0');
  for (int i = 0; i < 4; ++i)
    bytes[i] = char((v >> (8 * i)) & 0xFF);
  return bytes;
}

QByteArray binaryStl(quint32 claimed, int written)
{
  QByteArray bytes(80, ' ');
  bytes += le32(claimed);
  const float corners[] = { 0, 0, 1, 0, 0, 0, 3, 0, 0, 0, 4, 0 };
  for (int t = 0; t < written; ++t) {
    bytes.append(reinterpret_cast<const char*>(corners), sizeof corners);
    bytes += QByteArray(2, '\0');
  }
  return bytes;
}

// One triangle (0,0,0) (2,0,0) (0,1,0) in node "Arm" under node "Base"; the
// clip "Swing" moves Arm from x 0 to x 2 in one second.
QByteArray animatedGltf(double bufferBytes = 76)
{
  QByteArray buffer;
  const float positions[] = { 0, 0, 0, 2, 0, 0, 0, 1, 0 };
  const quint16 indices[] = { 0, 1, 2, 0 };
  const float times[] = { 0, 1 };
  const float moves[] = { 0, 0, 0, 2, 0, 0 };
  buffer.append(reinterpret_cast<const char*>(positions), 36);
  buffer.append(reinterpret_cast<const char*>(indices), 8);
  buffer.append(reinterpret_cast<const char*>(times), 8);
  buffer.append(reinterpret_cast<const char*>(moves), 24);
  return QByteArray(R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
    "nodes":[{"name":"Base","children":[1],"translation":[0,0,5]},{"name":"Arm","mesh":0}],
    "meshes":[{"name":"ArmMesh","primitives":[{"attributes":{"POSITION":0},"indices":1,"material":0}]}],
    "materials":[{"name":"Green","pbrMetallicRoughness":{"baseColorFactor":[0,1,0,1]}}],
    "animations":[{"name":"Swing","samplers":[{"input":2,"output":3}],
                   "channels":[{"sampler":0,"target":{"node":1,"path":"translation"}}]}],
    "buffers":[{"byteLength":)")
         + QByteArray::number(bufferBytes, 'f', 0) + R"(,"uri":"data:application/octet-stream;base64,)"
         + buffer.toBase64() + R"("}],
    "bufferViews":[{"buffer":0,"byteOffset":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":6},
                   {"buffer":0,"byteOffset":44,"byteLength":8},{"buffer":0,"byteOffset":52,"byteLength":24}],
    "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[2,1,0]},
                 {"bufferView":1,"componentType":5123,"count":3,"type":"SCALAR"},
                 {"bufferView":2,"componentType":5126,"count":2,"type":"SCALAR","min":[0],"max":[1]},
                 {"bufferView":3,"componentType":5126,"count":2,"type":"VEC3"}]})";
}

QByteArray glb(quint32 total, quint32 jsonBytes)
{
  const QByteArray json = R"({"asset":{"version":"2.0"}})";
  return QByteArray("glTF") + le32(2) + le32(total) + le32(jsonBytes) + QByteArray("JSON") + json;
}

// A 0.02 by 0.01 right triangle, in centimetres, z up.
const QByteArray kCollada = R"(<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
  <asset><unit name="centimeter" meter="0.01"/><up_axis>Z_UP</up_axis></asset>
  <library_effects><effect id="fx"><profile_COMMON><technique sid="t"><phong>
    <diffuse><color>0 0 1 1</color></diffuse></phong></technique></profile_COMMON></effect></library_effects>
  <library_materials><material id="Blue" name="Blue"><instance_effect url="#fx"/></material></library_materials>
  <library_geometries><geometry id="tri" name="tri"><mesh>
    <source id="p"><float_array id="pa" count="9">0 0 0 2 0 0 0 1 0</float_array>
      <technique_common><accessor source="#pa" count="3" stride="3"><param name="X" type="float"/>
      <param name="Y" type="float"/><param name="Z" type="float"/></accessor></technique_common></source>
    <vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
    <triangles count="1" material="m"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles>
  </mesh></geometry></library_geometries>
  <library_visual_scenes><visual_scene id="s"><node id="n" name="Plate">
    <instance_geometry url="#tri"><bind_material><technique_common>
      <instance_material symbol="m" target="#Blue"/></technique_common></bind_material></instance_geometry>
  </node></visual_scene></library_visual_scenes>
  <scene><instance_visual_scene url="#s"/></scene>
</COLLADA>
)";

// A 10 x 20 x 30 mm box named Crate in red, through Open CASCADE's writers.
void writeBox(const QString& path, bool step)
{
  Handle(TDocStd_Document) doc;
  XCAFApp_Application::GetApplication()->NewDocument(TCollection_ExtendedString("MDTV-XCAF"), doc);
  const TDF_Label label = XCAFDoc_DocumentTool::ShapeTool(doc->Main())->AddShape(BRepPrimAPI_MakeBox(10, 20, 30).Shape());
  TDataStd_Name::Set(label, TCollection_ExtendedString("Crate"));
  XCAFDoc_DocumentTool::ColorTool(doc->Main())->SetColor(label, Quantity_Color(1, 0, 0, Quantity_TOC_RGB), XCAFDoc_ColorGen);
  const QByteArray local = QFile::encodeName(path);
  if (step) {
    STEPCAFControl_Writer writer;
    ASSERT_TRUE(writer.Transfer(doc, STEPControl_AsIs));
    ASSERT_EQ(writer.Write(local.constData()), IFSelect_RetDone);
  } else {
    Interface_Static::SetIVal("write.iges.brep.mode", 1);
    IGESCAFControl_Writer writer;
    ASSERT_TRUE(writer.Transfer(doc));
    ASSERT_TRUE(writer.Write(local.constData()));
  }
  XCAFApp_Application::GetApplication()->Close(doc);
}

// The Collada triangle again, written by assimp's own exporter.
void exportCollada(const QString& dir, const QString& path, const char* format)
{
  writeText(dir + QStringLiteral("/source.dae"), QByteArray(kCollada).replace("meter=\"0.01\"", "meter=\"1\""));
  Assimp::Importer importer;
  const aiScene* scene = importer.ReadFile(QFile::encodeName(dir + QStringLiteral("/source.dae")).constData(), 0);
  ASSERT_TRUE(scene);
  Assimp::Exporter exporter;
  ASSERT_EQ(exporter.Export(scene, format, QFile::encodeName(path).constData()), AI_SUCCESS) << exporter.GetErrorString();
}

class SceneImport : public kovDbFixture {
protected:
  void SetUp() override
  {
    kovDbFixture::SetUp();
    kovDbPolygonMesh::rxInit();
    kovDbBlockAnimation::rxInit();
    ASSERT_TRUE(m_dir.isValid());
  }
  void TearDown() override
  {
    kovDbBlockAnimation::rxUninit();
    kovDbPolygonMesh::rxUninit();
    kovDbFixture::TearDown();
  }
  QString path(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }

  // Every mesh under a block, with its nesting applied.
  static void collectMeshes(const OdDbObjectId& blockId, std::vector<kovDbPolygonMeshPtr>& meshes)
  {
    OdDbBlockTableRecordPtr block = blockId.safeOpenObject();
    for (OdDbObjectIteratorPtr it = block->newIterator(); !it->done(); it->step()) {
      OdDbObjectPtr object = it->objectId().safeOpenObject();
      if (kovDbPolygonMeshPtr mesh = kovDbPolygonMesh::cast(object.get()); !mesh.isNull())
        meshes.push_back(mesh);
      else if (OdDbBlockReferencePtr ref = OdDbBlockReference::cast(object.get()); !ref.isNull())
        collectMeshes(ref->blockTableRecord(), meshes);
    }
  }

  QTemporaryDir m_dir;
};

TEST_F(SceneImport, eachFormatGivesItsTrianglesSizeInMetresColoursAndNames)
{
  const struct {
    const char* file;
    std::function<void(const QString&)> write;
    OdUInt64 triangles;
    OdGeVector3d size;
    const char* surface; // name=r,g,b of a surface some mesh has; empty for none
  } rows[] = {
    { "ascii.stl", [](const QString& p) { writeText(p, "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\n"
                                                       "vertex 2 0 0\nvertex 0 3 0\nendloop\nendfacet\nendsolid a\n"); },
      1, OdGeVector3d(2, 3, 0), "" },
    { "binary.STL", [](const QString& p) { writeText(p, binaryStl(1, 1)); }, 1, OdGeVector3d(3, 4, 0), "" },
    { "quad.obj", [this](const QString& p) {
        writeText(path("quad.mtl"), "newmtl Red\nKd 1 0 0\n");
        writeText(p, "mtllib quad.mtl\nv 0 0 0\nv 4 0 0\nv 4 2 0\nv 0 2 0\nusemtl Red\nf 1 2 3 4\n"); },
      2, OdGeVector3d(4, 2, 0), "Red=255,0,0" },
    // y up in the file: its y becomes z.
    { "arm.gltf", [](const QString& p) { writeText(p, animatedGltf()); }, 1, OdGeVector3d(2, 0, 1), "Green=0,255,0" },
    { "tri.ply", [](const QString& p) {
        writeText(p, "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
                     "element face 1\nproperty list uchar int vertex_indices\nend_header\n0 0 0\n5 0 0\n0 0 6\n3 0 1 2\n"); },
      1, OdGeVector3d(5, 0, 6), "" },
    { "crate.step", [](const QString& p) { writeBox(p, true); }, 12, OdGeVector3d(0.01, 0.02, 0.03), "Crate=255,0,0" },
    { "crate.igs", [](const QString& p) { writeBox(p, false); }, 12, OdGeVector3d(0.01, 0.02, 0.03), "=255,0,0" },
    { "plate.dae", [](const QString& p) { writeText(p, kCollada); }, 1, OdGeVector3d(0.02, 0.01, 0), "Blue=0,0,255" },
    // Written from the triangle in metres: FBX counts the exporter's units as
    // centimetres and says y is up, but the exporter leaves out the root's
    // turn, so the plate stands; 3DS has no unit.
    { "plate.fbx", [this](const QString& p) { exportCollada(m_dir.path(), p, "fbxa"); }, 1,
      OdGeVector3d(0.02, 0, 0.01), "Blue=0,0,255" },
    { "plate.3ds", [this](const QString& p) { exportCollada(m_dir.path(), p, "3ds"); }, 1,
      OdGeVector3d(2, 1, 0), "=0,0,255" },
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    const QString file = path(row.file);
    row.write(file);
    OdDbDatabasePtr db = OdDbDatabase::createObject();
    kovImportedScene scene;
    try {
      scene = kovSceneImport::read(file);
    } catch (const OdError& error) {
      ADD_FAILURE() << qPrintable(odToQString(error.description()));
      continue;
    }
    EXPECT_EQ(scene.triangleCount(), row.triangles);
    const kovImportedSceneWriter::Result result =
      kovImportedSceneWriter::write(db.get(), scene, OdString(L"model"), OdGeMatrix3d::kIdentity);
    OdDbBlockReferencePtr top = result.reference.safeOpenObject();
    OdGeExtents3d extents;
    ASSERT_EQ(top->getGeomExtents(extents), eOk);
    const OdGeVector3d size = extents.maxPoint() - extents.minPoint();
    EXPECT_TRUE(size.isEqualTo(row.size, OdGeTol(1e-6)))
      << size.x << "," << size.y << "," << size.z;
    std::vector<kovDbPolygonMeshPtr> meshes;
    collectMeshes(top->blockTableRecord(), meshes);
    QStringList surfaces;
    for (const kovDbPolygonMeshPtr& mesh : meshes)
      for (const kov::polymesh::Surface& s : mesh->mesh().surfaces)
        surfaces << QStringLiteral("%1=%2,%3,%4").arg(odToQString(s.name)).arg(s.color.red()).arg(s.color.green()).arg(s.color.blue());
    const QString expected = QString::fromLatin1(row.surface);
    if (expected.isEmpty())
      EXPECT_TRUE(surfaces.isEmpty()) << qPrintable(surfaces.join(QLatin1Char(' ')));
    else if (expected.startsWith(QLatin1Char('=')))
      EXPECT_TRUE(surfaces.filter(expected).size() == 1) << qPrintable(surfaces.join(QLatin1Char(' ')));
    else
      EXPECT_TRUE(surfaces.contains(expected)) << qPrintable(surfaces.join(QLatin1Char(' ')));
  }
}

TEST_F(SceneImport, damagedUnknownOrEmptyFilesAreRefusedWithTheirReason)
{
  const struct {
    const char* file;
    QByteArray content; // not written when null
    const char* message;
  } rows[] = {
    { "missing.stl", QByteArray(), "the file does not exist" },
    { "empty.obj", QByteArray(""), "the file is empty" },
    { "notes.txt", QByteArray("hello"), "supported are .step, .stp, .iges" },
    { "billion.stl", binaryStl(1000000000u, 1), "claims 1000000000 triangles but its 134 bytes hold at most 1" },
    { "cut.stl", binaryStl(10, 3), "claims 10 triangles" },
    { "tiny.stl", QByteArray("\x01\x02\x03", 3), "too few for a binary STL's header" },
    { "long.glb", glb(1u << 30, 26), "the header claims 1073741824 bytes" },
    { "chunk.glb", glb(46, 1u << 30), "the JSON chunk of 1073741824 bytes does not fit" },
    { "huge.gltf", animatedGltf(4e12), "buffer 0 claims 4000000000000 bytes but 76 are there" },
    { "cut.gltf", animatedGltf().left(200), "is not a usable glTF file" },
    { "noise.step", QByteArray("ISO-10303-21;\nthis is not a step file\n"), "can't be read" },
    { "noise.fbx", QByteArray(300, 'x'), "noise.fbx can't be read" },
    { "points.obj", QByteArray("v 0 0 0\nv 1 0 0\n"), "it holds no triangles or surfaces" },
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    if (!row.content.isNull())
      writeText(path(row.file), row.content);
    try {
      kovSceneImport::read(path(row.file));
      ADD_FAILURE() << "read";
    } catch (const OdError& error) {
      EXPECT_TRUE(odToQString(error.description()).contains(QString::fromLatin1(row.message)))
        << qPrintable(odToQString(error.description()));
    }
  }
}

TEST_F(SceneImport, aGltfClipPosesItsNestedBlockBetweenKeys)
{
  writeText(path("arm.gltf"), animatedGltf());
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  kovImportedScene scene = kovSceneImport::read(path("arm.gltf"));
  kovImportedSceneWriter::write(db.get(), scene, OdString(L"Arm xblock"), OdGeMatrix3d::kIdentity);
  const kovImportedSceneWriter::Result again =
    kovImportedSceneWriter::write(db.get(), scene, OdString(L"Arm xblock"), OdGeMatrix3d::kIdentity);
  EXPECT_EQ(again.blockName, OdString(L"Arm xblock 2"));
  EXPECT_EQ(again.animations, 1);
  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject();
  ASSERT_TRUE(blocks->has(OdString(L"Arm xblock 2 / Base")));
  ASSERT_TRUE(blocks->has(OdString(L"Arm xblock 2 / Arm")));
  OdDbBlockTableRecordPtr top = blocks->getAt(OdString(L"Arm xblock 2")).safeOpenObject();
  kovDbBlockAnimationPtr clip;
  for (OdDbObjectIteratorPtr it = top->newIterator(); !it->done() && clip.isNull(); it->step())
    clip = kovDbBlockAnimation::cast(it->objectId().safeOpenObject().get());
  ASSERT_FALSE(clip.isNull());
  EXPECT_EQ(clip->name(), OdString(L"Swing"));
  OdGeMatrix3d pose;
  ASSERT_TRUE(clip->transformAt(OdString(L"Arm xblock 2 / Arm"), 250, pose));
  EXPECT_TRUE(pose.getCsOrigin().isEqualTo(OdGePoint3d(0.5, 0, 0), OdGeTol(1e-6)));
}

} // namespace
