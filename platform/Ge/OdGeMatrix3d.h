#ifndef OD_GE_MATRIX3D_H
#define OD_GE_MATRIX3D_H

#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeTol.h"
#include "Ge/OdGeVector3d.h"

// A 4x4 transformation acting on column vectors: entry[row][col], translation
// in entry[0..2][3], and a * b applies b first. Setters return *this.
class OdGeMatrix3d {
public:
  static const OdGeMatrix3d kIdentity;

  // The identity.
  constexpr OdGeMatrix3d() : entry{{1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}} {}

  double* operator[](int row) { ODA_ASSERT(row >= 0 && row < 4); return entry[row]; }
  const double* operator[](int row) const { ODA_ASSERT(row >= 0 && row < 4); return entry[row]; }
  double& operator()(int row, int col) { ODA_ASSERT(row >= 0 && row < 4 && col >= 0 && col < 4); return entry[row][col]; }
  double operator()(int row, int col) const { ODA_ASSERT(row >= 0 && row < 4 && col >= 0 && col < 4); return entry[row][col]; }

  OdGeMatrix3d& setToIdentity() { return *this = OdGeMatrix3d(); }
  OdGeMatrix3d& setToTranslation(const OdGeVector3d& v) { return setToIdentity().setTranslation(v); }
  // Uniform scaling by s that keeps center fixed.
  OdGeMatrix3d& setToScaling(double s, const OdGePoint3d& center = OdGePoint3d::kOrigin);
  // Right-handed rotation by angle radians about the line through center along
  // axis (any non-zero length); a zero axis gives the identity.
  OdGeMatrix3d& setToRotation(double angle, const OdGeVector3d& axis, const OdGePoint3d& center = OdGePoint3d::kOrigin);
  // The matrix taking the world origin and axes onto origin, x, y and z as
  // given (not normalised, not orthogonalised): its columns are x, y, z, origin.
  OdGeMatrix3d& setCoordSystem(const OdGePoint3d& origin, const OdGeVector3d& x, const OdGeVector3d& y, const OdGeVector3d& z);
  // Reads back what setCoordSystem set: the columns of the affine part.
  void getCoordSystem(OdGePoint3d& origin, OdGeVector3d& x, OdGeVector3d& y, OdGeVector3d& z) const;
  OdGePoint3d getCsOrigin() const { return OdGePoint3d(entry[0][3], entry[1][3], entry[2][3]); }
  OdGeVector3d getCsXAxis() const { return OdGeVector3d(entry[0][0], entry[1][0], entry[2][0]); }
  OdGeVector3d getCsYAxis() const { return OdGeVector3d(entry[0][1], entry[1][1], entry[2][1]); }
  OdGeVector3d getCsZAxis() const { return OdGeVector3d(entry[0][2], entry[1][2], entry[2][2]); }

  OdGeVector3d translation() const { return OdGeVector3d(entry[0][3], entry[1][3], entry[2][3]); }
  // Replaces the translation column, leaving the rest as it is.
  OdGeMatrix3d& setTranslation(const OdGeVector3d& v)
  {
    entry[0][3] = v.x;
    entry[1][3] = v.y;
    entry[2][3] = v.z;
    return *this;
  }

  // The inverse. Raises OdError(eInvalidInput) when the matrix is singular, i.e.
  // when elimination meets a pivot no larger than tol.equalVector().
  OdGeMatrix3d inverse() const;
  OdGeMatrix3d inverse(const OdGeTol& tol) const;
  // Replaces this by its inverse, with the same rule as inverse().
  OdGeMatrix3d& invert();
  // True when inverse(tol) would raise.
  bool isSingular(const OdGeTol& tol = OdGeContext::gTol) const;
  double det() const;
  // The largest length among the images of the three unit axes.
  double scale() const;
  // True when the linear part is a rotation (or reflection) times one non-zero
  // scale: images of the axes mutually perpendicular and equally long.
  bool isUniScaledOrtho(const OdGeTol& tol = OdGeContext::gTol) const;

  OdGeMatrix3d& transposeIt();
  OdGeMatrix3d transpose() const { return OdGeMatrix3d(*this).transposeIt(); }

  // this = m * this: m applies after this.
  OdGeMatrix3d& preMultBy(const OdGeMatrix3d& m) { return *this = m * *this; }
  // this = this * m: m applies before this.
  OdGeMatrix3d& postMultBy(const OdGeMatrix3d& m) { return *this = *this * m; }
  inline OdGeMatrix3d operator*(const OdGeMatrix3d& m) const;
  OdGeMatrix3d& operator*=(const OdGeMatrix3d& m) { return postMultBy(m); }

  // Entry-wise comparison: the translation column within tol.equalPoint(), the
  // other entries within tol.equalVector().
  bool isEqualTo(const OdGeMatrix3d& m, const OdGeTol& tol = OdGeContext::gTol) const;
  bool operator==(const OdGeMatrix3d& m) const { return isEqualTo(m); }
  bool operator!=(const OdGeMatrix3d& m) const { return !isEqualTo(m); }

  static OdGeMatrix3d translation(const OdGeVector3d& v) { return OdGeMatrix3d().setToTranslation(v); }
  static OdGeMatrix3d scaling(double s, const OdGePoint3d& center = OdGePoint3d::kOrigin)
  {
    return OdGeMatrix3d().setToScaling(s, center);
  }
  static OdGeMatrix3d rotation(double angle, const OdGeVector3d& axis, const OdGePoint3d& center = OdGePoint3d::kOrigin)
  {
    return OdGeMatrix3d().setToRotation(angle, axis, center);
  }

  double entry[4][4];
};

inline OdGeMatrix3d OdGeMatrix3d::operator*(const OdGeMatrix3d& m) const
{
  OdGeMatrix3d r;
  for (int i = 0; i < 4; ++i) {
    const double* a = entry[i];
    double* out = r.entry[i];
    out[0] = a[0] * m.entry[0][0] + a[1] * m.entry[1][0] + a[2] * m.entry[2][0] + a[3] * m.entry[3][0];
    out[1] = a[0] * m.entry[0][1] + a[1] * m.entry[1][1] + a[2] * m.entry[2][1] + a[3] * m.entry[3][1];
    out[2] = a[0] * m.entry[0][2] + a[1] * m.entry[1][2] + a[2] * m.entry[2][2] + a[3] * m.entry[3][2];
    out[3] = a[0] * m.entry[0][3] + a[1] * m.entry[1][3] + a[2] * m.entry[2][3] + a[3] * m.entry[3][3];
  }
  return r;
}

inline OdGeMatrix3d& OdGeMatrix3d::setToScaling(double s, const OdGePoint3d& center)
{
  setToIdentity();
  entry[0][0] = entry[1][1] = entry[2][2] = s;
  return setTranslation(center.asVector() * (1.0 - s));
}

// Affine matrices (bottom row 0 0 0 1) need no division; a projective one
// divides by w unless w is 0, a point at infinity, left undivided.
inline OdGePoint3d operator*(const OdGeMatrix3d& m, const OdGePoint3d& p)
{
  const double(*e)[4] = m.entry;
  OdGePoint3d r(e[0][0] * p.x + e[0][1] * p.y + e[0][2] * p.z + e[0][3],
                e[1][0] * p.x + e[1][1] * p.y + e[1][2] * p.z + e[1][3],
                e[2][0] * p.x + e[2][1] * p.y + e[2][2] * p.z + e[2][3]);
  const double w = e[3][0] * p.x + e[3][1] * p.y + e[3][2] * p.z + e[3][3];
  if (w != 1.0 && w != 0.0) {
    r.x /= w;
    r.y /= w;
    r.z /= w;
  }
  return r;
}

inline OdGeVector3d operator*(const OdGeMatrix3d& m, const OdGeVector3d& v)
{
  const double(*e)[4] = m.entry;
  return OdGeVector3d(e[0][0] * v.x + e[0][1] * v.y + e[0][2] * v.z,
                      e[1][0] * v.x + e[1][1] * v.y + e[1][2] * v.z,
                      e[2][0] * v.x + e[2][1] * v.y + e[2][2] * v.z);
}

inline OdGePoint3d& OdGePoint3d::transformBy(const OdGeMatrix3d& m) { return *this = m * *this; }
inline OdGeVector3d& OdGeVector3d::transformBy(const OdGeMatrix3d& m) { return *this = m * *this; }

#endif
