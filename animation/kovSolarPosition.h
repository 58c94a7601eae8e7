#ifndef KOV_SOLAR_POSITION_H
#define KOV_SOLAR_POSITION_H

// Solar position for the sun light of an animation: the solar position
// algorithm of Reda & Andreas ("Solar Position Algorithm for Solar Radiation
// Applications", NREL/TP-560-34302, revised 2008). Valid for the years -2000
// to 6000 with an uncertainty of +/-0.0003 degrees in zenith and azimuth.
//
// Fill the inputs of a kovSpaData, call kovSpaCalculate, read the outputs.
// Angles are in degrees, times in hours unless noted. Plain C++, no Qt, so it
// can run on any thread of the video production.

// What kovSpaCalculate computes beyond the always computed sun position.
enum kovSpaFunction : int {
  kovSpaZa = 0,    // zenith and azimuth (and everything leading to them)
  kovSpaZaInc = 1, // plus the incidence angle on the tilted surface
  kovSpaZaRts = 2, // plus sunrise, transit and sunset
  kovSpaAll = 3    // all of the above
};

// Return codes of kovSpaCalculate. 1..17 are the input checks of the paper's
// reference program, in the same order and with the same numbers, so logs and
// comparisons against that program line up.
enum kovSpaError {
  kovSpaOk = 0,
  kovSpaErrYear = 1,          // year outside -2000..6000
  kovSpaErrMonth = 2,         // month outside 1..12
  kovSpaErrDay = 3,           // day outside 1..31
  kovSpaErrHour = 4,          // hour outside 0..24
  kovSpaErrMinute = 5,        // minute outside 0..59, or non-zero at hour 24
  kovSpaErrSecond = 6,        // second outside [0, 60), or non-zero at hour 24
  kovSpaErrDeltaT = 7,        // |deltaT| > 8000 s
  kovSpaErrTimezone = 8,      // |timezone| > 18 h
  kovSpaErrLongitude = 9,     // |longitude| > 180
  kovSpaErrLatitude = 10,     // |latitude| > 90
  kovSpaErrElevation = 11,    // elevation < -6500000 m
  kovSpaErrPressure = 12,     // pressure outside 0..5000 mbar
  kovSpaErrTemperature = 13,  // temperature outside (-273, 6000] deg C
  kovSpaErrSlope = 14,        // |slope| > 360 (incidence functions only)
  kovSpaErrAzmRotation = 15,  // |azmRotation| > 360 (incidence functions only)
  kovSpaErrAtmosRefract = 16, // |atmosRefract| > 5
  kovSpaErrDeltaUt1 = 17,     // deltaUt1 outside (-1, 1)
  // Any floating-point input that is NaN or infinite and not already caught
  // by its range check above, including slope and azmRotation when the
  // function does not use them: a non-finite value is always a caller bug.
  kovSpaErrNonFinite = 18,
  kovSpaErrFunction = 19      // function is not one of kovSpaFunction
};

// Written to sunrise, sunset, srha and ssha when the sun does not cross the
// horizon that day (polar day or night). Transit is still computed then.
constexpr double kovSpaNoRiseSet = -99999.0;

struct kovSpaData {
  // ---- Inputs ----
  int year = 2000;   // -2000..6000; astronomical numbering (year 0 = 1 BC)
  int month = 1;     // 1..12
  int day = 1;       // 1..31; dates before 1582-10-15 are Julian calendar
  int hour = 0;      // 0..24, local standard time
  int minute = 0;    // 0..59
  double second = 0; // [0, 60)
  double deltaUt1 = 0;  // UT1 - UTC in seconds, (-1, 1), from IERS bulletins
  double deltaT = 0;    // TT - UT1 in seconds (about 69 s in the 2020s)
  double timezone = 0;  // hours, east of Greenwich positive
  double longitude = 0; // degrees, east positive
  double latitude = 0;  // degrees, north positive
  double elevation = 0; // metres above sea level
  double pressure = 1010;    // annual average local pressure, mbar
  double temperature = 10;   // annual average local temperature, deg C
  double slope = 0;          // surface tilt from horizontal, degrees
  double azmRotation = 0;    // surface azimuth from south, east negative
  double atmosRefract = 0.5667; // refraction at sunrise/sunset, degrees
  kovSpaFunction function = kovSpaAll;

  // ---- Outputs ---- (section of the paper in brackets)
  double jd = 0;   // Julian day, UT (3.1)
  double jc = 0;   // Julian century
  double jde = 0;  // Julian ephemeris day, TT
  double jce = 0;  // Julian ephemeris century
  double jme = 0;  // Julian ephemeris millennium

  double l = 0;    // Earth heliocentric longitude (3.2)
  double b = 0;    // Earth heliocentric latitude
  double r = 0;    // Earth radius vector, AU
  double theta = 0; // geocentric longitude (3.3)
  double beta = 0;  // geocentric latitude

  double x[5] = {};        // nutation arguments X0..X4 (3.4)
  double delPsi = 0;       // nutation in longitude
  double delEpsilon = 0;   // nutation in obliquity
  double epsilon0 = 0;     // mean obliquity of the ecliptic, arc seconds (3.5)
  double epsilon = 0;      // true obliquity of the ecliptic
  double delTau = 0;       // aberration correction (3.6)
  double lamda = 0;        // apparent sun longitude (3.7)
  double nu0 = 0;          // mean sidereal time at Greenwich (3.8)
  double nu = 0;           // apparent sidereal time at Greenwich
  double alpha = 0;        // geocentric sun right ascension (3.9)
  double delta = 0;        // geocentric sun declination (3.10)

  double h = 0;            // observer local hour angle (3.11)
  double xi = 0;           // equatorial horizontal parallax of the sun (3.12)
  double delAlpha = 0;     // parallax in the sun right ascension
  double deltaPrime = 0;   // topocentric sun declination
  double alphaPrime = 0;   // topocentric sun right ascension
  double hPrime = 0;       // topocentric local hour angle (3.13)

  double e0 = 0;           // topocentric elevation without refraction (3.14)
  double delE = 0;         // atmospheric refraction correction
  double e = 0;            // topocentric elevation angle
  double zenith = 0;       // topocentric zenith angle
  double azimuthAstro = 0; // topocentric azimuth, westward from south (3.15)
  double azimuth = 0;      // topocentric azimuth, eastward from north
  double incidence = 0;    // surface incidence angle (3.16), kovSpaZaInc/All

  // Minutes; apparent minus mean solar time (A.1). Computed by every function.
  double eot = 0;
  // kovSpaZaRts/All only (A.2). As the paper defines them, these are the
  // events of the UT day of the input date, given in local time. Where the
  // local day is shifted against it, an event may be that of the adjacent
  // local day: the paper's own example sunset, 17:20:19 at UTC-7, happens at
  // 00:20 UT, i.e. on the local evening before the input date.
  double srha = 0;       // local hour angle at sunrise
  double ssha = 0;       // local hour angle at sunset
  double sta = 0;        // geometric sun altitude at transit
  double sunTransit = 0; // local fractional hour of transit
  double sunrise = 0;    // local fractional hour of sunrise (upper limb)
  double sunset = 0;     // local fractional hour of sunset (upper limb)
};

// Validates the inputs and, if they are all acceptable, fills every output the
// requested function needs. Returns kovSpaOk (0) or a kovSpaError code; on an
// error the outputs are left untouched. Never throws.
int kovSpaCalculate(kovSpaData& data);

#endif
