// The database's hot paths: opening and closing an object for read, and saving
// and loading a drawing of 100,000 small objects, against the floor of writing
// the same bytes with a plain fwrite.

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbLight.h"
#include "Db/OdDbModule.h"

#include <QTemporaryDir>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

const int kObjects = 100000;
volatile long g_sink = 0;

// Best of several runs of body(), in seconds.
template <class Body>
double bestSeconds(int runs, Body body)
{
  double best = 1e300;
  for (int run = 0; run < runs; ++run) {
    const auto start = std::chrono::steady_clock::now();
    body();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    best = std::min(best, elapsed.count());
  }
  return best;
}

OdDbDatabasePtr makeDrawing(std::vector<OdDbObjectId>& ids)
{
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  for (int i = 0; i < kObjects; ++i) {
    OdDbLightPtr light = OdDbLight::createObject();
    light->setPosition(OdGePoint3d(i, i * 0.5, 3.0));
    light->setIntensity(1.0 + i % 7);
    ids.push_back(modelSpace->appendOdDbEntity(light));
  }
  return db;
}

void writePlain(const char* path, const std::vector<OdUInt8>& bytes, bool sync)
{
  FILE* file = std::fopen(path, "wb");
  if (!file)
    return;
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fflush(file);
  if (sync)
    ::fsync(fileno(file));
  std::fclose(file);
}

} // namespace

int main()
{
  odInitialize();
  {
    std::vector<OdDbObjectId> ids;
    OdDbDatabasePtr db = makeDrawing(ids);

    const double openClose = bestSeconds(5, [&] {
      long sum = 0;
      for (const OdDbObjectId& id : ids) {
        OdDbObjectPtr object = id.openObject();
        sum += object->isReadEnabled() ? 1 : 0;
      }
      g_sink += sum;
    });
    std::printf("figure: open_close_for_read_ns %.1f ns\n", openClose * 1e9 / ids.size());

    QTemporaryDir dir;
    const OdString path = odFromQString(dir.filePath(QStringLiteral("bench.kdb")));
    const std::string plainPath = dir.filePath(QStringLiteral("plain.bin")).toStdString();
    const double save = bestSeconds(5, [&] { db->writeFile(path); });
    const std::vector<OdUInt8> image = OdDbFileWriter::fileImage(db);
    const double megabytes = image.size() / 1e6;
    const double load = bestSeconds(5, [&] { g_sink += odReadDrawing(path)->approxNumObjects(); });
    const double plain = bestSeconds(5, [&] { writePlain(plainPath.c_str(), image, false); });
    const double plainSynced = bestSeconds(5, [&] { writePlain(plainPath.c_str(), image, true); });

    std::printf("figure: db_file_size_mb %.2f MB\n", megabytes);
    std::printf("figure: db_save_mb_per_s %.1f MB/s\n", megabytes / save);
    std::printf("figure: db_load_mb_per_s %.1f MB/s\n", megabytes / load);
    std::printf("figure: fwrite_mb_per_s %.1f MB/s\n", megabytes / plain);
    std::printf("figure: db_save_vs_fwrite_ratio %.2f x\n", save / plain);
    std::printf("figure: db_save_vs_fwrite_fsync_ratio %.2f x\n", save / plainSynced);
  }
  odUninitialize();
  return 0;
}
