#ifndef KOV_CAMERA_CUT_H
#define KOV_CAMERA_CUT_H

#include "animation/kovAnimationTrack.h"
#include "db/kovProductionChoices.h"

#include "Db/OdDbObjectId.h"
#include "Rx/OdSharedPtr.h"

#include <QMetaType>
#include <QString>

typedef OdSharedPtr<kovAnimationTrack> kovAnimationTrackPtr;
Q_DECLARE_METATYPE(kovAnimationTrackPtr)

// A named stretch of one camera track with its production settings. A value
// record of the animation; its track is shared with the animation.
struct kovCameraCut {
  QString name;
  OdDbObjectId viewId;
  kovAnimationTrackPtr track;
  int startMs = 0;
  int endMs = 0;
  bool stillImage = false;
  double frameRate = 24.0;
  int imageWidth = 1920;
  int imageHeight = 1080;
  int maxIterations = 50;
  kovEncoding encoding = kovEncoding::H265;
  kovOutputFormat outputFormat = kovOutputFormat::Mp4;
  kovQuality quality = kovQuality::Medium;
  bool pathTracing = false;
};
Q_DECLARE_METATYPE(kovCameraCut)

#endif
