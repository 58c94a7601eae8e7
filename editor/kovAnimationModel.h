#ifndef KOV_ANIMATION_MODEL_H
#define KOV_ANIMATION_MODEL_H

#include "Db/OdDbObjectId.h"

#include <QAbstractItemModel>
#include <QColor>

#include <functional>
#include <memory>
#include <vector>

// The editor's track tree: the animation's tracks as top-level rows and their
// sub-tracks as children, in two columns (the name, and the timeline lane the
// delegate paints). The model keeps only light index nodes; every value is read
// from the animation entity, opened for read per request and closed again.
class kovAnimationModel : public QAbstractItemModel {
  Q_OBJECT
public:
  // One row: the root has both indices -1, a track node a track index, a
  // sub-track node both.
  struct Node {
    Node* parent = nullptr;
    std::vector<std::unique_ptr<Node>> children;
    OdDbObjectId animation;
    quint32 elementIndex = ~0u;
    quint32 trackIndex = ~0u;

    bool isTrack() const { return trackIndex != ~0u && elementIndex == ~0u; }
    bool isSubTrack() const { return trackIndex != ~0u && elementIndex != ~0u; }
  };

  explicit kovAnimationModel(QObject* parent = nullptr);
  ~kovAnimationModel() override;

  // Shows the animation (none for a null id): the node tree is built anew.
  void setAnimation(const OdDbObjectId& animationId);
  OdDbObjectId animationId() const { return m_root.animation; }
  // Builds the node tree again from the entity (after its tracks changed).
  void rebuild();

  // The node an index stands for: the root for an invalid index.
  const Node* nodeOf(const QModelIndex& index) const;
  // -1 when the index is not a track or sub-track row.
  static int trackIndexOf(const QModelIndex& index);
  static int elementIndexOf(const QModelIndex& index);
  // The index of a track row, or of a sub-track row of it.
  QModelIndex trackIndex(int track, int column = 0) const;
  QModelIndex elementIndex(int track, int element, int column = 0) const;

  // The tool tip of a sub-track's lane (the keyframe under the mouse), which
  // the view that shows the lane knows; nothing without it.
  void setLaneToolTip(std::function<QVariant(const QModelIndex&)> toolTip) { m_laneToolTip = std::move(toolTip); }

  // The colour of a sub-track of that animation type: its ACI colour, lighter
  // and less saturated.
  static QColor typeColor(int animationType);
  // The lighter, paler shade typeColor makes of a colour.
  static QColor paleShade(const QColor& color);

  QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  bool insertRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
  bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;

private:
  Node* mutableNode(const QModelIndex& index) const;
  QVariant trackData(const Node& node, int column, int role) const;
  QVariant subTrackData(const Node& node, const QModelIndex& index, int role) const;
  void renumber(Node& node);

  Node m_root;
  std::function<QVariant(const QModelIndex&)> m_laneToolTip;
};

#endif
