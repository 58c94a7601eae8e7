#ifndef KOV_ADD_TRACK_MENU_H
#define KOV_ADD_TRACK_MENU_H

#include "db/kovCameraCut.h"

#include <QList>
#include <QObject>

class kovAnimationEditorWidget;

// "Add a new animation track": the kinds of track the tracks header's button
// offers, the subject each asks for, and the track (kovTrackFactory) it adds
// to the editing animation.
class kovAddTrackMenu : public QObject {
  Q_OBJECT
public:
  enum Kind { CameraTrack, EntityTrack, EnvironmentTrack, SpawnedObjectTrack, DbObjectTrack };

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
  OdDbObjectId chooseEntity() const;
  QString chooseLibraryBlock() const;
  OdDbObjectId choosePlacedObject() const;

  kovAnimationEditorWidget* m_editor;
};

#endif
