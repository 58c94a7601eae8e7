#ifndef KOV_TRACK_FACTORY_H
#define KOV_TRACK_FACTORY_H

#include "db/kovCameraCut.h"

#include <QList>
#include <QPair>
#include <QStringList>

class OdDbDatabase;
class kovDbAnimation;

// New tracks with the sub-tracks a subject of their kind starts with: what
// the tracks header's "+" adds, and what scripts add without the editor.
class kovTrackFactory {
public:
  // The host settings of the site an environment track starts from, in
  // degrees: east longitude, north latitude, and north's turn from +Y.
  static const char* const kLongitudeSetting;
  static const char* const kLatitudeSetting;
  static const char* const kNorthSetting;
  // The hour of the day an environment track starts at.
  static constexpr double kStartHour = 12.0;

  // A path laid out at eye height that the camera looks along, and angles
  // that add no turn of their own until given some.
  static kovAnimationTrackPtr camera(OdDbDatabase* db, const QString& name);
  // A path by points that starts where the entity stands.
  static kovAnimationTrackPtr entity(const OdDbObjectId& entity, const QString& name);
  // The sun at the site's place and north at the start hour.
  static kovAnimationTrackPtr environment(OdDbDatabase* db, const QString& name);
  // A library block spawned at the origin, named as the block.
  static kovAnimationTrackPtr spawnedObject(OdDbDatabase* db, const QString& block);
  // A placed library block, named as its block (name when it has none).
  static kovAnimationTrackPtr placedObject(const OdDbObjectId& reference, const QString& name);

  // The library's blocks as the host knows them, else the drawing's blocks
  // named as library blocks ("xblock" in the name).
  static QStringList libraryBlocks(OdDbDatabase* db);
  // The references to library blocks the user placed in model space (not
  // the stand-ins animations make), labelled by block name and handle.
  static QList<QPair<QString, OdDbObjectId>> placedObjects(OdDbDatabase* db);

  // Appends the track to the animation (open for write), keeps its
  // constrained values up to date and gives it a name no other track has.
  static void add(kovDbAnimation* animation, const kovAnimationTrackPtr& track);
};

#endif
