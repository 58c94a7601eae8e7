#include "polymesh/Primitives.h"

#include <cmath>

namespace kov::polymesh {

namespace {

const double kPi = 3.14159265358979323846;

OdInt32 add(Mesh& mesh, const OdGePoint3d& point, const OdGeVector3d& normal = OdGeVector3d())
{
  mesh.vertices.emplace_back(point, normal);
  return static_cast<OdInt32>(mesh.vertices.size() - 1);
}

} // namespace

Mesh Primitives::box(const OdGeVector3d& size)
{
  Mesh mesh;
  for (int i = 0; i < 8; ++i)
    add(mesh, OdGePoint3d((i & 1) * size.x, ((i >> 1) & 1) * size.y, ((i >> 2) & 1) * size.z));
  mesh.faces = { Face({ 0, 2, 3, 1 }), Face({ 4, 5, 7, 6 }), Face({ 0, 1, 5, 4 }),
                 Face({ 2, 6, 7, 3 }), Face({ 0, 4, 6, 2 }), Face({ 1, 3, 7, 5 }) };
  return mesh;
}

Mesh Primitives::sphere(double radius, int segments)
{
  Mesh mesh;
  const int rings = std::max(2, segments / 2);
  const OdInt32 south = add(mesh, OdGePoint3d(0, 0, -radius), -OdGeVector3d::kZAxis);
  for (int ring = 1; ring < rings; ++ring) {
    const double polar = kPi * ring / rings - kPi / 2;
    for (int s = 0; s < segments; ++s) {
      const double around = 2 * kPi * s / segments;
      const OdGeVector3d n(std::cos(polar) * std::cos(around), std::cos(polar) * std::sin(around), std::sin(polar));
      add(mesh, OdGePoint3d::kOrigin + n * radius, n);
    }
  }
  const OdInt32 north = add(mesh, OdGePoint3d(0, 0, radius), OdGeVector3d::kZAxis);
  const auto at = [segments](int ring, int s) { return 1 + (ring - 1) * segments + (s % segments); };
  for (int s = 0; s < segments; ++s) {
    mesh.faces.push_back(Face({ south, at(1, s + 1), at(1, s) }));
    for (int ring = 1; ring + 1 < rings; ++ring)
      mesh.faces.push_back(Face({ at(ring, s), at(ring, s + 1), at(ring + 1, s + 1), at(ring + 1, s) }));
    mesh.faces.push_back(Face({ north, at(rings - 1, s), at(rings - 1, s + 1) }));
  }
  return mesh;
}

Mesh Primitives::cylinder(double radius, double height, int segments)
{
  Mesh mesh;
  std::vector<OdInt32> bottom;
  std::vector<OdInt32> top;
  for (int s = 0; s < segments; ++s) {
    const double around = 2 * kPi * s / segments;
    const OdGePoint3d p(radius * std::cos(around), radius * std::sin(around), 0.0);
    bottom.push_back(add(mesh, p));
    top.push_back(add(mesh, p + OdGeVector3d(0, 0, height)));
  }
  mesh.faces.push_back(Face(std::vector<OdInt32>(bottom.rbegin(), bottom.rend())));
  mesh.faces.push_back(Face(top));
  for (size_t s = 0; s < bottom.size(); ++s) {
    const size_t next = (s + 1) % bottom.size();
    mesh.faces.push_back(Face({ bottom[s], bottom[next], top[next], top[s] }));
  }
  return mesh;
}

Mesh Primitives::plane(double width, double depth)
{
  Mesh mesh;
  add(mesh, OdGePoint3d(0, 0, 0));
  add(mesh, OdGePoint3d(width, 0, 0));
  add(mesh, OdGePoint3d(width, depth, 0));
  add(mesh, OdGePoint3d(0, depth, 0));
  mesh.faces = { Face({ 0, 1, 2, 3 }) };
  return mesh;
}

} // namespace kov::polymesh
