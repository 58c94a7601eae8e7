#include "animation/kovAnimationItem.h"

#include "animation/kovAnimationItemCache.h"
#include "animation/kovAnimationTrack.h"
#include "animation/kovKeyframeCodec.h"

kovAnimationItem::kovAnimationItem() = default;

kovAnimationItem::kovAnimationItem(kovAnimationTrack* parent)
  : QObject(parent)
  , m_parentTrack(parent)
{
  connectToParent();
}

kovAnimationItem::kovAnimationItem(const kovAnimationItem& other)
  : QObject(other.m_parentTrack)
  , m_parentTrack(other.m_parentTrack)
{
  copyFields(other);
  connectToParent();
}

kovAnimationItem::~kovAnimationItem()
{
  delete m_cache.load(std::memory_order_relaxed);
}

kovAnimationItem& kovAnimationItem::operator=(const kovAnimationItem& other)
{
  if (this == &other)
    return *this;
  copyFields(other);
  if (!m_parentTrack && other.m_parentTrack) {
    m_parentTrack = other.m_parentTrack;
    setParent(m_parentTrack);
    connectToParent();
  }
  return *this;
}

void kovAnimationItem::copyFields(const kovAnimationItem& other)
{
  m_transientWord = other.m_transientWord;
  m_values = other.m_values;
  m_animationType = other.m_animationType;
  m_faceDirection = other.m_faceDirection;
  m_durationByAnimationSpeed = other.m_durationByAnimationSpeed;
  m_customParameterName = other.m_customParameterName;
  m_paramsType = other.m_paramsType;
  m_isFactoryParameter = other.m_isFactoryParameter;
  m_minValue = other.m_minValue;
  m_maxValue = other.m_maxValue;
  m_decimals = other.m_decimals;
  m_valueList = other.m_valueList;
  invalidateCache();
}

bool kovAnimationItem::operator==(const kovAnimationItem& other) const
{
  if (m_animationType != other.m_animationType || m_customParameterName != other.m_customParameterName
      || m_durationByAnimationSpeed != other.m_durationByAnimationSpeed || m_faceDirection != other.m_faceDirection
      || m_isFactoryParameter != other.m_isFactoryParameter || m_paramsType != other.m_paramsType
      || m_parentTrack != other.m_parentTrack)
    return false;
  // Written as "not equal" tests so that a NaN on either side makes the items unequal.
  if (!(m_maxValue == other.m_maxValue) || !(m_minValue == other.m_minValue))
    return false;
  if (m_decimals != other.m_decimals || m_valueList != other.m_valueList)
    return false;
  if (m_values.size() != other.m_values.size())
    return false;
  for (auto a = m_values.cbegin(), b = other.m_values.cbegin(); a != m_values.cend(); ++a, ++b) {
    if (!(a.value() == b.value()) || a.key() != b.key())
      return false;
  }
  return m_transientWord == other.m_transientWord;
}

void kovAnimationItem::connectToParent()
{
  if (m_parentTrack)
    connect(this, &kovAnimationItem::valueChanged, m_parentTrack, &kovAnimationTrack::onItemValuesChanged,
            Qt::UniqueConnection);
}

void kovAnimationItem::invalidateCache()
{
  delete m_cache.exchange(nullptr, std::memory_order_acq_rel);
}

const kovAnimationItemCache& kovAnimationItem::cache() const
{
  const kovAnimationItemCache* current = m_cache.load(std::memory_order_acquire);
  if (current)
    return *current;
  const bool withPath = m_animationType == LocationBySpline || m_animationType == LocationBySplineAndRotation;
  auto* built = new kovAnimationItemCache(m_values, withPath);
  const kovAnimationItemCache* expected = nullptr;
  if (m_cache.compare_exchange_strong(expected, built, std::memory_order_acq_rel))
    return *built;
  delete built;
  return *expected;
}

void kovAnimationItem::setDurationByAnimationSpeed(bool on)
{
  m_durationByAnimationSpeed = on;
  emit valueChanged(this);
}

void kovAnimationItem::setRange(double minValue, double maxValue, int decimals)
{
  m_minValue = minValue;
  m_maxValue = maxValue;
  m_decimals = decimals;
}

bool kovAnimationItem::setValue(int ms, const QVariant& value)
{
  if (!kovKeyframeCodec::whyNotStorable(value).isEmpty())
    return false;
  m_values.insert(ms, value);
  invalidateCache();
  emit valueChanged(this);
  return true;
}

bool kovAnimationItem::setValues(const QMap<int, QVariant>& values)
{
  for (const QVariant& value : values) {
    if (!kovKeyframeCodec::whyNotStorable(value).isEmpty())
      return false;
  }
  m_values = values;
  invalidateCache();
  emit valueChanged(this);
  return true;
}

int kovAnimationItem::removeValue(int ms)
{
  const int removed = m_values.remove(ms);
  if (removed)
    invalidateCache();
  return removed;
}

void kovAnimationItem::clearValues()
{
  m_values.clear();
  invalidateCache();
}

double kovAnimationItem::valueAsScalar(int ms, double def) const
{
  const auto it = m_values.constFind(ms);
  double result = def;
  if (it != m_values.cend())
    kovAnimationItemCache::decodeScalar(it.value(), result);
  return result;
}

bool kovAnimationItem::valueAsBool(int ms, bool def) const
{
  const auto it = m_values.constFind(ms);
  if (it == m_values.cend() || !it.value().canConvert<bool>())
    return def;
  return it.value().toBool();
}

QString kovAnimationItem::valueAsString(int ms, const QString& def) const
{
  const auto it = m_values.constFind(ms);
  if (it == m_values.cend() || !it.value().canConvert<QString>())
    return def;
  return it.value().toString();
}

OdGePoint3d kovAnimationItem::valueAsPoint(int ms, const OdGePoint3d& def) const
{
  const auto it = m_values.constFind(ms);
  OdGePoint3d point;
  if (it == m_values.cend() || !kovAnimationItemCache::decodePoint(it.value(), 0, point))
    return def;
  return point;
}

OdGePoint3d kovAnimationItem::valueAsPointGetTanget(int ms, const OdGePoint3d& def) const
{
  const auto it = m_values.constFind(ms);
  OdGePoint3d tangent;
  if (it == m_values.cend() || !kovAnimationItemCache::decodePoint(it.value(), 3, tangent))
    return def;
  return tangent;
}
