// Saving and loading a drawing whose one animation holds 100 tracks of 2
// sub-tracks with 5,000 keyframes each (1,000,000 keyframes of 6-element
// lists), through the drawing file writer and reader. The floor is a plain
// QDataStream writing the same keys and values into a QBuffer.
//
// Memory: each phase runs in a fresh process; the kernel's peak resident size
// (VmHWM) is reset at the phase's start (/proc/self/clear_refs) and read at
// its end, less the resident size at the start. For saving that is the peak
// above the drawing already in memory; for loading, the whole drawing's.
#include "kovBenchMeasure.h"

#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbFileReader.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbModule.h"

#include <QBuffer>
#include <QDataStream>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>
#include <cstdio>
#include <string>

namespace {

// The track count can be lowered for profiling runs.
int g_tracks = 100;
const int kItems = 2;
const int kKeyframes = 5000;

QVariant keyframe(int track, int item, int index)
{
  const double t = index * 0.01;
  return QVariantList { t + track, t * 2.0 + item, 1.8, 0.5, -0.25, double(index % 7) };
}

OdDbObjectId buildAnimation(OdDbDatabase* db)
{
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  animation->setName(QStringLiteral("Benchmark"));
  for (int t = 0; t < g_tracks; ++t) {
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(QStringLiteral("Track %1").arg(t));
    track->setEntityUniqueName(db, QStringLiteral("Camera"));
    for (int i = 0; i < kItems; ++i) {
      track->addElement();
      QMap<int, QVariant> values;
      for (int k = 0; k < kKeyframes; ++k)
        values.insert(k * 10, keyframe(t, i, k));
      track->elementAt(i).setAnimationType(kovAnimationItem::LocationBySpline, OdGePoint3d());
      track->elementAt(i).setValues(values);
    }
    animation->editTracks().push_back(track);
  }
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  return modelSpace->appendOdDbEntity(animation);
}

// The same keys and values through a plain QDataStream: the floor.
double floorSeconds(const OdDbObjectId& id, qint64& bytes)
{
  kovDbAnimationPtr opened = id.safeOpenObject();
  const kovDbAnimation& animation = *opened;
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  const double start = benchNow();
  QDataStream out(&buffer);
  for (const kovAnimationTrackPtr& track : animation.constTracks()) {
    for (const kovAnimationItem& item : track->animationElements()) {
      for (auto it = item.values().cbegin(); it != item.values().cend(); ++it)
        out << qint32(it.key()) << it.value();
    }
  }
  const double seconds = benchNow() - start;
  bytes = buffer.size();
  return seconds;
}

// Each phase runs in a process of its own (this program, with the phase and
// the file as arguments), so that its peak is not hidden by memory an earlier
// phase freed into the allocator.
void savePhase(const QString& path)
{
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  const OdDbObjectId id = buildAnimation(db.get());
  const double before = benchStartPhase();
  const double start = benchNow();
  OdDbFileWriter::writeFile(db.get(), odFromQString(path));
  const double seconds = benchNow() - start;
  const double peak = benchPeakMb() - before;
  const double fileMb = QFileInfo(path).size() / 1048576.0;
  benchFigure("filing_file_size", fileMb, "MB");
  benchFigure("filing_save_seconds", seconds, "s");
  benchFigure("filing_save_throughput", fileMb / seconds, "MB/s");
  benchFigure("filing_save_peak_above_the_drawing", peak, "MB");
  benchFigure("filing_save_peak_per_file_size", peak / fileMb, "x");
  qint64 bytes = 0;
  const double floor = floorSeconds(id, bytes);
  benchFigure("filing_floor_qdatastream_seconds", floor, "s");
  benchFigure("filing_floor_qdatastream_throughput", bytes / 1048576.0 / floor, "MB/s");
  benchFigure("filing_save_per_floor", seconds / floor, "x");
}

void loadPhase(const QString& path)
{
  const double before = benchStartPhase();
  const double start = benchNow();
  OdDbDatabasePtr db = OdDbFileReader::readFile(odFromQString(path));
  const double seconds = benchNow() - start;
  const double peak = benchPeakMb() - before;
  const double fileMb = QFileInfo(path).size() / 1048576.0;
  benchFigure("filing_load_seconds", seconds, "s");
  benchFigure("filing_load_throughput", fileMb / seconds, "MB/s");
  benchFigure("filing_load_peak", peak, "MB");
  benchFigure("filing_load_peak_per_file_size", peak / fileMb, "x");
}

} // namespace

// bench_filing [TRACKS]: both phases, each in a child process.
int main(int argc, char** argv)
{
  odInitialize();
  kovDbTempBlockReference::rxInit();
  kovDbAnimation::rxInit();
  const std::string phase = argc > 2 ? argv[1] : "";
  if (phase == "save" || phase == "load") {
    if (argc > 3)
      g_tracks = std::max(1, std::atoi(argv[3]));
    const QString path = QString::fromLocal8Bit(argv[2]);
    if (phase == "save")
      savePhase(path);
    else
      loadPhase(path);
    std::fflush(stdout);
    return 0;
  }
  QTemporaryDir dir;
  const std::string path = dir.filePath(QStringLiteral("bench.kdb")).toStdString();
  const std::string tracks = argc > 1 ? std::to_string(std::max(1, std::atoi(argv[1]))) : "100";
  const std::string self = std::string("'") + argv[0] + "' ";
  std::fflush(stdout);
  if (std::system((self + "save '" + path + "' " + tracks).c_str()) != 0
      || std::system((self + "load '" + path + "'").c_str()) != 0)
    return 1;
  return 0;
}
