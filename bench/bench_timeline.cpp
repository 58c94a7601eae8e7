// Speed of the editor's timeline on the offscreen platform, the editor 1920
// pixels wide and its track tree's viewport 600 high: painting the viewport
// and the timeline header for an
// animation of 100 tracks of 5 sub-tracks with 10,000 keyframes in all,
// against the same editor showing an animation without tracks; and a step of
// a keyframe drag, from the mouse move to the repainted lanes, against a
// paint alone.
//
//   bench_timeline [REPEATS]

#include "kovBenchMeasure.h"

#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationTimelineHeaderWidget.h"
#include "editor/kovAnimationTreeView.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <vector>

namespace {

const int kTracks = 100;
const int kElements = 5;
const int kKeysPerElement = 20;
// Keys from 0 to a minute: the lane at the initial zoom shows about 27 s of
// them, the rest lie right of it.
const int kKeySpacingMs = 3000;
const int kWidth = 1920;
const int kHeight = 600;
// A drag step of 6 px is 100 ms at the initial zoom: the key stays between
// its neighbours going back and forth.
const int kDragPixels = 6;

double median(std::vector<double> samples)
{
  std::sort(samples.begin(), samples.end());
  return samples[samples.size() / 2];
}

double medianMs(int repeats, const std::function<void()>& work)
{
  std::vector<double> samples;
  for (int i = 0; i < repeats; ++i) {
    const double start = benchNow();
    work();
    samples.push_back((benchNow() - start) * 1000.0);
  }
  return median(samples);
}

OdDbObjectId addAnimation(OdDbDatabase* db, int tracks)
{
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  for (int t = 0; t < tracks; ++t) {
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(QStringLiteral("Track %1").arg(t));
    for (int e = 0; e < kElements; ++e) {
      track->addElement();
      kovAnimationItem& item = track->elementAt(e);
      item.setAnimationType(kovAnimationItem::Scale, OdGePoint3d::kOrigin);
      QMap<int, QVariant> keys;
      for (int k = 0; k < kKeysPerElement; ++k)
        keys.insert(k * kKeySpacingMs + e * 100, 1.0 + k);
      item.setValues(keys);
    }
    animation->editTracks().push_back(track);
  }
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  return modelSpace->appendOdDbEntity(animation);
}

void paintTimeline(kovAnimationEditorWidget& editor, QImage& viewport, QImage& header)
{
  editor.treeView()->viewport()->render(&viewport);
  editor.timelineHeader()->render(&header);
}

void send(QWidget* widget, QEvent::Type type, const QPoint& pos, Qt::MouseButtons buttons)
{
  QMouseEvent event(type, pos, widget->mapToGlobal(pos), type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                    buttons, Qt::NoModifier);
  QApplication::sendEvent(widget, &event);
}

} // namespace

int main(int argc, char** argv)
{
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  const int repeats = argc > 1 ? std::max(1, std::atoi(argv[1])) : 31;
  odInitialize();
  kovDbTempBlockReference::rxInit();
  kovDbAnimation::rxInit();
  {
    OdDbDatabasePtr db = OdDbDatabase::createObject();
    const OdDbObjectId empty = addAnimation(db.get(), 0);
    const OdDbObjectId full = addAnimation(db.get(), kTracks);

    kovAnimationEditorWidget editor;
    editor.show();
    kovAnimationTreeView* tree = editor.treeView();
    // The editor grows until the tree's viewport is of the size measured.
    editor.resize(kWidth, kHeight);
    QApplication::processEvents();
    editor.resize(kWidth, kHeight + editor.height() - tree->viewport()->height());
    QApplication::processEvents();
    QImage viewport(tree->viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    benchFigure("timeline_viewport_height_px", viewport.height(), "px");
    QImage header(editor.timelineHeader()->size(), QImage::Format_ARGB32_Premultiplied);

    editor.selectAnimation(empty);
    const double emptyMs = medianMs(repeats, [&] { paintTimeline(editor, viewport, header); });
    editor.selectAnimation(full);
    editor.setCurrentPosition(kKeySpacingMs);
    const double fullMs = medianMs(repeats, [&] { paintTimeline(editor, viewport, header); });
    benchFigure("timeline_paint_empty_ms", emptyMs, "ms");
    benchFigure("timeline_paint_10k_keys_ms", fullMs, "ms");
    benchFigure("timeline_paint_10k_keys_over_empty", fullMs / emptyMs, "ratio");

    // The second key of the first sub-track, held and moved back and forth.
    const QRect lane = tree->visualRect(editor.model()->elementIndex(0, 0, 1));
    QPoint at(tree->laneLeft() + editor.scale().xOf(kKeySpacingMs), lane.center().y());
    send(tree->viewport(), QEvent::MouseMove, at, Qt::NoButton);
    send(tree->viewport(), QEvent::MouseButtonPress, at, Qt::LeftButton);
    int step = 0;
    const double dragMs = medianMs(repeats, [&] {
      at.rx() += (step++ % 2 == 0) ? kDragPixels : -kDragPixels;
      send(tree->viewport(), QEvent::MouseMove, at, Qt::LeftButton);
      tree->viewport()->render(&viewport);
    });
    send(tree->viewport(), QEvent::MouseButtonRelease, at, Qt::NoButton);
    benchFigure("timeline_drag_step_ms", dragMs, "ms");
    benchFigure("timeline_drag_step_over_paint", dragMs / fullMs, "ratio");
  }
  kovDbAnimation::rxUninit();
  kovDbTempBlockReference::rxUninit();
  odUninitialize();
  return 0;
}
