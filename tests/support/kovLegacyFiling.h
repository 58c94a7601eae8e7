#ifndef KOV_LEGACY_FILING_H
#define KOV_LEGACY_FILING_H

// Writes animation tracks and animation entities in every layout that
// drawings have held, field by field through a filer, from plain records.
// Written from the documented layouts alone (see the top comments of
// kovAnimationTrackFiling.cpp and kovDbAnimationFiling.cpp), never through
// the classes that read them, so that what the readers make of these bytes is
// checked against an independent writer.

#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbObject.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <utility>
#include <vector>

struct kovFiledItem {
  OdInt32 paramsType = 1;
  OdInt32 animationType = 1;
  QString customParameterName;
  bool faceDirection = false;
  bool durationByAnimationSpeed = true;
  bool isFactoryParameter = false;
  double minValue = -999999.0;
  double maxValue = 999999.0;
  OdInt32 decimals = 3;
  QStringList valueList;
  // In the order they are filed, which the layout wants ascending.
  std::vector<std::pair<OdInt32, QVariant>> keyframes;
};

struct kovFiledTrack {
  QString name;
  QString description;
  OdDbHandle entityHandle;
  QString entityUniqueName;
  OdInt32 startMillisecond = 0;
  std::vector<kovFiledItem> items;
  QString templateName;
  // Filed only with a template name; its class name and its own fields.
  OdDbObjectPtr templateObject;
  bool hasBlock = false;
  // A block reference from 110, a block definition before.
  OdDbHandle blockHandle;
  double blockMatrix[4][4] = { { 1, 0, 0, 0 }, { 0, 1, 0, 0 }, { 0, 0, 1, 0 }, { 0, 0, 0, 1 } };
};

struct kovFiledCut {
  OdInt32 trackIndex = 0;
  QString name;
  OdInt32 startMs = 0;
  OdInt32 endMs = 0;
  OdInt32 imageWidth = 1920;
  OdInt32 imageHeight = 1080;
  OdInt32 frameRate = 24;
  OdInt32 encoding = 1;
  OdInt32 outputFormat = 4;
  OdInt32 quality = 1;
  bool stillImage = false;
  bool pathTracing = false;
  OdDbHandle viewHandle;
  OdInt32 maxIterations = 50;
};

struct kovFiledAnimation {
  // The entity's own fields, ahead of the animation's.
  OdInt16 colorIndex = 256;
  OdInt8 visibility = 0;
  QString name;
  QString description;
  OdInt32 selectedTrackIndex = -1;
  OdInt32 selectedElementIndex = -1;
  OdInt32 currentPositionMs = -1;
  std::vector<kovFiledTrack> tracks;
  std::vector<kovFiledCut> cuts;
  bool gizmosHidden = false;
};

// The bytes of one keyframe value: a QDataStream of default version writing
// the variant into a fresh byte array.
QByteArray kovKeyframeBytes(const QVariant& value);

// What a track of that layout version held, field by field. Versions above
// the newest layout write that layout under their own number, as a newer
// writer that only appends would.
void kovWriteTrack(OdDbDwgFiler* filer, const kovFiledTrack& track, OdInt32 version = 113);

// An animation entity of that format version; its tracks are always filed in
// the newest track layout (tracks carry their own version).
void kovWriteAnimation(OdDbDwgFiler* filer, const kovFiledAnimation& animation, OdInt32 version = 113);

#endif
