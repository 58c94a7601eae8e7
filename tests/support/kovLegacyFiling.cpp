#include "kovLegacyFiling.h"

#include "Rx/OdError.h"

#include <QDataStream>

namespace {

void wrText(OdDbDwgFiler* filer, const QString& text)
{
  filer->wrString(odFromQString(text));
}

void wrTrackHead(OdDbDwgFiler* filer, const kovFiledTrack& track, OdInt32 version)
{
  filer->wrInt32(version);
  wrText(filer, track.name);
  wrText(filer, track.description);
  filer->wrDbHandle(track.entityHandle);
  wrText(filer, track.entityUniqueName);
  filer->wrInt32(track.startMillisecond);
  filer->wrInt32(static_cast<OdInt32>(track.items.size()));
}

void wrKeyframes(OdDbDwgFiler* filer, const kovFiledItem& item)
{
  filer->wrInt32(static_cast<OdInt32>(item.keyframes.size()));
  for (const auto& keyframe : item.keyframes) {
    const QByteArray bytes = kovKeyframeBytes(keyframe.second);
    filer->wrInt32(keyframe.first);
    filer->wrInt32(bytes.size());
    filer->wrBytes(bytes.constData(), static_cast<OdUInt32>(bytes.size()));
  }
}

void wrRangeGroup(OdDbDwgFiler* filer, const kovFiledItem& item)
{
  filer->wrBool(item.isFactoryParameter);
  filer->wrDouble(item.minValue);
  filer->wrDouble(item.maxValue);
  filer->wrInt32(item.decimals);
  filer->wrInt32(item.valueList.size());
  for (const QString& entry : item.valueList)
    wrText(filer, entry);
}

void wrItemHead(OdDbDwgFiler* filer, const kovFiledItem& item)
{
  filer->wrInt32(item.paramsType);
  filer->wrInt32(item.animationType);
  wrText(filer, item.customParameterName);
}

void wrTemplate(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrText(filer, track.templateName);
  if (track.templateName.isEmpty())
    return;
  if (track.templateObject.isNull())
    throw OdError(eNullObjectPointer, OdString(L"a filed template name needs its object"));
  filer->wrString(track.templateObject->isA()->name());
  track.templateObject->dwgOutFields(filer);
}

void wrBlock(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  filer->wrBool(track.hasBlock);
  if (!track.hasBlock)
    return;
  filer->wrDbHandle(track.blockHandle);
  for (int col = 0; col < 4; ++col) {
    for (int row = 0; row < 4; ++row)
      filer->wrDouble(track.blockMatrix[row][col]);
  }
}

// 110 to 113 share one layout; only the block handle's meaning changed at 110.
void wrTrackLayout110(OdDbDwgFiler* filer, const kovFiledTrack& track, OdInt32 version)
{
  wrTrackHead(filer, track, version);
  for (const kovFiledItem& item : track.items) {
    wrItemHead(filer, item);
    filer->wrBool(item.faceDirection);
    filer->wrBool(item.durationByAnimationSpeed);
    wrRangeGroup(filer, item);
    wrKeyframes(filer, item);
  }
  wrTemplate(filer, track);
  wrBlock(filer, track);
}

void wrCut(OdDbDwgFiler* filer, const kovFiledCut& cut, OdInt32 layout)
{
  filer->wrInt32(cut.trackIndex);
  if (layout >= 111)
    wrText(filer, cut.name);
  filer->wrInt32(cut.startMs);
  filer->wrInt32(cut.endMs);
  filer->wrInt32(cut.imageWidth);
  filer->wrInt32(cut.imageHeight);
  filer->wrInt32(cut.frameRate);
  filer->wrInt32(cut.encoding);
  filer->wrInt32(cut.outputFormat);
  filer->wrInt32(cut.quality);
  filer->wrBool(cut.stillImage);
  if (layout >= 112)
    filer->wrBool(cut.pathTracing);
  filer->wrDbHandle(cut.viewHandle);
  if (layout >= 108)
    filer->wrInt32(cut.maxIterations);
}

// The entity layouts differ only in the cuts and the closing gizmo flag.
void wrAnimation(OdDbDwgFiler* filer, const kovFiledAnimation& animation, OdInt32 layout, OdInt32 version)
{
  filer->wrInt16(animation.colorIndex);
  filer->wrInt8(animation.visibility);
  filer->wrInt32(version);
  wrText(filer, animation.name);
  wrText(filer, animation.description);
  filer->wrInt32(animation.selectedTrackIndex);
  filer->wrInt32(animation.selectedElementIndex);
  filer->wrInt32(animation.currentPositionMs);
  filer->wrInt32(static_cast<OdInt32>(animation.tracks.size()));
  for (const kovFiledTrack& track : animation.tracks)
    kovWriteTrackV113(filer, track);
  if (layout >= 107) {
    filer->wrInt32(static_cast<OdInt32>(animation.cuts.size()));
    for (const kovFiledCut& cut : animation.cuts)
      wrCut(filer, cut, layout);
  }
  if (layout >= 113)
    filer->wrBool(animation.gizmosHidden);
}

} // namespace

QByteArray kovKeyframeBytes(const QVariant& value)
{
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << value;
  return bytes;
}

void kovWriteTrackV101(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrTrackHead(filer, track, 101);
  for (const kovFiledItem& item : track.items) {
    wrItemHead(filer, item);
    wrKeyframes(filer, item);
  }
}

void kovWriteTrackV102(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrTrackHead(filer, track, 102);
  for (const kovFiledItem& item : track.items) {
    wrItemHead(filer, item);
    filer->wrBool(item.faceDirection);
    wrKeyframes(filer, item);
  }
}

void kovWriteTrackV103(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrTrackHead(filer, track, 103);
  for (const kovFiledItem& item : track.items) {
    wrItemHead(filer, item);
    filer->wrBool(item.faceDirection);
    wrKeyframes(filer, item);
  }
  wrTemplate(filer, track);
}

void kovWriteTrackV104(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrTrackHead(filer, track, 104);
  for (const kovFiledItem& item : track.items) {
    wrItemHead(filer, item);
    filer->wrBool(item.faceDirection);
    wrKeyframes(filer, item);
  }
  wrTemplate(filer, track);
  wrBlock(filer, track);
}

void kovWriteTrackV105(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrTrackHead(filer, track, 105);
  for (const kovFiledItem& item : track.items) {
    wrItemHead(filer, item);
    filer->wrBool(item.faceDirection);
    wrRangeGroup(filer, item);
    wrKeyframes(filer, item);
  }
  wrTemplate(filer, track);
  wrBlock(filer, track);
}

void kovWriteTrackV109(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrTrackHead(filer, track, 109);
  for (const kovFiledItem& item : track.items) {
    wrItemHead(filer, item);
    filer->wrBool(item.faceDirection);
    filer->wrBool(item.durationByAnimationSpeed);
    wrRangeGroup(filer, item);
    wrKeyframes(filer, item);
  }
  wrTemplate(filer, track);
  wrBlock(filer, track);
}

void kovWriteTrackV110(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrTrackLayout110(filer, track, 110);
}

void kovWriteTrackV113(OdDbDwgFiler* filer, const kovFiledTrack& track)
{
  wrTrackLayout110(filer, track, 113);
}

void kovWriteTrackAs(OdDbDwgFiler* filer, const kovFiledTrack& track, OdInt32 version)
{
  wrTrackLayout110(filer, track, version);
}

void kovWriteTrack(OdDbDwgFiler* filer, const kovFiledTrack& track, OdInt32 version)
{
  if (version >= 110)
    wrTrackLayout110(filer, track, version);
  else if (version >= 109)
    kovWriteTrackV109(filer, track);
  else if (version >= 105)
    kovWriteTrackV105(filer, track);
  else if (version >= 104)
    kovWriteTrackV104(filer, track);
  else if (version >= 103)
    kovWriteTrackV103(filer, track);
  else if (version >= 102)
    kovWriteTrackV102(filer, track);
  else
    kovWriteTrackV101(filer, track);
}

void kovWriteAnimationV106(OdDbDwgFiler* filer, const kovFiledAnimation& animation)
{
  wrAnimation(filer, animation, 106, 106);
}

void kovWriteAnimationV107(OdDbDwgFiler* filer, const kovFiledAnimation& animation)
{
  wrAnimation(filer, animation, 107, 107);
}

void kovWriteAnimationV108(OdDbDwgFiler* filer, const kovFiledAnimation& animation)
{
  wrAnimation(filer, animation, 108, 108);
}

void kovWriteAnimationV111(OdDbDwgFiler* filer, const kovFiledAnimation& animation)
{
  wrAnimation(filer, animation, 111, 111);
}

void kovWriteAnimationV112(OdDbDwgFiler* filer, const kovFiledAnimation& animation)
{
  wrAnimation(filer, animation, 112, 112);
}

void kovWriteAnimationV113(OdDbDwgFiler* filer, const kovFiledAnimation& animation)
{
  wrAnimation(filer, animation, 113, 113);
}

void kovWriteAnimation(OdDbDwgFiler* filer, const kovFiledAnimation& animation, OdInt32 version)
{
  const OdInt32 layouts[] = { 113, 112, 111, 108, 107 };
  for (OdInt32 layout : layouts) {
    if (version >= layout) {
      wrAnimation(filer, animation, layout, version);
      return;
    }
  }
  wrAnimation(filer, animation, 106, version);
}
