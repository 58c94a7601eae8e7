#ifndef KOV_DB_BLOCK_ANIMATION_H
#define KOV_DB_BLOCK_ANIMATION_H

#include "Db/OdDbEntity.h"
#include "Ge/OdGeMatrix3d.h"

#include <vector>

// A named animation of a block definition's parts, as a model file brings it
// (a clip of node transforms): it lives inside the block it animates, draws
// nothing, and gives each nested block (a node, known by its block's name)
// its transform relative to the block at any millisecond.
class kovDbBlockAnimation : public OdDbEntity {
public:
  ODDB_DECLARE_MEMBERS(kovDbBlockAnimation);
  kovDbBlockAnimation() = default;

  // One pose of a node: translation, rotation as a unit quaternion (w, x, y,
  // z) and scale, applied scale first.
  struct Key {
    OdInt32 ms = 0;
    OdGeVector3d translation;
    double rotation[4] = { 1.0, 0.0, 0.0, 0.0 };
    OdGeVector3d scale { 1.0, 1.0, 1.0 };

    OdGeMatrix3d matrix() const;
    bool operator==(const Key& other) const;
  };
  // The poses of one node, in time order.
  struct Channel {
    OdString node;
    std::vector<Key> keys;

    bool operator==(const Channel& other) const { return node == other.node && keys == other.keys; }
  };

  OdString name() const;
  void setName(const OdString& name);
  const std::vector<Channel>& channels() const;
  // Sorts each channel's keys by time (a later key at the same time wins) and
  // drops channels without keys.
  void setChannels(std::vector<Channel> channels);
  // From 0 to the last key of any channel.
  OdInt32 durationMs() const;

  // The node's transform at ms: between two keys translation and scale move
  // linearly and rotation turns along the shortest arc; before the first key
  // and after the last one the nearest key holds. False (identity) for a node
  // the animation does not move.
  bool transformAt(const OdString& node, OdInt32 ms, OdGeMatrix3d& transform) const;

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

private:
  OdString m_name;
  std::vector<Channel> m_channels;
};

typedef OdSmartPtr<kovDbBlockAnimation> kovDbBlockAnimationPtr;

#endif
