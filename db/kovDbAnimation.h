#ifndef KOV_DB_ANIMATION_H
#define KOV_DB_ANIMATION_H

#include "db/kovCameraCut.h"

#include "host/api/IkovAnimatedScene.h"

#include "Db/OdDbEntity.h"

#include <QString>

#include <memory>
#include <vector>

class kovDbAnimationTrackWatcher;

// The drawing entity that owns one animation: its tracks (shared), its camera
// cuts (by value), a name and a description, the editor's time cursor and
// selection, and whether its gizmos are hidden.
//
// Readers open the entity for read and writers for write; every accessor
// below asserts that, as the database's objects do.
class kovDbAnimation : public OdDbEntity {
public:
  ODDB_DECLARE_MEMBERS(kovDbAnimation);
  kovDbAnimation();
  ~kovDbAnimation() override;

  QString animationName() const;
  QString animationDescription() const;
  void setName(const QString& name);
  void setDescription(const QString& description);

  int currentPositionMs() const;
  void setCurrentPosition(int ms);
  int selectedTrackIndex() const;
  void setSelectedTrackIndex(int index);
  int selectedElementIndex() const;
  void setSelectedElementIndex(int index);
  int selectedSceneCutIndex() const;
  void setSelectedSceneCutIndex(int index);

  // The track at the selected index, or null when the index is out of range.
  kovAnimationTrackPtr selectedTrack() const;
  // The sub-track at the selected indexes, or null when either is out of range.
  kovAnimationItem* selectedElement() const;
  int indexOf(const kovAnimationTrack* track) const;

  const std::vector<kovAnimationTrackPtr>& constTracks() const;
  std::vector<kovAnimationTrackPtr>& editTracks();
  const QList<kovCameraCut>& sceneCuts() const;
  QList<kovCameraCut>& sceneCuts();

  bool areGizmosHidden() const;
  bool& hideAnimationGizmos();
  // Whether the editor looks through the animation's camera while the
  // position moves. A setting of the session: not filed.
  bool viewsThroughCamera() const;
  void setViewsThroughCamera(bool on);

  // Keeps the track's keyframes that depend on other data up to date
  // whenever one of its sub-tracks changes.
  void connetTrackSignals(kovAnimationTrack* track);
  // Renames the track "<name> 1", "<name> 2", ... until no other track has its name.
  void makeTrackNameUnique(kovAnimationTrack* track);
  // The end of the latest track: its start plus its last keyframe time.
  int totalDurationMs() const;
  // Copies the description, the tracks and the cuts (not the name, the time
  // cursor, the selection or the gizmo flag) into target.
  void copyContent(kovDbAnimation* target) const;

  // The scene around playback: the view of a viewport saved before an
  // animation takes it over, kept per animation and viewport until restored.
  static bool sceneHasSavedState(const OdDbObjectId& animationId, int viewport);
  // Saves the viewport's view and writes the cut's image settings into the
  // host's production settings ("AnimationProduction/" or "ImageProduction/").
  static void saveSceneState(const OdDbObjectId& animationId, int viewport, const kovCameraCut& cut);
  // Puts the saved view back, forgets it and has the host redraw.
  static void restoreSceneState(const OdDbObjectId& animationId, int viewport);

  // Shows the cut's named view in the active viewport.
  void setNamedView(const kovCameraCut& cut) const;
  // Looks through the camera track at the current position: eye, target,
  // field of view and depth of field.
  void updateCurrentView(const kovAnimationTrack* track) const;
  // What the animation shows at the current position: its subjects where
  // their tracks put them, the sun and sky, and the camera of the selected
  // cut's track (else the selected track, else the first camera track).
  IkovAnimatedScene::Frame sceneFrame() const;

  // Draws the icons' pixels once and registers the properties provider
  // (module start); lets both go (module end).
  static void initializeGlobalObjects();
  static void uninitializeGlobalObjects();
  // The provider of the property palette, "kovDbEntityAnimation": the
  // class OdDbXmlPropAnimation, which the layer above the data model
  // defines and the module registers. Without that class the palette shows
  // the entity as any other.
  static void registerAnimationPropertiesProvider();
  static void unregisterAnimationPropertiesProvider();
  // Has the host redraw what the animation shows: the whole scene when an
  // environment track moves the sun, the animation itself otherwise.
  void invalidateDrawings() const;

  // Layout in kovDbAnimationFiling.cpp.
  OdResult dwgInFields(OdDbDwgFiler* filer) override;
  void dwgOutFields(OdDbDwgFiler* filer) const override;

protected:
  OdResult subErase(bool erasing) override;
  // The paths of the tracks and an icon per subject, unless the gizmos are hidden.
  bool subWorldDraw(OdGiWorldDraw* wd) const override;
  OdResult subGetGeomExtents(OdGeExtents3d& extents) const override;
  // One grip per keyframe of every location sub-track, in track order.
  OdResult subGetGripPoints(OdGePoint3dArray& gripPoints) const override;
  // Moves the keyframes the grips stand for.
  OdResult subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset) override;
  OdResult subTransformBy(const OdGeMatrix3d& xform) override;

  void drawAnimatedTrack(OdGiWorldDraw* wd, const kovAnimationTrack& track) const;
  void drawAnimationIcon(OdGiWorldDraw* wd, const kovAnimationTrack& track) const;

private:
  QString m_name;
  QString m_description;
  int m_selectedTrackIndex = -1;
  int m_selectedElementIndex = -1;
  int m_currentPositionMs = -1;
  int m_selectedSceneCutIndex = -1;
  std::vector<kovAnimationTrackPtr> m_tracks;
  QList<kovCameraCut> m_cuts;
  bool m_gizmosHidden = false;
  bool m_viewsThroughCamera = false;
  std::unique_ptr<kovDbAnimationTrackWatcher> m_watcher;
};

typedef OdSmartPtr<kovDbAnimation> kovDbAnimationPtr;

#endif
