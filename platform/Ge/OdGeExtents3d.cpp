#include "Ge/OdGeExtents3d.h"

OdGeExtents3d& OdGeExtents3d::transformBy(const OdGeMatrix3d& m)
{
  if (!isValidExtents())
    return *this;
  OdGeExtents3d result;
  for (int corner = 0; corner < 8; ++corner) {
    const OdGePoint3d p((corner & 1) ? m_max.x : m_min.x, (corner & 2) ? m_max.y : m_min.y,
                        (corner & 4) ? m_max.z : m_min.z);
    result.addPoint(m * p);
  }
  return *this = result;
}

bool OdGeExtents3d::contains(const OdGePoint3d& pt, const OdGeTol& tol) const
{
  const double t = tol.equalPoint();
  return pt.x >= m_min.x - t && pt.x <= m_max.x + t && pt.y >= m_min.y - t && pt.y <= m_max.y + t &&
         pt.z >= m_min.z - t && pt.z <= m_max.z + t;
}
