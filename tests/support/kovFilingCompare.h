#ifndef KOV_FILING_COMPARE_H
#define KOV_FILING_COMPARE_H

// Compares what a reader made against the record that was filed: every field,
// doubles bit for bit (NaN payloads, signed zeros), texts code unit for code
// unit. Each returns an empty string when all agree, else the first difference.

#include "kovLegacyFiling.h"

#include "animation/kovAnimationTrack.h"
#include "db/kovDbAnimation.h"

#include "Db/OdDbMemoryFiler.h"

#include <cstring>
#include <sstream>
#include <string>

namespace kovSamples {

inline bool sameBits(double a, double b)
{
  return std::memcmp(&a, &b, sizeof a) == 0;
}

inline bool sameVariant(const QVariant& a, const QVariant& b)
{
  if (a.userType() != b.userType() || a.isNull() != b.isNull())
    return false;
  if (a.userType() == QMetaType::Double)
    return sameBits(a.toDouble(), b.toDouble());
  if (a.userType() == QMetaType::QString)
    return a.toString().isNull() == b.toString().isNull() && a.toString() == b.toString();
  if (a.userType() == QMetaType::QVariantList) {
    const QVariantList x = a.toList();
    const QVariantList y = b.toList();
    if (x.size() != y.size())
      return false;
    for (int i = 0; i < x.size(); ++i) {
      if (!sameVariant(x[i], y[i]))
        return false;
    }
    return true;
  }
  return a == b;
}

inline std::string show(const QString& text)
{
  return text.isNull() ? std::string("(null)") : "\"" + text.toStdString() + "\"";
}

template <class A, class B>
std::string differ(const char* what, const A& actual, const B& expected)
{
  std::ostringstream out;
  out << what << ": read " << actual << ", filed " << expected;
  return out.str();
}

// The fields a reader of an older layout keeps at their defaults.
inline kovFiledItem asReadFrom(kovFiledItem item, OdInt32 version)
{
  const kovFiledItem defaults;
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
  return item;
}

inline std::string itemDifference(const kovAnimationItem& item, const kovFiledItem& record)
{
  if (item.paramsType() != record.paramsType)
    return differ("parameter type", item.paramsType(), record.paramsType);
  if (item.animationType() != record.animationType)
    return differ("animation type", item.animationType(), record.animationType);
  if (item.customParameterName() != record.customParameterName)
    return differ("parameter name", show(item.customParameterName()), show(record.customParameterName));
  if (item.faceDirection() != record.faceDirection)
    return differ("face direction", item.faceDirection(), record.faceDirection);
  if (item.durationByAnimationSpeed() != record.durationByAnimationSpeed)
    return differ("duration by speed", item.durationByAnimationSpeed(), record.durationByAnimationSpeed);
  if (item.isFactoryParameter() != record.isFactoryParameter)
    return differ("factory parameter", item.isFactoryParameter(), record.isFactoryParameter);
  if (!sameBits(item.minValue(), record.minValue))
    return differ("min", item.minValue(), record.minValue);
  if (!sameBits(item.maxValue(), record.maxValue))
    return differ("max", item.maxValue(), record.maxValue);
  if (item.decimals() != record.decimals)
    return differ("decimals", item.decimals(), record.decimals);
  if (item.valueList() != record.valueList)
    return differ("value list size", item.valueList().size(), record.valueList.size());
  if (item.values().size() != int(record.keyframes.size()))
    return differ("keyframe count", item.values().size(), record.keyframes.size());
  auto it = item.values().cbegin();
  for (const auto& keyframe : record.keyframes) {
    if (it.key() != keyframe.first)
      return differ("keyframe key", it.key(), keyframe.first);
    if (!sameVariant(it.value(), keyframe.second))
      return differ("keyframe value at", it.key(), keyframe.first);
    ++it;
  }
  return std::string();
}

inline std::vector<OdUInt8> filedFields(const OdDbObject* object)
{
  OdDbMemoryFiler filer;
  object->dwgOutFields(&filer);
  return std::vector<OdUInt8>(filer.data(), filer.data() + filer.size());
}

inline OdDbHandle handleOf(const OdDbObjectId& id)
{
  return id.isNull() ? OdDbHandle() : id.getHandle();
}

inline std::string trackDifference(const kovAnimationTrack& track, const kovFiledTrack& record,
                                   OdInt32 version = 113)
{
  if (track.trackName() != record.name)
    return differ("track name", show(track.trackName()), show(record.name));
  if (track.trackDescription() != record.description)
    return differ("description", show(track.trackDescription()), show(record.description));
  if (handleOf(track.entityId()) != record.entityHandle)
    return differ("entity", handleOf(track.entityId()).ascii().toUtf8(), record.entityHandle.ascii().toUtf8());
  if (track.entityUniqueName() != record.entityUniqueName)
    return differ("unique name", show(track.entityUniqueName()), show(record.entityUniqueName));
  if (track.startMillisecond() != record.startMillisecond)
    return differ("start", track.startMillisecond(), record.startMillisecond);
  if (track.numElements() != int(record.items.size()))
    return differ("item count", track.numElements(), record.items.size());
  for (int i = 0; i < track.numElements(); ++i) {
    const std::string difference = itemDifference(track.elementAt(i), asReadFrom(record.items[size_t(i)], version));
    if (!difference.empty())
      return "item " + std::to_string(i) + ": " + difference;
  }
  const QString templateName = version >= 103 ? record.templateName : QString();
  if (track.templateName() != templateName)
    return differ("template name", show(track.templateName()), show(templateName));
  if (track.templateObject().isNull() != templateName.isEmpty())
    return differ("has template object", !track.templateObject().isNull(), !templateName.isEmpty());
  if (!templateName.isEmpty()) {
    if (track.templateObject()->isA() != record.templateObject->isA())
      return "template class differs";
    if (filedFields(track.templateObject().get()) != filedFields(record.templateObject.get()))
      return "template fields differ";
  }
  for (int row = 0; row < 4; ++row) {
    for (int col = 0; col < 4; ++col) {
      const double expected = record.hasBlock && version >= 104 ? record.blockMatrix[row][col] : (row == col ? 1 : 0);
      if (!sameBits(track.blockMatrix().entry[row][col], expected))
        return differ("block matrix entry", row * 4 + col, expected);
    }
  }
  return std::string();
}

inline std::string cutDifference(const kovDbAnimation& animation, const kovCameraCut& cut, const kovFiledCut& record,
                                 OdInt32 version)
{
  const int index = animation.indexOf(cut.track.get());
  const int expectedIndex = record.trackIndex >= 0 && size_t(record.trackIndex) < animation.constTracks().size()
                              ? record.trackIndex
                              : 0;
  if (index != expectedIndex)
    return differ("cut track", index, expectedIndex);
  const QString name = version >= 111 ? record.name : QStringLiteral("Scene");
  if (cut.name != name)
    return differ("cut name", show(cut.name), show(name));
  if (cut.startMs != record.startMs || cut.endMs != record.endMs)
    return differ("cut start", cut.startMs, record.startMs) + " / " + differ("end", cut.endMs, record.endMs);
  if (cut.imageWidth != record.imageWidth || cut.imageHeight != record.imageHeight)
    return differ("cut width", cut.imageWidth, record.imageWidth);
  if (!sameBits(cut.frameRate, double(record.frameRate)))
    return differ("cut frame rate", cut.frameRate, record.frameRate);
  if (cut.encoding != record.encoding || cut.outputFormat != record.outputFormat || cut.quality != record.quality)
    return differ("cut encoding", cut.encoding, record.encoding);
  if (cut.stillImage != record.stillImage)
    return differ("cut still image", cut.stillImage, record.stillImage);
  const bool pathTracing = version >= 112 && record.pathTracing;
  if (cut.pathTracing != pathTracing)
    return differ("cut path tracing", cut.pathTracing, pathTracing);
  if (handleOf(cut.viewId) != record.viewHandle)
    return differ("cut view", handleOf(cut.viewId).ascii().toUtf8(), record.viewHandle.ascii().toUtf8());
  const OdInt32 iterations = version >= 108 ? record.maxIterations : 50;
  if (cut.maxIterations != iterations)
    return differ("cut iterations", cut.maxIterations, iterations);
  return std::string();
}

// The animation must be open for read.
inline std::string animationDifference(const kovDbAnimation& animation, const kovFiledAnimation& record,
                                       OdInt32 version = 113)
{
  if (animation.colorIndex() != OdUInt16(record.colorIndex))
    return differ("colour", animation.colorIndex(), record.colorIndex);
  if (animation.animationName() != record.name)
    return differ("name", show(animation.animationName()), show(record.name));
  if (animation.animationDescription() != record.description)
    return differ("description", show(animation.animationDescription()), show(record.description));
  if (animation.selectedTrackIndex() != record.selectedTrackIndex)
    return differ("selected track", animation.selectedTrackIndex(), record.selectedTrackIndex);
  if (animation.selectedElementIndex() != record.selectedElementIndex)
    return differ("selected element", animation.selectedElementIndex(), record.selectedElementIndex);
  if (animation.currentPositionMs() != record.currentPositionMs)
    return differ("position", animation.currentPositionMs(), record.currentPositionMs);
  if (animation.constTracks().size() != record.tracks.size())
    return differ("track count", animation.constTracks().size(), record.tracks.size());
  for (size_t i = 0; i < record.tracks.size(); ++i) {
    const std::string difference = trackDifference(*animation.constTracks()[i], record.tracks[i]);
    if (!difference.empty())
      return "track " + std::to_string(i) + ": " + difference;
  }
  const size_t cuts = version >= 107 && !record.tracks.empty() ? record.cuts.size() : 0;
  if (size_t(animation.sceneCuts().size()) != cuts)
    return differ("cut count", animation.sceneCuts().size(), cuts);
  for (size_t i = 0; i < cuts; ++i) {
    const std::string difference = cutDifference(animation, animation.sceneCuts()[int(i)], record.cuts[i], version);
    if (!difference.empty())
      return "cut " + std::to_string(i) + ": " + difference;
  }
  const bool hidden = version >= 113 && record.gizmosHidden;
  if (animation.areGizmosHidden() != hidden)
    return differ("gizmos hidden", animation.areGizmosHidden(), hidden);
  return std::string();
}

} // namespace kovSamples

#endif
