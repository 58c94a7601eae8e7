#ifndef KOV_SUB_TRACK_CLIPBOARD_H
#define KOV_SUB_TRACK_CLIPBOARD_H

#include "animation/kovAnimationItem.h"

#include <QMap>
#include <QVariant>

// The keyframes that "Copy Sub-Track Values" took, with the animation type
// they came from. One for the module: it outlives menus, editors and the
// shown animation, so values move between animations and drawings.
class kovSubTrackClipboard {
public:
  static kovSubTrackClipboard& instance();

  bool hasValues() const { return m_filled; }
  kovAnimationItem::AnimationType animationType() const { return m_type; }
  const QMap<int, QVariant>& values() const { return m_values; }

  void copy(const kovAnimationItem& item);
  // Whether the item may take the values: only an item of the type they came
  // from reads them right.
  bool fits(const kovAnimationItem& item) const { return m_filled && item.animationType() == m_type; }
  void clear();

private:
  bool m_filled = false;
  kovAnimationItem::AnimationType m_type = kovAnimationItem::LocationByPoints;
  QMap<int, QVariant> m_values;
};

#endif
