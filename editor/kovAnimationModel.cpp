#include "editor/kovAnimationModel.h"

#include "db/kovDbAnimation.h"
#include "editor/kovEditorResources.h"

#include "Cm/OdCmEntityColor.h"
#include "Rx/OdRxClass.h"

#include <QApplication>
#include <QHash>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QSize>

namespace {

const int kIconSize = 32;
const int kSubTrackHeight = 30;
const int kTrackHeight = 35;

kovDbAnimationPtr openAnimation(const OdDbObjectId& id, OdDb::OpenMode mode = OdDb::kForRead)
{
  OdDbObjectPtr object = id.openObject(mode);
  return kovDbAnimation::cast(object.get());
}

const kovAnimationTrack* trackAt(const kovDbAnimation& animation, quint32 index)
{
  const std::vector<kovAnimationTrackPtr>& tracks = animation.constTracks();
  return index < tracks.size() ? tracks[index].get() : nullptr;
}

QString trackIconPath(const kovAnimationTrack& track)
{
  const QString kind = track.trackTypeIdentifier();
  if (kind == QLatin1String("Camera"))
    return QStringLiteral(":/animation/icons/img_015.png");
  if (kind == QLatin1String("Environment"))
    return QStringLiteral(":/animation/icons/sun-black-512.png");
  if (kind == QLatin1String("SpawnedObject"))
    return QStringLiteral(":/animation/icons/_0051_add-mark.png");
  if (!track.entityId().isNull())
    return QStringLiteral(":/animation/icons/running-man.png");
  return QString();
}

// The icons are read and scaled once: the view asks for them on every paint.
QPixmap trackIcon(const QString& path)
{
  static QHash<QString, QPixmap> icons;
  auto icon = icons.find(path);
  if (icon == icons.end())
    icon = icons.insert(path, QPixmap(path).scaled(kIconSize, kIconSize, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  return *icon;
}

QString trackToolTip(const kovAnimationTrack& track)
{
  const QString kind = track.trackTypeIdentifier();
  if (kind == QLatin1String("Camera") || kind == QLatin1String("Environment"))
    return track.trackDescription();
  if (kind == QLatin1String("SpawnedObject"))
    return track.trackDescription() + QLatin1Char(' ') + track.entityUniqueName();
  // The host offers no display names for classes: the class's own name says it.
  const OdRxClass* cls = track.entityId().isNull() ? nullptr : track.entityId().objectClass();
  return track.trackDescription() + QLatin1Char(' ') + (cls ? odToQString(cls->name()) : QString());
}

} // namespace

kovAnimationModel::kovAnimationModel(QObject* parent)
  : QAbstractItemModel(parent)
{
  kovInitEditorResources();
}

kovAnimationModel::~kovAnimationModel() = default;

void kovAnimationModel::setAnimation(const OdDbObjectId& animationId)
{
  m_root.animation = animationId;
  rebuild();
}

void kovAnimationModel::rebuild()
{
  beginResetModel();
  m_root.children.clear();
  const kovDbAnimationPtr animation = openAnimation(m_root.animation);
  if (animation.isNull()) {
    m_root.animation.setNull();
  } else {
    const std::vector<kovAnimationTrackPtr>& tracks = animation->constTracks();
    for (quint32 t = 0; t < tracks.size(); ++t) {
      auto trackNode = std::make_unique<Node>();
      trackNode->parent = &m_root;
      trackNode->animation = m_root.animation;
      trackNode->trackIndex = t;
      const int elements = tracks[t].isNull() ? 0 : tracks[t]->numElements();
      for (int e = 0; e < elements; ++e) {
        auto elementNode = std::make_unique<Node>();
        elementNode->parent = trackNode.get();
        elementNode->animation = m_root.animation;
        elementNode->trackIndex = t;
        elementNode->elementIndex = static_cast<quint32>(e);
        trackNode->children.push_back(std::move(elementNode));
      }
      m_root.children.push_back(std::move(trackNode));
    }
  }
  endResetModel();
}

const kovAnimationModel::Node* kovAnimationModel::nodeOf(const QModelIndex& index) const
{
  return mutableNode(index);
}

kovAnimationModel::Node* kovAnimationModel::mutableNode(const QModelIndex& index) const
{
  if (!index.isValid())
    return const_cast<Node*>(&m_root);
  return static_cast<Node*>(index.internalPointer());
}

int kovAnimationModel::trackIndexOf(const QModelIndex& index)
{
  if (!index.isValid())
    return -1;
  const Node* node = static_cast<const Node*>(index.internalPointer());
  return node->trackIndex == ~0u ? -1 : static_cast<int>(node->trackIndex);
}

int kovAnimationModel::elementIndexOf(const QModelIndex& index)
{
  if (!index.isValid())
    return -1;
  const Node* node = static_cast<const Node*>(index.internalPointer());
  return node->elementIndex == ~0u ? -1 : static_cast<int>(node->elementIndex);
}

QModelIndex kovAnimationModel::trackIndex(int track, int column) const
{
  return index(track, column);
}

QModelIndex kovAnimationModel::elementIndex(int track, int element, int column) const
{
  return index(element, column, index(track, 0));
}

QColor kovAnimationModel::typeColor(int animationType)
{
  const OdUInt32 rgb =
      OdCmEntityColor::lookUpRGB(static_cast<OdUInt8>(kovAnimationItem::colorIndexByAnimationType(animationType)));
  return paleShade(
      QColor(static_cast<int>(rgb & 0xFF), static_cast<int>((rgb >> 8) & 0xFF), static_cast<int>((rgb >> 16) & 0xFF)));
}

QColor kovAnimationModel::paleShade(const QColor& original)
{
  QColor color = original.toRgb();
  qreal h = 0.0, s = 0.0, l = 0.0, a = 0.0;
  color.getHslF(&h, &s, &l, &a);
  // The lightness is not clamped: a colour it would take past white stays as
  // it is, which is what the toolkit does with such a value (here without its
  // warning on every paint).
  if (l * 1.5 <= 1.0)
    color.setHslF(h, s * 0.5, l * 1.5, 1.0);
  return color;
}

QModelIndex kovAnimationModel::index(int row, int column, const QModelIndex& parent) const
{
  if (!hasIndex(row, column, parent))
    return QModelIndex();
  const Node* node = mutableNode(parent);
  if (row >= static_cast<int>(node->children.size()))
    return QModelIndex();
  return createIndex(row, column, node->children[static_cast<size_t>(row)].get());
}

QModelIndex kovAnimationModel::parent(const QModelIndex& child) const
{
  if (!child.isValid())
    return QModelIndex();
  const Node* parentNode = static_cast<const Node*>(child.internalPointer())->parent;
  if (!parentNode || parentNode == &m_root)
    return QModelIndex();
  quint32 row = parentNode->elementIndex != ~0u ? parentNode->elementIndex : parentNode->trackIndex;
  if (row == ~0u)
    row = 0;
  return createIndex(static_cast<int>(row), 0, const_cast<Node*>(parentNode));
}

int kovAnimationModel::rowCount(const QModelIndex& parent) const
{
  if (parent.column() > 0)
    return 0;
  const Node* node = mutableNode(parent);
  // A track without sub-tracks still reports one row; hasChildren keeps the
  // view from expanding it. A sub-track is a leaf: a row it claimed could not
  // be indexed.
  if (!node->isTrack())
    return static_cast<int>(node->children.size());
  return std::max(1, static_cast<int>(node->children.size()));
}

int kovAnimationModel::columnCount(const QModelIndex&) const
{
  return 2;
}

bool kovAnimationModel::hasChildren(const QModelIndex& parent) const
{
  return !mutableNode(parent)->children.empty();
}

QVariant kovAnimationModel::data(const QModelIndex& index, int role) const
{
  if (!index.isValid() || role > 31)
    return QVariant();
  const Node* node = nodeOf(index);
  if (node->isSubTrack())
    return subTrackData(*node, index, role);
  if (node->isTrack())
    return trackData(*node, index.column(), role);
  return QVariant();
}

QVariant kovAnimationModel::trackData(const Node& node, int column, int role) const
{
  if (column != 0)
    return QVariant();
  if (role == Qt::SizeHintRole)
    return QSize(0, kTrackHeight);
  if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::DecorationRole && role != Qt::ToolTipRole)
    return QVariant();
  const kovDbAnimationPtr animation = openAnimation(node.animation);
  const kovAnimationTrack* track = animation.isNull() ? nullptr : trackAt(*animation, node.trackIndex);
  if (!track)
    return QVariant();
  switch (role) {
  case Qt::DisplayRole:
  case Qt::EditRole:
    return track->trackName();
  case Qt::DecorationRole: {
    const QString path = trackIconPath(*track);
    if (path.isEmpty())
      return QVariant();
    return trackIcon(path);
  }
  default:
    return trackToolTip(*track);
  }
}

QVariant kovAnimationModel::subTrackData(const Node& node, const QModelIndex& index, int role) const
{
  if (role == Qt::SizeHintRole)
    return index.column() == 0 ? QVariant(QSize(0, kSubTrackHeight)) : QVariant();
  if (index.column() == 1 && role == Qt::ToolTipRole)
    return m_laneToolTip ? m_laneToolTip(index) : QVariant();
  const bool wanted = role == Qt::BackgroundRole
                      || (index.column() == 0
                          && (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::ForegroundRole));
  if (!wanted)
    return QVariant();
  const kovDbAnimationPtr animation = openAnimation(node.animation);
  const kovAnimationTrack* track = animation.isNull() ? nullptr : trackAt(*animation, node.trackIndex);
  if (!track || node.elementIndex >= static_cast<quint32>(track->numElements()))
    return QVariant();
  const kovAnimationItem& item = track->elementAt(static_cast<int>(node.elementIndex));
  const int type = item.animationType();
  switch (role) {
  case Qt::DisplayRole:
    return type == kovAnimationItem::CustomParameter ? item.customParameterName()
                                                     : kovAnimationItem::animationType2String(type);
  case Qt::EditRole:
    return kovAnimationItem::animationType2String(type);
  case Qt::BackgroundRole:
    return typeColor(type);
  default: {
    const QColor background = typeColor(type);
    const QPalette palette = QApplication::palette();
    const bool lightBackground = background.lightnessF() > 0.5;
    const bool lightWindow = palette.color(QPalette::Window).lightnessF() > 0.5;
    return lightBackground != lightWindow ? QColor(32, 32, 32) : palette.color(QPalette::Text);
  }
  }
}

QVariant kovAnimationModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation == Qt::Horizontal && role == Qt::DisplayRole && (section == 0 || section == 1))
    return tr("");
  return QAbstractItemModel::headerData(section, orientation, role);
}

void kovAnimationModel::renumber(Node& node)
{
  for (size_t i = 0; i < node.children.size(); ++i) {
    Node& child = *node.children[i];
    if (&node == &m_root) {
      child.trackIndex = static_cast<quint32>(i);
      for (const std::unique_ptr<Node>& grandChild : child.children)
        grandChild->trackIndex = static_cast<quint32>(i);
    } else {
      child.elementIndex = static_cast<quint32>(i);
    }
  }
}

bool kovAnimationModel::insertRows(int row, int count, const QModelIndex& parent)
{
  Node* node = mutableNode(parent);
  // Sub-tracks hold keyframes, not rows of their own.
  if (!node || node->isSubTrack() || row < 0 || row > static_cast<int>(node->children.size()))
    return false;
  if (count < 1)
    return true;
  kovDbAnimationPtr animation = openAnimation(node->animation.isNull() ? m_root.animation : node->animation,
                                              OdDb::kForWrite);
  if (animation.isNull())
    return false;
  kovAnimationTrack* track = node == &m_root ? nullptr : animation->editTracks().at(node->trackIndex).get();
  beginInsertRows(parent, row, row + count - 1);
  for (int i = row; i < row + count; ++i) {
    auto child = std::make_unique<Node>();
    child->parent = node;
    child->animation = m_root.animation;
    if (node == &m_root) {
      kovAnimationTrackPtr created(new kovAnimationTrack);
      std::vector<kovAnimationTrackPtr>& tracks = animation->editTracks();
      tracks.insert(tracks.begin() + i, created);
      animation->connetTrackSignals(created.get());
    } else {
      track->insertElement(i);
      child->trackIndex = node->trackIndex;
      child->elementIndex = static_cast<quint32>(i);
    }
    node->children.insert(node->children.begin() + i, std::move(child));
  }
  renumber(*node);
  endInsertRows();
  return true;
}

bool kovAnimationModel::removeRows(int row, int count, const QModelIndex& parent)
{
  Node* node = mutableNode(parent);
  if (!node || row < 0 || count < 1 || static_cast<int>(node->children.size()) < row + count)
    return false;
  kovDbAnimationPtr animation = openAnimation(m_root.animation, OdDb::kForWrite);
  if (animation.isNull())
    return false;
  beginRemoveRows(parent, row, row + count - 1);
  for (int i = row + count - 1; i >= row; --i) {
    std::vector<kovAnimationTrackPtr>& tracks = animation->editTracks();
    if (node == &m_root) {
      if (static_cast<size_t>(i) < tracks.size())
        tracks.erase(tracks.begin() + i);
    } else if (node->trackIndex < tracks.size() && !tracks[node->trackIndex].isNull()) {
      tracks[node->trackIndex]->removeElement(i);
    }
    node->children.erase(node->children.begin() + i);
  }
  renumber(*node);
  endRemoveRows();
  return true;
}
