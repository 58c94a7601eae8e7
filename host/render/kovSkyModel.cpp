#include "host/render/kovSkyModel.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

kovRgb mix(const kovRgb& a, const kovRgb& b, double t)
{
  t = std::clamp(t, 0.0, 1.0);
  return { a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t };
}

kovRgb scaled(const kovRgb& c, double s)
{
  return { c.r * s, c.g * s, c.b * s };
}

// The clear sky through the day, at a few key heights of the sun; colours
// between are blended so that a sun moving through the day never jumps.
struct Key {
  double elevation;
  kovRgb sun;
  double intensity;
  kovRgb ambient;
  kovRgb zenith;
  kovRgb horizon;
};

const Key kKeys[] = {
  { -18.0, { 0.0, 0.0, 0.0 }, 0.0, { 0.03, 0.035, 0.06 }, { 0.01, 0.012, 0.03 }, { 0.02, 0.025, 0.05 } },
  { -6.0, { 0.0, 0.0, 0.0 }, 0.0, { 0.08, 0.09, 0.15 }, { 0.05, 0.07, 0.18 }, { 0.25, 0.18, 0.25 } },
  { 0.0, { 1.0, 0.45, 0.2 }, 0.35, { 0.22, 0.2, 0.24 }, { 0.2, 0.3, 0.55 }, { 0.95, 0.55, 0.3 } },
  { 10.0, { 1.0, 0.8, 0.6 }, 0.8, { 0.32, 0.33, 0.38 }, { 0.3, 0.5, 0.85 }, { 0.85, 0.8, 0.75 } },
  { 30.0, { 1.0, 0.97, 0.92 }, 1.0, { 0.38, 0.4, 0.45 }, { 0.25, 0.45, 0.85 }, { 0.75, 0.85, 0.95 } },
};

struct PresetLook {
  double sunFactor;   // what the clouds let through
  double ambientGain; // scattered light under the clouds
  kovRgb cloud;       // the colour the sky turns to
  double cloudCover;  // how far it turns
};

PresetLook lookOf(kovSkyModel::Preset preset)
{
  switch (preset) {
  case kovSkyModel::Preset::Cumulus:
    return { 0.85, 1.1, { 0.85, 0.88, 0.92 }, 0.3 };
  case kovSkyModel::Preset::Overcast:
    return { 0.2, 1.5, { 0.62, 0.64, 0.67 }, 0.85 };
  case kovSkyModel::Preset::Rainy:
    return { 0.08, 1.1, { 0.38, 0.4, 0.43 }, 0.95 };
  case kovSkyModel::Preset::Foggy:
    return { 0.35, 1.4, { 0.78, 0.78, 0.78 }, 0.9 };
  case kovSkyModel::Preset::Clear:
    break;
  }
  return { 1.0, 1.0, { 0.0, 0.0, 0.0 }, 0.0 };
}

} // namespace

kovSkyModel::Period kovSkyModel::periodAt(double elevationDegrees)
{
  if (elevationDegrees > 10.0)
    return Period::Day;
  if (elevationDegrees > 0.0)
    return Period::GoldenHour;
  if (elevationDegrees > -6.0)
    return Period::Twilight;
  return Period::Night;
}

kovSkyModel::Preset kovSkyModel::presetNamed(const QString& name)
{
  const QString lower = name.toLower();
  const struct {
    const char* word;
    Preset preset;
  } words[] = { { "clear", Preset::Clear },   { "cumulus", Preset::Cumulus }, { "overcast", Preset::Overcast },
                { "rain", Preset::Rainy },    { "storm", Preset::Rainy },     { "fog", Preset::Foggy },
                { "mist", Preset::Foggy },    { "stratus", Preset::Overcast }, { "layer", Preset::Overcast },
                { "nimbo", Preset::Rainy } };
  int best = -1;
  Preset found = Preset::Clear;
  for (const auto& w : words) {
    const int at = lower.indexOf(QLatin1String(w.word));
    if (at >= 0 && (best < 0 || at < best)) {
      best = at;
      found = w.preset;
    }
  }
  return found;
}

OdGeVector3d kovSkyModel::directionToSun(double azimuthDegrees, double elevationDegrees)
{
  const double az = azimuthDegrees * kPi / 180.0;
  const double el = elevationDegrees * kPi / 180.0;
  return OdGeVector3d(std::sin(az) * std::cos(el), std::cos(az) * std::cos(el), std::sin(el));
}

kovSkyModel::Lighting kovSkyModel::lighting(const OdGeVector3d& toSun, Preset preset)
{
  Lighting light;
  light.toSun = toSun.isZeroLength() ? OdGeVector3d::kZAxis : toSun.normal();
  const double elevation = std::asin(std::clamp(light.toSun.z, -1.0, 1.0)) * 180.0 / kPi;
  light.period = periodAt(elevation);

  const size_t n = sizeof(kKeys) / sizeof(kKeys[0]);
  size_t upper = 0;
  while (upper < n && kKeys[upper].elevation < elevation)
    ++upper;
  const Key& hi = kKeys[std::min(upper, n - 1)];
  const Key& lo = kKeys[upper == 0 ? 0 : upper - 1];
  const double t = hi.elevation == lo.elevation ? 0.0 : (elevation - lo.elevation) / (hi.elevation - lo.elevation);

  const PresetLook look = lookOf(preset);
  const double intensity = lo.intensity + (hi.intensity - lo.intensity) * std::clamp(t, 0.0, 1.0);
  light.sunOn = elevation > 0.0 && intensity * look.sunFactor > 0.0;
  light.sunColor = mix(lo.sun, hi.sun, t);
  light.sunIntensity = light.sunOn ? intensity * look.sunFactor : 0.0;
  light.ambient = scaled(mix(lo.ambient, hi.ambient, t), look.ambientGain);

  // Clouds take the sky toward their colour, lit as brightly as the sky was.
  const kovRgb zenith = mix(lo.zenith, hi.zenith, t);
  const kovRgb horizon = mix(lo.horizon, hi.horizon, t);
  const double daylight = std::clamp((zenith.r + zenith.g + zenith.b) / 1.5, 0.0, 1.0);
  const kovRgb cloud = scaled(look.cloud, daylight);
  light.skyZenith = mix(zenith, cloud, look.cloudCover);
  light.skyHorizon = mix(horizon, cloud, look.cloudCover);
  light.ground = scaled(mix(light.skyHorizon, { 0.3, 0.28, 0.25 }, 0.6), 0.8);
  return light;
}
