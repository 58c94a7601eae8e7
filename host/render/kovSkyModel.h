#ifndef KOV_SKY_MODEL_H
#define KOV_SKY_MODEL_H

#include "Ge/OdGeVector3d.h"

#include <QString>

// A colour in linear light, each channel 0 and up.
struct kovRgb {
  double r = 0.0;
  double g = 0.0;
  double b = 0.0;
};

// The lighting and sky of the scene for one sun position and sky preset:
// what the render engines are given. Pure computation, so that the look of
// every time of day is the same in each engine and can be checked without a
// display.
class kovSkyModel {
public:
  enum class Period { Day, GoldenHour, Twilight, Night };
  enum class Preset { Clear, Cumulus, Overcast, Rainy, Foggy };

  struct Lighting {
    Period period = Period::Day;
    // Off below the horizon: the sun then lights nothing.
    bool sunOn = true;
    // Toward the sun, unit length.
    OdGeVector3d toSun { 0.0, 0.0, 1.0 };
    kovRgb sunColor;
    double sunIntensity = 0.0;
    kovRgb ambient;
    kovRgb skyZenith;
    kovRgb skyHorizon;
    kovRgb ground;
  };

  // The periods by the sun's height: day above 10 degrees, golden hour down
  // to the horizon, twilight to 6 degrees below it, night further down.
  static Period periodAt(double elevationDegrees);

  // The preset a sky sequence name asks for: "Clear", "Cumulus",
  // "Overcast" (also "Stratus", "Layer"), "Rainy" (also "Rain", "Storm",
  // "Nimbo") or "Foggy" ("Fog", "Mist"), by the first of these words it holds,
  // in any case; Clear for anything else.
  static Preset presetNamed(const QString& name);

  // toSun need not be unit length; a zero vector stands for the zenith.
  static Lighting lighting(const OdGeVector3d& toSun, Preset preset = Preset::Clear);

  // The direction toward the sun for an azimuth (degrees clockwise from the
  // drawing's +Y, which is north) and an elevation above the horizon.
  static OdGeVector3d directionToSun(double azimuthDegrees, double elevationDegrees);
};

#endif
