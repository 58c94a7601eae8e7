#ifndef KOV_ANIMATION_TRACK_H
#define KOV_ANIMATION_TRACK_H

#include "animation/kovAnimationItem.h"

#include "Db/OdDbObject.h"
#include "Db/OdDbObjectId.h"
#include "Ge/OdGeMatrix3d.h"

#include <QDateTime>
#include <QObject>

#include <vector>

class OdDbDatabase;
class OdDbDwgFiler;
class OdDbEntity;

// One animated subject of an animation: the camera, the environment, an
// entity of the drawing, an object made from a block library entry, a light,
// or an object spawned from a template. Owns its sub-tracks by value, shifts
// all their keyframes by a start time, and reports every change of one of
// them as one signal.
//
// Evaluation (the compute functions) takes absolute times, is const, and
// never throws for bad keyframe data.
class kovAnimationTrack : public QObject {
  Q_OBJECT
public:
  explicit kovAnimationTrack(QObject* parent = nullptr);
  ~kovAnimationTrack() override;

  const QString& trackName() const { return m_trackName; }
  const QString& trackDescription() const { return m_trackDescription; }
  const OdDbObjectId& entityId() const { return m_entityId; }
  const QString& entityUniqueName() const { return m_entityUniqueName; }
  int startMillisecond() const { return m_startMillisecond; }
  const std::vector<kovAnimationItem>& animationElements() const { return m_animationElements; }
  int numElements() const { return static_cast<int>(m_animationElements.size()); }
  const kovAnimationItem& elementAt(int index) const { return m_animationElements.at(static_cast<size_t>(index)); }
  kovAnimationItem& elementAt(int index) { return m_animationElements.at(static_cast<size_t>(index)); }
  // The first index whose item compares equal, or -1.
  int indexOf(const kovAnimationItem& item) const;

  void setName(const QString& name) { m_trackName = name; }
  void setDescription(const QString& description) { m_trackDescription = description; }
  void setStartMillisecond(int ms) { m_startMillisecond = ms; }
  void setEntityId(const OdDbObjectId& id) { m_entityId = id; }
  // Names the subject; a spawned object's block representation follows the name.
  void setEntityUniqueName(OdDbDatabase* db, const QString& name);

  // What the track animates: "Camera", "Environment", "ArtificialLight",
  // "Object", "Entity", "SpawnedObject", or empty. Computed on each call.
  QString trackTypeIdentifier() const;

  void addElement();
  void insertElement(int index);
  void removeElement(int index);

  // Item-relative span of the keyframes of all sub-tracks (0 when empty).
  int firstKeyframeTime() const;
  int lastKeyframeTime() const;
  // Re-times every keyframe so that the span runs from newStart to newEnd.
  void resize(int newStart, int newEnd);

  // The spawned object's template.
  const QString& templateName() const { return m_templateName; }
  const OdDbObjectPtr& templateObject() const { return m_templateObject; }
  void setTemplate(const QString& name, const OdDbObjectPtr& object);

  // The block reference that shows a spawned or block-library subject.
  const OdDbObjectId& blockId() const { return m_blockId; }
  const OdGeMatrix3d& blockMatrix() const { return m_blockMatrix; }
  void setBlockMatrix(const OdGeMatrix3d& matrix) { m_blockMatrix = matrix; }
  void destroyBlock();
  // The entity that shows the subject, opened for read or write: the block
  // reference when there is one and preferBlock is set, else the bound
  // entity; null when neither opens.
  OdDbObjectPtr getEntityForPaint(bool forWrite, bool preferBlock);

  // Filing inside the animation entity (layout in kovAnimationTrackFiling.cpp).
  void dwgOutFields(OdDbDwgFiler* filer) const;
  OdResult dwgInFields(OdDbDwgFiler* filer);
  // Tracks have no file of their own: both do nothing.
  void saveToFile(const QString& fileName) const;
  void loadFromFile(const QString& fileName);

  // Evaluation at an absolute time.
  double computeValueAtMillisecond(const QString& name, int ms, double def) const;
  OdGePoint3d computePointAtMillisecond(int ms) const;
  OdGePoint3d computePoint2AtMillisecond(int ms) const;
  OdGeMatrix3d computeScaleAtMillisecond(int ms) const;
  OdGeMatrix3d computeRotationAtMillisecond(int ms, const OdGePoint3d& base) const;
  OdGeMatrix3d computeTranslationAtMillisecond(int ms) const;
  OdGeMatrix3d computeSunPositionAtMillisecond(int ms) const;
  // The sun as above, with now standing for the present date and time that
  // fill unset environment values.
  OdGeMatrix3d computeSunPositionAtMillisecond(int ms, const QDateTime& now) const;
  OdGeMatrix3d computeTransformAtMillisecond(int ms) const;

  // The frame between m1 and m2 at a whole percent: origin and axis lengths
  // blend, the X direction blends, Y and Z follow from it, all three axes
  // take the largest length.
  static OdGeMatrix3d interpolateMatrices(const OdGeMatrix3d& m1, const OdGeMatrix3d& m2, int percent);

signals:
  void onTrackItemChanged(kovAnimationTrack* track, int index);

public slots:
  void onItemValuesChanged(kovAnimationItem* item);

protected:
  void regenerateBlock(OdDbDatabase* db, bool force);
  void hideBlock(bool hide);

private:
  void resizeAnimationElements(int count);
  int itemTime(int ms) const;

  std::vector<kovAnimationItem> m_animationElements;
  QString m_trackName;
  QString m_trackDescription;
  OdDbObjectId m_entityId;
  QString m_entityUniqueName;
  int m_startMillisecond = 0;
  OdDbObjectPtr m_templateObject;
  QString m_templateName;
  OdDbObjectId m_blockId;
  OdGeMatrix3d m_blockMatrix;
};

#endif
