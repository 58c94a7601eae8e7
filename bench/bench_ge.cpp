// Throughput of the geometry value types on the operations a track evaluation
// repeats: matrix products, inverses and point transforms. Each loop updates an
// array in place, so every result feeds the next pass and a final checksum goes
// to a volatile sink: nothing can be dropped or hoisted by the compiler.

#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3d.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <vector>

namespace {

volatile double g_sink = 0.0;

// Best of several runs of body(), in nanoseconds per operation.
template <class Body>
double bestNsPerOp(long opsPerRun, Body body)
{
  double best = 1e300;
  for (int run = 0; run < 5; ++run) {
    const auto start = std::chrono::steady_clock::now();
    body();
    const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
    best = std::min(best, elapsed.count() / static_cast<double>(opsPerRun));
  }
  return best;
}

double checksum(const std::vector<OdGeMatrix3d>& mats)
{
  double sum = 0.0;
  for (const OdGeMatrix3d& m : mats) {
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j)
        sum += m.entry[i][j];
    }
  }
  return sum;
}

// Rotations about points near the origin: products and transforms by them stay
// bounded however many passes run.
std::vector<OdGeMatrix3d> makeRotations(std::mt19937& rng, int count)
{
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  std::vector<OdGeMatrix3d> out;
  for (int i = 0; i < count; ++i) {
    const OdGeVector3d axis(unit(rng), unit(rng), 1.0);
    const OdGePoint3d center(10.0 * unit(rng), 10.0 * unit(rng), 10.0 * unit(rng));
    out.push_back(OdGeMatrix3d::rotation(3.0 * unit(rng), axis, center));
  }
  return out;
}

// The same product on bare arrays: the baseline the class is measured against.
void rawMultiply(const double a[4][4], const double b[4][4], double r[4][4])
{
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j)
      r[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j] + a[i][3] * b[3][j];
  }
}

} // namespace

int main()
{
  std::mt19937 rng(12345u);
  const std::vector<OdGeMatrix3d> rotations = makeRotations(rng, 8);
  const int kMats = 64;

  std::vector<OdGeMatrix3d> mats = makeRotations(rng, kMats);
  const int multiplyPasses = 40000;
  const double multiplyNs = bestNsPerOp(static_cast<long>(multiplyPasses) * kMats, [&] {
    for (int pass = 0; pass < multiplyPasses; ++pass) {
      const OdGeMatrix3d& r = rotations[pass & 7];
      for (OdGeMatrix3d& m : mats)
        m = r * m;
    }
  });
  g_sink = g_sink + checksum(mats);

  mats = makeRotations(rng, kMats);
  const double rawNs = bestNsPerOp(static_cast<long>(multiplyPasses) * kMats, [&] {
    for (int pass = 0; pass < multiplyPasses; ++pass) {
      const OdGeMatrix3d& r = rotations[pass & 7];
      for (OdGeMatrix3d& m : mats) {
        double out[4][4];
        rawMultiply(r.entry, m.entry, out);
        std::copy(&out[0][0], &out[0][0] + 16, &m.entry[0][0]);
      }
    }
  });
  g_sink = g_sink + checksum(mats);

  // Inverting in place alternates each matrix between itself and its inverse.
  mats = makeRotations(rng, kMats);
  for (int i = 0; i < kMats; ++i)
    mats[i] *= OdGeMatrix3d::scaling(0.5 + 0.02 * i);
  const int inversePasses = 10000;
  const double inverseNs = bestNsPerOp(static_cast<long>(inversePasses) * kMats, [&] {
    for (int pass = 0; pass < inversePasses; ++pass) {
      for (OdGeMatrix3d& m : mats)
        m.invert();
    }
  });
  g_sink = g_sink + checksum(mats);

  std::uniform_real_distribution<double> coord(-50.0, 50.0);
  std::vector<OdGePoint3d> points(1024);
  for (OdGePoint3d& p : points)
    p.set(coord(rng), coord(rng), coord(rng));
  const int transformPasses = 4000;
  const double transformNs = bestNsPerOp(static_cast<long>(transformPasses) * 1024, [&] {
    for (int pass = 0; pass < transformPasses; ++pass) {
      const OdGeMatrix3d& r = rotations[pass & 7];
      for (OdGePoint3d& p : points)
        p = r * p;
    }
  });
  for (const OdGePoint3d& p : points)
    g_sink = g_sink + p.x + p.y + p.z;

  std::printf("figure: matrix_multiply_ns %.2f ns\n", multiplyNs);
  std::printf("figure: matrix_multiply_raw_ns %.2f ns\n", rawNs);
  std::printf("figure: matrix_multiply_vs_raw_ratio %.2f x\n", multiplyNs / rawNs);
  std::printf("figure: matrix_inverse_ns %.2f ns\n", inverseNs);
  std::printf("figure: point_transform_ns %.2f ns\n", transformNs);
  return 0;
}
