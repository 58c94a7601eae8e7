#ifndef KOV_SOLAR_POSITION_TERMS_H
#define KOV_SOLAR_POSITION_TERMS_H

// Periodic-term tables of the solar position algorithm, kept apart from the
// arithmetic so that kovSolarPosition.cpp stays readable. Internal to the
// animation library: nothing outside kovSolarPosition.cpp should include this.

#include <cstddef>

namespace kovSpaTerms {

// One Earth heliocentric term: A cos(B + C * JME), A in 1e-8 rad (or AU for
// the radius vector), B in radians, C in radians per Julian millennium.
struct EarthTerm {
  double a;
  double b;
  double c;
};

struct EarthSeries {
  const EarthTerm* terms;
  std::size_t count;
};

// L0..L5, B0..B1 and R0..R4 (Table A4.2 of the paper).
constexpr std::size_t kEarthLCount = 6;
constexpr std::size_t kEarthBCount = 2;
constexpr std::size_t kEarthRCount = 5;
extern const EarthSeries kEarthL[kEarthLCount];
extern const EarthSeries kEarthB[kEarthBCount];
extern const EarthSeries kEarthR[kEarthRCount];

// One nutation term (Table A4.3): the argument is sum(Y[j] * X[j]); the
// longitude part is (psiA + psiB * JCE) sin(argument) and the obliquity part
// (epsC + epsD * JCE) cos(argument), both in units of 0.0001 arc seconds.
struct NutationTerm {
  int y[5];
  double psiA;
  double psiB;
  double epsC;
  double epsD;
};

constexpr std::size_t kNutationCount = 63;
extern const NutationTerm kNutation[kNutationCount];

} // namespace kovSpaTerms

#endif
