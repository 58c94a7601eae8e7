// The track tree model reads every value from the animation entity when it is
// asked: one data() call for a sub-track's name, including the entity's open
// and close, on an animation of 100 tracks of 5 sub-tracks each, against a
// bare open and close of the same entity and against a data() call of a
// model that keeps its own copies of the texts.

#include "db/kovDbAnimation.h"
#include "editor/kovAnimationModel.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"
#include "kovBenchMeasure.h"

#include <QCoreApplication>
#include <QStandardItemModel>

#include <algorithm>
#include <chrono>
#include <vector>

namespace {

const int kTracks = 100;
const int kSubTracks = 5;
const int kBatch = 100;
const int kBatches = 2001;
volatile long g_sink = 0;

// The median time of one call of call(i), i running over the batch, in ns.
template <class Call>
double medianCallNs(Call call)
{
  std::vector<double> samples;
  samples.reserve(kBatches);
  for (int batch = 0; batch < kBatches; ++batch) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kBatch; ++i)
      call(batch * kBatch + i);
    const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
    samples.push_back(elapsed.count() / kBatch);
  }
  std::nth_element(samples.begin(), samples.begin() + kBatches / 2, samples.end());
  return samples[kBatches / 2];
}

OdDbObjectId makeAnimation(OdDbDatabase* db)
{
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  for (int t = 0; t < kTracks; ++t) {
    kovAnimationTrackPtr track(new kovAnimationTrack);
    track->setName(QStringLiteral("Track %1").arg(t));
    for (int e = 0; e < kSubTracks; ++e) {
      track->addElement();
      track->elementAt(e).setAnimationType(static_cast<kovAnimationItem::AnimationType>(e + 1), OdGePoint3d::kOrigin);
    }
    animation->editTracks().push_back(track);
  }
  OdDbBlockTableRecordPtr space = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  return space->appendOdDbEntity(animation);
}

} // namespace

int main(int argc, char** argv)
{
  QCoreApplication app(argc, argv);
  odInitialize();
  kovDbAnimation::rxInit();
  {
    OdDbDatabasePtr db = OdDbDatabase::createObject();
    const OdDbObjectId id = makeAnimation(db);
    kovAnimationModel model;
    model.setAnimation(id);
    QStandardItemModel copies;
    std::vector<QModelIndex> subTracks;
    std::vector<QModelIndex> copiedSubTracks;
    for (int t = 0; t < kTracks; ++t) {
      const QModelIndex track = model.index(t, 0);
      QStandardItem* copiedTrack = new QStandardItem(model.data(track).toString());
      copies.appendRow(copiedTrack);
      for (int e = 0; e < kSubTracks; ++e) {
        subTracks.push_back(model.index(e, 0, track));
        copiedTrack->appendRow(new QStandardItem(model.data(subTracks.back()).toString()));
        copiedSubTracks.push_back(copiedTrack->child(e)->index());
      }
    }
    const size_t count = subTracks.size();

    const double modelNs = medianCallNs([&](int i) { g_sink += model.data(subTracks[i % count]).toString().size(); });
    const double openCloseNs = medianCallNs([&](int) {
      OdDbObjectPtr object = id.openObject();
      g_sink += object->isReadEnabled() ? 1 : 0;
    });
    const double copiesNs =
        medianCallNs([&](int i) { g_sink += copies.data(copiedSubTracks[i % count]).toString().size(); });

    benchFigure("model_data_call_ns", modelNs, "ns");
    benchFigure("entity_open_close_ns", openCloseNs, "ns");
    benchFigure("standard_item_model_data_call_ns", copiesNs, "ns");
    benchFigure("model_data_call_vs_open_close_ratio", modelNs / openCloseNs, "x");
    benchFigure("model_data_call_vs_standard_item_model_ratio", modelNs / copiesNs, "x");
  }
  kovDbAnimation::rxUninit();
  odUninitialize();
  return 0;
}
