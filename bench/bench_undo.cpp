// Undo of an edit of an animation of 10,000 keyframes (100 tracks of 5
// sub-tracks of 20 keys): what one step costs to record (the first open for
// write of the step, which files the entity's state) in time and memory,
// against a plain open for write and the drawing file's size; the time of
// its undo and redo; and the undo of a drag of a track of 100 keyframes in
// 100 mouse steps, which is still one step.

#include "db/kovDbAnimation.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbFileWriter.h"
#include "Db/OdDbModule.h"
#include "kovBenchMeasure.h"

#include <QCoreApplication>

#include <algorithm>
#include <vector>

namespace {

const int kTracks = 100;
const int kSubTracks = 5;
const int kKeys = 20;
const int kRepeats = 31;

OdDbObjectId makeAnimation(OdDbDatabase* db, int tracks, int subTracks, int keys)
{
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  for (int t = 0; t < tracks; ++t) {
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(QStringLiteral("Track %1").arg(t));
    for (int e = 0; e < subTracks; ++e) {
      track->addElement();
      kovAnimationItem& item = track->elementAt(e);
      item.setAnimationType(kovAnimationItem::Scale, OdGePoint3d::kOrigin);
      for (int k = 0; k < keys; ++k)
        item.setValue(k * 250, 1.0 + k * 0.01);
    }
    animation->editTracks().push_back(track);
  }
  OdDbBlockTableRecordPtr space = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  return space->appendOdDbEntity(animation);
}

double median(std::vector<double> samples)
{
  std::nth_element(samples.begin(), samples.begin() + samples.size() / 2, samples.end());
  return samples[samples.size() / 2];
}

void shiftFirstTrack(const OdDbObjectId& id, int delta)
{
  kovDbAnimationPtr animation = kovDbAnimation::cast(id.openObject(OdDb::kForWrite).get());
  kovAnimationTrack& track = *animation->editTracks()[0];
  track.setStartMillisecond(track.startMillisecond() + delta);
}

} // namespace

int main(int argc, char** argv)
{
  QCoreApplication app(argc, argv);
  odInitialize();
  kovDbAnimation::rxInit();
  {
    OdDbDatabasePtr db = OdDbDatabase::createObject();
    const OdDbObjectId id = makeAnimation(db, kTracks, kSubTracks, kKeys);
    const double fileBytes = static_cast<double>(OdDbFileWriter::fileImage(db).size());

    std::vector<double> plain, record, undo, redo;
    double stepBytes = 0;
    for (int r = 0; r < kRepeats; ++r) {
      db->disableUndoRecording(true);
      double start = benchNow();
      shiftFirstTrack(id, 1);
      plain.push_back(benchNow() - start);
      db->disableUndoRecording(false);

      db->startUndoRecord();
      const OdUInt64 bytesBefore = db->undoMemoryUsed();
      start = benchNow();
      shiftFirstTrack(id, 1);
      record.push_back(benchNow() - start);
      stepBytes = static_cast<double>(db->undoMemoryUsed() - bytesBefore);

      start = benchNow();
      db->undo();
      undo.push_back(benchNow() - start);
      start = benchNow();
      db->redo();
      redo.push_back(benchNow() - start);
    }
    benchFigure("undo_keyframes", kTracks * kSubTracks * kKeys, "keyframes");
    benchFigure("undo_plain_write_open_ms", median(plain) * 1e3, "ms");
    benchFigure("undo_step_record_ms", median(record) * 1e3, "ms");
    benchFigure("undo_step_record_over_plain", median(record) / median(plain), "ratio");
    benchFigure("undo_step_bytes", stepBytes, "bytes");
    benchFigure("undo_step_bytes_over_file", stepBytes / fileBytes, "ratio");
    benchFigure("undo_step_bytes_for_100_steps_mb", stepBytes * 100 / (1024.0 * 1024.0), "MB");
    benchFigure("undo_ms", median(undo) * 1e3, "ms");
    benchFigure("redo_ms", median(redo) * 1e3, "ms");

    // A drag: press marks the step, every mouse move opens for write and
    // moves the track; only the first open is kept.
    OdDbDatabasePtr dragDb = OdDbDatabase::createObject();
    const OdDbObjectId dragged = makeAnimation(dragDb, 1, 1, 100);
    std::vector<double> drag, dragUndo;
    for (int r = 0; r < kRepeats; ++r) {
      dragDb->startUndoRecord();
      double start = benchNow();
      for (int move = 0; move < 100; ++move)
        shiftFirstTrack(dragged, 10);
      drag.push_back(benchNow() - start);
      start = benchNow();
      dragDb->undo();
      dragUndo.push_back(benchNow() - start);
    }
    benchFigure("drag_100_moves_ms", median(drag) * 1e3, "ms");
    benchFigure("drag_undo_of_100_keyframes_ms", median(dragUndo) * 1e3, "ms");
  }
  kovDbAnimation::rxUninit();
  odUninitialize();
  return 0;
}
