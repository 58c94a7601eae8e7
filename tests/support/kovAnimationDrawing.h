#ifndef KOV_ANIMATION_DRAWING_H
#define KOV_ANIMATION_DRAWING_H

// A drawing that holds an animation of every kind of track. Header only, like
// kovFilingSamples.h.

#include "kovFilingSamples.h"
#include "kovSampleDrawing.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"

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
  d.lampBlock = kovAddBlock(db, OdString(L"Lamp xblock"));
  d.lampRef = kovAddReference(db, d.lampBlock);

  kovFiledAnimation& a = d.record;
  a.name = QStringLiteral("Tour");
  a.description = QString::fromUtf8("Morning \xE2\x98\x80");
  a.selectedTrackIndex = 0;
  a.selectedElementIndex = 1;
  a.currentPositionMs = 2500;
  kovFiledTrack camera;
  camera.name = QStringLiteral("Camera");
  camera.entityUniqueName = QStringLiteral("Camera");
  kovFiledItem path = kovSamples::filedItem(kovAnimationItem::LocationBySpline,
                                            { { 0, QVariantList { 10.0, 0.0, 1.8, 0.0, 0.0, 0.0 } },
                                              { 2000, QVariantList { 20.0, 10.0, 1.8, 1.0, 0.0, 0.0 } },
                                              { 5000, QVariantList { 30.0, 0.0, 1.8, 0.0, 0.0, 0.0 } } });
  path.faceDirection = true;
  path.durationByAnimationSpeed = false;
  camera.items = { path, kovSamples::filedItem(kovAnimationItem::RotationByAngles,
                                               { { 0, QVariantList { 0.0, 0.0, 0.0, 0.0, 0.0, 90.0 } } }) };
  kovFiledTrack environment;
  environment.name = QStringLiteral("Environment");
  environment.entityUniqueName = QStringLiteral("Environment");
  kovFiledItem sky = kovSamples::filedItem(kovAnimationItem::CustomParameter, { { 0, QStringLiteral("Rainy") } },
                                           "Sky Sequence", kovAnimationItem::Text);
  sky.valueList = QStringList { QStringLiteral("Cirrus"), QStringLiteral("Rainy") };
  environment.items = { kovSamples::factoryParameter(
                          kovSamples::filedItem(kovAnimationItem::CustomParameter, { { 0, 8.5 }, { 5000, 18.25 } }, "Time"),
                          0, 24, 2),
                        sky };
  kovFiledTrack chair;
  chair.name = QStringLiteral("Chair");
  chair.entityHandle = d.sample.chairRef.getHandle();
  chair.items = { kovSamples::filedItem(kovAnimationItem::Scale, { { 0, 1.0 }, { 1000, 2.0 } }) };
  kovFiledTrack lamp;
  lamp.name = QStringLiteral("Lamp");
  lamp.entityHandle = d.lampRef.getHandle();
  lamp.items = { kovSamples::filedItem(kovAnimationItem::LocationByPoints,
                                       { { 0, QVariantList { 0.0, 0.0, 0.0 } }, { 3000, QVariantList { 3.0, 4.0, 0.0 } } }) };
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

#endif
