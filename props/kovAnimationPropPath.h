#ifndef KOV_ANIMATION_PROP_PATH_H
#define KOV_ANIMATION_PROP_PATH_H

#include <QString>

// Where a property of the animation's palette sits, as the palette names it:
//
//   Animation/<name>                      the animation's own properties
//   Element<n>/<name>                     sub-track n of the shown track
//   Element<n>/Start Tangent/<name>       the tangent at the path's first or
//   Element<n>/End Tangent/<name>           last keyframe
//   Element<n>/Row<m>/<name>              keyframe m of sub-track n
//
// Elements and rows are numbered from 1, as the palette shows them to the
// user ("Element 1", "Value 1"); row m is the sub-track's m-th keyframe in
// time order. Parsing gives 0-based indexes, -1 for a number below 1, which
// no element or row has.
class kovAnimationPropPath {
public:
  enum Scope { AnimationScope, ElementScope, TangentScope, RowScope };

  // False for a text of another shape; the indexes are not checked.
  static bool parse(const QString& path, kovAnimationPropPath& out);

  static QString animationCategory();
  static QString elementCategory(int element);
  static QString rowCategory(int row);
  static QString tangentCategory(bool end);

  Scope scope = AnimationScope;
  int element = -1;
  int row = -1;
  bool endTangent = false;
  // The property's own name, the path's last part.
  QString name;
};

#endif
