#ifndef OD_GE_EXTENTS3D_H
#define OD_GE_EXTENTS3D_H

#include "Ge/OdGeMatrix3d.h"
#include "Ge/OdGePoint3d.h"
#include "Ge/OdGeTol.h"

#include <algorithm>
#include <limits>

// An axis-aligned box. A default-constructed one is empty (invalid) until a
// point or a valid box is added to it.
class OdGeExtents3d {
public:
  OdGeExtents3d() = default;
  // Takes the corners as given: a min above max on some axis makes it invalid.
  OdGeExtents3d(const OdGePoint3d& min, const OdGePoint3d& max) : m_min(min), m_max(max) {}

  const OdGePoint3d& minPoint() const { return m_min; }
  const OdGePoint3d& maxPoint() const { return m_max; }
  OdGeExtents3d& set(const OdGePoint3d& min, const OdGePoint3d& max)
  {
    m_min = min;
    m_max = max;
    return *this;
  }

  // True once the box holds at least one point: min <= max on every axis.
  bool isValidExtents() const { return m_min.x <= m_max.x && m_min.y <= m_max.y && m_min.z <= m_max.z; }
  // The middle of the box; meaningful only for valid extents.
  OdGePoint3d center() const { return OdGePoint3d((m_min.x + m_max.x) * 0.5, (m_min.y + m_max.y) * 0.5, (m_min.z + m_max.z) * 0.5); }

  // Grows the box to hold pt.
  OdGeExtents3d& addPoint(const OdGePoint3d& pt)
  {
    m_min.set(std::min(m_min.x, pt.x), std::min(m_min.y, pt.y), std::min(m_min.z, pt.z));
    m_max.set(std::max(m_max.x, pt.x), std::max(m_max.y, pt.y), std::max(m_max.z, pt.z));
    return *this;
  }
  // Grows the box to hold ext; an invalid ext adds nothing.
  OdGeExtents3d& addExt(const OdGeExtents3d& ext)
  {
    if (ext.isValidExtents())
      addPoint(ext.m_min).addPoint(ext.m_max);
    return *this;
  }
  // Replaces the box by the one holding its eight transformed corners; an
  // invalid box stays invalid.
  OdGeExtents3d& transformBy(const OdGeMatrix3d& m);
  // True when pt lies inside the box or within tol.equalPoint() of it.
  bool contains(const OdGePoint3d& pt, const OdGeTol& tol = OdGeContext::gTol) const;

private:
  static constexpr double kBig = std::numeric_limits<double>::max();
  OdGePoint3d m_min{kBig, kBig, kBig};
  OdGePoint3d m_max{-kBig, -kBig, -kBig};
};

#endif
