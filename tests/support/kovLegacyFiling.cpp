#include "kovLegacyFiling.h"

#include "Rx/OdError.h"

#include <QDataStream>

namespace {

void wrText(OdDbDwgFiler* filer, const QString& text)
{
  filer->wrString(odFromQString(text));
}

void wrItem(OdDbDwgFiler* filer, const kovFiledItem& item, OdInt32 version)
{
  filer->wrInt32(item.paramsType);
  filer->wrInt32(item.animationType);
  wrText(filer, item.customParameterName);
  if (version >= 102)
    filer->wrBool(item.faceDirection);
  if (version >= 109)
    filer->wrBool(item.durationByAnimationSpeed);
  if (version >= 105) {
    filer->wrBool(item.isFactoryParameter);
    filer->wrDouble(item.minValue);
    filer->wrDouble(item.maxValue);
    filer->wrInt32(item.decimals);
    filer->wrInt32(item.valueList.size());
    for (const QString& entry : item.valueList)
      wrText(filer, entry);
  }
  filer->wrInt32(static_cast<OdInt32>(item.keyframes.size()));
  for (const auto& keyframe : item.keyframes) {
    const QByteArray bytes = kovKeyframeBytes(keyframe.second);
    filer->wrInt32(keyframe.first);
    filer->wrInt32(bytes.size());
    filer->wrBytes(bytes.constData(), static_cast<OdUInt32>(bytes.size()));
  }
}

void wrCut(OdDbDwgFiler* filer, const kovFiledCut& cut, OdInt32 version)
{
  filer->wrInt32(cut.trackIndex);
  if (version >= 111)
    wrText(filer, cut.name);
  for (OdInt32 value : { cut.startMs, cut.endMs, cut.imageWidth, cut.imageHeight, cut.frameRate, cut.encoding,
                         cut.outputFormat, cut.quality })
    filer->wrInt32(value);
  filer->wrBool(cut.stillImage);
  if (version >= 112)
    filer->wrBool(cut.pathTracing);
  filer->wrDbHandle(cut.viewHandle);
  if (version >= 108)
    filer->wrInt32(cut.maxIterations);
}

} // namespace

QByteArray kovKeyframeBytes(const QVariant& value)
{
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << value;
  return bytes;
}

void kovWriteTrack(OdDbDwgFiler* filer, const kovFiledTrack& track, OdInt32 version)
{
  filer->wrInt32(version);
  wrText(filer, track.name);
  wrText(filer, track.description);
  filer->wrDbHandle(track.entityHandle);
  wrText(filer, track.entityUniqueName);
  filer->wrInt32(track.startMillisecond);
  filer->wrInt32(static_cast<OdInt32>(track.items.size()));
  for (const kovFiledItem& item : track.items)
    wrItem(filer, item, version);
  if (version >= 103) {
    wrText(filer, track.templateName);
    if (!track.templateName.isEmpty()) {
      if (track.templateObject.isNull())
        throw OdError(eNullObjectPointer, OdString(L"a filed template name needs its object"));
      filer->wrString(track.templateObject->isA()->name());
      track.templateObject->dwgOutFields(filer);
    }
  }
  if (version < 104)
    return;
  filer->wrBool(track.hasBlock);
  if (!track.hasBlock)
    return;
  filer->wrDbHandle(track.blockHandle);
  for (int col = 0; col < 4; ++col) {
    for (int row = 0; row < 4; ++row)
      filer->wrDouble(track.blockMatrix[row][col]);
  }
}

void kovWriteAnimation(OdDbDwgFiler* filer, const kovFiledAnimation& animation, OdInt32 version)
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
    kovWriteTrack(filer, track);
  if (version >= 107) {
    filer->wrInt32(static_cast<OdInt32>(animation.cuts.size()));
    for (const kovFiledCut& cut : animation.cuts)
      wrCut(filer, cut, version);
  }
  if (version >= 113)
    filer->wrBool(animation.gizmosHidden);
}
