#include "animation/kovAnimationTrack.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbEntity.h"
#include "Db/OdDbLight.h"

#include <algorithm>
#include <climits>

kovAnimationTrack::kovAnimationTrack(QObject* parent)
  : QObject(parent)
{
}

// The items go before the QObject base: each leaves the children of this
// track as it is destroyed, so that the base never deletes them a second time.
kovAnimationTrack::~kovAnimationTrack() = default;

int kovAnimationTrack::indexOf(const kovAnimationItem& item) const
{
  for (size_t i = 0; i < m_animationElements.size(); ++i) {
    if (m_animationElements[i] == item)
      return static_cast<int>(i);
  }
  return -1;
}

QString kovAnimationTrack::trackTypeIdentifier() const
{
  if (!m_entityId.isNull()) {
    OdDbObjectPtr object = m_entityId.openObject(OdDb::kForRead);
    if (object.isNull())
      return QString();
    OdDbEntityPtr entity = object;
    if (!OdDbLight::cast(entity.get()).isNull())
      return QStringLiteral("ArtificialLight");
    OdDbBlockReferencePtr reference = OdDbBlockReference::cast(entity.get());
    if (reference.isNull())
      return QStringLiteral("Entity");
    OdDbObjectPtr block = reference->blockTableRecord().openObject(OdDb::kForRead);
    OdDbBlockTableRecordPtr record = OdDbBlockTableRecord::cast(block.get());
    if (!record.isNull() && odToQString(record->getName()).contains(QLatin1String("xblock"), Qt::CaseInsensitive))
      return QStringLiteral("Object");
    return QStringLiteral("Entity");
  }
  if (m_entityUniqueName == QLatin1String("Camera"))
    return QStringLiteral("Camera");
  if (m_entityUniqueName == QLatin1String("Environment"))
    return QStringLiteral("Environment");
  if (!m_entityUniqueName.isEmpty())
    return QStringLiteral("SpawnedObject");
  return QString();
}

void kovAnimationTrack::addElement()
{
  m_animationElements.emplace_back(this);
}

void kovAnimationTrack::insertElement(int index)
{
  const int at = std::clamp(index, 0, numElements());
  m_animationElements.insert(m_animationElements.begin() + at, kovAnimationItem(this));
}

void kovAnimationTrack::removeElement(int index)
{
  if (index < 0 || index >= numElements())
    return;
  m_animationElements.erase(m_animationElements.begin() + index);
}

void kovAnimationTrack::resizeAnimationElements(int count)
{
  m_animationElements.resize(static_cast<size_t>(std::max(count, 0)), kovAnimationItem(this));
}

int kovAnimationTrack::lastKeyframeTime() const
{
  int last = 0;
  for (const kovAnimationItem& item : m_animationElements) {
    if (!item.values().isEmpty())
      last = std::max(last, item.values().lastKey());
  }
  return last;
}

int kovAnimationTrack::firstKeyframeTime() const
{
  int first = lastKeyframeTime();
  for (const kovAnimationItem& item : m_animationElements) {
    if (!item.values().isEmpty())
      first = std::min(first, item.values().firstKey());
  }
  return first;
}

void kovAnimationTrack::resize(int newStart, int newEnd)
{
  const int first = firstKeyframeTime();
  const int last = lastKeyframeTime();
  // All keys at one time have no span to stretch: they stay where they are.
  if (last == first)
    return;
  const double offset = static_cast<double>(newStart) - first;
  const double scale = (static_cast<double>(newEnd) - newStart) / (static_cast<double>(last) - first);
  const QString kind = trackTypeIdentifier();
  const bool objectTrack = kind == QLatin1String("Object") || kind == QLatin1String("SpawnedObject");

  for (kovAnimationItem& item : m_animationElements) {
    const bool timedBySpeed = (item.animationType() == kovAnimationItem::LocationByPoints
                               || item.animationType() == kovAnimationItem::LocationBySpline)
                              && item.durationByAnimationSpeed();
    if (objectTrack && timedBySpeed)
      continue;
    QMap<int, QVariant> moved;
    for (auto it = item.values().cbegin(); it != item.values().cend(); ++it) {
      const double t = (static_cast<double>(it.key()) - first) * scale + first + offset;
      moved.insert(static_cast<int>(std::clamp(t, static_cast<double>(INT_MIN), static_cast<double>(INT_MAX))),
                   it.value());
    }
    item.setValues(moved);
  }
}

void kovAnimationTrack::setTemplate(const QString& name, const OdDbObjectPtr& object)
{
  m_templateName = name;
  m_templateObject = object;
}

void kovAnimationTrack::onItemValuesChanged(kovAnimationItem* item)
{
  if (!item)
    return;
  const int index = indexOf(*item);
  if (index >= 0)
    emit onTrackItemChanged(this, index);
}

int kovAnimationTrack::itemTime(int ms) const
{
  const qint64 t = static_cast<qint64>(ms) - m_startMillisecond;
  return static_cast<int>(std::clamp<qint64>(t, INT_MIN, INT_MAX));
}
