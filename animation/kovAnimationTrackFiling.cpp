// Filing of a track inside its animation entity.
//
// Layout, version 113 (every field through the drawing filer's primitives;
// texts are the filer's strings):
//
//   Int32   layout version (113)
//   String  track name
//   String  track description
//   Handle  animated entity (0 for none)
//   String  entity unique name
//   Int32   start millisecond
//   Int32   number of items N, then N item records:
//             Int32 parameter type, Int32 animation type, String custom
//             parameter name, Bool face direction, Bool duration by speed,
//             Bool factory parameter, Double min, Double max, Int32 decimals,
//             Int32 M, M x String value list,
//             Int32 K, K keyframes in ascending key order:
//               Int32 key (ms), Int32 byte count B, B bytes (kovKeyframeCodec)
//   String  spawned-object template name ("" for none)
//   [String template class name, then the template object's own fields]
//             only when the name is not empty
//   Bool    the track has a generated block
//   [Handle block reference, 16 x Double placement matrix column by column]
//             only when it has one
//
// Older layouts lack fields by version: face direction before 102, the
// template before 103, the block flag before 104 (the block is made anew),
// the range group (factory flag .. value list) before 105, duration by speed
// before 109; before 110 the block handle names a block definition.
//
// Reading checks every count and length against the bytes left before
// allocating for it, and refuses a damaged keyframe value.
#include "animation/kovAnimationTrack.h"

#include "animation/kovKeyframeCodec.h"
#include "db/kovDbTempBlockReference.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbDwgFiler.h"
#include "Db/OdDbReadCount.h"

namespace {

const OdInt32 kLayoutVersion = 113;
// The smallest item record: two integers, an empty string's length and a
// keyframe count, at four bytes each.
const OdUInt64 kMinItemBytes = 16;
// The smallest keyframe record: its key and its byte count.
const OdUInt64 kMinKeyframeBytes = 8;
// A string takes at least its length.
const OdUInt64 kMinStringBytes = 4;

OdString trackContext(const QString& name)
{
  return odFromQString(QStringLiteral("Animation track \"%1\": ").arg(name));
}

OdDbObjectId idOf(OdDbDwgFiler* filer, const OdDbHandle& handle)
{
  OdDbDatabase* db = filer->database();
  return db && !handle.isNull() ? db->getOdDbObjectId(handle, false) : OdDbObjectId();
}

bool filesTemplate(const OdDbObjectPtr& object, const QString& name)
{
  return !object.isNull() && !name.isEmpty() && !object->isKindOf(OdDbBlockReference::desc());
}

} // namespace

void kovAnimationTrack::saveToFile(const QString& fileName) const
{
  Q_UNUSED(fileName);
}

void kovAnimationTrack::loadFromFile(const QString& fileName)
{
  Q_UNUSED(fileName);
}

void kovAnimationTrack::dwgOutFields(OdDbDwgFiler* filer) const
{
  filer->wrInt32(kLayoutVersion);
  filer->wrString(odFromQString(m_trackName));
  filer->wrString(odFromQString(m_trackDescription));
  filer->wrDbHandle(m_entityId.isNull() ? OdDbHandle() : m_entityId.getHandle());
  filer->wrString(odFromQString(m_entityUniqueName));
  filer->wrInt32(m_startMillisecond);

  filer->wrInt32(numElements());
  for (const kovAnimationItem& item : m_animationElements) {
    filer->wrInt32(item.paramsType());
    filer->wrInt32(item.animationType());
    filer->wrString(odFromQString(item.customParameterName()));
    filer->wrBool(item.faceDirection());
    filer->wrBool(item.durationByAnimationSpeed());
    filer->wrBool(item.isFactoryParameter());
    filer->wrDouble(item.minValue());
    filer->wrDouble(item.maxValue());
    filer->wrInt32(item.decimals());
    filer->wrInt32(item.valueList().size());
    for (const QString& entry : item.valueList())
      filer->wrString(odFromQString(entry));
    filer->wrInt32(item.values().size());
    for (auto it = item.values().cbegin(); it != item.values().cend(); ++it) {
      const QByteArray bytes = kovKeyframeCodec::encode(it.value());
      filer->wrInt32(it.key());
      filer->wrInt32(bytes.size());
      filer->wrBytes(bytes.constData(), static_cast<OdUInt32>(bytes.size()));
    }
  }

  if (filesTemplate(m_templateObject, m_templateName)) {
    filer->wrString(odFromQString(m_templateName));
    filer->wrString(m_templateObject->isA()->name());
    m_templateObject->dwgOutFields(filer);
  } else {
    filer->wrString(OdString());
  }

  filer->wrBool(!m_blockId.isNull());
  if (!m_blockId.isNull()) {
    filer->wrDbHandle(m_blockId.getHandle());
    for (int col = 0; col < 4; ++col) {
      for (int row = 0; row < 4; ++row)
        filer->wrDouble(m_blockMatrix.entry[row][col]);
    }
  }
}

OdResult kovAnimationTrack::dwgInFields(OdDbDwgFiler* filer)
try {
  const OdInt32 version = filer->rdInt32();
  m_trackName = odToQString(filer->rdString());
  m_trackDescription = odToQString(filer->rdString());
  m_entityId = idOf(filer, filer->rdDbHandle());
  m_entityUniqueName = odToQString(filer->rdString());
  m_startMillisecond = filer->rdInt32();

  resizeAnimationElements(odDbReadCount(filer, kMinItemBytes, "sub-track"));
  for (kovAnimationItem& item : m_animationElements) {
    item.m_paramsType = static_cast<kovAnimationItem::ParameterType>(filer->rdInt32());
    item.m_animationType = static_cast<kovAnimationItem::AnimationType>(filer->rdInt32());
    item.m_customParameterName = odToQString(filer->rdString());
    if (version >= 102)
      item.m_faceDirection = filer->rdBool();
    if (version >= 109)
      item.m_durationByAnimationSpeed = filer->rdBool();
    if (version >= 105) {
      item.m_isFactoryParameter = filer->rdBool();
      item.m_minValue = filer->rdDouble();
      item.m_maxValue = filer->rdDouble();
      item.m_decimals = filer->rdInt32();
      item.m_valueList.clear();
      const OdInt32 entries = odDbReadCount(filer, kMinStringBytes, "value list");
      for (OdInt32 i = 0; i < entries; ++i)
        item.m_valueList.append(odToQString(filer->rdString()));
    }
    const OdInt32 keyframes = odDbReadCount(filer, kMinKeyframeBytes, "keyframe");
    QMap<int, QVariant> values;
    for (OdInt32 i = 0; i < keyframes; ++i) {
      const OdInt32 key = filer->rdInt32();
      const OdInt32 size = odDbReadCount(filer, 1, "keyframe byte");
      QByteArray bytes(size, Qt::Uninitialized);
      filer->rdBytes(bytes.data(), static_cast<OdUInt32>(size));
      QVariant value;
      if (!kovKeyframeCodec::decode(bytes, value))
        throw OdError(eDwgObjectImproperlyRead,
                      odFromQString(QStringLiteral("the keyframe value at %1 ms is damaged").arg(key)));
      values.insert(key, value);
    }
    item.m_values = values;
    item.invalidateCache();
  }

  if (version >= 103) {
    m_templateName = odToQString(filer->rdString());
    m_templateObject = nullptr;
    if (!m_templateName.isEmpty()) {
      const OdString className = filer->rdString();
      OdRxObjectPtr created = odrxCreateObject(className);
      m_templateObject = created;
      if (m_templateObject.isNull())
        throw OdError_NotThatKindOfClass(created.isNull() ? nullptr : created->isA(), OdDbObject::desc());
      const OdResult res = m_templateObject->dwgInFields(filer);
      if (res != eOk)
        return res;
    }
  }

  OdDbDatabase* db = filer->database();
  if (version < 104) {
    regenerateBlock(db, true);
    return filer->filerStatus();
  }
  if (filer->rdBool()) {
    const OdDbHandle handle = filer->rdDbHandle();
    for (int col = 0; col < 4; ++col) {
      for (int row = 0; row < 4; ++row)
        m_blockMatrix.entry[row][col] = filer->rdDouble();
    }
    if (version >= 110) {
      m_blockId = idOf(filer, handle);
    } else if (db) {
      // Older drawings name the block definition: show it by a new reference.
      kovDbTempBlockReferencePtr reference = kovDbTempBlockReference::createObject();
      reference->setDatabaseDefaults(db);
      reference->setBlockTableRecord(idOf(filer, handle));
      reference->setVisibility(OdDb::kVisible);
      reference->setBlockTransform(m_blockMatrix);
      OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
      m_blockId = modelSpace->appendOdDbEntity(reference.get());
    }
  }
  return filer->filerStatus();
} catch (OdError& error) {
  // The filer and the class registry know nothing of tracks: say which one
  // could not be read (the name, once it was read).
  error.prependContext(trackContext(m_trackName));
  throw;
}
