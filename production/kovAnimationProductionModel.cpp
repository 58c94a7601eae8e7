#include "production/kovAnimationProductionModel.h"

#include "Db/OdDbDatabase.h"

#include "production/kovCameraCutChecks.h"
#include "production/kovEncodingSettingsWidget.h"
#include "production/kovProductionLabels.h"

#include <QApplication>
#include <QIcon>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace {

const char* const kHeaders[] = { QT_TRANSLATE_NOOP("kovAnimationProductionModel", "Camera"),
                                 QT_TRANSLATE_NOOP("kovAnimationProductionModel", "StartMs"),
                                 QT_TRANSLATE_NOOP("kovAnimationProductionModel", "EndMs"),
                                 QT_TRANSLATE_NOOP("kovAnimationProductionModel", "Settings") };
const char* const kToolTips[] = {
  QT_TRANSLATE_NOOP("kovAnimationProductionModel", "<p>Chose a Camera track to produce...</p>"),
  QT_TRANSLATE_NOOP("kovAnimationProductionModel", "<p>Start Time in Milliseconds.</p>"),
  QT_TRANSLATE_NOOP("kovAnimationProductionModel", "<p>End Time in Milliseconds.</p>"),
  QT_TRANSLATE_NOOP("kovAnimationProductionModel", "<p>Edit Output settings</p>")
};

// What is wrong with the cut in that column, for the warning mark.
QString problemIn(const kovCameraCut& cut, int column)
{
  if (column == kovAnimationProductionModel::EndColumn)
    return kovCameraCutChecks::timesProblem(cut.startMs, cut.endMs);
  if (column == kovAnimationProductionModel::SettingsColumn)
    return kovCameraCutChecks::settingsProblem(cut);
  return QString();
}

QVariant displayOf(const kovCameraCut& cut, int column)
{
  switch (column) {
  case kovAnimationProductionModel::CameraColumn:
    return cut.track.isNull() ? QString() : cut.track->trackName();
  case kovAnimationProductionModel::StartColumn:
    return kovAnimationProductionModel::secondsText(cut.startMs);
  case kovAnimationProductionModel::EndColumn:
    return kovAnimationProductionModel::secondsText(cut.endMs);
  default:
    return kovAnimationProductionModel::settingsSummary(cut);
  }
}

QVariant editOf(const kovCameraCut& cut, int column)
{
  switch (column) {
  case kovAnimationProductionModel::CameraColumn:
    return QVariant::fromValue(cut.track);
  case kovAnimationProductionModel::StartColumn:
    return cut.startMs;
  case kovAnimationProductionModel::EndColumn:
    return cut.endMs;
  default:
    return QVariant::fromValue(cut);
  }
}

// Every change of the table is an undo step of its own.
void openForEdit(kovDbAnimation& animation)
{
  if (OdDbDatabase* db = animation.database())
    db->startUndoRecord();
  animation.upgradeOpen();
}

// Writes the value into the cut when it changes it; the entity, open for
// read, is opened for write only then.
bool applyEdit(kovDbAnimation& animation, int row, int column, const QVariant& value)
{
  const kovCameraCut& cut = std::as_const(animation).sceneCuts().at(row);
  switch (column) {
  case kovAnimationProductionModel::CameraColumn: {
    const kovAnimationTrackPtr track = value.value<kovAnimationTrackPtr>();
    const int at = animation.indexOf(track.get());
    if (track.get() == cut.track.get() || at < 0)
      return false;
    openForEdit(animation);
    animation.sceneCuts()[row].track = animation.editTracks()[static_cast<size_t>(at)];
    return true;
  }
  case kovAnimationProductionModel::StartColumn:
  case kovAnimationProductionModel::EndColumn: {
    const int ms = value.toInt();
    const bool start = column == kovAnimationProductionModel::StartColumn;
    if (ms == (start ? cut.startMs : cut.endMs))
      return false;
    openForEdit(animation);
    (start ? animation.sceneCuts()[row].startMs : animation.sceneCuts()[row].endMs) = ms;
    return true;
  }
  default: {
    const auto* settings = value.value<kovEncodingSettingsWidget*>();
    if (!settings)
      return false;
    openForEdit(animation);
    settings->applyTo(animation.sceneCuts()[row]);
    return true;
  }
  }
}

} // namespace

// "Scene 1", "Scene 2"...: the first name no cut of the animation has, so
// that the cuts' files do not overwrite each other.
QString kovAnimationProductionModel::freeCutName(const QList<kovCameraCut>& cuts)
{
  for (int n = 1;; ++n) {
    const QString name = tr("Scene %1").arg(n);
    if (std::none_of(cuts.begin(), cuts.end(), [&name](const kovCameraCut& cut) { return cut.name == name; }))
      return name;
  }
}

kovAnimationProductionModel::kovAnimationProductionModel(QObject* parent)
  : QAbstractTableModel(parent)
{
}

void kovAnimationProductionModel::setAnimation(const OdDbObjectId& animationId)
{
  const kovDbAnimationPtr animation = kovDbAnimation::cast(animationId.openObject(OdDb::kForRead).get());
  const OdDbObjectId id = animation.isNull() ? OdDbObjectId() : animationId;
  const int rows = animation.isNull() ? 0 : std::as_const(*animation).sceneCuts().size();
  if (id == m_animation && rows == m_shownRows)
    return;
  beginResetModel();
  m_animation = id;
  m_shownRows = rows;
  endResetModel();
}

kovDbAnimationPtr kovAnimationProductionModel::openAnimation(OdDb::OpenMode mode) const
{
  OdDbObjectPtr object = m_animation.openObject(mode);
  return kovDbAnimation::cast(object.get());
}

QString kovAnimationProductionModel::secondsText(int ms)
{
  return QString::number(ms * 0.001, 'g', 6) + QLatin1Char('s');
}

QString kovAnimationProductionModel::frameRateText(double framesPerSecond)
{
  return QString::number(framesPerSecond, 'g', 6);
}

QString kovAnimationProductionModel::settingsSummary(const kovCameraCut& cut)
{
  const QString size = QStringLiteral("%1x%2").arg(cut.imageWidth).arg(cut.imageHeight);
  const QString format = kovProductionLabels::outputFormat(cut.outputFormat);
  const QString quality = kovProductionLabels::quality(cut.quality);
  if (kovIsStillImageFormat(cut.outputFormat))
    return tr("%1 %2 %3 Quality").arg(size, format, quality);
  const QString rate = frameRateText(cut.frameRate);
  if (kovIsImageSequenceFormat(cut.outputFormat))
    return tr("%1 %2 %3fps %4 Quality").arg(size, format, rate, quality);
  return tr("%1 %2 %3fps %4 %5 Quality").arg(size, format, rate, kovProductionLabels::encoding(cut.encoding), quality);
}

bool kovAnimationProductionModel::isCameraTrack(const kovAnimationTrack* track)
{
  return track && track->trackTypeIdentifier() == QLatin1String("Camera");
}

int kovAnimationProductionModel::firstKeyframeMs(const kovAnimationTrack& track)
{
  return track.startMillisecond() + track.firstKeyframeTime();
}

int kovAnimationProductionModel::lastKeyframeMs(const kovAnimationTrack& track)
{
  return track.startMillisecond() + track.lastKeyframeTime();
}

int kovAnimationProductionModel::rowCount(const QModelIndex& parent) const
{
  if (parent.isValid())
    return 0;
  const kovDbAnimationPtr animation = openAnimation();
  return animation.isNull() ? 0 : std::as_const(*animation).sceneCuts().size();
}

int kovAnimationProductionModel::columnCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : ColumnCount;
}

QVariant kovAnimationProductionModel::data(const QModelIndex& index, int role) const
{
  if (!index.isValid() || index.parent().isValid())
    return QVariant();
  const kovDbAnimationPtr animation = openAnimation();
  if (animation.isNull() || index.row() >= std::as_const(*animation).sceneCuts().size())
    return QVariant();
  const kovCameraCut& cut = std::as_const(*animation).sceneCuts().at(index.row());
  switch (role) {
  case Qt::DisplayRole:
    return displayOf(cut, index.column());
  case Qt::EditRole:
    return editOf(cut, index.column());
  case Qt::ToolTipRole: {
    const QString problem = problemIn(cut, index.column());
    return tr(kToolTips[index.column()]) + (problem.isEmpty() ? QString() : QStringLiteral("<p>%1</p>").arg(problem));
  }
  case Qt::DecorationRole:
    // A drawing may hold a cut that the widgets would refuse: it is shown,
    // marked, so that the user can put it right.
    if (problemIn(cut, index.column()).isEmpty())
      return QVariant();
    return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
  default:
    return QVariant();
  }
}

QVariant kovAnimationProductionModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
    return QAbstractTableModel::headerData(section, orientation, role);
  return tr(kHeaders[section]);
}

Qt::ItemFlags kovAnimationProductionModel::flags(const QModelIndex& index) const
{
  const Qt::ItemFlags base = QAbstractTableModel::flags(index);
  return index.isValid() ? base | Qt::ItemIsEditable : base;
}

bool kovAnimationProductionModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
  if (role != Qt::EditRole || !index.isValid())
    return false;
  kovDbAnimationPtr animation = openAnimation();
  if (animation.isNull() || index.row() >= std::as_const(*animation).sceneCuts().size())
    return false;
  const bool changed = applyEdit(*animation, index.row(), index.column(), value);
  animation = nullptr;
  if (changed)
    emit dataChanged(this->index(index.row(), 0), this->index(index.row(), ColumnCount - 1));
  return false;
}

bool kovAnimationProductionModel::insertRows(int row, int count, const QModelIndex& parent)
{
  kovDbAnimationPtr animation = openAnimation();
  const int rows = animation.isNull() ? 0 : std::as_const(*animation).sceneCuts().size();
  if (parent.isValid() || count < 1 || animation.isNull() || row < 0 || row > rows)
    return false;
  const kovAnimationTrackPtr track = animation->selectedTrack();
  if (!isCameraTrack(track.get()))
    return false;
  openForEdit(*animation);
  beginInsertRows(QModelIndex(), row, row + count - 1);
  for (int i = 0; i < count; ++i) {
    kovCameraCut cut;
    cut.name = freeCutName(animation->sceneCuts());
    cut.track = track;
    cut.startMs = firstKeyframeMs(*track);
    cut.endMs = lastKeyframeMs(*track);
    animation->sceneCuts().insert(row + i, cut);
  }
  m_shownRows += count;
  endInsertRows();
  return true;
}

bool kovAnimationProductionModel::removeRows(int row, int count, const QModelIndex& parent)
{
  kovDbAnimationPtr animation = openAnimation();
  const int rows = animation.isNull() ? 0 : std::as_const(*animation).sceneCuts().size();
  if (parent.isValid() || count < 1 || animation.isNull() || row < 0 || row + count > rows)
    return false;
  openForEdit(*animation);
  beginRemoveRows(QModelIndex(), row, row + count - 1);
  QList<kovCameraCut>& cuts = animation->sceneCuts();
  cuts.erase(cuts.begin() + row, cuts.begin() + row + count);
  // The selected cut keeps its selection; a removed one loses it.
  const int selected = animation->selectedSceneCutIndex();
  if (selected >= row + count)
    animation->setSelectedSceneCutIndex(selected - count);
  else if (selected >= row)
    animation->setSelectedSceneCutIndex(-1);
  m_shownRows -= count;
  endRemoveRows();
  return true;
}
