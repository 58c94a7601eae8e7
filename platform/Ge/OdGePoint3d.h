#ifndef OD_GE_POINT3D_H
#define OD_GE_POINT3D_H

#include "Ge/OdGeTol.h"
#include "Ge/OdGeVector3d.h"
#include "Rx/OdPlatform.h"

class OdGeMatrix3d;

// A position in 3D space. A plain value type: all members public, copied
// freely, no allocation.
class OdGePoint3d {
public:
  static const OdGePoint3d kOrigin;

  constexpr OdGePoint3d() : x(0.0), y(0.0), z(0.0) {}
  constexpr OdGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

  OdGePoint3d& set(double xx, double yy, double zz)
  {
    x = xx;
    y = yy;
    z = zz;
    return *this;
  }

  // Coordinates by index: 0 is x, 1 is y, 2 is z.
  double operator[](int i) const { ODA_ASSERT(i >= 0 && i <= 2); return i == 0 ? x : (i == 1 ? y : z); }
  double& operator[](int i) { ODA_ASSERT(i >= 0 && i <= 2); return i == 0 ? x : (i == 1 ? y : z); }

  // The vector from the origin to this point.
  OdGeVector3d asVector() const { return OdGeVector3d(x, y, z); }
  double distanceTo(const OdGePoint3d& p) const { return (*this - p).length(); }
  // True when the two points are no further apart than tol.equalPoint().
  bool isEqualTo(const OdGePoint3d& p, const OdGeTol& tol = OdGeContext::gTol) const
  {
    return distanceTo(p) <= tol.equalPoint();
  }

  // Right-handed rotation by angle radians about the line through base along
  // axis; a zero axis leaves the point where it is.
  OdGePoint3d& rotateBy(double angle, const OdGeVector3d& axis, const OdGePoint3d& base = kOrigin);
  // Scales the point's offset from base by s.
  OdGePoint3d& scaleBy(double s, const OdGePoint3d& base = kOrigin)
  {
    return *this = base + (*this - base) * s;
  }
  // Applies m (translation included; a projective m divides by w).
  inline OdGePoint3d& transformBy(const OdGeMatrix3d& m);

  OdGePoint3d operator+(const OdGeVector3d& v) const { return OdGePoint3d(x + v.x, y + v.y, z + v.z); }
  OdGePoint3d operator-(const OdGeVector3d& v) const { return OdGePoint3d(x - v.x, y - v.y, z - v.z); }
  OdGeVector3d operator-(const OdGePoint3d& p) const { return OdGeVector3d(x - p.x, y - p.y, z - p.z); }
  OdGePoint3d& operator+=(const OdGeVector3d& v) { return *this = *this + v; }
  OdGePoint3d& operator-=(const OdGeVector3d& v) { return *this = *this - v; }
  // Scaling about the origin, so that (a + b.asVector()) * 0.5 is the midpoint.
  OdGePoint3d operator*(double s) const { return OdGePoint3d(x * s, y * s, z * s); }

  // Equality within the global tolerance.
  bool operator==(const OdGePoint3d& p) const { return isEqualTo(p); }
  bool operator!=(const OdGePoint3d& p) const { return !isEqualTo(p); }

  double x, y, z;
};

inline OdGePoint3d operator*(double s, const OdGePoint3d& p) { return p * s; }

// m applied to p; defined in OdGeMatrix3d.h.
inline OdGePoint3d operator*(const OdGeMatrix3d& m, const OdGePoint3d& p);

// The matrix's inline operations on points need the complete matrix class;
// including it here means every user of points has them.
#include "Ge/OdGeMatrix3d.h"

#endif
