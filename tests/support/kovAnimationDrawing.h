#ifndef KOV_ANIMATION_DRAWING_H
#define KOV_ANIMATION_DRAWING_H

// A drawing that holds an animation of every kind of track, and a changed
// drawing file image made whole again. Header only, like kovFilingSamples.h.

#include "kovFilingSamples.h"
#include "kovSampleDrawing.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbCrc32.h"
#include "Db/OdDbFileFormat.h"
#include "Db/OdDbMemoryFiler.h"

#include <cstring>

struct kovAnimationDrawing {
  kovSampleDrawing sample;
  OdDbObjectId lampBlock;   // block "Lamp xblock": a library object
  OdDbObjectId lampRef;     // model space reference to it
  OdDbObjectId animation;   // model space animation
  // What the animation holds; its block handle is the spawned track's.
  kovFiledAnimation record;
};

// Tracks: 0 camera (spline path and angles), 1 environment, 2 the chair
// reference as an entity, 3 the lamp as a library object walking by speed,
// 4 a spawned "Chair" with its generated block. Two cuts film the camera
// through the view "Front".
inline kovAnimationDrawing kovBuildAnimationDrawing()
{
  kovAnimationDrawing d;
  d.sample = kovBuildSampleDrawing();
  OdDbDatabase* db = d.sample.db.get();
  {
    OdDbBlockTablePtr blocks = db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
    OdDbBlockTableRecordPtr lamp = OdDbBlockTableRecord::createObject();
    lamp->setName(OdString(L"Lamp xblock"));
    d.lampBlock = blocks->add(lamp);
    OdDbBlockReferencePtr reference = OdDbBlockReference::createObject();
    reference->setBlockTableRecord(d.lampBlock);
    OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    d.lampRef = modelSpace->appendOdDbEntity(reference);
  }

  kovFiledAnimation& a = d.record;
  a.name = QStringLiteral("Tour");
  a.description = QString::fromUtf8("Morning \xE2\x98\x80");
  a.selectedTrackIndex = 0;
  a.selectedElementIndex = 1;
  a.currentPositionMs = 2500;
  kovFiledTrack camera;
  camera.name = QStringLiteral("Camera");
  camera.entityUniqueName = QStringLiteral("Camera");
  kovFiledItem path;
  path.animationType = kovAnimationItem::LocationBySpline;
  path.faceDirection = true;
  path.durationByAnimationSpeed = false;
  path.keyframes = { { 0, QVariantList { 10.0, 0.0, 1.8, 0.0, 0.0, 0.0 } },
                     { 2000, QVariantList { 20.0, 10.0, 1.8, 1.0, 0.0, 0.0 } },
                     { 5000, QVariantList { 30.0, 0.0, 1.8, 0.0, 0.0, 0.0 } } };
  kovFiledItem angles;
  angles.animationType = kovAnimationItem::RotationByAngles;
  angles.keyframes = { { 0, QVariantList { 0.0, 0.0, 0.0, 0.0, 0.0, 90.0 } } };
  camera.items = { path, angles };
  kovFiledTrack environment;
  environment.name = QStringLiteral("Environment");
  environment.entityUniqueName = QStringLiteral("Environment");
  kovFiledItem time;
  time.animationType = kovAnimationItem::CustomParameter;
  time.customParameterName = QStringLiteral("Time");
  time.isFactoryParameter = true;
  time.minValue = 0;
  time.maxValue = 24;
  time.decimals = 2;
  time.keyframes = { { 0, 8.5 }, { 5000, 18.25 } };
  kovFiledItem sky;
  sky.animationType = kovAnimationItem::CustomParameter;
  sky.paramsType = kovAnimationItem::Text;
  sky.customParameterName = QStringLiteral("Sky Sequence");
  sky.valueList = QStringList { QStringLiteral("Cirrus"), QStringLiteral("Rainy") };
  sky.keyframes = { { 0, QStringLiteral("Rainy") } };
  environment.items = { time, sky };
  kovFiledTrack chair;
  chair.name = QStringLiteral("Chair");
  chair.entityHandle = d.sample.chairRef.getHandle();
  kovFiledItem scale;
  scale.animationType = kovAnimationItem::Scale;
  scale.keyframes = { { 0, 1.0 }, { 1000, 2.0 } };
  chair.items = { scale };
  kovFiledTrack lamp;
  lamp.name = QStringLiteral("Lamp");
  lamp.entityHandle = d.lampRef.getHandle();
  kovFiledItem walk;
  walk.keyframes = { { 0, QVariantList { 0.0, 0.0, 0.0 } }, { 3000, QVariantList { 3.0, 4.0, 0.0 } } };
  lamp.items = { walk };
  kovFiledTrack spawned;
  spawned.name = QStringLiteral("Spawned chair");
  spawned.entityUniqueName = QStringLiteral("Chair");
  spawned.blockMatrix[0][3] = 4.0;
  a.tracks = { camera, environment, chair, lamp, spawned };
  kovFiledCut cut;
  cut.name = QStringLiteral("Arrival");
  cut.endMs = 5000;
  cut.frameRate = 30;
  cut.viewHandle = d.sample.view.getHandle();
  kovFiledCut still = cut;
  still.name = QStringLiteral("Still");
  still.stillImage = true;
  still.pathTracing = true;
  a.cuts = { cut, still };

  kovDbAnimationPtr animation = kovSamples::makeAnimation(a, db);
  kovAnimationTrack* spawnedTrack = animation->editTracks().back().get();
  spawnedTrack->setEntityUniqueName(db, spawned.entityUniqueName);
  a.tracks.back().hasBlock = !spawnedTrack->blockId().isNull();
  a.tracks.back().blockHandle = spawnedTrack->blockId().getHandle();
  for (const kovAnimationTrackPtr& track : animation->constTracks())
    animation->connetTrackSignals(track.get());
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  d.animation = modelSpace->appendOdDbEntity(animation);
  return d;
}

// A drawing file image whose body length and checksum are made to agree with
// its bytes, however they were changed.
inline std::vector<OdUInt8> kovSealDrawingImage(std::vector<OdUInt8> image)
{
  if (image.size() < kDbFileHeaderSize + kDbFileTrailerSize)
    return image;
  const OdUInt64 body = image.size() - kDbFileHeaderSize - kDbFileTrailerSize;
  std::memcpy(image.data() + kDbFileHeaderSize - 8, &body, 8);
  const OdUInt32 crc = odDbCrc32(image.data() + kDbFileHeaderSize, body);
  std::memcpy(image.data() + image.size() - kDbFileTrailerSize, &crc, 4);
  return image;
}

#endif
