#include "Ge/OdGePoint3d.h"

const OdGePoint3d OdGePoint3d::kOrigin;

OdGePoint3d& OdGePoint3d::rotateBy(double angle, const OdGeVector3d& axis, const OdGePoint3d& base)
{
  return *this = base + (*this - base).rotateBy(angle, axis);
}
