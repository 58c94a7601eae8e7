// Evaluation of a track at a time: values, points, and the transformations
// of translation, rotation, scale and the sun. Pure and const.
#include "animation/kovAnimationTrack.h"

#include "animation/kovAnimationItemCache.h"
#include "animation/kovSolarPosition.h"

#include <cmath>

namespace {

const double kPi = 3.14159265358979323846;
// The sun stands this far from the origin, toward its direction.
const double kSunDistance = 25.0;

// The bracket of one item at item-relative time t. An item takes part only
// when it has keyframes and t is not before its bracket's start.
struct Bracket {
  int prevIndex = 0;
  int prevTime = 0;
  int nextIndex = 0;
  int nextTime = 0;
  double fraction = 0.0;

  bool find(const kovAnimationItemCache& keys, int t)
  {
    if (keys.size() == 0)
      return false;
    keys.findKeyFrame(t, prevIndex, prevTime, nextIndex, nextTime, fraction);
    return t >= prevTime;
  }
  // Matrix interpolation moves in whole percent steps.
  int percent() const { return static_cast<int>(fraction * 100.0); }
};

bool isRotation(kovAnimationItem::AnimationType type)
{
  return type == kovAnimationItem::RotationByAngles || type == kovAnimationItem::RotationToTarget
         || type == kovAnimationItem::RotationToEntity;
}

bool isPointValued(const kovAnimationItem& item)
{
  return item.animationType() == kovAnimationItem::LocationByPoints
         || (item.animationType() == kovAnimationItem::CustomParameter
             && item.paramsType() == kovAnimationItem::Point);
}

OdGePoint3d blend(const OdGePoint3d& a, const OdGePoint3d& b, double f)
{
  return a * (1.0 - f) + (b * f).asVector();
}

OdGePoint3d average(const OdGePoint3d& a, const OdGePoint3d& b)
{
  return (a + b.asVector()) * 0.5;
}

// Interpolated point sums of point-valued items; the tangent variant reads
// elements 3..5. The result is averaged with whatever it held before for every
// matching item that is not the track's first.
template <class Read>
OdGePoint3d sumPoints(const std::vector<kovAnimationItem>& items, int t, Read read)
{
  OdGePoint3d result;
  for (size_t i = 0; i < items.size(); ++i) {
    const kovAnimationItem& item = items[i];
    if (!isPointValued(item))
      continue;
    const kovAnimationItemCache& keys = item.cache();
    Bracket b;
    if (!b.find(keys, t))
      continue;
    const OdGePoint3d p = blend(read(keys, b.prevIndex), read(keys, b.nextIndex), b.fraction);
    result = i == 0 ? p : average(result, p);
  }
  return result;
}

// What trackTypeIdentifier() == "Environment" answers, without opening the
// bound entity: evaluation runs on several threads, opening objects may not.
bool isEnvironment(const kovAnimationTrack& track)
{
  return track.entityId().isNull() && track.entityUniqueName() == QLatin1String("Environment");
}

} // namespace

double kovAnimationTrack::computeValueAtMillisecond(const QString& name, int ms, double def) const
{
  const int t = itemTime(ms);
  double result = def;
  for (size_t i = 0; i < m_animationElements.size(); ++i) {
    const kovAnimationItem& item = m_animationElements[i];
    if (item.animationType() != kovAnimationItem::CustomParameter || item.paramsType() != kovAnimationItem::Number
        || item.customParameterName().compare(name, Qt::CaseInsensitive) != 0)
      continue;
    const kovAnimationItemCache& keys = item.cache();
    Bracket b;
    if (!b.find(keys, t))
      continue;
    double prev = def;
    double next = def;
    keys.scalar(b.prevIndex, prev);
    keys.scalar(b.nextIndex, next);
    const double v = (1.0 - b.fraction) * prev + b.fraction * next;
    // Averaging is tied to the item's index, not to the matches before it.
    result = i == 0 ? v : (result + v) * 0.5;
  }
  return result;
}

OdGePoint3d kovAnimationTrack::computePointAtMillisecond(int ms) const
{
  return sumPoints(m_animationElements, itemTime(ms),
                   [](const kovAnimationItemCache& keys, int index) { return keys.point(index); });
}

OdGePoint3d kovAnimationTrack::computePoint2AtMillisecond(int ms) const
{
  return sumPoints(m_animationElements, itemTime(ms),
                   [](const kovAnimationItemCache& keys, int index) { return keys.tangent(index); });
}

OdGeMatrix3d kovAnimationTrack::computeScaleAtMillisecond(int ms) const
{
  const int t = itemTime(ms);
  OdGeMatrix3d result;
  for (const kovAnimationItem& item : m_animationElements) {
    if (item.animationType() != kovAnimationItem::Scale)
      continue;
    const kovAnimationItemCache& keys = item.cache();
    Bracket b;
    if (!b.find(keys, t))
      continue;
    const OdGePoint3d& origin = OdGePoint3d::kOrigin;
    result = interpolateMatrices(item.transformAtIndex(keys, b.prevIndex, origin),
                                 item.transformAtIndex(keys, b.nextIndex, origin), b.percent())
             * result;
  }
  return result;
}

OdGeMatrix3d kovAnimationTrack::computeRotationAtMillisecond(int ms, const OdGePoint3d& base) const
{
  const int t = itemTime(ms);
  OdGeMatrix3d result;
  for (const kovAnimationItem& item : m_animationElements) {
    if (!isRotation(item.animationType()))
      continue;
    const kovAnimationItemCache& keys = item.cache();
    Bracket b;
    if (!b.find(keys, t))
      continue;
    const OdGePoint3d turned = result * base;
    result = interpolateMatrices(item.transformAtIndex(keys, b.prevIndex, turned),
                                 item.transformAtIndex(keys, b.nextIndex, turned), b.percent())
             * result;
  }
  return result;
}

OdGeMatrix3d kovAnimationTrack::computeTranslationAtMillisecond(int ms) const
{
  const int t = itemTime(ms);
  OdGeMatrix3d result;
  for (const kovAnimationItem& item : m_animationElements) {
    const kovAnimationItem::AnimationType type = item.animationType();
    if (type != kovAnimationItem::LocationByPoints && type != kovAnimationItem::LocationBySpline)
      continue;
    const kovAnimationItemCache& keys = item.cache();
    Bracket b;
    if (!b.find(keys, t))
      continue;
    if (type == kovAnimationItem::LocationByPoints) {
      const OdGePoint3d& origin = OdGePoint3d::kOrigin;
      result = interpolateMatrices(item.transformAtIndex(keys, b.prevIndex, origin),
                                   item.transformAtIndex(keys, b.nextIndex, origin), b.percent())
               * result;
      continue;
    }

    int prev = b.prevIndex;
    int next = b.nextIndex;
    if (t == b.prevTime)
      next = prev;
    else if (t == b.nextTime)
      prev = next;
    const OdGePoint3d& p0 = keys.point(prev);
    const OdGePoint3d& p1 = keys.point(next);
    double u0 = 0.0, u1 = 0.0;
    OdGePoint3d point;
    bool onPath = keys.pathParam(prev, u0) && keys.pathParam(next, u1);
    const double u = (1.0 - b.fraction) * u0 + b.fraction * u1;
    onPath = onPath && keys.pathPoint(u, point);
    if (!onPath)
      point = average(p0, p1);
    OdGeVector3d derivative;
    if (item.faceDirection() && onPath && keys.pathFirstDeriv(u, derivative)) {
      const OdGeVector3d d = derivative.normal();
      const OdGeVector3d y = d.perpVector().normal();
      const OdGeVector3d z = d.crossProduct(y).normal();
      OdGeMatrix3d facing;
      facing.setCoordSystem(OdGePoint3d::kOrigin, d, y, z);
      result = result * facing;
    }
    result = OdGeMatrix3d::translation(point.asVector()) * result;
  }
  return result;
}

OdGeMatrix3d kovAnimationTrack::computeSunPositionAtMillisecond(int ms) const
{
  // Reading the clock costs more than a whole transformation of any other
  // track: only the environment needs it.
  if (!isEnvironment(*this))
    return OdGeMatrix3d::kIdentity;
  return computeSunPositionAtMillisecond(ms, QDateTime::currentDateTime());
}

OdGeMatrix3d kovAnimationTrack::computeSunPositionAtMillisecond(int ms, const QDateTime& now) const
{
  if (!isEnvironment(*this))
    return OdGeMatrix3d::kIdentity;

  const QTime clock = now.time();
  const double day = computeValueAtMillisecond(QStringLiteral("Day"), ms, now.date().day());
  const double month = computeValueAtMillisecond(QStringLiteral("Month"), ms, now.date().month());
  const double year = computeValueAtMillisecond(QStringLiteral("Year"), ms, now.date().year());
  const double time = computeValueAtMillisecond(
      QStringLiteral("Time"), ms, clock.hour() + clock.minute() / 60.0 + clock.second() / 3600.0);
  const double longitude = computeValueAtMillisecond(QStringLiteral("Longitude"), ms, 12.4964);
  const double latitude = computeValueAtMillisecond(QStringLiteral("Latitude"), ms, 41.9028);
  const double north = computeValueAtMillisecond(QStringLiteral("North"), ms, 0.0);

  kovSpaData spa;
  // Whole hours, then whole minutes of what is left, then the seconds of
  // what is left after those. Out-of-range numbers are refused by the
  // algorithm's own checks below; the casts only keep them out of the
  // integers' undefined range.
  auto whole = [](double v) { return std::isfinite(v) && std::fabs(v) < 1e9 ? static_cast<int>(v) : -1; };
  spa.year = whole(year);
  spa.month = whole(month);
  spa.day = whole(day);
  spa.hour = whole(time);
  const double afterHours = time - spa.hour;
  spa.minute = whole(afterHours * 60.0);
  spa.second = (afterHours - spa.minute / 60.0) * 3600.0;
  spa.deltaUt1 = 0.0;
  spa.deltaT = 0.0;
  spa.timezone = 1.0;
  spa.longitude = static_cast<float>(longitude);
  spa.latitude = static_cast<float>(latitude);
  spa.elevation = 0.0;
  // Kept as the values were always given, although the usual pressure is near 1013.
  spa.pressure = 1.0;
  spa.temperature = 18.0;
  spa.slope = 0.0;
  spa.azmRotation = 0.0;
  spa.atmosRefract = 0.0;
  spa.function = kovSpaAll;

  double elevation = 0.0;
  double azimuth = 0.0;
  if (kovSpaCalculate(spa) == kovSpaOk) {
    elevation = 90.0 - spa.zenith;
    azimuth = spa.azimuth >= 180.0 ? spa.azimuth - 360.0 : spa.azimuth;
  }

  OdGeVector3d w = OdGeVector3d::kYAxis;
  w.rotateBy(-(azimuth + north) * kPi / 180.0, OdGeVector3d::kZAxis);
  w.negate();
  const OdGeVector3d axis = -w.perpVector();
  w.rotateBy(elevation * kPi / 180.0, axis);
  return OdGeMatrix3d::translation(w * kSunDistance);
}

OdGeMatrix3d kovAnimationTrack::computeTransformAtMillisecond(int ms) const
{
  const OdGeMatrix3d translation = computeTranslationAtMillisecond(ms);
  const OdGeMatrix3d rotation = computeRotationAtMillisecond(ms, translation.getCsOrigin());
  const OdGeMatrix3d sun = computeSunPositionAtMillisecond(ms);
  const OdGeMatrix3d scale = computeScaleAtMillisecond(ms);
  return translation * sun * rotation * scale;
}

OdGeMatrix3d kovAnimationTrack::interpolateMatrices(const OdGeMatrix3d& m1, const OdGeMatrix3d& m2, int percent)
{
  const double w2 = percent * 0.01;
  const double w1 = 1.0 - w2;
  OdGePoint3d o1, o2;
  OdGeVector3d x1, y1, z1, x2, y2, z2;
  m1.getCoordSystem(o1, x1, y1, z1);
  m2.getCoordSystem(o2, x2, y2, z2);

  const OdGePoint3d origin = o1 * w1 + (o2 * w2).asVector();
  const double lengthX = w1 * x1.length() + w2 * x2.length();
  const double lengthY = w1 * y1.length() + w2 * y2.length();
  const double lengthZ = w1 * z1.length() + w2 * z2.length();
  // The blended X is not normalised before Y and Z are derived from it; the
  // turn about the travel axis is therefore not carried across keyframes.
  const OdGeVector3d x = x1.normal() * w1 + x2.normal() * w2;
  const OdGeVector3d y = x.perpVector().normal();
  const OdGeVector3d z = x.crossProduct(y).normal();
  const double length = std::max(lengthX, std::max(lengthY, lengthZ));

  OdGeMatrix3d result;
  result.setCoordSystem(origin, x.normal() * length, y * length, z * length);
  return result;
}
