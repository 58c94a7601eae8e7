#ifndef KOV_KEYFRAME_FIELDS_H
#define KOV_KEYFRAME_FIELDS_H

#include "animation/kovAnimationItem.h"

#include <QVariant>

#include <vector>

// The fields the palette shows of one keyframe value, by the kind of the
// sub-track that holds it, and the value's tangent fields on a spline path.
// A field is one element of a list value, or the whole of a value that is no
// list (a number, an on/off, a text).
class kovKeyframeFields {
public:
  enum Type { DoubleField, BoolField, StringField };
  struct Field {
    const char* name;
    // Untranslated; translated in the context "kovKeyframeFields".
    const char* visibleName;
    Type type;
    // The list element, or -1 for the value itself.
    int element;
  };

  // The fields of the item's values, in the palette's order.
  static const std::vector<Field>& of(const kovAnimationItem& item);
  // The field of that name among them; null when there is none.
  static const Field* find(const kovAnimationItem& item, const QString& name);
  // Whether a value of any kind has a field of that name.
  static bool isFieldName(const QString& name);
  // The tangent's X, Y and Z, of the paths that keep one per keyframe.
  static const std::vector<Field>& tangentFields();
  static const Field* findTangentField(const QString& name);
  static bool hasTangents(const kovAnimationItem& item);

  // value in the shape the item's kind keeps: whatever of it fits stays,
  // the rest is the kind's neutral value (a location keeps its x, y and z
  // when the sub-track turns into a rotation, a number stays a number).
  static QVariant conformed(const kovAnimationItem& item, const QVariant& value);
  // The field of a conformed value, and a copy of the value with the field set.
  static QVariant read(const QVariant& value, const Field& field);
  static QVariant written(const QVariant& value, const Field& field, const QVariant& fieldValue);
  static QString visibleName(const Field& field);
};

#endif
