#ifndef OD_GE_VECTOR3D_H
#define OD_GE_VECTOR3D_H

#include "Ge/OdGeTol.h"
#include "Rx/OdPlatform.h"

#include <cmath>

class OdGeMatrix3d;

// A direction and magnitude in 3D space. A plain value type: all members
// public, copied freely, no allocation.
class OdGeVector3d {
public:
  static const OdGeVector3d kIdentity; // the zero vector
  static const OdGeVector3d kXAxis;
  static const OdGeVector3d kYAxis;
  static const OdGeVector3d kZAxis;

  constexpr OdGeVector3d() : x(0.0), y(0.0), z(0.0) {}
  constexpr OdGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

  OdGeVector3d& set(double xx, double yy, double zz)
  {
    x = xx;
    y = yy;
    z = zz;
    return *this;
  }

  // Components by index: 0 is x, 1 is y, 2 is z.
  double operator[](int i) const { ODA_ASSERT(i >= 0 && i <= 2); return i == 0 ? x : (i == 1 ? y : z); }
  double& operator[](int i) { ODA_ASSERT(i >= 0 && i <= 2); return i == 0 ? x : (i == 1 ? y : z); }

  double lengthSqrd() const { return x * x + y * y + z * z; }
  double length() const { return std::sqrt(lengthSqrd()); }
  // True when the length is within tol.equalVector() of zero.
  bool isZeroLength(const OdGeTol& tol = OdGeContext::gTol) const { return length() <= tol.equalVector(); }

  // A unit vector in the same direction; a zero-length vector (by tol) comes
  // back unchanged rather than as NaNs.
  OdGeVector3d normal(const OdGeTol& tol = OdGeContext::gTol) const
  {
    const double len = length();
    return len <= tol.equalVector() ? *this : OdGeVector3d(x / len, y / len, z / len);
  }
  // Makes this a unit vector in place, with the same zero-length rule as normal().
  OdGeVector3d& normalize(const OdGeTol& tol = OdGeContext::gTol) { return *this = normal(tol); }

  double dotProduct(const OdGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
  OdGeVector3d crossProduct(const OdGeVector3d& v) const
  {
    return OdGeVector3d(y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x);
  }

  // A vector perpendicular to this one, by the arbitrary-axis rule of drawing
  // files: Y x this when both |x| and |y| are below 1/64, else Z x this. Not
  // normalised; zero for a zero vector.
  OdGeVector3d perpVector() const;

  // The unsigned angle between the two vectors, in [0, pi]; 0 if either is zero.
  double angleTo(const OdGeVector3d& v) const { return std::atan2(crossProduct(v).length(), dotProduct(v)); }

  // Right-handed rotation about axis (any non-zero length) by angle radians; a
  // zero axis leaves the vector unchanged.
  OdGeVector3d& rotateBy(double angle, const OdGeVector3d& axis);
  // Applies the linear part of m: translation does not move a vector.
  inline OdGeVector3d& transformBy(const OdGeMatrix3d& m);

  bool isEqualTo(const OdGeVector3d& v, const OdGeTol& tol = OdGeContext::gTol) const
  {
    return (*this - v).length() <= tol.equalVector();
  }
  // Same or opposite direction; false if either vector is zero length.
  bool isParallelTo(const OdGeVector3d& v, const OdGeTol& tol = OdGeContext::gTol) const;
  // Same direction; false if either vector is zero length.
  bool isCodirectionalTo(const OdGeVector3d& v, const OdGeTol& tol = OdGeContext::gTol) const;

  OdGeVector3d& negate()
  {
    x = -x;
    y = -y;
    z = -z;
    return *this;
  }
  OdGeVector3d operator-() const { return OdGeVector3d(-x, -y, -z); }

  OdGeVector3d operator+(const OdGeVector3d& v) const { return OdGeVector3d(x + v.x, y + v.y, z + v.z); }
  OdGeVector3d operator-(const OdGeVector3d& v) const { return OdGeVector3d(x - v.x, y - v.y, z - v.z); }
  OdGeVector3d operator*(double s) const { return OdGeVector3d(x * s, y * s, z * s); }
  OdGeVector3d operator/(double s) const { return OdGeVector3d(x / s, y / s, z / s); }
  OdGeVector3d& operator+=(const OdGeVector3d& v) { return *this = *this + v; }
  OdGeVector3d& operator-=(const OdGeVector3d& v) { return *this = *this - v; }
  OdGeVector3d& operator*=(double s) { return *this = *this * s; }
  OdGeVector3d& operator/=(double s) { return *this = *this / s; }

  // Equality within the global tolerance.
  bool operator==(const OdGeVector3d& v) const { return isEqualTo(v); }
  bool operator!=(const OdGeVector3d& v) const { return !isEqualTo(v); }

  double x, y, z;
};

inline OdGeVector3d operator*(double s, const OdGeVector3d& v) { return v * s; }

// m applied to v (linear part only); defined in OdGeMatrix3d.h.
inline OdGeVector3d operator*(const OdGeMatrix3d& m, const OdGeVector3d& v);

// The matrix's inline operations on vectors need the complete matrix class,
// whose own declaration needs complete points: the point header completes both
// and brings in the matrix, so every user of vectors has those operations.
#include "Ge/OdGePoint3d.h"

#endif
