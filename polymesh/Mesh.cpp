#include "polymesh/Mesh.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace kov::polymesh {

namespace {

bool sameExactly(const OdGePoint3d& a, const OdGePoint3d& b)
{
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool sameExactly(const OdGeVector3d& a, const OdGeVector3d& b)
{
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool isFinite(const OdGePoint3d& p)
{
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

OdString number(OdUInt64 n)
{
  return OdString(std::to_wstring(n).c_str());
}

} // namespace

bool Vertex::operator==(const Vertex& other) const
{
  return sameExactly(position, other.position) && sameExactly(normal, other.normal);
}

bool Mesh::operator==(const Mesh& other) const
{
  return vertices == other.vertices && faces == other.faces && surfaces == other.surfaces;
}

OdResult Mesh::validate(OdString* message) const
{
  const auto fail = [message](const OdString& text) {
    if (message)
      *message = text;
    return eInvalidInput;
  };
  for (size_t i = 0; i < vertices.size(); ++i) {
    if (!isFinite(vertices[i].position))
      return fail(L"vertex " + number(i) + L" is not a finite point");
  }
  for (size_t i = 0; i < faces.size(); ++i) {
    const Face& face = faces[i];
    if (face.vertices.size() < 3)
      return fail(L"face " + number(i) + L" has fewer than three corners");
    for (OdInt32 index : face.vertices) {
      if (index < 0 || static_cast<size_t>(index) >= vertices.size())
        return fail(L"face " + number(i) + L" uses vertex " + OdString(std::to_wstring(index).c_str()) + L" of "
                    + number(vertices.size()));
    }
    const bool noSurfaces = surfaces.empty() && face.surface == 0;
    if (!noSurfaces && (face.surface < 0 || static_cast<size_t>(face.surface) >= surfaces.size()))
      return fail(L"face " + number(i) + L" takes surface " + OdString(std::to_wstring(face.surface).c_str())
                  + L" of " + number(surfaces.size()));
  }
  return eOk;
}

std::vector<Edge> Mesh::edges() const
{
  std::map<std::pair<OdInt32, OdInt32>, OdInt32> counts;
  for (const Face& face : faces) {
    const size_t n = face.vertices.size();
    for (size_t i = 0; i < n; ++i) {
      const OdInt32 a = face.vertices[i];
      const OdInt32 b = face.vertices[(i + 1) % n];
      ++counts[std::minmax(a, b)];
    }
  }
  std::vector<Edge> result;
  result.reserve(counts.size());
  for (const auto& [ends, count] : counts)
    result.push_back(Edge { ends.first, ends.second, count });
  return result;
}

bool Mesh::isClosed() const
{
  const std::vector<Edge> all = edges();
  return !all.empty() && std::all_of(all.begin(), all.end(), [](const Edge& e) { return e.faceCount == 2; });
}

OdUInt64 Mesh::triangleCount() const
{
  OdUInt64 count = 0;
  for (const Face& face : faces)
    count += face.vertices.size() >= 3 ? face.vertices.size() - 2 : 0;
  return count;
}

OdGeExtents3d Mesh::extents() const
{
  OdGeExtents3d box;
  for (const Vertex& vertex : vertices)
    box.addPoint(vertex.position);
  return box;
}

double Mesh::volume() const
{
  double sixTimes = 0.0;
  for (const Face& face : faces) {
    const OdGeVector3d a = vertices[static_cast<size_t>(face.vertices[0])].position.asVector();
    for (size_t i = 1; i + 1 < face.vertices.size(); ++i) {
      const OdGeVector3d b = vertices[static_cast<size_t>(face.vertices[i])].position.asVector();
      const OdGeVector3d c = vertices[static_cast<size_t>(face.vertices[i + 1])].position.asVector();
      sixTimes += a.dotProduct(b.crossProduct(c));
    }
  }
  return sixTimes / 6.0;
}

void Mesh::transformBy(const OdGeMatrix3d& xform)
{
  OdGeMatrix3d normals = xform;
  normals.setTranslation(OdGeVector3d());
  const bool invertible = !normals.isSingular();
  if (invertible) {
    normals = normals.inverse();
    for (int r = 0; r < 3; ++r) {
      for (int c = r + 1; c < 3; ++c)
        std::swap(normals.entry[r][c], normals.entry[c][r]);
    }
  }
  for (Vertex& vertex : vertices) {
    vertex.position.transformBy(xform);
    if (vertex.hasNormal())
      vertex.normal = invertible ? vertex.normal.transformBy(normals).normalize() : OdGeVector3d();
  }
  if (xform.det() < 0.0) {
    for (Face& face : faces)
      std::reverse(face.vertices.begin(), face.vertices.end());
  }
}

} // namespace kov::polymesh
