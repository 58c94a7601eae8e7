// Model import: each format from a small file under tests/data/import, read
// into a scene and written into a drawing (triangles, extents in metres with z up, colours,
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


#include <QFile>
#include <QTemporaryDir>


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

// A file of tests/data/import: one triangle (0,0,0) (2,0,0) (0,1,0) in node
// "Arm" under node "Base" whose clip "Swing" moves Arm from x 0 to x 2 in
// one second (arm.gltf), the same in other formats, and a 10 x 20 x 30 mm box
// named Crate in red (crate.step, crate.igs).
QString dataFile(const char* name)
{
  return QStringLiteral(KOV_TEST_DATA_DIR "/import/") + QString::fromLatin1(name);
}

QByteArray dataBytes(const char* name)
{
  QFile file(dataFile(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray glb(quint32 total, quint32 jsonBytes)
{
  const QByteArray json = R"({"asset":{"version":"2.0"}})";
  return QByteArray("glTF") + le32(2) + le32(total) + le32(jsonBytes) + QByteArray("JSON") + json;
}

class SceneImport : public kovDbFixtureWith<kovDbPolygonMesh, kovDbBlockAnimation> {
protected:
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
    OdUInt64 triangles;
    OdGeVector3d size;
    const char* surface; // name=r,g,b of a surface some mesh has; empty for none
  } rows[] = {
    { "ascii.stl", 1, OdGeVector3d(2, 3, 0), "" },
    { "binary.STL", 1, OdGeVector3d(3, 4, 0), "" },
    { "quad.obj", 2, OdGeVector3d(4, 2, 0), "Red=255,0,0" },
    // y up in the file: its y becomes z.
    { "arm.gltf", 1, OdGeVector3d(2, 0, 1), "Green=0,255,0" },
    { "tri.ply", 1, OdGeVector3d(5, 0, 6), "" },
    { "crate.step", 12, OdGeVector3d(0.01, 0.02, 0.03), "Crate=255,0,0" },
    { "crate.igs", 12, OdGeVector3d(0.01, 0.02, 0.03), "=255,0,0" },
    // In centimetres, z up.
    { "plate.dae", 1, OdGeVector3d(0.02, 0.01, 0), "Blue=0,0,255" },
    // Exported from the triangle in metres: FBX counts the exporter's units
    // as centimetres and says y is up, but the exporter left out the root's
    // turn, so the plate stands; 3DS has no unit.
    { "plate.fbx", 1, OdGeVector3d(0.02, 0, 0.01), "Blue=0,0,255" },
    { "plate.3ds", 1, OdGeVector3d(2, 1, 0), "=0,0,255" },
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    const QString file = dataFile(row.file);
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
    { "huge.gltf", dataBytes("arm.gltf").replace("\"byteLength\":76,", "\"byteLength\":4000000000000,"),
      "buffer 0 claims 4000000000000 bytes but 76 are there" },
    { "cut.gltf", dataBytes("arm.gltf").left(200), "is not a usable glTF file" },
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
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  kovImportedScene scene = kovSceneImport::read(dataFile("arm.gltf"));
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
