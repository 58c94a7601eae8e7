#include "Ge/OdGeMatrix3d.h"

#include "Rx/OdError.h"

#include <algorithm>
#include <cmath>
#include <utility>

const OdGeMatrix3d OdGeMatrix3d::kIdentity;

namespace {

// Gauss-Jordan elimination with partial pivoting of the top-left N x N block
// of a, applied alongside to b (which starts as the identity). Returns false
// when some pivot is no larger than pivotTol: an absolute bound, so a matrix
// that scales by more than about pivotTol still inverts.
template <int N>
bool eliminate(double (&a)[4][4], double (&b)[4][4], double pivotTol)
{
  for (int col = 0; col < N; ++col) {
    int pivotRow = col;
    for (int row = col + 1; row < N; ++row) {
      if (std::fabs(a[row][col]) > std::fabs(a[pivotRow][col]))
        pivotRow = row;
    }
    // The negated test also rejects a NaN pivot.
    if (!(std::fabs(a[pivotRow][col]) > pivotTol))
      return false;
    if (pivotRow != col) {
      std::swap(a[pivotRow], a[col]);
      std::swap(b[pivotRow], b[col]);
    }

    const double invPivot = 1.0 / a[col][col];
    for (int k = 0; k < N; ++k) {
      a[col][k] *= invPivot;
      b[col][k] *= invPivot;
    }
    for (int row = 0; row < N; ++row) {
      if (row == col)
        continue;
      const double f = a[row][col];
      for (int k = 0; k < N; ++k) {
        a[row][k] -= f * a[col][k];
        b[row][k] -= f * b[col][k];
      }
    }
  }
  return true;
}

// Returns false when m is singular by pivotTol; out is then meaningless.
bool invertMatrix(const OdGeMatrix3d& m, OdGeMatrix3d& out, double pivotTol)
{
  double a[4][4];
  std::copy(&m.entry[0][0], &m.entry[0][0] + 16, &a[0][0]);
  out.setToIdentity();
  const bool affine = m.entry[3][0] == 0.0 && m.entry[3][1] == 0.0 && m.entry[3][2] == 0.0 && m.entry[3][3] == 1.0;
  if (!affine)
    return eliminate<4>(a, out.entry, pivotTol);

  // The usual case, and cheaper: invert the linear part L; the translation is
  // then -L^-1 t. The full elimination's last pivot would be 1, hence the test.
  if (!(1.0 > pivotTol) || !eliminate<3>(a, out.entry, pivotTol))
    return false;
  const OdGeVector3d t = -(out * m.translation());
  out.setTranslation(t);
  return true;
}

} // namespace

OdGeMatrix3d& OdGeMatrix3d::setToRotation(double angle, const OdGeVector3d& axis, const OdGePoint3d& center)
{
  setToIdentity();
  const double len = axis.length();
  if (!(len > OdGeContext::gZeroTol.equalVector()))
    return *this;

  // Rodrigues' formula for the unit axis (x, y, z).
  const double x = axis.x / len;
  const double y = axis.y / len;
  const double z = axis.z / len;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double t = 1.0 - c;
  entry[0][0] = t * x * x + c;
  entry[0][1] = t * x * y - s * z;
  entry[0][2] = t * x * z + s * y;
  entry[1][0] = t * x * y + s * z;
  entry[1][1] = t * y * y + c;
  entry[1][2] = t * y * z - s * x;
  entry[2][0] = t * x * z - s * y;
  entry[2][1] = t * y * z + s * x;
  entry[2][2] = t * z * z + c;

  // center - R * center keeps center fixed.
  const OdGeVector3d c0 = center.asVector();
  return setTranslation(c0 - *this * c0);
}

OdGeMatrix3d& OdGeMatrix3d::setCoordSystem(const OdGePoint3d& origin, const OdGeVector3d& x, const OdGeVector3d& y,
                                           const OdGeVector3d& z)
{
  const OdGeVector3d* axes[3] = {&x, &y, &z};
  for (int col = 0; col < 3; ++col) {
    entry[0][col] = axes[col]->x;
    entry[1][col] = axes[col]->y;
    entry[2][col] = axes[col]->z;
    entry[3][col] = 0.0;
  }
  entry[3][3] = 1.0;
  return setTranslation(origin.asVector());
}

void OdGeMatrix3d::getCoordSystem(OdGePoint3d& origin, OdGeVector3d& x, OdGeVector3d& y, OdGeVector3d& z) const
{
  origin = getCsOrigin();
  x = getCsXAxis();
  y = getCsYAxis();
  z = getCsZAxis();
}

OdGeMatrix3d OdGeMatrix3d::inverse() const
{
  return inverse(OdGeContext::gTol);
}

OdGeMatrix3d OdGeMatrix3d::inverse(const OdGeTol& tol) const
{
  OdGeMatrix3d result;
  if (!invertMatrix(*this, result, tol.equalVector()))
    throw OdError(eInvalidInput);
  return result;
}

OdGeMatrix3d& OdGeMatrix3d::invert()
{
  return *this = inverse();
}

bool OdGeMatrix3d::isSingular(const OdGeTol& tol) const
{
  OdGeMatrix3d unused;
  return !invertMatrix(*this, unused, tol.equalVector());
}

double OdGeMatrix3d::det() const
{
  // Laplace expansion along the top two rows: their 2x2 minors times the
  // complementary minors of the bottom two.
  const double(*m)[4] = entry;
  const double s0 = m[0][0] * m[1][1] - m[0][1] * m[1][0];
  const double s1 = m[0][0] * m[1][2] - m[0][2] * m[1][0];
  const double s2 = m[0][0] * m[1][3] - m[0][3] * m[1][0];
  const double s3 = m[0][1] * m[1][2] - m[0][2] * m[1][1];
  const double s4 = m[0][1] * m[1][3] - m[0][3] * m[1][1];
  const double s5 = m[0][2] * m[1][3] - m[0][3] * m[1][2];
  const double c0 = m[2][0] * m[3][1] - m[2][1] * m[3][0];
  const double c1 = m[2][0] * m[3][2] - m[2][2] * m[3][0];
  const double c2 = m[2][0] * m[3][3] - m[2][3] * m[3][0];
  const double c3 = m[2][1] * m[3][2] - m[2][2] * m[3][1];
  const double c4 = m[2][1] * m[3][3] - m[2][3] * m[3][1];
  const double c5 = m[2][2] * m[3][3] - m[2][3] * m[3][2];
  return s0 * c5 - s1 * c4 + s2 * c3 + s3 * c2 - s4 * c1 + s5 * c0;
}

double OdGeMatrix3d::scale() const
{
  return std::max({getCsXAxis().length(), getCsYAxis().length(), getCsZAxis().length()});
}

bool OdGeMatrix3d::isUniScaledOrtho(const OdGeTol& tol) const
{
  const OdGeVector3d axes[3] = {getCsXAxis(), getCsYAxis(), getCsZAxis()};
  const double len = axes[0].length();
  if (!(len > tol.equalVector()))
    return false;
  // Relative to the scale, so that the answer does not depend on units.
  const double eps = tol.equalVector() * len;
  for (int i = 0; i < 3; ++i) {
    if (std::fabs(axes[i].length() - len) > eps)
      return false;
    const OdGeVector3d& next = axes[(i + 1) % 3];
    if (std::fabs(axes[i].dotProduct(next)) > eps * len)
      return false;
  }
  return true;
}

OdGeMatrix3d& OdGeMatrix3d::transposeIt()
{
  for (int i = 0; i < 4; ++i) {
    for (int j = i + 1; j < 4; ++j)
      std::swap(entry[i][j], entry[j][i]);
  }
  return *this;
}

bool OdGeMatrix3d::isEqualTo(const OdGeMatrix3d& m, const OdGeTol& tol) const
{
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) {
      const double bound = (j == 3 && i < 3) ? tol.equalPoint() : tol.equalVector();
      if (!(std::fabs(entry[i][j] - m.entry[i][j]) <= bound))
        return false;
    }
  }
  return true;
}
