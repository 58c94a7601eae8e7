#ifndef KOV_FILING_SAMPLES_H
#define KOV_FILING_SAMPLES_H

// Random track and animation records from a seed, with every kind of value
// the filing must carry unchanged, and the tracks and animations built from
// them. Header only: the data layers come with the tests that use it.

#include "kovLegacyFiling.h"

#include "animation/kovAnimationTrack.h"
#include "db/kovDbAnimation.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbSpline.h"

#include <QVariantList>

#include <climits>
#include <cmath>
#include <limits>
#include <random>

namespace kovSamples {

inline double specialDouble(std::mt19937& rng)
{
  static const double values[] = { std::numeric_limits<double>::quiet_NaN(),
                                   std::numeric_limits<double>::infinity(),
                                   -std::numeric_limits<double>::infinity(),
                                   -0.0,
                                   0.0,
                                   std::numeric_limits<double>::denorm_min(),
                                   std::numeric_limits<double>::max(),
                                   -std::numeric_limits<double>::lowest() / 3.0 };
  std::uniform_int_distribution<int> pick(0, 11);
  const int i = pick(rng);
  if (i < 8)
    return values[i];
  return std::uniform_real_distribution<double>(-1e6, 1e6)(rng);
}

// Texts outside the basic plane, combining marks, empty and null strings.
inline QString text(std::mt19937& rng)
{
  static const char* const texts[] = { "", "Camera", "Kamera \xF0\x9F\x8E\xA5", "\xE6\x97\xA5\xE6\x9C\xAC",
                                       "e\xCC\x81t\xC3\xA9 \xF0\x90\x90\x80", "Sky \"quoted\" \\ slash",
                                       "\xF0\x9F\x98\x80\xF0\x9F\x98\x81\xF0\x9F\x98\x82" };
  std::uniform_int_distribution<int> pick(0, 7);
  const int i = pick(rng);
  return i == 7 ? QString() : QString::fromUtf8(texts[i]);
}

inline QVariant doubles(std::mt19937& rng, int count)
{
  QVariantList list;
  for (int i = 0; i < count; ++i)
    list << specialDouble(rng);
  return list;
}

// A value of the shape the item's types give its keyframes.
inline QVariant value(std::mt19937& rng, const kovFiledItem& item)
{
  switch (item.animationType) {
  case kovAnimationItem::LocationByPoints: return doubles(rng, rng() % 2 ? 3 : 6);
  case kovAnimationItem::Scale: return specialDouble(rng);
  case kovAnimationItem::RotationToEntity: {
    QVariantList list = doubles(rng, 3).toList();
    return list << text(rng);
  }
  case kovAnimationItem::CustomParameter:
    switch (item.paramsType) {
    case kovAnimationItem::Point: return doubles(rng, 3);
    case kovAnimationItem::Number: return specialDouble(rng);
    case kovAnimationItem::OnOff: return rng() % 2 == 0;
    default: return item.valueList.isEmpty() ? text(rng) : item.valueList.value(int(rng() % item.valueList.size()));
    }
  default: return doubles(rng, 6);
  }
}

inline kovFiledItem item(std::mt19937& rng)
{
  kovFiledItem item;
  item.animationType = OdInt32(rng() % 8);
  item.paramsType = OdInt32(rng() % 4);
  item.customParameterName = text(rng);
  item.faceDirection = rng() % 2;
  item.durationByAnimationSpeed = rng() % 2;
  item.isFactoryParameter = rng() % 2;
  item.minValue = specialDouble(rng);
  item.maxValue = specialDouble(rng);
  item.decimals = OdInt32(rng() % 3 == 0 ? INT_MIN : rng() % 10);
  const int entries = int(rng() % 4);
  for (int i = 0; i < entries; ++i)
    item.valueList << text(rng);
  const int count = int(rng() % 6);
  std::vector<OdInt32> keys;
  if (rng() % 3 == 0)
    keys = { INT_MIN, INT_MAX };
  while (int(keys.size()) < count)
    keys.push_back(std::uniform_int_distribution<OdInt32>(-5000, 60000)(rng));
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  for (OdInt32 key : keys)
    item.keyframes.emplace_back(key, value(rng, item));
  return item;
}

// A track without entity or block: the handles of those need a drawing.
inline kovFiledTrack track(std::mt19937& rng)
{
  kovFiledTrack track;
  track.name = text(rng);
  track.description = text(rng);
  static const char* const subjects[] = { "Camera", "Environment", "", "Spawned \xF0\x9F\x8C\xB3" };
  track.entityUniqueName = QString::fromUtf8(subjects[rng() % 4]);
  track.startMillisecond = rng() % 4 == 0 ? INT_MIN : std::uniform_int_distribution<OdInt32>(-1000, 100000)(rng);
  const int items = int(rng() % 5);
  for (int i = 0; i < items; ++i)
    track.items.push_back(item(rng));
  if (rng() % 3 == 0) {
    track.templateName = text(rng);
    if (!track.templateName.isEmpty()) {
      OdDbSplinePtr spline = OdDbSpline::createObject();
      spline->setFitData({ OdGePoint3d(0, 0, 0), OdGePoint3d(1, 2, 3), OdGePoint3d(4, 0, specialDouble(rng)) }, 3,
                         0.0, OdGeVector3d(1, 0, 0), OdGeVector3d(0, 1, 0));
      track.templateObject = OdDbObjectPtr(spline.get());
    }
  }
  return track;
}

inline void fillItem(kovAnimationItem& target, const kovFiledItem& source)
{
  target.setAnimationType(static_cast<kovAnimationItem::AnimationType>(source.animationType), OdGePoint3d());
  target.setParamsType(static_cast<kovAnimationItem::ParameterType>(source.paramsType));
  target.setCustomParameterName(source.customParameterName);
  target.setFaceDirection(source.faceDirection);
  target.setDurationByAnimationSpeed(source.durationByAnimationSpeed);
  target.setIsFactoryParameter(source.isFactoryParameter);
  target.setRange(source.minValue, source.maxValue, source.decimals);
  target.setValueList(source.valueList);
  QMap<int, QVariant> values;
  for (const auto& keyframe : source.keyframes)
    values.insert(keyframe.first, keyframe.second);
  target.setValues(values);
}

// The track a record describes; its handles are resolved in db.
inline kovAnimationTrackPtr makeTrack(const kovFiledTrack& record, OdDbDatabase* db = nullptr)
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setName(record.name);
  track->setDescription(record.description);
  if (db && !record.entityHandle.isNull())
    track->setEntityId(db->getOdDbObjectId(record.entityHandle));
  track->setEntityUniqueName(nullptr, record.entityUniqueName);
  track->setStartMillisecond(record.startMillisecond);
  for (const kovFiledItem& source : record.items) {
    track->addElement();
    fillItem(track->elementAt(track->numElements() - 1), source);
  }
  track->setTemplate(record.templateName, record.templateObject);
  OdGeMatrix3d matrix;
  for (int row = 0; row < 4; ++row) {
    for (int col = 0; col < 4; ++col)
      matrix.entry[row][col] = record.blockMatrix[row][col];
  }
  track->setBlockMatrix(matrix);
  return track;
}

inline kovFiledCut cut(std::mt19937& rng, int trackCount)
{
  kovFiledCut cut;
  cut.trackIndex = OdInt32(rng() % trackCount);
  cut.name = text(rng);
  cut.startMs = rng() % 4 == 0 ? INT_MIN : OdInt32(rng() % 100000);
  cut.endMs = rng() % 4 == 0 ? INT_MAX : OdInt32(rng() % 100000);
  cut.imageWidth = OdInt32(rng() % 8000) - 10;
  cut.imageHeight = OdInt32(rng() % 8000) - 10;
  cut.frameRate = OdInt32(rng() % 121);
  cut.encoding = OdInt32(rng() % 5) - 1;
  cut.outputFormat = OdInt32(rng() % 9);
  cut.quality = OdInt32(rng() % 4);
  cut.stillImage = rng() % 2;
  cut.pathTracing = rng() % 2;
  cut.maxIterations = rng() % 5 == 0 ? INT_MAX : OdInt32(rng() % 5000);
  return cut;
}

// An animation with 0 to 4 random tracks; cuts only when it has tracks.
inline kovFiledAnimation animation(std::mt19937& rng)
{
  kovFiledAnimation animation;
  animation.name = text(rng);
  animation.description = text(rng);
  animation.selectedTrackIndex = OdInt32(rng() % 6) - 1;
  animation.selectedElementIndex = rng() % 5 == 0 ? INT_MIN : OdInt32(rng() % 6) - 1;
  animation.currentPositionMs = rng() % 5 == 0 ? INT_MAX : OdInt32(rng() % 100000) - 1;
  const int tracks = int(rng() % 5);
  for (int i = 0; i < tracks; ++i)
    animation.tracks.push_back(track(rng));
  const int cuts = tracks ? int(rng() % 4) : 0;
  for (int i = 0; i < cuts; ++i)
    animation.cuts.push_back(cut(rng, tracks));
  animation.gizmosHidden = rng() % 2;
  return animation;
}

// The animation a record describes, its tracks and cut views resolved in db.
inline kovDbAnimationPtr makeAnimation(const kovFiledAnimation& record, OdDbDatabase* db = nullptr)
{
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  animation->setColorIndex(OdUInt16(record.colorIndex));
  animation->setName(record.name);
  animation->setDescription(record.description);
  animation->setSelectedTrackIndex(record.selectedTrackIndex);
  animation->setSelectedElementIndex(record.selectedElementIndex);
  animation->setCurrentPosition(record.currentPositionMs);
  for (const kovFiledTrack& track : record.tracks)
    animation->editTracks().push_back(makeTrack(track, db));
  for (const kovFiledCut& source : record.cuts) {
    kovCameraCut cut;
    cut.track = animation->editTracks().at(static_cast<size_t>(source.trackIndex));
    cut.name = source.name;
    cut.startMs = source.startMs;
    cut.endMs = source.endMs;
    cut.imageWidth = source.imageWidth;
    cut.imageHeight = source.imageHeight;
    cut.frameRate = source.frameRate;
    cut.encoding = source.encoding;
    cut.outputFormat = source.outputFormat;
    cut.quality = source.quality;
    cut.stillImage = source.stillImage;
    cut.pathTracing = source.pathTracing;
    if (db && !source.viewHandle.isNull())
      cut.viewId = db->getOdDbObjectId(source.viewHandle);
    cut.maxIterations = source.maxIterations;
    animation->sceneCuts().append(cut);
  }
  animation->hideAnimationGizmos() = record.gizmosHidden;
  return animation;
}

} // namespace kovSamples

#endif
