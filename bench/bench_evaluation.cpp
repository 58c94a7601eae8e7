// Speed of evaluating a camera track at a time: a 1,000-keyframe spline path
// with face direction and a rotation by angles, evaluated through the item
// caches (one thread and all threads) and through a reference that rebuilds
// the path spline and walks the keys on every call, as the evaluation rules
// read. Both must agree.
//
//   bench_evaluation [EVALUATIONS]   (fewer than the default for a profiler run)

#include "animation/kovAnimationTrack.h"

#include "Db/OdDbModule.h"

#include <QVariantList>

#include <omp.h>

#include <time.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

volatile double g_sink = 0.0;

typedef std::chrono::steady_clock Clock;

const int kPathKeys = 1000;
const int kKeySpacingMs = 100;
const int kReferenceEvaluations = 200;

double elapsedSeconds(Clock::time_point since)
{
  return std::chrono::duration<double>(Clock::now() - since).count();
}

// The shared machine runs other work beside the benchmark: the single-thread
// figures are also given per second of this thread's own processor time.
double threadCpuSeconds()
{
  timespec ts {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
  return static_cast<double>(ts.tv_sec) + ts.tv_nsec * 1e-9;
}

// A climbing helix with a wobble, so that the path turns in every direction.
void buildCameraTrack(kovAnimationTrack& track)
{
  track.setEntityUniqueName(nullptr, QStringLiteral("Camera"));
  track.addElement();
  track.addElement();
  kovAnimationItem& path = track.elementAt(0);
  path.setAnimationType(kovAnimationItem::LocationBySpline, OdGePoint3d::kOrigin);
  path.setFaceDirection(true);
  QMap<int, QVariant> points;
  for (int i = 0; i < kPathKeys; ++i) {
    const double a = 0.1 * i;
    points.insert(i * kKeySpacingMs, QVariantList { 20.0 * std::cos(a), 20.0 * std::sin(a),
                                                    0.05 * i + std::sin(0.37 * i), 0.0, 0.0, 0.0 });
  }
  path.setValues(points);

  kovAnimationItem& turn = track.elementAt(1);
  turn.setAnimationType(kovAnimationItem::RotationByAngles, OdGePoint3d::kOrigin);
  QMap<int, QVariant> angles;
  for (int i = 0; i < kPathKeys / 10; ++i)
    angles.insert(i * 10 * kKeySpacingMs, QVariantList { 0.0, 0.0, 0.0, 5.0 * std::sin(0.3 * i), 10.0 * i, 0.0 });
  turn.setValues(angles);
}

int timeAt(int k, int count)
{
  const long long span = static_cast<long long>(kPathKeys - 1) * kKeySpacingMs;
  return static_cast<int>(span * k / count);
}

// The evaluation exactly as its rules read: find the bracket by walking the
// keys, rebuild the path spline and look up both keyframes' parameters on it,
// read every keyframe from its variant.
OdGeMatrix3d referenceTranslation(const kovAnimationItem& item, int t)
{
  int prev = 0, prevTime = 0, next = 0, nextTime = 0;
  double f = 0.0;
  item.findKeyFrameByWalk(t, prev, prevTime, next, nextTime, f);
  OdGeMatrix3d result;
  if (item.values().isEmpty() || t < prevTime)
    return result;
  if (t == prevTime)
    nextTime = prevTime;
  else if (t == nextTime)
    prevTime = nextTime;
  const OdDbSplinePtr spline = item.getValuesAsSpline();
  const OdGePoint3d p0 = item.valueAsPoint(prevTime, OdGePoint3d::kOrigin);
  const OdGePoint3d p1 = item.valueAsPoint(nextTime, OdGePoint3d::kOrigin);
  double u0 = 0.0, u1 = 0.0;
  OdGePoint3d point;
  bool onPath = spline->getParamAtPoint(p0, u0) == eOk && spline->getParamAtPoint(p1, u1) == eOk;
  const double u = (1.0 - f) * u0 + f * u1;
  onPath = onPath && spline->getPointAtParam(u, point) == eOk;
  if (!onPath)
    point = p0 + (p1 - p0) * 0.5;
  OdGeVector3d d;
  if (item.faceDirection() && onPath && spline->getFirstDeriv(u, d) == eOk) {
    d.normalize();
    const OdGeVector3d y = d.perpVector().normal();
    OdGeMatrix3d facing;
    facing.setCoordSystem(OdGePoint3d::kOrigin, d, y, d.crossProduct(y).normal());
    result = result * facing;
  }
  return OdGeMatrix3d::translation(point.asVector()) * result;
}

OdGeMatrix3d referenceRotation(const kovAnimationItem& item, int t, const OdGePoint3d& base)
{
  int prev = 0, prevTime = 0, next = 0, nextTime = 0;
  double f = 0.0;
  item.findKeyFrameByWalk(t, prev, prevTime, next, nextTime, f);
  if (item.values().isEmpty() || t < prevTime)
    return OdGeMatrix3d::kIdentity;
  return kovAnimationTrack::interpolateMatrices(item.tranformAtMillisecond(prevTime, base),
                                                item.tranformAtMillisecond(nextTime, base),
                                                static_cast<int>(f * 100.0));
}

// T x S x R x K for this track: no sun (a camera) and no scale items.
OdGeMatrix3d referenceTransform(const kovAnimationTrack& track, int ms)
{
  const int t = ms - track.startMillisecond();
  const OdGeMatrix3d translation = referenceTranslation(track.elementAt(0), t);
  return translation * referenceRotation(track.elementAt(1), t, translation.getCsOrigin());
}

double checksum(const OdGeMatrix3d& m)
{
  return m(0, 3) + m(1, 3) + m(2, 3) + m(0, 0) + m(1, 1);
}

} // namespace

int main(int argc, char** argv)
{
  const int kEvaluations = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000000;
  odInitialize();
  {
    kovAnimationTrack track;
    buildCameraTrack(track);
    track.computeTransformAtMillisecond(0); // builds the item caches

    Clock::time_point start = Clock::now();
    double cpu = threadCpuSeconds();
    double sum = 0.0;
    for (int k = 0; k < kEvaluations; ++k)
      sum += checksum(track.computeTransformAtMillisecond(timeAt(k, kEvaluations)));
    const double cachedRate = kEvaluations / elapsedSeconds(start);
    const double cachedCpuRate = kEvaluations / (threadCpuSeconds() - cpu);
    g_sink = g_sink + sum;

    start = Clock::now();
    cpu = threadCpuSeconds();
    sum = 0.0;
    for (int k = 0; k < kReferenceEvaluations; ++k)
      sum += checksum(referenceTransform(track, timeAt(k, kReferenceEvaluations)));
    const double referenceRate = kReferenceEvaluations / elapsedSeconds(start);
    const double referenceCpuRate = kReferenceEvaluations / (threadCpuSeconds() - cpu);
    g_sink = g_sink + sum;

    double deviation = 0.0, axisDeviation = 0.0;
    for (int k = 0; k < kReferenceEvaluations; ++k) {
      const int ms = timeAt(k, kReferenceEvaluations) + 37 * (k % 3);
      const OdGeMatrix3d cached = track.computeTransformAtMillisecond(ms);
      const OdGeMatrix3d reference = referenceTransform(track, ms);
      deviation = std::max(deviation, cached.getCsOrigin().distanceTo(reference.getCsOrigin()));
      axisDeviation = std::max(axisDeviation, (cached.getCsXAxis() - reference.getCsXAxis()).length());
    }

    // Dropped caches: the threads race to build them again.
    for (int i = 0; i < track.numElements(); ++i)
      track.elementAt(i).setValues(track.elementAt(i).values());
    const int threads = omp_get_max_threads();
    start = Clock::now();
    sum = 0.0;
#pragma omp parallel for reduction(+ : sum) schedule(static)
    for (int k = 0; k < kEvaluations; ++k)
      sum += checksum(track.computeTransformAtMillisecond(timeAt(k, kEvaluations)));
    const double parallelRate = kEvaluations / elapsedSeconds(start);
    g_sink = g_sink + sum;

    std::printf("figure: cached_transforms_per_second %.0f 1/s\n", cachedRate);
    std::printf("figure: cached_transforms_per_cpu_second %.0f 1/s\n", cachedCpuRate);
    std::printf("figure: reference_transforms_per_second %.1f 1/s\n", referenceRate);
    std::printf("figure: reference_transforms_per_cpu_second %.1f 1/s\n", referenceCpuRate);
    std::printf("figure: cached_over_reference %.0f x\n", cachedCpuRate / referenceCpuRate);
    std::printf("figure: max_translation_deviation %.3g units\n", deviation);
    std::printf("figure: max_x_axis_deviation %.3g units\n", axisDeviation);
    std::printf("figure: parallel_transforms_per_second %.0f 1/s\n", parallelRate);
    std::printf("figure: parallel_threads %d threads\n", threads);
  }
  odUninitialize();
  return 0;
}
