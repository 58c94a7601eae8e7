#include "import/kovImportedSceneWriter.h"

#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Rx/OdError.h"

#include <cmath>
#include <map>

namespace {

bool isUsable(const OdGeMatrix3d& m)
{
  for (const auto& row : m.entry)
    for (double value : row)
      if (!std::isfinite(value))
        return false;
  return !m.isSingular();
}

struct PendingBlock {
  std::size_t node = 0;
  OdDbBlockTableRecordPtr record;
  std::vector<OdDbEntityPtr> entities;
  // The nested blocks' indices in the pending list, placed by their nodes.
  std::vector<std::size_t> nested;
};

class Builder {
public:
  Builder(OdDbDatabase* db, kovImportedScene& scene)
    : m_db(db)
    , m_scene(scene)
  {
  }

  bool isBlock(std::size_t node) const
  {
    const kovImportedScene::Node& n = m_scene.nodes[node];
    return node == 0 || !n.children.empty() || !n.transform.isEqualTo(OdGeMatrix3d::kIdentity)
           || m_scene.isAnimated(node);
  }

  // The node's meshes and children go into the block at blockIndex; a child
  // that is a block of its own gets one, named after the top block.
  void collect(std::size_t node, std::size_t blockIndex)
  {
    for (std::size_t part : m_scene.nodes[node].parts) {
      kovDbPolygonMeshPtr entity = kovDbPolygonMesh::createObject();
      entity->setDatabaseDefaults(m_db);
      OdString message;
      if (entity->setMesh(std::move(m_scene.parts[part].mesh), &message) != eOk)
        throw OdError(eInvalidInput, OdString(L"The part \"") + m_scene.parts[part].name
                                       + L"\" is not a usable mesh: " + message);
      m_blocks[blockIndex].entities.push_back(entity);
    }
    for (std::size_t child : m_scene.nodes[node].children) {
      // A node scaled to nothing shows nothing, and no reference can hold it.
      if (!isUsable(m_scene.nodes[child].transform))
        continue;
      if (!isBlock(child)) {
        collect(child, blockIndex);
        continue;
      }
      OdString name = m_scene.nodes[child].name;
      if (name.isEmpty())
        name = OdString(L"node");
      const std::size_t nested = addBlock(child, m_names.front() + L" / " + name);
      m_blocks[blockIndex].nested.push_back(nested);
      collect(child, nested);
    }
  }

  std::size_t addBlock(std::size_t node, const OdString& name)
  {
    PendingBlock block;
    block.node = node;
    block.record = OdDbBlockTableRecord::createObject();
    m_names.push_back(kovImportedSceneWriter::uniqueBlockName(m_db, name, m_names));
    block.record->setName(m_names.back());
    m_blocks.push_back(std::move(block));
    m_blockOfNode[node] = m_blocks.size() - 1;
    return m_blocks.size() - 1;
  }

  void addClips()
  {
    for (const kovImportedScene::Clip& clip : m_scene.clips) {
      std::vector<kovDbBlockAnimation::Channel> channels;
      for (const kovImportedScene::Channel& channel : clip.channels) {
        const auto block = m_blockOfNode.find(channel.node);
        // The root is the block itself: nothing places it but its reference.
        if (block == m_blockOfNode.end() || block->second == 0)
          continue;
        channels.push_back(kovDbBlockAnimation::Channel { m_names[block->second], channel.keys });
      }
      kovDbBlockAnimationPtr animation = kovDbBlockAnimation::createObject();
      animation->setDatabaseDefaults(m_db);
      animation->setName(clip.name);
      animation->setChannels(std::move(channels));
      if (animation->channels().empty())
        continue;
      m_blocks.front().entities.push_back(animation);
      ++m_clips;
    }
  }

  kovImportedSceneWriter::Result append(const OdGeMatrix3d& placement)
  {
    OdDbBlockTablePtr table = m_db->getBlockTableId().safeOpenObject(OdDb::kForWrite);
    for (PendingBlock& block : m_blocks)
      table->add(block.record.get());
    for (PendingBlock& block : m_blocks) {
      for (const OdDbEntityPtr& entity : block.entities)
        block.record->appendOdDbEntity(entity.get());
      for (std::size_t nested : block.nested)
        block.record->appendOdDbEntity(reference(m_blocks[nested], m_scene.nodes[m_blocks[nested].node].transform).get());
    }
    OdDbBlockTableRecordPtr modelSpace = m_db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
    kovImportedSceneWriter::Result result;
    result.reference = modelSpace->appendOdDbEntity(reference(m_blocks.front(), placement).get());
    result.blockName = m_names.front();
    result.blocks = static_cast<int>(m_blocks.size());
    result.animations = m_clips;
    return result;
  }

  OdDbBlockReferencePtr reference(const PendingBlock& block, const OdGeMatrix3d& transform) const
  {
    OdDbBlockReferencePtr ref = OdDbBlockReference::createObject();
    ref->setDatabaseDefaults(m_db);
    if (ref->setBlockTableRecord(block.record->objectId()) != eOk || ref->setBlockTransform(transform) != eOk)
      throw OdError(eInvalidInput, OdString(L"The block ") + block.record->getName() + L" can't be placed");
    return ref;
  }

  std::vector<OdString> m_names;
  std::vector<PendingBlock> m_blocks;
  std::map<std::size_t, std::size_t> m_blockOfNode;
  int m_clips = 0;

private:
  OdDbDatabase* m_db;
  kovImportedScene& m_scene;
};

} // namespace

kovImportedSceneWriter::Result kovImportedSceneWriter::write(OdDbDatabase* db, kovImportedScene& scene,
                                                             const OdString& topName, const OdGeMatrix3d& placement)
{
  if (!db)
    throw OdError(eNoDatabase, OdString(L"No drawing is open"));
  const OdGeMatrix3d topTransform = placement * scene.upAxis * scene.nodes[0].transform;
  if (!isUsable(topTransform))
    throw OdError(eInvalidInput, OdString(L"The model can't be placed: its transform is singular"));
  Builder builder(db, scene);
  builder.addBlock(0, topName.isEmpty() ? OdString(L"model") : topName);
  builder.collect(0, 0);
  builder.addClips();
  return builder.append(topTransform);
}

OdString kovImportedSceneWriter::uniqueBlockName(OdDbDatabase* db, const OdString& name,
                                                 const std::vector<OdString>& taken)
{
  OdDbBlockTablePtr table = db->getBlockTableId().safeOpenObject(OdDb::kForRead);
  const auto isTaken = [&](const OdString& candidate) {
    if (table->has(candidate))
      return true;
    for (const OdString& other : taken)
      if (other.iCompare(candidate) == 0)
        return true;
    return false;
  };
  OdString candidate = name;
  for (int n = 2; isTaken(candidate); ++n) {
    candidate.format(L"%ls %d", name.c_str(), n);
  }
  return candidate;
}
