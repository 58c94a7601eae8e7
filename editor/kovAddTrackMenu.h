#ifndef KOV_ADD_TRACK_MENU_H
#define KOV_ADD_TRACK_MENU_H

#include "db/kovCameraCut.h"

#include <QList>
#include <QObject>

class kovAnimationEditorWidget;

// "Add a new animation track": the kinds of track the tracks header's button
// offers, and the tracks they add to the editing animation with the
// sub-tracks a subject of that kind starts with.
class kovAddTrackMenu : public QObject {
  Q_OBJECT
public:
  enum Kind { CameraTrack, EntityTrack, EnvironmentTrack, SpawnedObjectTrack, DbObjectTrack };

  // The host settings of the site an environment track starts from, in
  // degrees: east longitude, north latitude, and north's turn from +Y.
  static const char* const kLongitudeSetting;
  static const char* const kLatitudeSetting;
  static const char* const kNorthSetting;
  // The hour of the day an environment track starts at.
  static constexpr double kStartHour = 12.0;

  explicit kovAddTrackMenu(kovAnimationEditorWidget* editor);

  static QString text(Kind kind);
  // Camera, entity and environment tracks always; tracks of library objects
  // (spawned or placed) only with the host's "AnimationsAdvanced" setting,
  // which is on unless the host turns it off.
  static QList<Kind> offeredKinds();

  // Shows the kinds under the button and adds the chosen one.
  void showMenu();
  // Adds a track of that kind, asking for its subject where it needs one;
  // false when none was added (no animation, nothing to bind, cancelled).
  bool addTrack(Kind kind);

private:
  kovAnimationTrackPtr cameraTrack() const;
  kovAnimationTrackPtr entityTrack(const OdDbObjectId& entity) const;
  kovAnimationTrackPtr environmentTrack() const;
  kovAnimationTrackPtr spawnedTrack(const QString& block) const;
  kovAnimationTrackPtr placedObjectTrack(const OdDbObjectId& reference) const;
  OdDbObjectId chooseEntity() const;
  QString chooseLibraryBlock() const;
  OdDbObjectId choosePlacedObject() const;

  kovAnimationEditorWidget* m_editor;
};

#endif
