#include "import/kovAssimpImporter.h"

#include "Rx/OdError.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>

namespace {

const double kPi = 3.14159265358979323846;

OdString text(const aiString& s)
{
  return odFromQString(QString::fromUtf8(s.C_Str(), static_cast<int>(s.length)));
}

OdGeMatrix3d matrixOf(const aiMatrix4x4& m)
{
  OdGeMatrix3d result;
  const ai_real* row[4] = { m[0], m[1], m[2], m[3] };
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      result.entry[r][c] = row[r][c];
  return result;
}

[[noreturn]] void refuse(const QString& path, const QString& why)
{
  throw OdError(eBadDwgFile, odFromQString(QFileInfo(path).fileName() + QStringLiteral(" can't be read: ") + why));
}

const aiScene* readScene(Assimp::Importer& importer, const QString& path, unsigned flags)
{
  importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
  importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT | aiPrimitiveType_LINE);
  const aiScene* scene = importer.ReadFile(QFile::encodeName(path).constData(), flags);
  if (!scene || !scene->mRootNode) {
    const QString why = QString::fromUtf8(importer.GetErrorString()).trimmed();
    refuse(path, why.isEmpty() ? QStringLiteral("the file is damaged or incomplete") : why);
  }
  return scene;
}

double metadataNumber(const aiScene* scene, const char* key, double fallback)
{
  if (!scene->mMetaData)
    return fallback;
  double d = 0;
  float f = 0;
  int32_t i = 0;
  if (scene->mMetaData->Get(std::string(key), d))
    return d;
  if (scene->mMetaData->Get(std::string(key), f))
    return f;
  if (scene->mMetaData->Get(std::string(key), i))
    return i;
  return fallback;
}

kov::polymesh::Mesh meshOf(const aiScene* scene, const aiMesh* source, bool materials)
{
  kov::polymesh::Mesh mesh;
  mesh.vertices.reserve(source->mNumVertices);
  for (unsigned i = 0; i < source->mNumVertices; ++i) {
    const aiVector3D& p = source->mVertices[i];
    OdGeVector3d normal;
    if (source->mNormals && std::isfinite(source->mNormals[i].x))
      normal.set(source->mNormals[i].x, source->mNormals[i].y, source->mNormals[i].z);
    mesh.vertices.emplace_back(OdGePoint3d(p.x, p.y, p.z), normal);
  }
  for (unsigned f = 0; f < source->mNumFaces; ++f) {
    const aiFace& face = source->mFaces[f];
    if (face.mNumIndices == 3)
      mesh.faces.emplace_back(std::vector<OdInt32> { static_cast<OdInt32>(face.mIndices[0]),
                                                     static_cast<OdInt32>(face.mIndices[1]),
                                                     static_cast<OdInt32>(face.mIndices[2]) });
  }
  if (materials && source->mMaterialIndex < scene->mNumMaterials) {
    const aiMaterial* material = scene->mMaterials[source->mMaterialIndex];
    aiString name;
    material->Get(AI_MATKEY_NAME, name);
    aiColor4D color;
    const bool colored = material->Get(AI_MATKEY_BASE_COLOR, color) == AI_SUCCESS
                         || material->Get(AI_MATKEY_COLOR_DIFFUSE, color) == AI_SUCCESS;
    // Meshes without a material get the library's default one; the entity's
    // own colour serves them better.
    if (colored && std::string(name.C_Str()) != AI_DEFAULT_MATERIAL_NAME) {
      const auto byte = [](ai_real v) { return static_cast<OdUInt8>(std::lround(std::clamp<ai_real>(v, 0, 1) * 255)); };
      mesh.surfaces.emplace_back(text(name), OdCmEntityColor(byte(color.r), byte(color.g), byte(color.b)), text(name));
    }
  }
  return mesh;
}

void addNodes(const aiScene* source, const aiNode* node, std::size_t index, bool materials, kovImportedScene& scene)
{
  for (unsigned m = 0; m < node->mNumMeshes; ++m) {
    const aiMesh* mesh = source->mMeshes[node->mMeshes[m]];
    scene.addPart(index, mesh->mName.length ? text(mesh->mName) : text(node->mName), meshOf(source, mesh, materials));
  }
  for (unsigned c = 0; c < node->mNumChildren; ++c) {
    const aiNode* child = node->mChildren[c];
    addNodes(source, child, scene.addNode(index, text(child->mName), matrixOf(child->mTransformation)), materials,
             scene);
  }
}

// The track's value at time: between two keys as blend makes it, the nearest
// key outside them, rest without keys.
template <class KeyType, class Value, class Blend>
Value sample(const KeyType* keys, unsigned count, double time, const Value& rest, Blend blend)
{
  if (count == 0)
    return rest;
  if (time <= keys[0].mTime)
    return keys[0].mValue;
  for (unsigned i = 1; i < count; ++i) {
    if (time <= keys[i].mTime) {
      const double span = keys[i].mTime - keys[i - 1].mTime;
      return blend(keys[i - 1].mValue, keys[i].mValue,
                   static_cast<ai_real>(span > 0 ? (time - keys[i - 1].mTime) / span : 1.0));
    }
  }
  return keys[count - 1].mValue;
}

aiVector3D lerp(const aiVector3D& a, const aiVector3D& b, ai_real t)
{
  return a + (b - a) * t;
}

aiQuaternion slerp(const aiQuaternion& a, const aiQuaternion& b, ai_real t)
{
  aiQuaternion q;
  aiQuaternion::Interpolate(q, a, b, t);
  return q;
}

// One key per time any of the node's tracks has a key; a track without keys
// holds the node's pose at rest.
kovImportedScene::Channel channelOf(const aiNodeAnim* track, const aiNode* node, double ticksPerSecond, std::size_t index)
{
  aiVector3D restScale;
  aiQuaternion restRotation;
  aiVector3D restPosition;
  node->mTransformation.Decompose(restScale, restRotation, restPosition);
  std::set<double> times;
  for (unsigned i = 0; i < track->mNumPositionKeys; ++i)
    times.insert(track->mPositionKeys[i].mTime);
  for (unsigned i = 0; i < track->mNumRotationKeys; ++i)
    times.insert(track->mRotationKeys[i].mTime);
  for (unsigned i = 0; i < track->mNumScalingKeys; ++i)
    times.insert(track->mScalingKeys[i].mTime);
  kovImportedScene::Channel channel;
  channel.node = index;
  for (double time : times) {
    const double ms = time / ticksPerSecond * 1000.0;
    if (!std::isfinite(ms) || std::fabs(ms) > 2.0e9)
      continue;
    const aiVector3D p = sample(track->mPositionKeys, track->mNumPositionKeys, time, restPosition, lerp);
    const aiQuaternion q = sample(track->mRotationKeys, track->mNumRotationKeys, time, restRotation, slerp);
    const aiVector3D s = sample(track->mScalingKeys, track->mNumScalingKeys, time, restScale, lerp);
    kovDbBlockAnimation::Key key;
    key.ms = static_cast<OdInt32>(std::lround(ms));
    key.translation.set(p.x, p.y, p.z);
    key.rotation[0] = q.w;
    key.rotation[1] = q.x;
    key.rotation[2] = q.y;
    key.rotation[3] = q.z;
    key.scale.set(s.x, s.y, s.z);
    channel.keys.push_back(key);
  }
  return channel;
}

void addClips(const aiScene* source, kovImportedScene& scene)
{
  for (unsigned a = 0; a < source->mNumAnimations; ++a) {
    const aiAnimation* animation = source->mAnimations[a];
    kovImportedScene::Clip clip;
    clip.name = text(animation->mName);
    if (clip.name.isEmpty())
      clip.name.format(L"Animation %u", a + 1);
    // Files that give no rate count in the library's default of 25 a second.
    const double ticksPerSecond = animation->mTicksPerSecond > 0 ? animation->mTicksPerSecond : 25.0;
    for (unsigned c = 0; c < animation->mNumChannels; ++c) {
      const aiNodeAnim* track = animation->mChannels[c];
      const aiNode* node = source->mRootNode->FindNode(track->mNodeName);
      const std::size_t index = scene.findNode(text(track->mNodeName));
      if (!node || index == kovImportedScene::npos || index == 0)
        continue;
      clip.channels.push_back(channelOf(track, node, ticksPerSecond, index));
    }
    if (!clip.channels.empty())
      scene.clips.push_back(std::move(clip));
  }
}

} // namespace

kovImportedScene kovAssimpImporter::read(const QString& path)
{
  Assimp::Importer importer;
  const aiScene* source =
    readScene(importer, path,
              aiProcess_Triangulate | aiProcess_JoinIdenticalVertices | aiProcess_SortByPType
                | aiProcess_ValidateDataStructure);
  const QString suffix = QFileInfo(path).suffix().toLower();
  // PLY has no materials: the library's grey would hide the entity's colour.
  const bool materials = suffix != QLatin1String("ply");
  kovImportedScene scene;
  scene.nodes[0].name = text(source->mRootNode->mName);
  scene.nodes[0].transform = matrixOf(source->mRootNode->mTransformation);
  addNodes(source, source->mRootNode, 0, materials, scene);
  addClips(source, scene);

  // Collada comes turned y up by the library whatever its file says; PLY and
  // 3DS keep their z up.
  double metres = 1.0;
  bool yUp = suffix == QLatin1String("dae");
  if (suffix == QLatin1String("fbx")) {
    // FBX counts in centimetres times the file's factor, and says which
    // axis is up.
    metres = metadataNumber(source, "UnitScaleFactor", 1.0) * 0.01;
    yUp = metadataNumber(source, "UpAxis", 1.0) == 1.0;
  }
  if (yUp)
    scene.upAxis = OdGeMatrix3d::rotation(kPi / 2.0, OdGeVector3d::kXAxis);
  if (!(metres > 0.0) || !std::isfinite(metres))
    refuse(path, QStringLiteral("its unit scale is not a positive number"));
  scene.scaleLengths(metres);
  return scene;
}

void kovAssimpImporter::readClips(const QString& path, kovImportedScene& scene)
{
  Assimp::Importer importer;
  addClips(readScene(importer, path, 0), scene);
}
