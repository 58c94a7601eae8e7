#include "import/kovImportedScene.h"

#include <utility>

kovImportedScene::kovImportedScene()
  : nodes(1)
{
}

std::size_t kovImportedScene::addNode(std::size_t parent, const OdString& name, const OdGeMatrix3d& transform)
{
  Node node;
  node.name = name;
  node.transform = transform;
  nodes.push_back(std::move(node));
  nodes[parent].children.push_back(nodes.size() - 1);
  return nodes.size() - 1;
}

std::size_t kovImportedScene::addPart(std::size_t node, const OdString& name, kov::polymesh::Mesh mesh)
{
  if (mesh.faces.empty())
    return npos;
  parts.push_back(Part { name, std::move(mesh) });
  nodes[node].parts.push_back(parts.size() - 1);
  return parts.size() - 1;
}

OdUInt64 kovImportedScene::triangleCount() const
{
  OdUInt64 count = 0;
  for (const Part& part : parts)
    count += part.mesh.triangleCount();
  return count;
}

OdGeExtents3d kovImportedScene::extents() const
{
  OdGeExtents3d box;
  std::vector<std::pair<std::size_t, OdGeMatrix3d>> pending { { 0, upAxis * nodes[0].transform } };
  while (!pending.empty()) {
    const auto [index, world] = pending.back();
    pending.pop_back();
    for (std::size_t part : nodes[index].parts)
      for (const kov::polymesh::Vertex& vertex : parts[part].mesh.vertices)
        box.addPoint(world * vertex.position);
    for (std::size_t child : nodes[index].children)
      pending.emplace_back(child, world * nodes[child].transform);
  }
  return box;
}

void kovImportedScene::scaleLengths(double factor)
{
  for (Part& part : parts)
    for (kov::polymesh::Vertex& vertex : part.mesh.vertices)
      vertex.position.set(vertex.position.x * factor, vertex.position.y * factor, vertex.position.z * factor);
  for (Node& node : nodes)
    node.transform.setTranslation(node.transform.translation() * factor);
  for (Clip& clip : clips)
    for (Channel& channel : clip.channels)
      for (kovDbBlockAnimation::Key& key : channel.keys)
        key.translation *= factor;
}

bool kovImportedScene::isAnimated(std::size_t node) const
{
  for (const Clip& clip : clips)
    for (const Channel& channel : clip.channels)
      if (channel.node == node && !channel.keys.empty())
        return true;
  return false;
}

std::size_t kovImportedScene::findNode(const OdString& name) const
{
  for (std::size_t i = 0; i < nodes.size(); ++i)
    if (nodes[i].name == name)
      return i;
  return npos;
}
