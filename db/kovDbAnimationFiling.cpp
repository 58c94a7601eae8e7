// Filing of the animation entity.
//
// Layout, format version 113, after the entity's own fields:
//
//   Int32   format version (113)
//   String  name
//   String  description
//   Int32   selected track index
//   Int32   selected element index
//   Int32   current position (ms)
//   Int32   number of tracks N, then N tracks (kovAnimationTrackFiling.cpp)
//   Int32   number of camera cuts K, then K cuts:
//             Int32 track index (-1 when its track is not in the list),
//             String name, Int32 start ms, Int32 end ms, Int32 width,
//             Int32 height, Int32 frame rate (whole frames per second: the
//             fraction of 23.976 is not kept), Int32 encoding, Int32 output
//             format, Int32 quality, Bool still image, Bool path tracing,
//             Handle view, Int32 maximum iterations
//   Bool    gizmos hidden
//
// Older versions: no cuts before 107 (the cut list is left as it was),
// iterations from 108, cut names from 111 ("Scene" before), path tracing from
// 112, the gizmo flag after 112. A newer version reads as 113.
#include "db/kovDbAnimation.h"

#include "Db/OdDbDatabase.h"
#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbReadCount.h"

#include <climits>
#include <cmath>

namespace {

const OdInt32 kFormatVersion = 113;
// The smallest track: version, three strings, a handle, start, item count,
// template name and block flag.
const OdUInt64 kMinTrackBytes = 32;
// The smallest cut, as version 107 filed it: nine integers, a flag and a
// handle (no name, path-tracing flag or iterations yet).
const OdUInt64 kMinCutBytes = 45;

OdInt32 wholeFrameRate(double rate)
{
  if (!std::isfinite(rate))
    return 0;
  return static_cast<OdInt32>(std::fmax(std::fmin(rate, INT_MAX), INT_MIN));
}

// The reader names the animation in every error they pass on.
OdString animationContext(const QString& name)
{
  return odFromQString(QStringLiteral("Animation \"%1\": ").arg(name));
}

} // namespace

void kovDbAnimation::dwgOutFields(OdDbDwgFiler* filer) const
{
  assertReadEnabled();
  OdDbEntity::dwgOutFields(filer);
  filer->wrInt32(kFormatVersion);
  filer->wrString(odFromQString(m_name));
  filer->wrString(odFromQString(m_description));
  filer->wrInt32(m_selectedTrackIndex);
  filer->wrInt32(m_selectedElementIndex);
  filer->wrInt32(m_currentPositionMs);

  filer->wrInt32(static_cast<OdInt32>(m_tracks.size()));
  for (const kovAnimationTrackPtr& track : m_tracks)
    track->dwgOutFields(filer);

  filer->wrInt32(m_cuts.size());
  for (const kovCameraCut& cut : m_cuts) {
    filer->wrInt32(m_tracks.empty() ? -1 : indexOf(cut.track.get()));
    filer->wrString(odFromQString(cut.name));
    filer->wrInt32(cut.startMs);
    filer->wrInt32(cut.endMs);
    filer->wrInt32(cut.imageWidth);
    filer->wrInt32(cut.imageHeight);
    filer->wrInt32(wholeFrameRate(cut.frameRate));
    filer->wrInt32(static_cast<OdInt32>(cut.encoding));
    filer->wrInt32(static_cast<OdInt32>(cut.outputFormat));
    filer->wrInt32(static_cast<OdInt32>(cut.quality));
    filer->wrBool(cut.stillImage);
    filer->wrBool(cut.pathTracing);
    filer->wrDbHandle(cut.viewId.isNull() ? OdDbHandle() : cut.viewId.getHandle());
    filer->wrInt32(cut.maxIterations);
  }
  filer->wrBool(m_gizmosHidden);
}

OdResult kovDbAnimation::dwgInFields(OdDbDwgFiler* filer)
try {
  assertWriteEnabled();
  const OdResult res = OdDbEntity::dwgInFields(filer);
  if (res != eOk)
    return res;
  const OdInt32 version = filer->rdInt32();
  m_name = odToQString(filer->rdString());
  m_description = odToQString(filer->rdString());
  m_selectedTrackIndex = filer->rdInt32();
  m_selectedElementIndex = filer->rdInt32();
  m_currentPositionMs = filer->rdInt32();

  const OdInt32 trackCount = odDbReadCount(filer, kMinTrackBytes, "track");
  // The tracks replace the entity's only when all of them could be read, so
  // that a failed read leaves no empty slot behind.
  std::vector<kovAnimationTrackPtr> tracks(static_cast<size_t>(trackCount));
  for (kovAnimationTrackPtr& slot : tracks) {
    slot = kovAnimationTrackPtr(new kovAnimationTrack);
    const OdResult trackRes = slot->dwgInFields(filer);
    if (trackRes != eOk)
      return trackRes;
  }
  m_tracks.swap(tracks);

  if (version >= 107) {
    const OdInt32 cutCount = odDbReadCount(filer, kMinCutBytes, "camera cut");
    m_cuts.clear();
    OdDbDatabase* db = filer->database();
    for (OdInt32 i = 0; i < cutCount; ++i) {
      kovCameraCut cut;
      const OdInt32 index = filer->rdInt32();
      if (index >= 0 && index < trackCount)
        cut.track = m_tracks[static_cast<size_t>(index)];
      else if (trackCount > 0)
        cut.track = m_tracks.front();
      cut.name = version >= 111 ? odToQString(filer->rdString()) : QStringLiteral("Scene");
      cut.startMs = filer->rdInt32();
      cut.endMs = filer->rdInt32();
      cut.imageWidth = filer->rdInt32();
      cut.imageHeight = filer->rdInt32();
      cut.frameRate = filer->rdInt32();
      cut.encoding = static_cast<kovEncoding>(filer->rdInt32());
      cut.outputFormat = static_cast<kovOutputFormat>(filer->rdInt32());
      cut.quality = static_cast<kovQuality>(filer->rdInt32());
      cut.stillImage = filer->rdBool();
      if (version >= 112)
        cut.pathTracing = filer->rdBool();
      const OdDbHandle view = filer->rdDbHandle();
      cut.viewId = db && !view.isNull() ? db->getOdDbObjectId(view, false) : OdDbObjectId();
      if (version >= 108)
        cut.maxIterations = filer->rdInt32();
      if (!cut.track.isNull())
        m_cuts.append(cut);
    }
  }
  if (version > 112)
    m_gizmosHidden = filer->rdBool();

  for (const kovAnimationTrackPtr& track : m_tracks)
    connetTrackSignals(track.get());
  return filer->filerStatus();
} catch (OdError& error) {
  error.prependContext(animationContext(m_name));
  throw;
}
