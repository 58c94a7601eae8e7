#ifndef KOV_FILING_SAMPLES_H
#define KOV_FILING_SAMPLES_H

// The tracks and animations that filed records describe, and what readers
// make of records: the fields a reader fills are compared by filing them
// again with today's writer against the record filed by the independent
// writer, so that every field counts, doubles bit for bit and texts code unit
// for code unit. Header only: the data layers come with the tests that use it.

#include "kovLegacyFiling.h"

#include "animation/kovAnimationTrack.h"
#include "db/kovDbAnimation.h"

#include "Db/OdDbDatabase.h"
#include "kovDbFixture.h"

namespace kovSamples {

// A sub-track record of that type holding those keyframes; a parameter's name
// and value type.
inline kovFiledItem filedItem(int type, std::vector<std::pair<OdInt32, QVariant>> keyframes, const char* name = "",
                              int paramsType = kovAnimationItem::Number)
{
  kovFiledItem item;
  item.animationType = type;
  item.paramsType = paramsType;
  item.customParameterName = QString::fromUtf8(name);
  item.keyframes = std::move(keyframes);
  return item;
}

// The record of a special parameter, set up by the factory with its range.
inline kovFiledItem factoryParameter(kovFiledItem item, double min, double max, OdInt32 decimals)
{
  item.isFactoryParameter = true;
  item.minValue = min;
  item.maxValue = max;
  item.decimals = decimals;
  return item;
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
    cut.encoding = static_cast<kovEncoding>(source.encoding);
    cut.outputFormat = static_cast<kovOutputFormat>(source.outputFormat);
    cut.quality = static_cast<kovQuality>(source.quality);
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

// The record as a reader of that layout version makes it: what the layout
// lacks keeps its default, and without a drawing no handle resolves.
inline kovFiledTrack asRead(kovFiledTrack track, OdInt32 version, bool inDrawing = false)
{
  const kovFiledItem defaults;
  for (kovFiledItem& item : track.items) {
    if (version < 102)
      item.faceDirection = defaults.faceDirection;
    if (version < 109)
      item.durationByAnimationSpeed = defaults.durationByAnimationSpeed;
    if (version < 105) {
      item.isFactoryParameter = defaults.isFactoryParameter;
      item.minValue = defaults.minValue;
      item.maxValue = defaults.maxValue;
      item.decimals = defaults.decimals;
      item.valueList.clear();
    }
  }
  if (version < 103)
    track.templateName.clear();
  if (!inDrawing) {
    track.entityHandle = OdDbHandle();
    track.hasBlock = false;
  }
  return track;
}

// Cuts: none before 107, unnamed before 111, no path tracing before 112, the
// default iterations before 108; a cut of a track out of range films the first.
inline kovFiledAnimation asRead(kovFiledAnimation animation, OdInt32 version, bool inDrawing = false)
{
  for (kovFiledTrack& track : animation.tracks)
    track = asRead(track, 113, inDrawing);
  if (version < 107 || animation.tracks.empty())
    animation.cuts.clear();
  for (kovFiledCut& cut : animation.cuts) {
    if (cut.trackIndex < 0 || size_t(cut.trackIndex) >= animation.tracks.size())
      cut.trackIndex = 0;
    if (version < 111)
      cut.name = QStringLiteral("Scene");
    if (version < 112)
      cut.pathTracing = false;
    if (version < 108)
      cut.maxIterations = kovFiledCut().maxIterations;
    if (!inDrawing)
      cut.viewHandle = OdDbHandle();
  }
  if (version < 113)
    animation.gizmosHidden = false;
  return animation;
}

// The fields of an object as today's writer files them.
template <class Object>
std::vector<OdUInt8> filedFields(const Object& object)
{
  return kovFiled([&](OdDbDwgFiler* f) { object.dwgOutFields(f); });
}

inline std::vector<OdUInt8> filedFields(const kovFiledTrack& record)
{
  return kovFiled([&](OdDbDwgFiler* f) { kovWriteTrack(f, record); });
}

inline std::vector<OdUInt8> filedFields(const kovFiledAnimation& record)
{
  return kovFiled([&](OdDbDwgFiler* f) { kovWriteAnimation(f, record); });
}

} // namespace kovSamples

#endif
