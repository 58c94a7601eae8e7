#include "editor/kovAnimationEditorWidget.h"

#include "db/kovEditingState.h"
#include "editor/kovAddTrackMenu.h"
#include "editor/kovAnimationEditActions.h"
#include "editor/kovAnimationModel.h"
#include "editor/kovAnimationNameDialog.h"
#include "editor/kovAnimationTimelineHeaderWidget.h"
#include "editor/kovAnimationTracksHeaderWidget.h"
#include "editor/kovAnimationTreeView.h"
#include "editor/kovEditorResources.h"

#include "host/api/IkovApplication.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbObjectIterator.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>
#include <optional>

Q_DECLARE_METATYPE(OdDbObjectId)

namespace {

const QString kRefreshKeys = QStringLiteral(
    "<event-refresh:selection_changed>|<event-refresh:database_changed>|<event-refresh:database_closed>|"
    "<event-refresh:layout_changed>");
const QString kNewAnimationLine = QStringLiteral("createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 Finish");
// The command that makes a new animation runs from the command line: give it
// time to finish before the new animation is taken up.
const int kCreateContinuationMs = 500;
const int kMaxPositionMs = 10800000;
// A production polls the render engine this often.
const int kProductionTickMs = 10;

QPushButton* toolButton(const QString& icon, const QString& toolTip, QWidget* parent)
{
  auto* button = new QPushButton(QIcon(icon), QString(), parent);
  button->setToolTip(toolTip);
  return button;
}

QList<kovDbAnimationPtr> animationsOf(OdDbDatabase* db)
{
  QList<kovDbAnimationPtr> animations;
  OdDbObjectPtr space = db ? db->getModelSpaceId().openObject(OdDb::kForRead) : OdDbObjectPtr();
  OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::cast(space.get());
  for (OdDbObjectIteratorPtr it = modelSpace.isNull() ? OdDbObjectIteratorPtr() : modelSpace->newIterator();
       !it.isNull() && !it->done(); it->step()) {
    OdDbObjectPtr object = it->objectId().openObject(OdDb::kForRead);
    kovDbAnimationPtr animation = kovDbAnimation::cast(object.get());
    if (!animation.isNull())
      animations << animation;
  }
  return animations;
}

// The cuts of an animation open for read (the other overload asks for write).
const QList<kovCameraCut>& cutsOf(const kovDbAnimation& animation)
{
  return animation.sceneCuts();
}

bool isCameraTrack(const kovAnimationTrackPtr& track)
{
  return !track.isNull() && track->trackTypeIdentifier() == QLatin1String("Camera");
}

// A table that asks for a few rows only, so that the tracks above get the
// dock's height; the splitter gives it more.
class CutTable : public QTableView {
public:
  using QTableView::QTableView;
  QSize sizeHint() const override { return QSize(400, horizontalHeader()->sizeHint().height() * 4); }
  QSize minimumSizeHint() const override { return QSize(200, horizontalHeader()->sizeHint().height() * 2); }
};

} // namespace

kovAnimationEditorWidget::kovAnimationEditorWidget(QWidget* parent)
  : QWidget((kovInitEditorResources(), parent))
  , m_playIcon(QStringLiteral(":/animation/icons/play.png"))
  , m_pauseIcon(QStringLiteral(":/animation/icons/pause.png"))
  , m_timer(new QTimer(this))
{
  setObjectName(QStringLiteral("kovAnimationEditorWidget"));
  m_model = new kovAnimationModel(this);
  buildLayout();
  new kovAnimationEditActions(this);
  new kovAddTrackMenu(this);
  connect(m_timer, &QTimer::timeout, this, &kovAnimationEditorWidget::onPlaybackTimer);
  if (IkovApplication* app = kovApp()) {
    app->registerRefreshEvents(kRefreshKeys, this);
    showDatabase(app->currentDatabase());
  }
  updateScale();
  checkActiveProductionButtons(QModelIndex());
}

kovAnimationEditorWidget::~kovAnimationEditorWidget()
{
  if (IkovApplication* app = kovApp())
    app->unregisterRefreshEvents(kRefreshKeys, this);
}

void kovAnimationEditorWidget::buildLayout()
{
  auto* title = new QHBoxLayout;
  title->addWidget(new QLabel(tr("Editing Animation"), this));
  m_animations = new QComboBox(this);
  m_animations->setObjectName(QStringLiteral("Animations"));
  m_animations->setSizePolicy(QSizePolicy::Expanding, m_animations->sizePolicy().verticalPolicy());
  title->addWidget(m_animations);
  m_create = toolButton(QStringLiteral(":/animation/icons/_0051_add-mark"), tr("Create New Animation"), this);
  m_remove = toolButton(QStringLiteral(":/animation/icons/_0052_close-mark.png"), tr("Remove Current Animation"), this);
  m_edit = toolButton(QStringLiteral(":/animation/icons/editing_big.png"), tr("Edit Animation Name and Description"),
                      this);
  m_productionPanel = toolButton(QStringLiteral(":/animation/icons/animations.png"), tr("Open Production Panel"), this);
  m_productionPanel->setCheckable(true);
  m_productionPanel->setChecked(true);
  for (QPushButton* button : { m_create, m_remove, m_edit, m_productionPanel })
    title->addWidget(button);

  m_tracksHeader = new kovAnimationTracksHeaderWidget(this, this);
  m_timelineHeader = new kovAnimationTimelineHeaderWidget(this, this);
  m_tree = new kovAnimationTreeView(this, this);
  m_tree->setModel(m_model);
  connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &kovAnimationEditorWidget::rememberTreeSelection);
  auto* headers = new QHBoxLayout;
  headers->setSpacing(0);
  headers->addWidget(m_tracksHeader);
  headers->addWidget(m_timelineHeader, 1);

  m_productionBar = new QWidget(this);
  auto* bar = new QHBoxLayout(m_productionBar);
  bar->setContentsMargins(0, 0, 0, 0);
  m_previous = toolButton(QStringLiteral(":/animation/icons/prev_track.png"), tr("Previous Camera Cut"), m_productionBar);
  m_stop = toolButton(QStringLiteral(":/animation/icons/stop.png"), tr("Stop Camera Cut Preview"), m_productionBar);
  m_play = toolButton(QStringLiteral(":/animation/icons/play.png"), tr("Play/Pause Camera Cut Preview"), m_productionBar);
  m_next = toolButton(QStringLiteral(":/animation/icons/next_track.png"), tr("Next Camera Cut"), m_productionBar);
  m_positionBox = new QSpinBox(m_productionBar);
  m_positionBox->setObjectName(QStringLiteral("Position"));
  m_positionBox->setEnabled(false);
  m_positionBox->setRange(0, kMaxPositionMs);
  m_positionBox->setMinimumSize(90, 26);
  m_addCut = toolButton(QStringLiteral(":/animation/icons/_0051_add-mark"), QString(), m_productionBar);
  m_removeCut = toolButton(QStringLiteral(":/animation/icons/_0052_close-mark.png"), QString(), m_productionBar);
  m_produce = toolButton(QStringLiteral(":/animation/icons/animations.png"), tr("Execute Camera Cuts Production"),
                         m_productionBar);
  m_animationCamera = new QCheckBox(tr("Animation Camera"), m_productionBar);
  for (QWidget* widget : std::initializer_list<QWidget*> { m_previous, m_stop, m_play, m_next, m_positionBox, m_addCut,
                                                           m_removeCut, m_produce, m_animationCamera })
    bar->addWidget(widget);
  bar->addStretch();

  m_cutTable = new CutTable(this);
  m_cutTable->setObjectName(QStringLiteral("CameraCuts"));
  m_cutTable->setMinimumWidth(400);
  m_cutTable->verticalHeader()->hide();
  m_cutTable->setEditTriggers(QAbstractItemView::AllEditTriggers);

  // The tracks get the room; the user drags the splitter to see more cuts.
  auto* production = new QWidget(this);
  auto* productionLayout = new QVBoxLayout(production);
  productionLayout->setContentsMargins(0, 0, 0, 0);
  productionLayout->addWidget(m_productionBar);
  productionLayout->addWidget(m_cutTable, 1);
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(m_tree);
  splitter->addWidget(production);
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 0);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(title);
  layout->addLayout(headers);
  layout->addWidget(splitter, 1);

  connect(m_animations, qOverload<int>(&QComboBox::currentIndexChanged), this,
          [this](int row) { selectAnimation(m_animations->itemData(row).value<OdDbObjectId>()); });
  connect(m_animations, &QComboBox::editTextChanged, this, [this](const QString& text) {
    m_animations->setItemText(m_animations->currentIndex(), text);
  });
  connect(m_create, &QPushButton::clicked, this, &kovAnimationEditorWidget::createAnimation);
  connect(m_remove, &QPushButton::clicked, this, &kovAnimationEditorWidget::removeAnimation);
  connect(m_edit, &QPushButton::clicked, this, &kovAnimationEditorWidget::editNameAndDescription);
  connect(m_productionPanel, &QPushButton::toggled, production, &QWidget::setVisible);
  connect(m_previous, &QPushButton::clicked, this, [this] { stepCut(-1); });
  connect(m_next, &QPushButton::clicked, this, [this] { stepCut(1); });
  connect(m_stop, &QPushButton::clicked, this, &kovAnimationEditorWidget::stop);
  connect(m_play, &QPushButton::clicked, this, &kovAnimationEditorWidget::playPause);
  connect(m_addCut, &QPushButton::clicked, this, &kovAnimationEditorWidget::addCut);
  connect(m_removeCut, &QPushButton::clicked, this, &kovAnimationEditorWidget::removeCut);
  connect(m_produce, &QPushButton::clicked, this, &kovAnimationEditorWidget::produce);
  connect(m_animationCamera, &QCheckBox::toggled, this, &kovAnimationEditorWidget::applyAnimationCamera);
}

void kovAnimationEditorWidget::setCutModel(QAbstractItemModel* model)
{
  m_cutTable->setModel(model);
  if (!model)
    return;
  QHeaderView* columns = m_cutTable->horizontalHeader();
  for (int column = 0; column < model->columnCount(); ++column)
    columns->setSectionResizeMode(column, column == 0 || column == 3 ? QHeaderView::Stretch
                                                                     : QHeaderView::ResizeToContents);
  connect(m_cutTable->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) { checkActiveProductionButtons(current); });
}

OdDbObjectId kovAnimationEditorWidget::animationId() const
{
  return m_model->animationId();
}

kovDbAnimationPtr kovAnimationEditorWidget::openAnimation(OdDb::OpenMode mode) const
{
  OdDbObjectPtr object = m_model->animationId().openObject(mode);
  return kovDbAnimation::cast(object.get());
}

kovDbAnimationPtr kovAnimationEditorWidget::openAnimationState() const
{
  OdDbDatabase* db = animationId().database();
  if (!db)
    return kovDbAnimationPtr();
  // Inside an edit's step the state joins it, so that undoing the edit puts
  // the time and selection back too; outside one it makes no step of its
  // own. The history keeps an object when it is opened for write, so only
  // the open needs to go unrecorded.
  const bool wasDisabled = db->isUndoRecordingDisabled();
  db->disableUndoRecording(wasDisabled || !db->isUndoStepOpen());
  kovDbAnimationPtr animation = openAnimation(OdDb::kForWrite);
  db->disableUndoRecording(wasDisabled);
  return animation;
}

int kovAnimationEditorWidget::totalDuration() const
{
  const kovDbAnimationPtr animation = openAnimation();
  return animation.isNull() ? 0 : animation->totalDurationMs();
}

bool kovAnimationEditorWidget::beginEdit()
{
  const OdDbObjectId id = animationId();
  if (id.isNull() || id.isErased())
    return false;
  id.database()->startUndoRecord();
  return true;
}

void kovAnimationEditorWidget::editDone()
{
  rebuildTree();
  if (const kovDbAnimationPtr animation = openAnimation(); !animation.isNull())
    animation->invalidateDrawings();
}

void kovAnimationEditorWidget::setCurrentPosition(int ms)
{
  ms = std::max(0, std::min(ms, kMaxPositionMs));
  if (ms == m_position)
    return;
  m_position = ms;
  m_scale.cursorOffset = m_position - m_scale.firstTick;
  if (kovDbAnimationPtr animation = openAnimationState(); !animation.isNull()) {
    animation->setCurrentPosition(ms);
    const kovAnimationTrackPtr selected = animation->selectedTrack();
    if (animation->viewsThroughCamera() && isCameraTrack(selected))
      animation->updateCurrentView(selected.get());
    // The host's engine shows the animated scene at the new time.
    animation->invalidateDrawings();
  }
  {
    const QSignalBlocker blocker(m_positionBox);
    m_positionBox->setValue(ms);
  }
  m_tree->viewport()->update();
  m_timelineHeader->update();
  emit currentPositionChanged(ms);
}

void kovAnimationEditorWidget::setVisibleStart(int ms)
{
  if (ms == m_visibleStart)
    return;
  m_visibleStart = ms;
  updateScale();
}

void kovAnimationEditorWidget::panBy(int wheelDelta)
{
  const double visibleMs = m_scale.lastVisible - m_scale.visibleStart;
  setVisibleStart(m_visibleStart - static_cast<int>(std::lround(visibleMs * wheelDelta / 1200.0)));
}

void kovAnimationEditorWidget::ensurePositionVisible()
{
  if (m_position >= m_scale.visibleStart && m_position <= m_scale.lastVisible)
    return;
  setVisibleStart(m_position - (m_scale.lastVisible - m_scale.visibleStart) / 10);
}

void kovAnimationEditorWidget::setZoom(double zoom)
{
  zoom = std::max(kovTimelineScale::kMinZoom, std::min(zoom, kovTimelineScale::kMaxZoom));
  if (zoom == m_zoom)
    return;
  // The current-time cursor keeps its pixel.
  const double pixels = (m_visibleStart - m_position) * m_scale.pixelsPerMs;
  m_zoom = zoom;
  updateScale();
  m_visibleStart = m_position + static_cast<int>(std::lround(pixels * m_scale.msPerPixel));
  updateScale();
  emit m_model->layoutChanged();
  emit currentZoomChanged(m_zoom);
}

void kovAnimationEditorWidget::updateScale()
{
  const double labelWidth = QFontMetrics(QApplication::font()).horizontalAdvance(QStringLiteral("-250.0s"));
  m_scale = kovTimelineScale::compute(m_visibleStart, m_zoom, m_tree->laneWidth(), labelWidth, m_position);
  m_tree->viewport()->update();
  m_timelineHeader->update();
}

void kovAnimationEditorWidget::showDatabase(OdDbDatabase* db)
{
  if (m_db && m_db != db)
    m_shownByDatabase[m_db] = animationId();
  m_db = db;
  OdDbObjectId shown;
  if (db) {
    shown = m_shownByDatabase.value(db);
    const OdDbObjectId editing = kovEditingState::editingAnimationId();
    if (!editing.isNull() && editing.database() == db)
      shown = editing;
  }
  selectAnimation(shown);
  rebuildCombo();
}

void kovAnimationEditorWidget::rebuildCombo()
{
  const QSignalBlocker blocker(m_animations);
  m_animations->clear();
  if (!m_db)
    return;
  m_animations->addItem(tr("None"), QVariant::fromValue(OdDbObjectId()));
  for (const kovDbAnimationPtr& animation : animationsOf(m_db))
    m_animations->addItem(animation->animationName(), QVariant::fromValue(animation->objectId()));
  m_animations->setCurrentIndex(std::max(0, m_animations->findData(QVariant::fromValue(animationId()))));
}

void kovAnimationEditorWidget::rebuildTree()
{
  m_model->rebuild();
  m_tree->expandAll();
  emit animationSizeChanged(totalDuration());
}

// The tree's current row is the animation's selected track and sub-track,
// which "Add camera cut" and "Animation Camera" go by.
void kovAnimationEditorWidget::rememberTreeSelection(const QModelIndex& current)
{
  kovDbAnimationPtr animation = openAnimation();
  const int track = kovAnimationModel::trackIndexOf(current);
  const int element = kovAnimationModel::elementIndexOf(current);
  if (animation.isNull() || (animation->selectedTrackIndex() == track && animation->selectedElementIndex() == element))
    return;
  animation = openAnimationState();
  animation->setSelectedTrackIndex(track);
  animation->setSelectedElementIndex(element);
}

void kovAnimationEditorWidget::selectAnimation(OdDbObjectId id)
{
  OdDbObjectPtr object = id.isNull() ? OdDbObjectPtr() : id.openObject(OdDb::kForRead);
  if (kovDbAnimation::cast(object.get()).isNull())
    id.setNull();
  object = nullptr;
  kovEditingState::setEditingAnimation(id);
  m_model->setAnimation(id);
  m_tree->expandAll();
  const kovDbAnimationPtr animation = openAnimation();
  m_position = animation.isNull() ? 0 : std::max(0, animation->currentPositionMs());
  {
    const QSignalBlocker blocker(m_animationCamera);
    m_animationCamera->setChecked(!animation.isNull() && animation->viewsThroughCamera());
  }
  {
    const QSignalBlocker blocker(m_animations);
    m_animations->setCurrentIndex(std::max(0, m_animations->findData(QVariant::fromValue(id))));
  }
  m_remove->setEnabled(!id.isNull());
  m_edit->setEnabled(!id.isNull());
  {
    const QSignalBlocker blocker(m_positionBox);
    m_positionBox->setValue(m_position);
  }
  updateScale();
  emit currentPositionChanged(m_position);
  emit animationSizeChanged(totalDuration());
  checkActiveProductionButtons(QModelIndex());
}

void kovAnimationEditorWidget::selectItem(int trackIndex, int elementIndex, int kfIndex)
{
  int keyTime = -1;
  if (kovDbAnimationPtr animation = openAnimationState(); !animation.isNull()) {
    animation->setSelectedTrackIndex(trackIndex);
    animation->setSelectedElementIndex(elementIndex);
    const kovAnimationItem* item = animation->selectedElement();
    const kovAnimationTrackPtr track = animation->selectedTrack();
    if (item && kfIndex >= 0 && kfIndex < item->values().size())
      keyTime = track->startMillisecond() + item->values().keys().at(kfIndex);
  }
  const QModelIndex index = elementIndex >= 0 ? m_model->elementIndex(trackIndex, elementIndex)
                                              : m_model->trackIndex(trackIndex);
  m_tree->setCurrentIndex(index);
  if (keyTime >= 0)
    setCurrentPosition(keyTime);
}

void kovAnimationEditorWidget::refresh(QString qsKey, QString qsArg)
{
  Q_UNUSED(qsArg);
  if (qsKey == QLatin1String("<event-refresh:database_closed>")) {
    m_db = nullptr;
    selectAnimation(OdDbObjectId());
    rebuildCombo();
    return;
  }
  if (qsKey == QLatin1String("<event-refresh:layout_changed>")) {
    checkActiveProductionButtons(QModelIndex());
    return;
  }
  IkovApplication* app = kovApp();
  OdDbDatabase* db = app ? app->currentDatabase() : nullptr;
  if (db != m_db)
    showDatabase(db);
  else
    rebuildCombo();
  // A command may have made another animation the editing one.
  const OdDbObjectId editing = kovEditingState::editingAnimationId();
  if (!editing.isNull() && editing.database() == m_db && editing != animationId())
    selectAnimation(editing);
  // After the host has finished its own event.
  QMetaObject::invokeMethod(
      this, [this] { rebuildTree(); }, Qt::QueuedConnection);
}

void kovAnimationEditorWidget::createAnimation()
{
  const OdDbObjectId previous = animationId();
  selectAnimation(OdDbObjectId());
  if (IkovApplication* app = kovApp())
    app->executeCommand(kNewAnimationLine);
  QTimer::singleShot(kCreateContinuationMs, this, [this, previous] { continueCreate(previous); });
}

void kovAnimationEditorWidget::continueCreate(const OdDbObjectId& previous)
{
  const OdDbObjectId created = kovEditingState::editingAnimationId();
  OdDbObjectPtr object = created.openObject(OdDb::kForWrite);
  kovDbAnimationPtr animation = kovDbAnimation::cast(object.get());
  if (animation.isNull())
    return;
  {
    OdDbObjectPtr other = previous == created ? OdDbObjectPtr() : previous.openObject(OdDb::kForRead);
    kovDbAnimationPtr source = kovDbAnimation::cast(other.get());
    if (!source.isNull() && !source->constTracks().empty()
        && QMessageBox::question(this, tr("Copy Animation Tracks?"),
                                 tr("Do you want to copy the current animation tracks on the new animation?"),
                                 QMessageBox::Yes | QMessageBox::No)
               == QMessageBox::Yes) {
      source->copyContent(animation.get());
      animation->setSelectedTrackIndex(-1);
      animation->setSelectedElementIndex(-1);
    }
  }
  kovAnimationNameDialog dialog(animation->animationName(), animation->animationDescription(), this);
  if (dialog.exec() == QDialog::Accepted) {
    animation->setName(dialog.name());
    animation->setDescription(dialog.description());
  }
  animation = nullptr;
  object = nullptr;
  if (m_db != created.database())
    m_db = created.database();
  selectAnimation(created);
  rebuildCombo();
}

void kovAnimationEditorWidget::removeAnimation()
{
  kovDbAnimationPtr animation = openAnimation();
  if (animation.isNull())
    return;
  QMessageBox box(QMessageBox::Question, tr("Remove Confirmation"),
                  tr("Do you really want to remove ") + animation->animationName(), QMessageBox::Yes | QMessageBox::No,
                  this);
  box.setDefaultButton(QMessageBox::NoButton);
  if (box.exec() != QMessageBox::Yes)
    return;
  animation->upgradeOpen();
  animation->erase();
  animation = nullptr;
  const QList<kovDbAnimationPtr> others = animationsOf(m_db);
  selectAnimation(others.isEmpty() ? OdDbObjectId() : others.first()->objectId());
  rebuildCombo();
}

void kovAnimationEditorWidget::editNameAndDescription()
{
  kovDbAnimationPtr animation = openAnimation();
  if (animation.isNull())
    return;
  kovAnimationNameDialog dialog(animation->animationName(), animation->animationDescription(), this);
  if (dialog.exec() != QDialog::Accepted)
    return;
  animation->upgradeOpen();
  animation->setName(dialog.name());
  animation->setDescription(dialog.description());
  animation = nullptr;
  rebuildCombo();
}

void kovAnimationEditorWidget::setPlaying(bool playing)
{
  kovEditingState::isPlaying() = playing;
  m_play->setIcon(playing ? m_pauseIcon : m_playIcon);
  m_stop->setEnabled(playing);
}

void kovAnimationEditorWidget::playPause()
{
  if (kovEditingState::isPlaying()) {
    setPlaying(false);
    m_timer->stop();
    return;
  }
  const QModelIndex current = m_cutTable->currentIndex();
  kovDbAnimationPtr animation = openAnimation();
  if (!current.isValid() || animation.isNull() || current.row() >= cutsOf(*animation).size())
    return;
  const kovCameraCut cut = cutsOf(*animation).at(current.row());
  if (animation->selectedSceneCutIndex() != current.row()) {
    animation->upgradeOpen();
    animation->setSelectedSceneCutIndex(current.row());
  }
  animation = nullptr;
  if (m_startPreview && m_startPreview(current.row()))
    return;
  if (m_position >= cut.endMs)
    setCurrentPosition(cut.startMs);
  m_timer->setInterval(static_cast<int>(std::lround(1000.0 / cut.frameRate)));
  setPlaying(true);
  if (!m_timer->isActive())
    m_timer->start();
  const QDateTime now = QDateTime::currentDateTime();
  m_timer->setProperty("StartTime", now);
  m_timer->setProperty("LastFrameTime", now);
}

void kovAnimationEditorWidget::stop()
{
  m_timer->stop();
  setPlaying(false);
  setCurrentPosition(0);
}

void kovAnimationEditorWidget::stepCut(int delta)
{
  const QModelIndex current = m_cutTable->currentIndex();
  QAbstractItemModel* cuts = m_cutTable->model();
  if (!current.isValid() || !cuts)
    return;
  const int row = current.row() + delta;
  if (row < 0 || row >= cuts->rowCount())
    return;
  m_cutTable->setCurrentIndex(cuts->index(row, current.column()));
}

void kovAnimationEditorWidget::addCut()
{
  const kovDbAnimationPtr animation = openAnimation();
  QAbstractItemModel* cuts = m_cutTable->model();
  if (animation.isNull() || !cuts || !isCameraTrack(animation->selectedTrack()))
    return;
  const int row = cuts->rowCount();
  cuts->insertRows(row, 1);
}

void kovAnimationEditorWidget::removeCut()
{
  const QModelIndex current = m_cutTable->currentIndex();
  if (!current.isValid() || !m_cutTable->model())
    return;
  m_cutTable->model()->removeRows(current.row(), 1);
  checkActiveProductionButtons(QModelIndex());
}

void kovAnimationEditorWidget::produce()
{
  if (kovEditingState::isProducing()) {
    kovEditingState::isProducing() = false;
    m_timer->stop();
    if (kovEditingState::isPlaying())
      setPlaying(false);
    return;
  }
  const QModelIndex current = m_cutTable->currentIndex();
  if (!current.isValid() || !m_confirmProduction || !m_confirmProduction(current.row()))
    return;
  std::optional<int> start;
  if (const kovDbAnimationPtr animation = openAnimation();
      !animation.isNull() && current.row() < cutsOf(*animation).size())
    start = cutsOf(*animation).at(current.row()).startMs;
  if (!start)
    return;
  setCurrentPosition(*start);
  kovEditingState::isProducing() = true;
  setPlaying(true);
  const QDateTime now = QDateTime::currentDateTime();
  m_timer->setProperty("StartTime", now);
  m_timer->setProperty("LastFrameTime", now);
  m_timer->start(kProductionTickMs);
  emit productionConfirmed(current.row());
}

void kovAnimationEditorWidget::applyAnimationCamera()
{
  kovDbAnimationPtr animation = openAnimation();
  if (animation.isNull())
    return;
  const bool on = m_animationCamera->isChecked();
  if (animation->viewsThroughCamera() != on) {
    animation->upgradeOpen();
    animation->setViewsThroughCamera(on);
  }
  const kovAnimationTrackPtr selected = animation->selectedTrack();
  if (on && isCameraTrack(selected))
    animation->updateCurrentView(selected.get());
}

void kovAnimationEditorWidget::checkActiveProductionButtons(QModelIndex current)
{
  const bool playing = kovEditingState::isPlaying();
  m_play->setIcon(playing ? m_pauseIcon : m_playIcon);
  const bool hasAnimation = !animationId().isNull();
  const bool hasRow = hasAnimation && m_cutTable->currentIndex().isValid();
  const int rows = m_cutTable->model() ? m_cutTable->model()->rowCount() : 0;
  m_stop->setEnabled(hasAnimation && playing);
  m_play->setEnabled(hasRow);
  m_produce->setEnabled(hasRow && current.isValid());
  m_previous->setEnabled(hasRow && current.isValid() && current.row() >= 1);
  m_next->setEnabled(hasRow && current.isValid() && current.row() < rows - 1);
  m_addCut->setEnabled(hasAnimation);
  m_removeCut->setEnabled(hasRow);
}

void kovAnimationEditorWidget::onPlaybackTimer()
{
  if (kovEditingState::isProducing()) {
    saveFrameImage();
    return;
  }
  const kovDbAnimationPtr animation = openAnimation();
  const int row = animation.isNull() ? -1 : animation->selectedSceneCutIndex();
  if (row < 0 || row >= cutsOf(*animation).size()) {
    setPlaying(false);
    m_timer->stop();
    return;
  }
  const kovCameraCut cut = cutsOf(*animation).at(row);
  const QDateTime now = QDateTime::currentDateTime();
  const qint64 elapsed = m_timer->property("LastFrameTime").toDateTime().msecsTo(now);
  m_timer->setProperty("LastFrameTime", now);
  const int next = static_cast<int>(std::min<qint64>(m_position + std::max<qint64>(elapsed, 0), cut.endMs));
  setCurrentPosition(next);
  ensurePositionVisible();
  if (next >= cut.endMs) {
    setPlaying(false);
    m_timer->stop();
  }
}

void kovAnimationEditorWidget::saveFrameImage()
{
  if (m_productionTick)
    m_productionTick();
}

void kovAnimationEditorWidget::onProductionCanceled()
{
  kovEditingState::isProducing() = false;
  m_timer->stop();
  setPlaying(false);
}
