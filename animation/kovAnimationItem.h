#ifndef KOV_ANIMATION_ITEM_H
#define KOV_ANIMATION_ITEM_H

#include "Db/OdDbSpline.h"
#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3d.h"

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <atomic>

class kovAnimationTrack;
class kovDbAnimation;
class kovAnimationItemCache;

// One sub-track of an animation track: what it animates (a location, a
// rotation, a scale or a named custom parameter) and its keyframes, a sorted
// map from a time in milliseconds (relative to the track's start) to a value.
//
// Reading is pure: lookups that miss, and values of the wrong shape, give the
// caller's default. Every change of the keyframes through setValue, setValues
// and setDurationByAnimationSpeed is announced by valueChanged.
class kovAnimationItem : public QObject {
  Q_OBJECT
public:
  enum AnimationType : qint32 {
    CustomParameter = 0,
    LocationByPoints = 1,
    LocationBySpline = 2,
    Scale = 3,
    RotationByAngles = 4,
    RotationToTarget = 5,
    RotationToEntity = 6,
    LocationBySplineAndRotation = 7
  };
  Q_ENUM(AnimationType)

  enum ParameterType : qint32 { Point = 0, Number = 1, OnOff = 2, Text = 3 };
  Q_ENUM(ParameterType)

  kovAnimationItem();
  explicit kovAnimationItem(kovAnimationTrack* parent);
  kovAnimationItem(const kovAnimationItem& other);
  ~kovAnimationItem() override;
  // Copies every field but the parent; a parentless target adopts the
  // source's parent. Emits nothing.
  kovAnimationItem& operator=(const kovAnimationItem& other);
  bool operator==(const kovAnimationItem& other) const;
  bool operator!=(const kovAnimationItem& other) const { return !(*this == other); }

  const AnimationType& animationType() const { return m_animationType; }
  const ParameterType& paramsType() const { return m_paramsType; }
  const bool& faceDirection() const { return m_faceDirection; }
  const bool& durationByAnimationSpeed() const { return m_durationByAnimationSpeed; }
  const QString& customParameterName() const { return m_customParameterName; }
  const QMap<int, QVariant>& values() const { return m_values; }
  const bool& isFactoryParameter() const { return m_isFactoryParameter; }
  const double& minValue() const { return m_minValue; }
  const double& maxValue() const { return m_maxValue; }
  const int& decimals() const { return m_decimals; }
  const QStringList& valueList() const { return m_valueList; }
  kovAnimationTrack* parentTrack() const { return m_parentTrack; }
  quint64 transientWord() const { return m_transientWord; }

  void setParamsType(ParameterType type) { m_paramsType = type; }
  void setFaceDirection(bool on) { m_faceDirection = on; }
  void setCustomParameterName(const QString& name) { m_customParameterName = name; }
  void setDurationByAnimationSpeed(bool on);
  void setIsFactoryParameter(bool on) { m_isFactoryParameter = on; }
  void setRange(double minValue, double maxValue, int decimals);
  void setValueList(const QStringList& list) { m_valueList = list; }
  void setTransientWord(quint64 word) { m_transientWord = word; }

  // Both refuse (false, nothing changed) a value that a drawing can't keep;
  // kovKeyframeCodec::whyNotStorable says why.
  bool setValue(int ms, const QVariant& value);
  bool setValues(const QMap<int, QVariant>& values);
  int removeValue(int ms);
  void clearValues();

  // The bracket of keyframes around ms; true exactly when ms is on a keyframe.
  bool findKeyFrame(int ms, int& prevIndex, int& prevTime, int& nextIndex, int& nextTime,
                    double& fraction) const;
  // The same answer as findKeyFrame by walking the keys one by one; kept as
  // the reference that the binary search is checked against.
  bool findKeyFrameByWalk(int ms, int& prevIndex, int& prevTime, int& nextIndex, int& nextTime,
                          double& fraction) const;

  // Exact-key reads; each returns def when no keyframe has the key ms or the
  // value has the wrong shape.
  double valueAsScalar(int ms, double def) const;
  bool valueAsBool(int ms, bool def) const;
  QString valueAsString(int ms, const QString& def) const;
  OdGePoint3d valueAsPoint(int ms, const OdGePoint3d& def) const;
  OdGePoint3d valueAsPointGetTanget(int ms, const OdGePoint3d& def) const;

  // The transformation of the keyframe at exactly ms (identity otherwise).
  OdGeMatrix3d tranformAtMillisecond(int ms, const OdGePoint3d& base) const;
  // The same for the keyframe at index (in key order) of a cache of this item.
  OdGeMatrix3d transformAtIndex(const kovAnimationItemCache& cache, int index, const OdGePoint3d& base) const;
  // A new spline through the keyframes' points, in time order.
  OdDbSplinePtr getValuesAsSpline() const;

  void setAnimationType(const AnimationType& type, const OdGePoint3d& point);
  bool recalcConstrainedValues(kovDbAnimation* animation, kovAnimationTrack* track);
  bool recalcKFTimesByDistance(kovDbAnimation* animation, kovAnimationTrack* track, double speed);

  static QString animationType2String(int type);
  static AnimationType string2AnimationType(const QString& text);
  static QString paramType2String(int type);
  static ParameterType string2ParamType(const QString& text);
  static QStringList listSpecialParameters(const QString& trackTypeIdentifier);
  static void setSpecialCustomParamType(kovAnimationItem& item, const QString& name);
  static bool trackTypeAllowTransforms(const QString& trackTypeIdentifier);
  static int colorIndexByAnimationType(int type);

  // Derived, read-only data of the keyframes (decoded points, the path
  // spline), built on first use and dropped by every change.
  const kovAnimationItemCache& cache() const;

signals:
  void valueChanged(kovAnimationItem* item);

private:
  friend class kovAnimationTrack;

  void connectToParent();
  void copyFields(const kovAnimationItem& other);
  void invalidateCache();
  void layOutSplinePath(const OdGePoint3d& point);

  quint64 m_transientWord = 0;
  QMap<int, QVariant> m_values;
  AnimationType m_animationType = LocationByPoints;
  bool m_faceDirection = false;
  bool m_durationByAnimationSpeed = true;
  kovAnimationTrack* m_parentTrack = nullptr;
  QString m_customParameterName;
  ParameterType m_paramsType = Number;
  bool m_isFactoryParameter = false;
  double m_minValue = -999999.0;
  double m_maxValue = 999999.0;
  int m_decimals = 3;
  QStringList m_valueList;

  // Built by the first reader after a change (racing readers keep the first
  // one stored); deleted by the writers, which never run beside readers.
  mutable std::atomic<const kovAnimationItemCache*> m_cache { nullptr };
};

#endif
