#include "Ge/OdGeVector3d.h"

#include <cmath>

const OdGeVector3d OdGeVector3d::kIdentity;
const OdGeVector3d OdGeVector3d::kXAxis(1.0, 0.0, 0.0);
const OdGeVector3d OdGeVector3d::kYAxis(0.0, 1.0, 0.0);
const OdGeVector3d OdGeVector3d::kZAxis(0.0, 0.0, 1.0);

OdGeVector3d OdGeVector3d::perpVector() const
{
  // Drawing files derive an entity's X axis from its normal this way; using the
  // same threshold keeps our axes identical to the ones stored in them.
  const double threshold = 1.0 / 64.0;
  if (std::fabs(x) < threshold && std::fabs(y) < threshold)
    return kYAxis.crossProduct(*this);
  return kZAxis.crossProduct(*this);
}

OdGeVector3d& OdGeVector3d::rotateBy(double angle, const OdGeVector3d& axis)
{
  const double len = axis.length();
  if (!(len > OdGeContext::gZeroTol.equalVector()))
    return *this;
  // Rodrigues: v cos + (k x v) sin + k (k . v)(1 - cos), k the unit axis.
  const OdGeVector3d k = axis / len;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return *this = *this * c + k.crossProduct(*this) * s + k * (k.dotProduct(*this) * (1.0 - c));
}

bool OdGeVector3d::isParallelTo(const OdGeVector3d& v, const OdGeTol& tol) const
{
  if (isZeroLength(tol) || v.isZeroLength(tol))
    return false;
  return normal().crossProduct(v.normal()).length() <= tol.equalVector();
}

bool OdGeVector3d::isCodirectionalTo(const OdGeVector3d& v, const OdGeTol& tol) const
{
  if (isZeroLength(tol) || v.isZeroLength(tol))
    return false;
  return normal().isEqualTo(v.normal(), tol);
}
