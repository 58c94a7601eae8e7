#include "Gi/OdGiWorldDrawRecorder.h"

#include <cmath>
#include <cstdlib>

namespace {

bool isFinite(const OdGePoint3d& p)
{
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool isFinite(const OdGeVector3d& v)
{
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// Every face names only existing vertices, a hole follows a face, and the
// counts end exactly at the end of the list.
bool isValidFaceList(OdInt32 numVertices, OdInt32 faceListSize, const OdInt32* faceList)
{
  OdInt64 i = 0;
  while (i < faceListSize) {
    const OdInt64 count = std::llabs(faceList[i]);
    if (count == 0 || count > faceListSize - i - 1 || (i == 0 && faceList[i] < 0))
      return false;
    for (OdInt64 k = 1; k <= count; ++k) {
      const OdInt32 index = faceList[i + k];
      if (index < 0 || index >= numVertices)
        return false;
    }
    i += count + 1;
  }
  return true;
}

} // namespace

OdGiWorldDrawRecorder::OdGiWorldDrawRecorder(OdGiRegenType regenType)
  : m_regenType(regenType)
{
}

void OdGiWorldDrawRecorder::clear()
{
  m_records.clear();
  m_rejected = 0;
  m_extents = OdGeExtents3d();
  m_transform = OdGeMatrix3d();
  m_transformStack.clear();
  m_color = OdCmEntityColor();
  m_lineWeight = kOdGiLnWtByLwDefault;
  m_marker = 0;
}

// The recorder is its own geometry and traits; the interface hands them out
// from a const method, as drawables receive the world draw as const.
OdGiWorldGeometry& OdGiWorldDrawRecorder::geometry() const
{
  return const_cast<OdGiWorldDrawRecorder&>(*this);
}

OdGiSubEntityTraits& OdGiWorldDrawRecorder::subEntityTraits() const
{
  return const_cast<OdGiWorldDrawRecorder&>(*this);
}

OdGiPrimitiveRecord& OdGiWorldDrawRecorder::newRecord(OdGiPrimitiveRecord::Kind kind)
{
  m_records.emplace_back();
  OdGiPrimitiveRecord& record = m_records.back();
  record.kind = kind;
  record.color = m_color;
  record.lineWeight = m_lineWeight;
  record.selectionMarker = m_marker;
  record.modelTransform = m_transform;
  return record;
}

// The cofactor matrix of the linear part maps a plane's normal to the normal
// of the transformed plane, also for non-uniform scaling and mirroring.
OdGeVector3d OdGiWorldDrawRecorder::worldNormal(const OdGeVector3d& normal) const
{
  const OdGeVector3d c0 = m_transform.getCsXAxis();
  const OdGeVector3d c1 = m_transform.getCsYAxis();
  const OdGeVector3d c2 = m_transform.getCsZAxis();
  const OdGeVector3d n = c1.crossProduct(c2) * normal.x + c2.crossProduct(c0) * normal.y
      + c0.crossProduct(c1) * normal.z;
  return n.normal();
}

double OdGiWorldDrawRecorder::scaleAcross(const OdGeVector3d& inPlane) const
{
  return (m_transform * inPlane).length() / inPlane.length();
}

bool OdGiWorldDrawRecorder::addVertices(OdGiPrimitiveRecord::Kind kind, OdInt32 numVertices,
                                        const OdGePoint3d* vertexList, const OdGeVector3d* pNormal)
{
  if (numVertices < 1 || !vertexList || (pNormal && (!isFinite(*pNormal) || pNormal->isZeroLength())))
    return false;
  for (OdInt32 i = 0; i < numVertices; ++i) {
    if (!isFinite(vertexList[i]))
      return false;
  }
  OdGiPrimitiveRecord& record = newRecord(kind);
  record.points.reserve(static_cast<size_t>(numVertices));
  for (OdInt32 i = 0; i < numVertices; ++i)
    record.points.append(m_transform * vertexList[i]);
  if (pNormal) {
    record.normal = worldNormal(*pNormal);
    record.hasNormal = true;
  }
  return true;
}

void OdGiWorldDrawRecorder::circle(const OdGePoint3d& center, double radius, const OdGeVector3d& normal)
{
  if (!isFinite(center) || !isFinite(normal) || normal.isZeroLength() || !std::isfinite(radius) || radius < 0.0) {
    ++m_rejected;
    return;
  }
  OdGiPrimitiveRecord& record = newRecord(OdGiPrimitiveRecord::kCircle);
  record.points.append(m_transform * center);
  record.normal = worldNormal(normal);
  record.hasNormal = true;
  record.radius = radius * scaleAcross(normal.perpVector());
}

void OdGiWorldDrawRecorder::polyline(OdInt32 numVertices, const OdGePoint3d* vertexList,
                                     const OdGeVector3d* pNormal, OdInt32 baseSubEntMarker)
{
  if (!addVertices(OdGiPrimitiveRecord::kPolyline, numVertices, vertexList, pNormal)) {
    ++m_rejected;
    return;
  }
  m_records.back().baseSubEntMarker = baseSubEntMarker;
}

void OdGiWorldDrawRecorder::polygon(OdInt32 numVertices, const OdGePoint3d* vertexList, const OdGeVector3d* pNormal)
{
  if (!addVertices(OdGiPrimitiveRecord::kPolygon, numVertices, vertexList, pNormal))
    ++m_rejected;
}

void OdGiWorldDrawRecorder::shell(OdInt32 numVertices, const OdGePoint3d* vertexList, OdInt32 faceListSize,
                                  const OdInt32* faceList)
{
  if (faceListSize < 1 || !faceList || !isValidFaceList(numVertices, faceListSize, faceList)
      || !addVertices(OdGiPrimitiveRecord::kShell, numVertices, vertexList, nullptr)) {
    ++m_rejected;
    return;
  }
  m_records.back().faceList.assign(faceList, faceList + faceListSize);
}

void OdGiWorldDrawRecorder::text(const OdGePoint3d& position, const OdGeVector3d& normal,
                                 const OdGeVector3d& direction, double height, double widthFactor, double oblique,
                                 const OdString& msg)
{
  const OdGeVector3d up = normal.crossProduct(direction);
  if (!isFinite(position) || !isFinite(normal) || !isFinite(direction) || !std::isfinite(height)
      || !std::isfinite(widthFactor) || !std::isfinite(oblique) || up.isZeroLength()) {
    ++m_rejected;
    return;
  }
  OdGiPrimitiveRecord& record = newRecord(OdGiPrimitiveRecord::kText);
  record.points.append(m_transform * position);
  record.normal = worldNormal(normal);
  record.hasNormal = true;
  record.direction = m_transform * direction;
  record.height = height * scaleAcross(up);
  record.widthFactor = widthFactor;
  record.oblique = oblique;
  record.text = msg;
}

void OdGiWorldDrawRecorder::rasterImageDc(const OdGePoint3d& origin, const OdGeVector3d& u, const OdGeVector3d& v,
                                          const OdGiRasterImage* pImage, bool transparency)
{
  if (!pImage || !isFinite(origin) || !isFinite(u) || !isFinite(v)) {
    ++m_rejected;
    return;
  }
  OdGiPrimitiveRecord& record = newRecord(OdGiPrimitiveRecord::kRasterImage);
  record.points.append(m_transform * origin);
  record.direction = m_transform * u;
  record.secondDirection = m_transform * v;
  record.image = OdSharedPtr<OdGiRasterImage>(new OdGiRasterImage(*pImage));
  record.transparency = transparency;
}

void OdGiWorldDrawRecorder::pushModelTransform(const OdGeMatrix3d& xfm)
{
  m_transformStack.push_back(m_transform);
  m_transform = m_transform * xfm;
}

void OdGiWorldDrawRecorder::popModelTransform()
{
  ODA_ASSERT(!m_transformStack.empty());
  if (m_transformStack.empty())
    return;
  m_transform = m_transformStack.back();
  m_transformStack.pop_back();
}

void OdGiWorldDrawRecorder::setExtents(const OdGePoint3d* newExtents)
{
  if (!newExtents || !isFinite(newExtents[0]) || !isFinite(newExtents[1]))
    return;
  OdGeExtents3d box(newExtents[0], newExtents[1]);
  m_extents.addExt(box.transformBy(m_transform));
}

void OdGiWorldDrawRecorder::setColor(OdUInt16 colorIndex)
{
  if (colorIndex <= OdCmEntityColor::kACInone)
    m_color.setColorIndex(static_cast<OdInt16>(colorIndex));
}

OdUInt16 OdGiWorldDrawRecorder::color() const
{
  return static_cast<OdUInt16>(m_color.colorIndex());
}
