// Importing a model of about 1,000,000 triangles (a 707 x 707 grid of quads)
// from a binary glTF and from a binary STL written at run time, into a
// drawing; then saving and loading that drawing through the drawing file
// writer and reader.
//
// Memory: the kernel's peak resident size (VmHWM) is reset at each phase's
// start (/proc/self/clear_refs) and read at its end, less the resident size at
// the start, and given as a multiple of the file's size.
#include "kovBenchMeasure.h"

#include "import/kovImportedSceneWriter.h"
#include "import/kovSceneImport.h"
#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbModule.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <string>

namespace {

const quint32 kGrid = 707;

double peakSince(double startMb)
{
  return benchPeakMb() - startMb;
}

void append32(QByteArray& bytes, quint32 v)
{
  bytes.append(reinterpret_cast<const char*>(&v), 4);
}

void appendFloat(QByteArray& bytes, float v)
{
  bytes.append(reinterpret_cast<const char*>(&v), 4);
}

void writeGlb(const QString& path)
{
  const quint32 side = kGrid + 1;
  const quint32 vertices = side * side;
  const quint32 indices = kGrid * kGrid * 6;
  QByteArray bin;
  bin.reserve(int(vertices * 12 + indices * 4));
  for (quint32 j = 0; j < side; ++j)
    for (quint32 i = 0; i < side; ++i) {
      appendFloat(bin, float(i) * 0.01f);
      appendFloat(bin, float((i + j) % 7) * 0.001f);
      appendFloat(bin, float(j) * 0.01f);
    }
  for (quint32 j = 0; j < kGrid; ++j)
    for (quint32 i = 0; i < kGrid; ++i) {
      const quint32 a = j * side + i;
      for (quint32 v : { a, a + side, a + 1, a + 1, a + side, a + side + 1 })
        append32(bin, v);
    }
  QByteArray json = QStringLiteral(
                      R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"Grid","mesh":0}],)"
                      R"("meshes":[{"primitives":[{"attributes":{"POSITION":0},"indices":1}]}],)"
                      R"("buffers":[{"byteLength":%1}],)"
                      R"("bufferViews":[{"buffer":0,"byteOffset":0,"byteLength":%2},{"buffer":0,"byteOffset":%2,"byteLength":%3}],)"
                      R"("accessors":[{"bufferView":0,"componentType":5126,"count":%4,"type":"VEC3","min":[0,0,0],"max":[%5,0.006,%5]},)"
                      R"({"bufferView":1,"componentType":5125,"count":%6,"type":"SCALAR"}]})")
                      .arg(bin.size())
                      .arg(vertices * 12)
                      .arg(indices * 4)
                      .arg(vertices)
                      .arg(double(kGrid) * 0.01)
                      .arg(indices)
                      .toUtf8();
  while (json.size() % 4)
    json.append(' ');
  QByteArray out("glTF");
  append32(out, 2);
  append32(out, quint32(12 + 8 + json.size() + 8 + bin.size()));
  append32(out, quint32(json.size()));
  append32(out, 0x4E4F534A);
  out += json;
  append32(out, quint32(bin.size()));
  append32(out, 0x004E4942);
  out += bin;
  QFile file(path);
  file.open(QIODevice::WriteOnly);
  file.write(out);
}

void writeStl(const QString& path)
{
  QFile file(path);
  file.open(QIODevice::WriteOnly);
  QByteArray out(80, ' ');
  append32(out, kGrid * kGrid * 2);
  const auto corner = [&](quint32 i, quint32 j) {
    appendFloat(out, float(i));
    appendFloat(out, float(j));
    appendFloat(out, float((i + j) % 7));
  };
  for (quint32 j = 0; j < kGrid; ++j)
    for (quint32 i = 0; i < kGrid; ++i) {
      for (int half = 0; half < 2; ++half) {
        out.append(12, '\0');
        if (half == 0) {
          corner(i, j);
          corner(i + 1, j);
          corner(i, j + 1);
        } else {
          corner(i + 1, j);
          corner(i + 1, j + 1);
          corner(i, j + 1);
        }
        out.append(2, '\0');
      }
    }
  file.write(out);
}

OdDbDatabasePtr importInto(const QString& path, const char* prefix)
{
  const double fileMb = QFileInfo(path).size() / 1048576.0;
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  const double start = benchStartPhase();
  const double t0 = benchNow();
  kovImportedScene scene = kovSceneImport::read(path);
  const OdUInt64 triangles = scene.triangleCount();
  kovImportedSceneWriter::write(db.get(), scene, OdString(L"model"), OdGeMatrix3d::kIdentity);
  const double seconds = benchNow() - t0;
  const double peak = peakSince(start);
  const std::string p(prefix);
  benchFigure((p + "_triangles").c_str(), double(triangles), "triangles");
  benchFigure((p + "_file_size").c_str(), fileMb, "MB");
  benchFigure((p + "_seconds").c_str(), seconds, "s");
  benchFigure((p + "_peak_per_file_size").c_str(), peak / fileMb, "x");
  return db;
}

// Opens every mesh of every block, so that a reader that loads objects on
// first use has loaded them all.
OdUInt64 trianglesIn(OdDbDatabase* db)
{
  OdUInt64 triangles = 0;
  OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject();
  for (OdDbSymbolTableIteratorPtr block = blocks->newIterator(); !block->done(); block->step()) {
    OdDbBlockTableRecordPtr record = block->getRecordId().safeOpenObject();
    for (OdDbObjectIteratorPtr it = record->newIterator(); !it->done(); it->step()) {
      kovDbPolygonMeshPtr mesh = kovDbPolygonMesh::cast(it->objectId().safeOpenObject().get());
      if (!mesh.isNull())
        triangles += mesh->mesh().triangleCount();
    }
  }
  return triangles;
}

} // namespace

int main()
{
  odInitialize();
  kovDbPolygonMesh::rxInit();
  kovDbBlockAnimation::rxInit();
  QTemporaryDir dir;
  const QString glb = dir.filePath(QStringLiteral("grid.glb"));
  const QString stl = dir.filePath(QStringLiteral("grid.stl"));
  writeGlb(glb);
  writeStl(stl);
  importInto(glb, "import_glb");
  OdDbDatabasePtr db = importInto(stl, "import_stl");

  double start = benchStartPhase();
  double t0 = benchNow();
  std::vector<OdUInt8> image = OdDbFileWriter::fileImage(db.get());
  const double saveSeconds = benchNow() - t0;
  const double fileMb = image.size() / 1048576.0;
  benchFigure("drawing_1m_triangles_file_size", fileMb, "MB");
  benchFigure("drawing_1m_triangles_save_seconds", saveSeconds, "s");
  benchFigure("drawing_1m_triangles_save_peak_per_file_size", peakSince(start) / fileMb, "x");
  db.release();
  start = benchStartPhase();
  t0 = benchNow();
  OdDbDatabasePtr loaded = OdDbFileReader::readBuffer(image.data(), image.size(), OdString(L"grid"));
  benchFigure("drawing_1m_triangles_loaded_triangles", double(trianglesIn(loaded.get())), "triangles");
  benchFigure("drawing_1m_triangles_load_seconds", benchNow() - t0, "s");
  benchFigure("drawing_1m_triangles_load_peak_per_file_size", peakSince(start) / fileMb, "x");
  loaded.release();
  kovDbBlockAnimation::rxUninit();
  kovDbPolygonMesh::rxUninit();
  odUninitialize();
  return 0;
}
