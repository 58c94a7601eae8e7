#include "animation/kovSolarPosition.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double kRadPerDeg = 3.14159265358979323846 / 180.0;

struct Place {
  double latitude, longitude, timezone;
};

kovSpaData at(int year, int month, int day, int hour, int minute, Place place = {0, 0, 0},
              kovSpaFunction function = kovSpaZaRts, double deltaT = 69.2)
{
  kovSpaData d;
  d.year = year;
  d.month = month;
  d.day = day;
  d.hour = hour;
  d.minute = minute;
  d.latitude = place.latitude;
  d.longitude = place.longitude;
  d.timezone = place.timezone;
  d.function = function;
  d.deltaT = deltaT;
  return d;
}

// The worked example of the paper (Golden, Colorado; Table A5.1).
kovSpaData paperExample()
{
  kovSpaData d = at(2003, 10, 17, 12, 30, {39.742476, -105.1786, -7}, kovSpaAll, 67);
  d.second = 30;
  d.elevation = 1830.14;
  d.pressure = 820;
  d.temperature = 11;
  d.slope = 30;
  d.azmRotation = -10;
  d.atmosRefract = 0.5667;
  return d;
}

kovSpaData calculated(kovSpaData d)
{
  EXPECT_EQ(kovSpaCalculate(d), kovSpaOk);
  return d;
}

// d recalculated at a fractional hour of its own date and time zone, to run
// the full position chain at a time the rise/transit/set step produced.
kovSpaData calculatedAtHour(kovSpaData d, double hours)
{
  const double seconds = std::round(hours * 3600.0 * 1000.0) / 1000.0;
  d.hour = static_cast<int>(seconds / 3600.0);
  d.minute = static_cast<int>((seconds - d.hour * 3600.0) / 60.0);
  d.second = seconds - d.hour * 3600.0 - d.minute * 60.0;
  return calculated(d);
}

// Noon of every day of 2024 at one place.
std::vector<kovSpaData> everyDayOf2024(Place place)
{
  const int daysInMonth[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::vector<kovSpaData> days;
  for (int month = 1; month <= 12; ++month) {
    for (int day = 1; day <= daysInMonth[month - 1]; ++day)
      days.push_back(calculated(at(2024, month, day, 12, 0, place)));
  }
  return days;
}

std::string dateOf(const kovSpaData& d)
{
  return std::to_string(d.year) + "-" + std::to_string(d.month) + "-" + std::to_string(d.day);
}

// Half a unit of the last digit the paper prints.
double printed(int decimals) { return 0.5 * std::pow(10.0, -decimals); }

} // namespace

// ---- The paper's worked example ---------------------------------------------

TEST(SpaPaperExample, ResultsMatchPrintedDigits)
{
  const kovSpaData d = calculated(paperExample());
  EXPECT_NEAR(d.zenith, 50.11162, printed(5));
  EXPECT_NEAR(d.azimuth, 194.34024, printed(5));
  EXPECT_NEAR(d.incidence, 25.18700, printed(5));

  EXPECT_NEAR(d.jd, 2452930.312847, printed(6));
  EXPECT_NEAR(d.l, 24.0182616917, printed(10));
  EXPECT_NEAR(d.b, -0.0001011219, printed(10));
  EXPECT_NEAR(d.r, 0.9965422974, printed(10));
  EXPECT_NEAR(d.theta, 204.0182616917, printed(10));
  EXPECT_NEAR(d.beta, 0.0001011219, printed(10));
  EXPECT_NEAR(d.delPsi, -0.00399840, printed(8));
  EXPECT_NEAR(d.delEpsilon, 0.00166657, printed(8));
  EXPECT_NEAR(d.epsilon, 23.440465, printed(6));
  EXPECT_NEAR(d.lamda, 204.0085519281, printed(10));
  EXPECT_NEAR(d.alpha, 202.22741, printed(5));
  EXPECT_NEAR(d.delta, -9.31434, printed(5));
  // The table prints 11.105900; the equations give 11.105902, as does the
  // paper's own reference program. Everything printed that depends on H
  // matches to the digit.
  EXPECT_NEAR(d.h, 11.105900, 3e-6);
  EXPECT_NEAR(d.deltaPrime, -9.316179, printed(6));
  EXPECT_NEAR(d.e0, 39.872046, printed(6));
  EXPECT_NEAR(d.e, 39.888378, printed(6));
}

TEST(SpaPaperExample, RiseTransitSetMatchPrintedClockTimes)
{
  const kovSpaData d = calculated(paperExample());
  // Printed as whole seconds, truncated: the value lies within that second.
  const double second = 1.0 / 3600.0;
  EXPECT_NEAR(d.sunrise, 6 + 12 / 60.0 + 43.5 * second, second / 2);
  EXPECT_NEAR(d.sunTransit, 11 + 46 / 60.0 + 4.5 * second, second / 2);
  EXPECT_NEAR(d.sunset, 17 + 20 / 60.0 + 19.5 * second, second / 2);
}

TEST(SpaPaperExample, JulianDaysMatchThePapersTable)
{
  struct Row {
    int year, month, day, hour, minute;
    double jd;
  };
  const Row rows[] = {
    {2000, 1, 1, 12, 0, 2451545.0},   {1999, 1, 1, 0, 0, 2451179.5},
    {1987, 1, 27, 0, 0, 2446822.5},   {1987, 6, 19, 12, 0, 2446966.0},
    {1988, 1, 27, 0, 0, 2447187.5},   {1988, 6, 19, 12, 0, 2447332.0},
    {1900, 1, 1, 0, 0, 2415020.5},    {1600, 1, 1, 0, 0, 2305447.5},
    {1600, 12, 31, 0, 0, 2305812.5},  {837, 4, 10, 7, 12, 2026871.8},
    {-123, 12, 31, 0, 0, 1676496.5},  {-122, 1, 1, 0, 0, 1676497.5},
    {-1000, 7, 12, 12, 0, 1356001.0}, {-1000, 2, 29, 0, 0, 1355866.5},
    {-1001, 8, 17, 21, 36, 1355671.4},
    // The calendar reform: Julian 4 October 1582 was followed by Gregorian 15.
    {1582, 10, 4, 0, 0, 2299159.5},   {1582, 10, 15, 0, 0, 2299160.5},
  };
  for (const Row& row : rows) {
    const kovSpaData d = calculated(at(row.year, row.month, row.day, row.hour, row.minute));
    EXPECT_NEAR(d.jd, row.jd, 1e-6) << dateOf(d);
  }
}

// ---- Seasons and geometry ---------------------------------------------------

// Equinox and solstice instants (UT, rounded to the minute) as published in
// almanacs. The apparent longitude is then a multiple of 90 degrees, to the
// 0.0007 degrees the sun moves in a minute.
TEST(SpaSeasons, ApparentLongitudeAndDeclinationAtPublishedInstants)
{
  struct Season {
    int year, month, day, hour, minute;
    double lamda;
  };
  const Season seasons[] = {
    {2000, 3, 20, 7, 35, 0},   {2000, 6, 21, 1, 48, 90},
    {2000, 9, 22, 17, 27, 180}, {2000, 12, 21, 13, 37, 270},
    {2024, 3, 20, 3, 6, 0},    {2024, 6, 20, 20, 51, 90},
    {2024, 9, 22, 12, 44, 180}, {2024, 12, 21, 9, 20, 270},
  };
  for (const Season& s : seasons) {
    const double deltaT = s.year == 2000 ? 63.8 : 69.2;
    const kovSpaData d =
      calculated(at(s.year, s.month, s.day, s.hour, s.minute, {0, 0, 0}, kovSpaZa, deltaT));
    SCOPED_TRACE(dateOf(d));
    EXPECT_NEAR(std::remainder(d.lamda - s.lamda, 360.0), 0.0, 0.0007);
    EXPECT_NEAR(d.epsilon, 23.44, 0.01);
    // 0 at the equinoxes, +/- the obliquity at the solstices, up to the
    // sun's ecliptic latitude (< 0.0003 deg).
    EXPECT_NEAR(d.delta, std::sin(s.lamda * kRadPerDeg) * d.epsilon, 0.0005);
  }
}

TEST(SpaSeasons, DistanceAndEquationOfTimeExtremesOverAYear)
{
  const std::vector<kovSpaData> year = everyDayOf2024({0, 0, 0});
  auto extremes = [&](double kovSpaData::*field) {
    auto less = [field](const kovSpaData& a, const kovSpaData& b) { return a.*field < b.*field; };
    return std::make_pair(*std::min_element(year.begin(), year.end(), less),
                          *std::max_element(year.begin(), year.end(), less));
  };
  // 2024: perihelion 3 January at 0.98331 AU, aphelion 5 July at 1.01673 AU.
  const auto [perihelion, aphelion] = extremes(&kovSpaData::r);
  EXPECT_NEAR(perihelion.r, 0.98331, 0.00002) << dateOf(perihelion);
  EXPECT_TRUE(perihelion.month == 1 && std::abs(perihelion.day - 3) <= 1) << dateOf(perihelion);
  EXPECT_NEAR(aphelion.r, 1.01673, 0.00002) << dateOf(aphelion);
  EXPECT_TRUE(aphelion.month == 7 && std::abs(aphelion.day - 5) <= 1) << dateOf(aphelion);

  // The equation of time bottoms out near -14.2 min about 11 February and
  // peaks near +16.4 min about 3 November.
  const auto [lowest, highest] = extremes(&kovSpaData::eot);
  EXPECT_NEAR(lowest.eot, -14.2, 0.15) << dateOf(lowest);
  EXPECT_TRUE(lowest.month == 2 && std::abs(lowest.day - 11) <= 2) << dateOf(lowest);
  EXPECT_NEAR(highest.eot, 16.4, 0.15) << dateOf(highest);
  EXPECT_TRUE(highest.month == 11 && std::abs(highest.day - 3) <= 2) << dateOf(highest);
}

TEST(SpaGeometry, NoonSunStandsOnTheMeridianAtItsSeasonalHeight)
{
  struct Case {
    const char* name;
    int month, day;
    Place place;
    double azimuth, elevation;
  };
  // Overhead on the equator at the equinox (9 h after it, 0.15 deg north);
  // at the June solstice 90 - |latitude - 23.44| high, due south in the
  // northern mid-latitudes and due north in the southern ones.
  const Case cases[] = {
    {"equator", 3, 20, {0, 0, 0}, 0.0, 89.85},
    {"Berlin", 6, 21, {52.52, 13.40, 1}, 180.0, 90.0 - 52.52 + 23.44},
    {"Sydney", 6, 21, {-33.87, 151.21, 10}, 0.0, 90.0 - 33.87 - 23.44},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const kovSpaData noon = calculated(at(2024, c.month, c.day, 12, 0, c.place));
    const kovSpaData d = calculatedAtHour(noon, noon.sunTransit);
    // Refraction lifts a sun this high by 0.03 deg at most.
    EXPECT_NEAR(d.e, c.elevation, 0.05);
    if (c.elevation < 89) {
      EXPECT_NEAR(std::remainder(d.azimuth - c.azimuth, 360.0), 0.0, 0.05);
    }
  }
}

TEST(SpaGeometry, IncidenceMeasuresTheAngleToTheSurfaceNormal)
{
  // Seven-minute steps through a spring day; some of these instants make
  // cos^2 + sin^2 round to just above 1 for the sun-facing surface, where an
  // unguarded acos returns NaN.
  for (int hour = 7; hour <= 16; ++hour) {
    for (int minute = 0; minute < 60; minute += 7) {
      SCOPED_TRACE(std::to_string(hour) + ":" + std::to_string(minute));
      kovSpaData d = calculated(at(2024, 5, 1, hour, minute, {39.7, -105.2, -7}, kovSpaZaInc, 0));
      EXPECT_NEAR(d.incidence, d.zenith, 1e-9);

      // Tilted to face the sun (azmRotation counts from south, like the
      // astronomers' azimuth). acos one rounding step below 1 is 1.2e-6 deg.
      d.slope = d.zenith;
      d.azmRotation = std::remainder(d.azimuthAstro, 360.0);
      EXPECT_NEAR(calculated(d).incidence, 0.0, 1e-5);
    }
  }
}

// ---- Sunrise, transit, sunset -----------------------------------------------

TEST(SpaRiseTransitSet, OrderedAllYearWithSeasonalDayLengths)
{
  for (double latitude : {40.0, -40.0}) {
    SCOPED_TRACE(latitude);
    for (const kovSpaData& d : everyDayOf2024({latitude, -3.7, 0})) {
      ASSERT_LT(d.sunrise, d.sunTransit) << dateOf(d);
      ASSERT_LT(d.sunTransit, d.sunset) << dateOf(d);
      // Transit halves the day to within the declination's daily drift.
      EXPECT_NEAR((d.sunrise + d.sunset) / 2, d.sunTransit, 0.02) << dateOf(d);

      // At 40 deg: about 15 h at midsummer, 9.3 h at midwinter, and 12 h plus
      // ~9 min (the sun's radius and refraction) at the equinox.
      const double length = d.sunset - d.sunrise;
      const bool northernSummer = latitude > 0;
      if (d.month == 6 && d.day == 21) {
        EXPECT_NEAR(length, northernSummer ? 15.0 : 9.3, 0.1);
      }
      if (d.month == 12 && d.day == 21) {
        EXPECT_NEAR(length, northernSummer ? 9.3 : 15.0, 0.1);
      }
      if (d.month == 3 && d.day == 20) {
        EXPECT_NEAR(length, 12.0 + 9.0 / 60.0, 2.0 / 60.0);
      }
    }
  }
}

TEST(SpaRiseTransitSet, TransitAgreesWithTheEquationOfTime)
{
  // Two independent routes to local noon: the rise/transit/set iteration and
  // the mean-sun relation transit = 12 h - longitude/15 - EoT.
  for (const kovSpaData& d : everyDayOf2024({48.0, 2.35, 1})) {
    const double fromEot = 12.0 + d.timezone - d.longitude / 15.0 - d.eot / 60.0;
    ASSERT_NEAR(d.sunTransit, fromEot, 2.0 / 3600.0) << dateOf(d);
  }
}

// At the event times the rise/transit/set step produces, the full position
// chain must see the upper limb on the refracted horizon and the sun on the
// meridian. Cases span the valid centuries, both hemispheres, and the day the
// right ascension wraps through 0/360.
TEST(SpaRiseTransitSet, EventTimesAgreeWithThePositionChain)
{
  struct Case {
    int year, month, day;
    double latitude, longitude, deltaT;
  };
  const Case cases[] = {
    {-1500, 3, 30, 30.0, 31.2, 0},      {1000, 7, 1, 60.0, 10.0, 1600},
    {2024, 3, 20, 0.0, 0.0, 69.2},      {2024, 3, 21, -33.9, 151.2, 69.2},
    {2024, 12, 21, -45.0, -70.0, 69.2}, {4000, 9, 1, 45.0, -100.0, 8000},
    {6000, 1, 15, 10.0, 100.0, 0},
  };
  for (const Case& c : cases) {
    const Place place{c.latitude, c.longitude, std::round(c.longitude / 15.0)};
    const kovSpaData base = calculated(at(c.year, c.month, c.day, 12, 0, place, kovSpaZaRts, c.deltaT));
    SCOPED_TRACE(dateOf(base));

    // The events belong to the UT day of the date, so check them there.
    kovSpaData utc = base;
    utc.timezone = 0;
    auto atEvent = [&](double localHour) {
      const double utHour = localHour - base.timezone;
      return calculatedAtHour(utc, utHour - 24.0 * std::floor(utHour / 24.0));
    };
    // Rise and set are for the geocentric sun; parallax puts the observed
    // one up to 0.0024 deg lower. 0.005 deg is about a second of time.
    const double horizon = -(0.26667 + base.atmosRefract);
    EXPECT_NEAR(atEvent(base.sunrise).e0, horizon, 0.005);
    EXPECT_NEAR(atEvent(base.sunset).e0, horizon, 0.005);
    const kovSpaData transit = atEvent(base.sunTransit);
    EXPECT_NEAR(std::remainder(transit.hPrime, 360.0), 0.0, 0.001);
    // The transit altitude is taken at the first-guess transit time, which
    // for a sun near the zenith costs a few thousandths of a degree.
    EXPECT_NEAR(transit.e0, base.sta, 0.01);
  }
}

TEST(SpaRiseTransitSet, PolarDayAndNightHaveNoRiseButATransit)
{
  for (int month : {6, 12}) {
    const kovSpaData d = calculated(at(2024, month, 21, 12, 0, {70, 0, 0}));
    EXPECT_EQ(d.sunrise, kovSpaNoRiseSet);
    EXPECT_EQ(d.sunset, kovSpaNoRiseSet);
    EXPECT_EQ(d.srha, kovSpaNoRiseSet);
    EXPECT_EQ(d.ssha, kovSpaNoRiseSet);
    EXPECT_NEAR(d.sunTransit, 12.0 - d.eot / 60.0, 0.01);
    // 90 - |70 - declination|: 43.4 deg in June, -3.4 deg (still below the
    // refracted horizon) in December.
    EXPECT_NEAR(d.sta, month == 6 ? 43.4 : -3.4, 0.1);
  }
}

// ---- Input validation -------------------------------------------------------

TEST(SpaValidation, EachOutOfRangeInputReturnsItsCode)
{
  struct Bad {
    const char* what;
    void (*apply)(kovSpaData&);
    int code;
  };
  const Bad bad[] = {
    {"year", [](kovSpaData& d) { d.year = 6001; }, kovSpaErrYear},
    {"month", [](kovSpaData& d) { d.month = 13; }, kovSpaErrMonth},
    {"day", [](kovSpaData& d) { d.day = 0; }, kovSpaErrDay},
    {"hour", [](kovSpaData& d) { d.hour = 25; }, kovSpaErrHour},
    {"minute", [](kovSpaData& d) { d.minute = 60; }, kovSpaErrMinute},
    {"second", [](kovSpaData& d) { d.second = 60; }, kovSpaErrSecond},
    {"24:01", [](kovSpaData& d) { d.hour = 24; d.minute = 1; d.second = 0; }, kovSpaErrMinute},
    {"24:00:01", [](kovSpaData& d) { d.hour = 24; d.minute = 0; d.second = 1; }, kovSpaErrSecond},
    {"deltaT", [](kovSpaData& d) { d.deltaT = -8001; }, kovSpaErrDeltaT},
    {"timezone", [](kovSpaData& d) { d.timezone = 18.5; }, kovSpaErrTimezone},
    {"longitude", [](kovSpaData& d) { d.longitude = -180.5; }, kovSpaErrLongitude},
    {"latitude", [](kovSpaData& d) { d.latitude = 90.5; }, kovSpaErrLatitude},
    {"elevation", [](kovSpaData& d) { d.elevation = -6500001; }, kovSpaErrElevation},
    {"pressure", [](kovSpaData& d) { d.pressure = -1; }, kovSpaErrPressure},
    {"temperature", [](kovSpaData& d) { d.temperature = -273; }, kovSpaErrTemperature},
    {"slope", [](kovSpaData& d) { d.slope = 361; }, kovSpaErrSlope},
    {"azmRotation", [](kovSpaData& d) { d.azmRotation = -361; }, kovSpaErrAzmRotation},
    {"atmosRefract", [](kovSpaData& d) { d.atmosRefract = 5.5; }, kovSpaErrAtmosRefract},
    {"deltaUt1", [](kovSpaData& d) { d.deltaUt1 = 1; }, kovSpaErrDeltaUt1},
    {"function", [](kovSpaData& d) { d.function = static_cast<kovSpaFunction>(4); },
     kovSpaErrFunction},
    // Surface inputs only matter, and are only checked, for incidence.
    {"slope unused", [](kovSpaData& d) { d.slope = 400; d.function = kovSpaZaRts; }, kovSpaOk},
  };
  for (const Bad& b : bad) {
    SCOPED_TRACE(b.what);
    kovSpaData d = paperExample();
    b.apply(d);
    d.zenith = -1;
    EXPECT_EQ(kovSpaCalculate(d), b.code);
    if (b.code != kovSpaOk) {
      EXPECT_EQ(d.zenith, -1) << "outputs must stay untouched on error";
    }
  }
}

TEST(SpaValidation, RangeLimitsThemselvesGiveFiniteResults)
{
  for (int year : {-2000, 6000}) {
    for (double latitude : {-90.0, 90.0}) {
      kovSpaData d = at(year, 1, 1, 24, 0, {latitude, 180, 0}, kovSpaAll, 8000);
      d.elevation = -6500000;
      d.atmosRefract = 5;
      d = calculated(d);
      for (double value : {d.zenith, d.azimuth, d.incidence, d.eot, d.sunTransit, d.sta})
        EXPECT_TRUE(std::isfinite(value)) << year << " " << latitude;
    }
  }
}

TEST(SpaValidation, NonFiniteInputsAreRejected)
{
  double kovSpaData::*const fields[] = {
    &kovSpaData::second,    &kovSpaData::deltaUt1,    &kovSpaData::deltaT,
    &kovSpaData::timezone,  &kovSpaData::longitude,   &kovSpaData::latitude,
    &kovSpaData::elevation, &kovSpaData::pressure,    &kovSpaData::temperature,
    &kovSpaData::slope,     &kovSpaData::azmRotation, &kovSpaData::atmosRefract,
  };
  const double inf = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < std::size(fields); ++i) {
    SCOPED_TRACE(i);
    for (kovSpaFunction function : {kovSpaZa, kovSpaAll}) {
      kovSpaData d = paperExample();
      d.function = function;
      d.*fields[i] = std::numeric_limits<double>::quiet_NaN();
      EXPECT_EQ(kovSpaCalculate(d), kovSpaErrNonFinite);
      d.*fields[i] = inf;
      EXPECT_NE(kovSpaCalculate(d), kovSpaOk);
      d.*fields[i] = -inf;
      EXPECT_NE(kovSpaCalculate(d), kovSpaOk);
    }
  }
}
