#ifndef KOV_KEYFRAME_TOOL_TIP_H
#define KOV_KEYFRAME_TOOL_TIP_H

#include "animation/kovAnimationItem.h"

#include <QString>
#include <QVariant>

// The text a keyframe shows under the mouse: its value, labelled by what the
// sub-track animates, each number with 6 significant digits.
class kovKeyframeToolTip {
public:
  static QString text(const kovAnimationItem& item, const QVariant& value);
};

#endif
