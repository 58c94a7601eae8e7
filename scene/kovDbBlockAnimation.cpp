// Layout, version 1, after the entity's own fields:
//
//   Int32   layout version (1)
//   String  animation name
//   Int32   number of channels C, then C channels:
//             String node (the nested block's name)
//             Int32 number of keys K, then K keys in time order:
//               Int32 ms, 3 x Double translation, 4 x Double rotation
//               (w, x, y, z), 3 x Double scale
//
// Reading checks every count against the bytes left before allocating.
#include "scene/kovDbBlockAnimation.h"

#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbReadCount.h"

#include <gp_Quaternion.hxx>
#include <gp_QuaternionSLerp.hxx>

#include <algorithm>
#include <cmath>

ODRX_DEFINE_MEMBERS_EX(kovDbBlockAnimation, OdDbEntity, DBOBJECT_CONSTR, 33, 55, 0, OdString(L"kovDbBlockAnimation"),
                       OdString(L"kovDbBlockAnimation"), OdString(L"kovDbBlockAnimation"), 0)

namespace {

const OdInt32 kLayoutVersion = 1;
const OdUInt64 kKeyBytes = 4 + 10 * 8;
const OdUInt64 kMinChannelBytes = 8;

gp_Quaternion quaternion(const double r[4])
{
  gp_Quaternion q(r[1], r[2], r[3], r[0]);
  q.Normalize();
  return q;
}

OdGeVector3d lerp(const OdGeVector3d& a, const OdGeVector3d& b, double t)
{
  return a + (b - a) * t;
}

} // namespace

OdGeMatrix3d kovDbBlockAnimation::Key::matrix() const
{
  const gp_Mat m = quaternion(rotation).GetMatrix();
  OdGeMatrix3d result;
  for (int r = 0; r < 3; ++r) {
    result.entry[r][0] = m.Value(r + 1, 1) * scale.x;
    result.entry[r][1] = m.Value(r + 1, 2) * scale.y;
    result.entry[r][2] = m.Value(r + 1, 3) * scale.z;
  }
  result.setTranslation(translation);
  return result;
}

bool kovDbBlockAnimation::Key::operator==(const Key& other) const
{
  return ms == other.ms && translation.x == other.translation.x && translation.y == other.translation.y
         && translation.z == other.translation.z && std::equal(rotation, rotation + 4, other.rotation)
         && scale.x == other.scale.x && scale.y == other.scale.y && scale.z == other.scale.z;
}

OdString kovDbBlockAnimation::name() const
{
  assertReadEnabled();
  return m_name;
}

void kovDbBlockAnimation::setName(const OdString& name)
{
  assertWriteEnabled();
  m_name = name;
}

const std::vector<kovDbBlockAnimation::Channel>& kovDbBlockAnimation::channels() const
{
  assertReadEnabled();
  return m_channels;
}

void kovDbBlockAnimation::setChannels(std::vector<Channel> channels)
{
  assertWriteEnabled();
  for (Channel& channel : channels) {
    std::stable_sort(channel.keys.begin(), channel.keys.end(), [](const Key& a, const Key& b) { return a.ms < b.ms; });
    // Of keys at the same time the one given last stays.
    std::vector<Key> unique;
    for (const Key& key : channel.keys) {
      if (!unique.empty() && unique.back().ms == key.ms)
        unique.back() = key;
      else
        unique.push_back(key);
    }
    channel.keys = std::move(unique);
  }
  channels.erase(std::remove_if(channels.begin(), channels.end(), [](const Channel& c) { return c.keys.empty(); }),
                 channels.end());
  m_channels = std::move(channels);
}

OdInt32 kovDbBlockAnimation::durationMs() const
{
  assertReadEnabled();
  OdInt32 last = 0;
  for (const Channel& channel : m_channels)
    last = std::max(last, channel.keys.back().ms);
  return last;
}

bool kovDbBlockAnimation::transformAt(const OdString& node, OdInt32 ms, OdGeMatrix3d& transform) const
{
  assertReadEnabled();
  const auto channel = std::find_if(m_channels.begin(), m_channels.end(), [&](const Channel& c) { return c.node == node; });
  if (channel == m_channels.end()) {
    transform.setToIdentity();
    return false;
  }
  const std::vector<Key>& keys = channel->keys;
  const auto next = std::lower_bound(keys.begin(), keys.end(), ms, [](const Key& k, OdInt32 t) { return k.ms < t; });
  if (next == keys.begin() || next == keys.end()) {
    transform = (next == keys.end() ? keys.back() : keys.front()).matrix();
    return true;
  }
  const Key& a = *(next - 1);
  const Key& b = *next;
  const double t = double(ms - a.ms) / double(b.ms - a.ms);
  Key pose;
  pose.translation = lerp(a.translation, b.translation, t);
  pose.scale = lerp(a.scale, b.scale, t);
  const gp_Quaternion q = gp_QuaternionSLerp::Interpolate(quaternion(a.rotation), quaternion(b.rotation), t);
  pose.rotation[0] = q.W();
  pose.rotation[1] = q.X();
  pose.rotation[2] = q.Y();
  pose.rotation[3] = q.Z();
  transform = pose.matrix();
  return true;
}

void kovDbBlockAnimation::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  assertReadEnabled();
  OdDbEntity::dwgOutFields(pFiler);
  pFiler->wrInt32(kLayoutVersion);
  pFiler->wrString(m_name);
  pFiler->wrInt32(static_cast<OdInt32>(m_channels.size()));
  for (const Channel& channel : m_channels) {
    pFiler->wrString(channel.node);
    pFiler->wrInt32(static_cast<OdInt32>(channel.keys.size()));
    for (const Key& key : channel.keys) {
      pFiler->wrInt32(key.ms);
      pFiler->wrVector3d(key.translation);
      for (double r : key.rotation)
        pFiler->wrDouble(r);
      pFiler->wrVector3d(key.scale);
    }
  }
}

OdResult kovDbBlockAnimation::dwgInFields(OdDbDwgFiler* pFiler)
{
  assertWriteEnabled();
  const OdResult res = OdDbEntity::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  if (pFiler->rdInt32() < 1)
    return eDwgObjectImproperlyRead;
  const OdString name = pFiler->rdString();
  std::vector<Channel> channels(static_cast<size_t>(odDbReadCount(pFiler, kMinChannelBytes, "channel")));
  for (Channel& channel : channels) {
    channel.node = pFiler->rdString();
    channel.keys.resize(static_cast<size_t>(odDbReadCount(pFiler, kKeyBytes, "key")));
    for (Key& key : channel.keys) {
      key.ms = pFiler->rdInt32();
      key.translation = pFiler->rdVector3d();
      for (double& r : key.rotation)
        r = pFiler->rdDouble();
      key.scale = pFiler->rdVector3d();
    }
  }
  m_name = name;
  setChannels(std::move(channels));
  return pFiler->filerStatus();
}
