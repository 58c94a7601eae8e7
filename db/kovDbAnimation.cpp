#include "db/kovDbAnimation.h"

#include "db/kovDbAnimationTrackWatcher.h"

#include <algorithm>
#include <climits>

ODRX_DEFINE_MEMBERS_EX(kovDbAnimation, OdDbEntity, DBOBJECT_CONSTR, 33, 55, 0xBFF, OdString(L"kovDbAnimation"),
                       OdString(L"kovDbAnimation"), OdString(L"kovDbAnimation"), 0)

kovDbAnimation::kovDbAnimation()
  : m_watcher(new kovDbAnimationTrackWatcher(this))
{
}

kovDbAnimation::~kovDbAnimation() = default;

QString kovDbAnimation::animationName() const
{
  assertReadEnabled();
  return m_name;
}

QString kovDbAnimation::animationDescription() const
{
  assertReadEnabled();
  return m_description;
}

void kovDbAnimation::setName(const QString& name)
{
  assertWriteEnabled();
  m_name = name;
}

void kovDbAnimation::setDescription(const QString& description)
{
  assertWriteEnabled();
  m_description = description;
}

int kovDbAnimation::currentPositionMs() const
{
  assertReadEnabled();
  return m_currentPositionMs;
}

void kovDbAnimation::setCurrentPosition(int ms)
{
  assertWriteEnabled();
  m_currentPositionMs = ms;
}

int kovDbAnimation::selectedTrackIndex() const
{
  assertReadEnabled();
  return m_selectedTrackIndex;
}

void kovDbAnimation::setSelectedTrackIndex(int index)
{
  assertWriteEnabled();
  m_selectedTrackIndex = index;
}

int kovDbAnimation::selectedElementIndex() const
{
  assertReadEnabled();
  return m_selectedElementIndex;
}

void kovDbAnimation::setSelectedElementIndex(int index)
{
  assertWriteEnabled();
  m_selectedElementIndex = index;
}

int kovDbAnimation::selectedSceneCutIndex() const
{
  assertReadEnabled();
  return m_selectedSceneCutIndex;
}

void kovDbAnimation::setSelectedSceneCutIndex(int index)
{
  assertWriteEnabled();
  m_selectedSceneCutIndex = index;
}

kovAnimationTrackPtr kovDbAnimation::selectedTrack() const
{
  assertReadEnabled();
  if (m_selectedTrackIndex < 0 || m_selectedTrackIndex >= static_cast<int>(m_tracks.size()))
    return kovAnimationTrackPtr();
  return m_tracks[static_cast<size_t>(m_selectedTrackIndex)];
}

kovAnimationItem* kovDbAnimation::selectedElement() const
{
  const kovAnimationTrackPtr track = selectedTrack();
  if (track.isNull() || m_selectedElementIndex < 0 || m_selectedElementIndex >= track->numElements())
    return nullptr;
  return &track->elementAt(m_selectedElementIndex);
}

int kovDbAnimation::indexOf(const kovAnimationTrack* track) const
{
  assertReadEnabled();
  for (size_t i = 0; i < m_tracks.size(); ++i) {
    if (m_tracks[i].get() == track)
      return static_cast<int>(i);
  }
  return -1;
}

const std::vector<kovAnimationTrackPtr>& kovDbAnimation::constTracks() const
{
  assertReadEnabled();
  return m_tracks;
}

std::vector<kovAnimationTrackPtr>& kovDbAnimation::editTracks()
{
  assertWriteEnabled();
  return m_tracks;
}

const QList<kovCameraCut>& kovDbAnimation::sceneCuts() const
{
  assertReadEnabled();
  return m_cuts;
}

QList<kovCameraCut>& kovDbAnimation::sceneCuts()
{
  assertWriteEnabled();
  return m_cuts;
}

bool kovDbAnimation::areGizmosHidden() const
{
  assertReadEnabled();
  return m_gizmosHidden;
}

bool& kovDbAnimation::hideAnimationGizmos()
{
  assertWriteEnabled();
  return m_gizmosHidden;
}

void kovDbAnimation::connetTrackSignals(kovAnimationTrack* track)
{
  if (track)
    QObject::connect(track, &kovAnimationTrack::onTrackItemChanged, m_watcher.get(),
                     &kovDbAnimationTrackWatcher::onTrackItemChanged, Qt::UniqueConnection);
}

void kovDbAnimation::makeTrackNameUnique(kovAnimationTrack* track)
{
  if (!track)
    return;
  const QString base = track->trackName();
  int n = 1;
  bool clash = true;
  while (clash) {
    clash = false;
    for (const kovAnimationTrackPtr& other : m_tracks) {
      if (other.get() != track && !other.isNull() && other->trackName() == track->trackName()) {
        track->setName(base + QLatin1Char(' ') + QString::number(n++));
        clash = true;
        break;
      }
    }
  }
}

int kovDbAnimation::totalDurationMs() const
{
  assertReadEnabled();
  qint64 total = 0;
  for (const kovAnimationTrackPtr& track : m_tracks) {
    if (track.isNull())
      continue;
    qint64 last = 0;
    bool any = false;
    for (const kovAnimationItem& item : track->animationElements()) {
      if (item.values().isEmpty())
        continue;
      last = any ? std::max<qint64>(last, item.values().lastKey()) : item.values().lastKey();
      any = true;
    }
    total = std::max(total, track->startMillisecond() + last);
  }
  return static_cast<int>(std::min<qint64>(total, INT_MAX));
}

void kovDbAnimation::copyContent(kovDbAnimation* target) const
{
  if (!target || target == this)
    return;
  assertReadEnabled();
  target->assertWriteEnabled();
  target->m_description = m_description;

  target->m_tracks.clear();
  for (const kovAnimationTrackPtr& source : m_tracks) {
    if (source.isNull())
      continue;
    kovAnimationTrackPtr copy(new kovAnimationTrack);
    copy->setName(source->trackName());
    copy->setDescription(source->trackDescription());
    copy->setEntityId(source->entityId());
    copy->setStartMillisecond(source->startMillisecond());
    copy->setBlockMatrix(source->blockMatrix());
    for (const kovAnimationItem& item : source->animationElements()) {
      copy->addElement();
      copy->elementAt(copy->numElements() - 1) = item;
    }
    copy->setEntityUniqueName(target->database(), source->entityUniqueName());
    target->m_tracks.push_back(copy);
    target->connetTrackSignals(copy.get());
  }

  target->m_cuts.clear();
  for (const kovCameraCut& cut : m_cuts) {
    kovCameraCut copy = cut;
    const int at = indexOf(cut.track.get());
    copy.track = at >= 0 && at < static_cast<int>(target->m_tracks.size())
                     ? target->m_tracks[static_cast<size_t>(at)]
                     : kovAnimationTrackPtr();
    target->m_cuts.append(copy);
  }
}

OdResult kovDbAnimation::subErase(bool erasing)
{
  if (erasing) {
    for (const kovAnimationTrackPtr& track : m_tracks) {
      if (!track.isNull())
        track->destroyBlock();
    }
  }
  return OdDbEntity::subErase(erasing);
}

bool kovDbAnimation::viewsThroughCamera() const
{
  assertReadEnabled();
  return m_viewsThroughCamera;
}

void kovDbAnimation::setViewsThroughCamera(bool on)
{
  assertWriteEnabled();
  m_viewsThroughCamera = on;
}
