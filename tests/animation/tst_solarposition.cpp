#include "animation/kovSolarPosition.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <limits>

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

// Half a unit of the last digit the paper prints.
double printed(int decimals) { return 0.5 * std::pow(10.0, -decimals); }

} // namespace

// ---- The paper's worked example ---------------------------------------------

TEST(SpaPaperExample, ResultsAndClockTimesMatchPrintedDigits)
{
  const kovSpaData d = calculated(paperExample());
  EXPECT_NEAR(d.zenith, 50.11162, printed(5));
  EXPECT_NEAR(d.azimuth, 194.34024, printed(5));
  EXPECT_NEAR(d.incidence, 25.18700, printed(5));

  // One intermediate of each stage: the time, the heliocentric and the
  // topocentric position.
  EXPECT_NEAR(d.jd, 2452930.312847, printed(6));
  EXPECT_NEAR(d.r, 0.9965422974, printed(10));
  EXPECT_NEAR(d.delPsi, -0.00399840, printed(8));
  EXPECT_NEAR(d.alpha, 202.22741, printed(5));
  EXPECT_NEAR(d.e, 39.888378, printed(6));

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
    EXPECT_NEAR(d.jd, row.jd, 1e-6) << row.year << "-" << row.month << "-" << row.day;
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

TEST(SpaValidation, RangeLimitsGiveFiniteResultsAndNonFiniteInputsAreRejected)
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

