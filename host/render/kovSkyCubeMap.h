#ifndef KOV_SKY_CUBE_MAP_H
#define KOV_SKY_CUBE_MAP_H

#include "host/render/kovSkyModel.h"

#include <Graphic3d_CubeMap.hxx>

// The sky of a lighting as an environment cube map, which the path tracer
// both shows behind the scene and gathers light from: the ground colour below
// the horizon, the horizon's colour blending into the zenith's above it.
class kovSkyCubeMap {
public:
  // Each face is size x size pixels.
  static Handle(Graphic3d_CubeMap) create(const kovSkyModel::Lighting& lighting, int size = 64);
  // The sky's colour at an elevation (radians), as the map holds it.
  static kovRgb colorAt(const kovSkyModel::Lighting& lighting, double elevation);
  // The mean of the sky above the horizon as a level surface under it sees
  // it (weighted by the cosine to the zenith).
  static kovRgb meanRadiance(const kovSkyModel::Lighting& lighting);
};

#endif
