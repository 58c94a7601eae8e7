#ifndef KOV_SUB_TRACK_DIALOG_H
#define KOV_SUB_TRACK_DIALOG_H

#include "animation/kovAnimationItem.h"
#include "animation/kovKeyframeValues.h"

#include <QDialog>
#include <QList>

class QCheckBox;
class QComboBox;

// "Edit": a sub-track's animation type (those its track allows), its
// parameter name and kind when it is a custom parameter, and its two flags.
// A change to a type that stores another kind of value costs the keyframes:
// the dialog asks before, and puts the type back on No.
class kovSubTrackDialog : public QDialog {
  Q_OBJECT
public:
  kovSubTrackDialog(const kovAnimationItem& item, const QString& trackKind, QWidget* parent = nullptr);

  // The types a sub-track of a track of that kind may have: all of them for
  // subjects with a place in the scene but the camera's scale, only custom
  // parameters for the environment and unbound tracks.
  static QList<kovAnimationItem::AnimationType> allowedTypes(const QString& trackKind);

  kovAnimationItem::AnimationType animationType() const;
  QString parameterName() const;
  kovAnimationItem::ParameterType paramsType() const;
  // Whether OK removes the keyframes (the user agreed to it).
  bool dropsKeyframes() const { return m_dropsKeyframes; }

  // Gives the item what the dialog shows.
  void applyTo(kovAnimationItem& item) const;

private:
  void onKindMayChange();
  void updateParameterFields();
  kovKeyframeValues::Kind chosenKind() const;

  QString m_trackKind;
  kovKeyframeValues::Kind m_originalKind;
  bool m_hasKeyframes;
  bool m_dropsKeyframes = false;
  int m_lastType = 0;
  int m_lastParamType = 0;
  QString m_lastName;
  QComboBox* m_type;
  QComboBox* m_name;
  QComboBox* m_paramType;
  QCheckBox* m_faceDirection;
  QCheckBox* m_byDistance;
};

#endif
