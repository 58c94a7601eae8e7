#include "animation/kovSolarPosition.h"

#include "animation/kovSolarPositionTerms.h"

#include <cmath>

// Section numbers below refer to Reda & Andreas, NREL/TP-560-34302 (2008).
// The paper works in degrees; trigonometry converts at the call site so that
// every stored quantity reads in the paper's units.

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kRadPerDeg = kPi / 180.0;
constexpr double kDegPerRad = 180.0 / kPi;

// Apparent angular radius of the sun: rise and set refer to the upper limb.
constexpr double kSunRadius = 0.26667;
constexpr double kJ2000 = 2451545.0;
constexpr double kDaysPerCentury = 36525.0;
// First Julian day of the Gregorian calendar, read as if the Julian calendar
// had continued (1582-10-15 Gregorian = 1582-10-05 Julian).
constexpr double kGregorianStart = 2299160.0;
// Earth's polar/equatorial radius ratio and equatorial radius in metres, for
// the observer's geocentric position (3.12).
constexpr double kEarthFlattening = 0.99664719;
constexpr double kEarthRadius = 6378140.0;

double rad(double degrees) { return degrees * kRadPerDeg; }
double deg(double radians) { return radians * kDegPerRad; }

// fmod keeps full precision for the huge sidereal-time angles; the final
// comparison catches a tiny negative remainder that rounds up to exactly 360.
double limitDegrees(double degrees)
{
  double limited = std::fmod(degrees, 360.0);
  if (limited < 0.0)
    limited += 360.0;
  return limited >= 360.0 ? 0.0 : limited;
}

double limitDegrees180pm(double degrees)
{
  double limited = std::fmod(degrees, 360.0);
  if (limited > 180.0)
    limited -= 360.0;
  else if (limited < -180.0)
    limited += 360.0;
  return limited;
}

double limitZeroToOne(double value)
{
  const double limited = value - std::floor(value);
  return limited >= 1.0 ? 0.0 : limited;
}

// The equation of time is only ever a few minutes; a value near +/-1440 is the
// same quantity seen across the 0/360 wrap of mean longitude against right
// ascension (A.1).
double limitMinutes(double minutes)
{
  if (minutes < -20.0)
    return minutes + 1440.0;
  if (minutes > 20.0)
    return minutes - 1440.0;
  return minutes;
}

// Julian day of a civil date and time (3.1). The Julian calendar applies
// before 1582-10-15, which is what the astronomical tables assume.
double julianDay(int year, int month, int day, int hour, int minute, double second,
                 double deltaUt1, double timezone)
{
  const double dayDecimal =
    day + (hour - timezone + (minute + (second + deltaUt1) / 60.0) / 60.0) / 24.0;
  // January and February count as months 13 and 14 of the previous year so
  // that the leap day falls at the end of the counted year.
  if (month < 3) {
    month += 12;
    --year;
  }
  double jd = std::trunc(365.25 * (year + 4716.0)) + std::trunc(30.6001 * (month + 1))
              + dayDecimal - 1524.5;
  if (jd > kGregorianStart) {
    const double century = std::trunc(year / 100.0);
    jd += 2.0 - century + std::trunc(century / 4.0);
  }
  return jd;
}

// One of L, B or R (3.2): a polynomial in JME whose coefficients are the sums
// of the periodic series, evaluated by Horner's rule from the highest power.
double earthValue(const kovSpaTerms::EarthSeries* series, std::size_t count, double jme)
{
  double value = 0.0;
  for (std::size_t i = count; i-- > 0;) {
    double sum = 0.0;
    for (std::size_t k = 0; k < series[i].count; ++k) {
      const kovSpaTerms::EarthTerm& term = series[i].terms[k];
      sum += term.a * std::cos(term.b + term.c * jme);
    }
    value = value * jme + sum;
  }
  return value / 1.0e8;
}

double thirdOrderPolynomial(double a, double b, double c, double d, double x)
{
  return ((a * x + b) * x + c) * x + d;
}

// Nutation in longitude and obliquity (3.4), degrees.
void nutation(kovSpaData& data)
{
  const double jce = data.jce;
  data.x[0] = thirdOrderPolynomial(1.0 / 189474.0, -0.0019142, 445267.11148, 297.85036, jce);
  data.x[1] = thirdOrderPolynomial(-1.0 / 300000.0, -0.0001603, 35999.05034, 357.52772, jce);
  data.x[2] = thirdOrderPolynomial(1.0 / 56250.0, 0.0086972, 477198.867398, 134.96298, jce);
  data.x[3] = thirdOrderPolynomial(1.0 / 327270.0, -0.0036825, 483202.017538, 93.27191, jce);
  data.x[4] = thirdOrderPolynomial(1.0 / 450000.0, 0.0020708, -1934.136261, 125.04452, jce);

  double sumPsi = 0.0;
  double sumEpsilon = 0.0;
  for (const kovSpaTerms::NutationTerm& term : kovSpaTerms::kNutation) {
    double argument = 0.0;
    for (int j = 0; j < 5; ++j)
      argument += data.x[j] * term.y[j];
    argument = rad(argument);
    sumPsi += (term.psiA + term.psiB * jce) * std::sin(argument);
    sumEpsilon += (term.epsC + term.epsD * jce) * std::cos(argument);
  }
  // The table is in 0.0001 arc seconds.
  data.delPsi = sumPsi / 36000000.0;
  data.delEpsilon = sumEpsilon / 36000000.0;
}

// Mean obliquity of the ecliptic in arc seconds (3.5). U is in units of 10000
// years; the polynomial is only good for |U| < 1, i.e. 2000 BC..AD 6000, which
// is where the year range check comes from.
double eclipticMeanObliquity(double jme)
{
  const double u = jme / 10.0;
  return 84381.448
         + u * (-4680.93
         + u * (-1.55
         + u * (1999.25
         + u * (-51.38
         + u * (-249.67
         + u * (-39.05
         + u * (7.12
         + u * (27.87
         + u * (5.79
         + u * 2.45)))))))));
}

// Everything up to the geocentric right ascension and declination (3.1-3.10)
// for a given Julian day. Shared by the main calculation and by the
// rise/transit/set interpolation, which needs it at other instants.
void geocentricSun(double jd, double deltaT, kovSpaData& out)
{
  out.jd = jd;
  out.jc = (jd - kJ2000) / kDaysPerCentury;
  out.jde = jd + deltaT / 86400.0;
  out.jce = (out.jde - kJ2000) / kDaysPerCentury;
  out.jme = out.jce / 10.0;

  out.l = limitDegrees(deg(earthValue(kovSpaTerms::kEarthL, kovSpaTerms::kEarthLCount, out.jme)));
  out.b = deg(earthValue(kovSpaTerms::kEarthB, kovSpaTerms::kEarthBCount, out.jme));
  out.r = earthValue(kovSpaTerms::kEarthR, kovSpaTerms::kEarthRCount, out.jme);

  // Seen from the Earth the sun is in the opposite direction (3.3).
  out.theta = limitDegrees(out.l + 180.0);
  out.beta = -out.b;

  nutation(out);

  out.epsilon0 = eclipticMeanObliquity(out.jme);
  out.epsilon = out.epsilon0 / 3600.0 + out.delEpsilon;

  // Annual aberration: 20.4898" is the aberration constant for 1 AU (3.6).
  out.delTau = -20.4898 / (3600.0 * out.r);
  out.lamda = out.theta + out.delPsi + out.delTau;

  // Sidereal time at Greenwich (3.8); the nutation term turns the mean into
  // the apparent sidereal time.
  out.nu0 = limitDegrees(280.46061837 + 360.98564736629 * (jd - kJ2000)
                         + out.jc * out.jc * (0.000387933 - out.jc / 38710000.0));
  const double epsilonRad = rad(out.epsilon);
  out.nu = out.nu0 + out.delPsi * std::cos(epsilonRad);

  const double lamdaRad = rad(out.lamda);
  const double betaRad = rad(out.beta);
  out.alpha = limitDegrees(deg(std::atan2(
    std::sin(lamdaRad) * std::cos(epsilonRad) - std::tan(betaRad) * std::sin(epsilonRad),
    std::cos(lamdaRad))));
  out.delta = deg(std::asin(std::sin(betaRad) * std::cos(epsilonRad)
                            + std::cos(betaRad) * std::sin(epsilonRad) * std::sin(lamdaRad)));
}

// From the geocentric position to what the observer sees (3.11-3.15).
void topocentricSun(kovSpaData& data)
{
  data.h = limitDegrees(data.nu + data.longitude - data.alpha);

  // Parallax: 8.794" is the sun's equatorial horizontal parallax at 1 AU.
  data.xi = 8.794 / (3600.0 * data.r);
  const double latRad = rad(data.latitude);
  const double xiRad = rad(data.xi);
  const double hRad = rad(data.h);
  const double deltaRad = rad(data.delta);

  // The observer's position relative to the Earth's centre on the ellipsoid.
  const double u = std::atan(kEarthFlattening * std::tan(latRad));
  const double x = std::cos(u) + data.elevation / kEarthRadius * std::cos(latRad);
  const double y = kEarthFlattening * std::sin(u) + data.elevation / kEarthRadius * std::sin(latRad);

  const double denominator = std::cos(deltaRad) - x * std::sin(xiRad) * std::cos(hRad);
  const double delAlphaRad = std::atan2(-x * std::sin(xiRad) * std::sin(hRad), denominator);
  data.delAlpha = deg(delAlphaRad);
  data.deltaPrime = deg(std::atan2(
    (std::sin(deltaRad) - y * std::sin(xiRad)) * std::cos(delAlphaRad), denominator));
  data.alphaPrime = limitDegrees(data.alpha + data.delAlpha);
  data.hPrime = data.h - data.delAlpha;

  const double deltaPrimeRad = rad(data.deltaPrime);
  const double hPrimeRad = rad(data.hPrime);
  data.e0 = deg(std::asin(std::sin(latRad) * std::sin(deltaPrimeRad)
                          + std::cos(latRad) * std::cos(deltaPrimeRad) * std::cos(hPrimeRad)));

  // Refraction (3.14) is only meaningful while some part of the sun can be
  // above the refracted horizon; below that the formula diverges.
  data.delE = 0.0;
  if (data.e0 >= -(kSunRadius + data.atmosRefract)) {
    data.delE = (data.pressure / 1010.0) * (283.0 / (273.0 + data.temperature)) * 1.02
                / (60.0 * std::tan(rad(data.e0 + 10.3 / (data.e0 + 5.11))));
  }
  data.e = data.e0 + data.delE;
  data.zenith = 90.0 - data.e;

  data.azimuthAstro = limitDegrees(deg(std::atan2(
    std::sin(hPrimeRad),
    std::cos(hPrimeRad) * std::sin(latRad) - std::tan(deltaPrimeRad) * std::cos(latRad))));
  data.azimuth = limitDegrees(data.azimuthAstro + 180.0);
}

// Angle between the sun and the normal of the tilted surface (3.16). Rounding
// can push the cosine a hair past 1 when the sun is on the normal; clamping
// keeps acos from returning NaN there.
void surfaceIncidence(kovSpaData& data)
{
  const double zenithRad = rad(data.zenith);
  const double slopeRad = rad(data.slope);
  double cosIncidence = std::cos(zenithRad) * std::cos(slopeRad)
                        + std::sin(slopeRad) * std::sin(zenithRad)
                          * std::cos(rad(data.azimuthAstro - data.azmRotation));
  cosIncidence = std::fmin(1.0, std::fmax(-1.0, cosIncidence));
  data.incidence = deg(std::acos(cosIncidence));
}

// Equation of time in minutes (A.1): the sun's mean longitude against its
// apparent right ascension.
double equationOfTime(const kovSpaData& data)
{
  const double jme = data.jme;
  const double m = limitDegrees(280.4664567
                                + jme * (360007.6982779
                                + jme * (0.03032028
                                + jme * (1.0 / 49931.0
                                + jme * (-1.0 / 15300.0
                                + jme * (-1.0 / 2000000.0))))));
  return limitMinutes(4.0 * (m - 0.0057183 - data.alpha
                             + data.delPsi * std::cos(rad(data.epsilon))));
}

// Three-point interpolation of a quantity tabulated at 0 TT of the day before,
// the day and the day after, n days after the middle point (A.2). Across the
// 0/360 wrap of the right ascension the paper folds a difference larger than
// 2 degrees into 0..1, which is right only because the daily step there is
// under a degree; wrapping to +/-180 gives the same without relying on it.
double interpolateDaily(const double values[3], double n)
{
  const double a = limitDegrees180pm(values[1] - values[0]);
  const double b = limitDegrees180pm(values[2] - values[1]);
  const double c = b - a;
  return values[1] + n * (a + b + c * n) / 2.0;
}

double dayFractionToLocalHour(double dayFraction, double timezone)
{
  return 24.0 * limitZeroToOne(dayFraction + timezone / 24.0);
}

// Sunrise, transit and sunset of the input's date (A.2): approximate times
// from the sun's position at 0 UT, then one correction step using positions
// interpolated to those times.
void riseTransitSet(kovSpaData& data)
{
  enum { kTransit, kRise, kSet, kEventCount };

  const double jdZeroUt = julianDay(data.year, data.month, data.day, 0, 0, 0.0, 0.0, 0.0);
  kovSpaData at;
  geocentricSun(jdZeroUt, data.deltaT, at);
  const double nu = at.nu;

  // 0 TT of the three days: with deltaT 0 the Julian day is read as TT.
  double alpha[3];
  double delta[3];
  for (int i = 0; i < 3; ++i) {
    geocentricSun(jdZeroUt + (i - 1), 0.0, at);
    alpha[i] = at.alpha;
    delta[i] = at.delta;
  }

  const double latRad = rad(data.latitude);
  const double h0Prime = -(kSunRadius + data.atmosRefract);

  double m[kEventCount];
  m[kTransit] = limitZeroToOne((alpha[1] - data.longitude - nu) / 360.0);

  const double cosH0 = (std::sin(rad(h0Prime)) - std::sin(latRad) * std::sin(rad(delta[1])))
                       / (std::cos(latRad) * std::cos(rad(delta[1])));
  const bool risesAndSets = std::fabs(cosH0) <= 1.0;
  const double h0 = risesAndSets ? deg(std::acos(cosH0)) : 0.0;
  m[kRise] = limitZeroToOne(m[kTransit] - h0 / 360.0);
  m[kSet] = limitZeroToOne(m[kTransit] + h0 / 360.0);

  double hPrime[kEventCount];
  double altitude[kEventCount];
  double deltaPrime[kEventCount];
  for (int i = 0; i < kEventCount; ++i) {
    const double siderealTime = nu + 360.985647 * m[i];
    // The tabulated positions are at 0 TT, the event times in UT.
    const double n = m[i] + data.deltaT / 86400.0;
    const double alphaPrime = interpolateDaily(alpha, n);
    deltaPrime[i] = interpolateDaily(delta, n);
    hPrime[i] = limitDegrees180pm(siderealTime + data.longitude - alphaPrime);
    const double deltaPrimeRad = rad(deltaPrime[i]);
    altitude[i] = deg(std::asin(std::sin(latRad) * std::sin(deltaPrimeRad)
                                + std::cos(latRad) * std::cos(deltaPrimeRad)
                                  * std::cos(rad(hPrime[i]))));
  }

  data.sta = altitude[kTransit];
  data.sunTransit = dayFractionToLocalHour(m[kTransit] - hPrime[kTransit] / 360.0, data.timezone);

  if (!risesAndSets) {
    data.srha = data.ssha = data.sunrise = data.sunset = kovSpaNoRiseSet;
    return;
  }

  // Newton step on the altitude: how far the interpolated altitude still is
  // from the rise/set altitude, divided by its rate of change.
  auto refine = [&](int i) {
    return m[i] + (altitude[i] - h0Prime)
                  / (360.0 * std::cos(rad(deltaPrime[i])) * std::cos(latRad)
                     * std::sin(rad(hPrime[i])));
  };
  data.srha = hPrime[kRise];
  data.ssha = hPrime[kSet];
  data.sunrise = dayFractionToLocalHour(refine(kRise), data.timezone);
  data.sunset = dayFractionToLocalHour(refine(kSet), data.timezone);
}

bool usesIncidence(kovSpaFunction function)
{
  return function == kovSpaZaInc || function == kovSpaAll;
}

bool usesRiseTransitSet(kovSpaFunction function)
{
  return function == kovSpaZaRts || function == kovSpaAll;
}

int validateInputs(const kovSpaData& d)
{
  // The reference program's checks, in its order, so every finite input gets
  // the code that program would give. NaN compares false and slips past
  // them; the finiteness check at the end catches it.
  if (d.year < -2000 || d.year > 6000)
    return kovSpaErrYear;
  if (d.month < 1 || d.month > 12)
    return kovSpaErrMonth;
  if (d.day < 1 || d.day > 31)
    return kovSpaErrDay;
  if (d.hour < 0 || d.hour > 24)
    return kovSpaErrHour;
  if (d.minute < 0 || d.minute > 59)
    return kovSpaErrMinute;
  if (d.second < 0 || d.second >= 60)
    return kovSpaErrSecond;
  if (d.pressure < 0 || d.pressure > 5000)
    return kovSpaErrPressure;
  if (d.temperature <= -273 || d.temperature > 6000)
    return kovSpaErrTemperature;
  if (d.deltaUt1 <= -1 || d.deltaUt1 >= 1)
    return kovSpaErrDeltaUt1;
  if (d.hour == 24 && d.minute > 0)
    return kovSpaErrMinute;
  if (d.hour == 24 && d.second > 0)
    return kovSpaErrSecond;
  if (std::fabs(d.deltaT) > 8000)
    return kovSpaErrDeltaT;
  if (std::fabs(d.timezone) > 18)
    return kovSpaErrTimezone;
  if (std::fabs(d.longitude) > 180)
    return kovSpaErrLongitude;
  if (std::fabs(d.latitude) > 90)
    return kovSpaErrLatitude;
  if (std::fabs(d.atmosRefract) > 5)
    return kovSpaErrAtmosRefract;
  if (d.elevation < -6500000)
    return kovSpaErrElevation;
  if (usesIncidence(d.function)) {
    if (std::fabs(d.slope) > 360)
      return kovSpaErrSlope;
    if (std::fabs(d.azmRotation) > 360)
      return kovSpaErrAzmRotation;
  }

  if (d.function != kovSpaZa && d.function != kovSpaZaInc && d.function != kovSpaZaRts
      && d.function != kovSpaAll)
    return kovSpaErrFunction;

  const double inputs[] = {d.second, d.deltaUt1, d.deltaT, d.timezone, d.longitude,
                           d.latitude, d.elevation, d.pressure, d.temperature, d.slope,
                           d.azmRotation, d.atmosRefract};
  for (double value : inputs) {
    if (!std::isfinite(value))
      return kovSpaErrNonFinite;
  }
  return kovSpaOk;
}

} // namespace

int kovSpaCalculate(kovSpaData& data)
{
  const int error = validateInputs(data);
  if (error != kovSpaOk)
    return error;

  const double jd = julianDay(data.year, data.month, data.day, data.hour, data.minute,
                              data.second, data.deltaUt1, data.timezone);
  geocentricSun(jd, data.deltaT, data);
  topocentricSun(data);
  data.eot = equationOfTime(data);

  if (usesIncidence(data.function))
    surfaceIncidence(data);
  if (usesRiseTransitSet(data.function))
    riseTransitSet(data);
  return kovSpaOk;
}
