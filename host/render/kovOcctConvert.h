#ifndef KOV_OCCT_CONVERT_H
#define KOV_OCCT_CONVERT_H

#include "Cm/OdCmEntityColor.h"
#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeVector3d.h"

#include <Image_PixMap.hxx>
#include <Quantity_Color.hxx>
#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>
#include <gp_Trsf.hxx>
#include <gp_Vec.hxx>

class OdGiRasterImage;

// Between the platform's geometry, colours and images and the render
// engine's.
namespace kovOcct {

inline gp_Pnt point(const OdGePoint3d& p) { return gp_Pnt(p.x, p.y, p.z); }
inline gp_Vec vector(const OdGeVector3d& v) { return gp_Vec(v.x, v.y, v.z); }
// v must not be zero.
inline gp_Dir direction(const OdGeVector3d& v) { return gp_Dir(v.x, v.y, v.z); }
inline OdGePoint3d point(const gp_Pnt& p) { return OdGePoint3d(p.X(), p.Y(), p.Z()); }

// Colours drawn "by layer", "by block" or in the foreground colour come out
// in the neutral light grey of an unpainted surface.
Quantity_Color color(const OdCmEntityColor& color);
// The same as 0xRRGGBB, to sort by.
OdUInt32 packedColor(const OdCmEntityColor& color);
Quantity_Color unpackedColor(OdUInt32 rgb);

// The image as the engine's RGBA pixels, rows from the bottom as textures
// take them.
Handle(Image_PixMap) pixMap(const OdGiRasterImage& image);

// The matrix as a rigid motion with uniform scale; false when it is not one
// (shear, non-uniform scale or a singular matrix).
bool similarity(const OdGeMatrix3d& m, gp_Trsf& trsf);

} // namespace kovOcct

#endif
