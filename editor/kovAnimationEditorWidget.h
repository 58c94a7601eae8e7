#ifndef KOV_ANIMATION_EDITOR_WIDGET_H
#define KOV_ANIMATION_EDITOR_WIDGET_H

#include "db/kovDbAnimation.h"
#include "editor/kovTimelineScale.h"

#include "Db/OdDbObjectId.h"

#include <QDateTime>
#include <QIcon>
#include <QMap>
#include <QModelIndex>
#include <QPointer>
#include <QWidget>

#include <functional>

class OdDbDatabase;
class QAbstractItemModel;
class QCheckBox;
class QComboBox;
class QPushButton;
class QSpinBox;
class QTableView;
class QTimer;
class kovAnimationModel;
class kovAnimationTimelineHeaderWidget;
class kovAnimationTracksHeaderWidget;
class kovAnimationTreeView;

// The dockable animation editor. It shows the module's editing animation:
// its tracks and sub-tracks in the track tree, their keyframes on the
// timeline beside it, and the camera-cut bar for preview and production.
// Every change goes through the animation entity opened for write; the
// widget keeps nothing of the animation but the current position it shows,
// the visible start and the zoom of the timeline.
class kovAnimationEditorWidget : public QWidget {
  Q_OBJECT
public:
  explicit kovAnimationEditorWidget(QWidget* parent = nullptr);
  ~kovAnimationEditorWidget() override;

  // The animation shown (the module's editing animation), or null.
  OdDbObjectId animationId() const;
  // The shown animation opened for read or write; null without one.
  kovDbAnimationPtr openAnimation(OdDb::OpenMode mode = OdDb::kForRead) const;
  // The shown animation opened for write to change what is not an edit (its
  // current time, its selected track): no undo step keeps it.
  kovDbAnimationPtr openAnimationState() const;
  OdDbDatabase* database() const { return m_db; }

  // The shown animation's current time. Setting it writes it into the
  // entity, looks through the camera when "Animation Camera" is on, has the
  // host redraw the animated scene and says currentPositionChanged.
  int currentPosition() const { return m_position; }
  void setCurrentPosition(int ms);
  // The time at the left edge of the timeline's lane.
  int visibleStart() const { return m_visibleStart; }
  void setVisibleStart(int ms);
  // Moves the visible range by a share of its width, a tenth per wheel step
  // of 120; as with a scroll bar, a positive delta goes back in time.
  void panBy(int wheelDelta);
  // Scrolls so that the current time shows, a tenth of the width from the
  // left edge, when it lies outside the visible range.
  void ensurePositionVisible();
  // Clamped to kovTimelineScale's range; keeps the current-time cursor at
  // its pixel.
  double zoom() const { return m_zoom; }
  void setZoom(double zoom);
  // The scale for the lane as wide as the tree's column 1 is now.
  const kovTimelineScale& scale() const { return m_scale; }
  void updateScale();
  int totalDuration() const;

  // Every edit of the shown animation (a menu entry, a dialog's OK, a whole
  // drag on the timeline) calls beginEdit right before it writes and
  // editDone after. beginEdit is false without an animation: the edit then
  // does nothing. It is the one place where an edit's step of the drawing's
  // history begins.
  bool beginEdit();
  // The tree, the animation's length and the views follow the edit.
  void editDone();

  kovAnimationModel* model() const { return m_model; }
  kovAnimationTreeView* treeView() const { return m_tree; }
  QTimer* playbackTimer() const { return m_timer; }
  QTableView* cutTable() const { return m_cutTable; }
  // The camera-cut table's model, one row per cut of the shown animation
  // (the production model); none until it is given.
  void setCutModel(QAbstractItemModel* model);
  // What "Execute Camera Cuts Production" asks before a production of the
  // cut at that row of the table starts; true to go on. Production gives it,
  // with the table's model.
  void setProductionConfirmation(std::function<bool(int cutRow)> confirm) { m_confirmProduction = std::move(confirm); }
  // What each tick of the playback timer does while a production runs
  // (saveFrameImage); production gives it.
  void setProductionTick(std::function<void()> tick) { m_productionTick = std::move(tick); }
  // What Play asks first for the cut at that row: true when production took
  // the preview over (a render engine that needs time per picture is shown
  // frame by frame under production's own dialog), false to play the cut in
  // real time here.
  void setPreviewStart(std::function<bool(int cutRow)> start) { m_startPreview = std::move(start); }
  kovAnimationTracksHeaderWidget* tracksHeader() const { return m_tracksHeader; }
  kovAnimationTimelineHeaderWidget* timelineHeader() const { return m_timelineHeader; }

signals:
  void currentPositionChanged(int currentMillisecond);
  void currentZoomChanged(double currentZoom);
  void animationSizeChanged(int totalMilliseconds);
  // The user confirmed the production of the cut at that row of the table;
  // the playback timer then ticks every 10 ms with the producing flag set.
  void productionConfirmed(int cutRow);

public slots:
  void refresh(QString qsKey, QString qsArg);
  void selectAnimation(OdDbObjectId animationId);
  void selectItem(int trackIndex, int elementIndex, int kfIndex);
  void checkActiveProductionButtons(QModelIndex current);
  void onPlaybackTimer();
  void saveFrameImage();
  void onProductionCanceled();

private:
  void buildLayout();
  void rebuildCombo();
  void rebuildTree();
  void rememberTreeSelection(const QModelIndex& current);
  void showDatabase(OdDbDatabase* db);
  void createAnimation();
  void continueCreate(const OdDbObjectId& previous);
  void removeAnimation();
  void editNameAndDescription();
  void playPause();
  void stop();
  void stepCut(int delta);
  void addCut();
  void removeCut();
  void produce();
  void applyAnimationCamera();
  void setPlaying(bool playing);

  OdDbDatabase* m_db = nullptr;
  QMap<OdDbDatabase*, OdDbObjectId> m_shownByDatabase;
  int m_position = 0;
  int m_visibleStart = 0;
  double m_zoom = kovTimelineScale::kInitialZoom;
  kovTimelineScale m_scale;

  QComboBox* m_animations = nullptr;
  QPushButton* m_create = nullptr;
  QPushButton* m_remove = nullptr;
  QPushButton* m_edit = nullptr;
  QPushButton* m_productionPanel = nullptr;
  kovAnimationTracksHeaderWidget* m_tracksHeader = nullptr;
  kovAnimationTimelineHeaderWidget* m_timelineHeader = nullptr;
  kovAnimationTreeView* m_tree = nullptr;
  kovAnimationModel* m_model = nullptr;
  QWidget* m_productionBar = nullptr;
  QPushButton* m_previous = nullptr;
  QPushButton* m_stop = nullptr;
  QPushButton* m_play = nullptr;
  QPushButton* m_next = nullptr;
  QSpinBox* m_positionBox = nullptr;
  QPushButton* m_addCut = nullptr;
  QPushButton* m_removeCut = nullptr;
  QPushButton* m_produce = nullptr;
  QCheckBox* m_animationCamera = nullptr;
  QTableView* m_cutTable = nullptr;
  QIcon m_playIcon;
  QIcon m_pauseIcon;
  QTimer* m_timer = nullptr;
  std::function<bool(int)> m_confirmProduction;
  std::function<void()> m_productionTick;
  std::function<bool(int)> m_startPreview;
};

#endif
