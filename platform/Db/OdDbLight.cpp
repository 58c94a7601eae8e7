#include "Db/OdDbLight.h"

#include "Db/OdDbDwgFiler.h"

#include <cmath>

ODRX_DEFINE_MEMBERS_EX(OdDbLight, OdDbEntity, DBOBJECT_CONSTR, 0, 0, 0, OdString(L"OdDbLight"), OdString::kEmpty,
                       OdString::kEmpty, 0)

namespace {

bool isFinite(const OdGePoint3d& p)
{
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool isValidType(OdInt32 type)
{
  return type >= OdDbLight::kPointLight && type <= OdDbLight::kSpotLight;
}

bool isValidIntensity(double intensity)
{
  return std::isfinite(intensity) && intensity >= 0.0;
}

} // namespace

OdString OdDbLight::name() const
{
  assertReadEnabled();
  return m_name;
}

OdResult OdDbLight::setName(const OdString& name)
{
  assertWriteEnabled();
  m_name = name;
  return eOk;
}

OdDbLight::LightType OdDbLight::lightType() const
{
  assertReadEnabled();
  return m_type;
}

OdResult OdDbLight::setLightType(LightType type)
{
  assertWriteEnabled();
  if (!isValidType(type))
    return eInvalidInput;
  m_type = type;
  return eOk;
}

OdGePoint3d OdDbLight::position() const
{
  assertReadEnabled();
  return m_position;
}

OdResult OdDbLight::setPosition(const OdGePoint3d& position)
{
  assertWriteEnabled();
  if (!isFinite(position))
    return eInvalidInput;
  m_position = position;
  return eOk;
}

OdGePoint3d OdDbLight::targetLocation() const
{
  assertReadEnabled();
  return m_target;
}

OdResult OdDbLight::setTargetLocation(const OdGePoint3d& target)
{
  assertWriteEnabled();
  if (!isFinite(target))
    return eInvalidInput;
  m_target = target;
  return eOk;
}

double OdDbLight::intensity() const
{
  assertReadEnabled();
  return m_intensity;
}

OdResult OdDbLight::setIntensity(double intensity)
{
  assertWriteEnabled();
  if (!isValidIntensity(intensity))
    return eInvalidInput;
  m_intensity = intensity;
  return eOk;
}

bool OdDbLight::isOn() const
{
  assertReadEnabled();
  return m_on;
}

void OdDbLight::setOn(bool on)
{
  assertWriteEnabled();
  m_on = on;
}

OdResult OdDbLight::subGetGeomExtents(OdGeExtents3d& extents) const
{
  extents = OdGeExtents3d();
  extents.addPoint(m_position).addPoint(m_target);
  return eOk;
}

OdResult OdDbLight::subGetGripPoints(OdGePoint3dArray& gripPoints) const
{
  gripPoints.append(m_position);
  gripPoints.append(m_target);
  return eOk;
}

OdResult OdDbLight::subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset)
{
  for (int index : indices) {
    if (index != 0 && index != 1)
      return eInvalidIndex;
  }
  for (int index : indices)
    (index == 0 ? m_position : m_target) += offset;
  return eOk;
}

OdResult OdDbLight::subTransformBy(const OdGeMatrix3d& xform)
{
  const OdGePoint3d position = xform * m_position;
  const OdGePoint3d target = xform * m_target;
  if (!isFinite(position) || !isFinite(target))
    return eInvalidInput;
  m_position = position;
  m_target = target;
  return eOk;
}

OdResult OdDbLight::dwgInFields(OdDbDwgFiler* pFiler)
{
  const OdResult res = OdDbEntity::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  const OdString name = pFiler->rdString();
  const OdInt32 type = pFiler->rdInt8();
  const OdGePoint3d position = pFiler->rdPoint3d();
  const OdGePoint3d target = pFiler->rdPoint3d();
  const double intensity = pFiler->rdDouble();
  const bool on = pFiler->rdBool();
  if (!isValidType(type) || !isFinite(position) || !isFinite(target) || !isValidIntensity(intensity))
    return eInvalidInput;
  m_name = name;
  m_type = static_cast<LightType>(type);
  m_position = position;
  m_target = target;
  m_intensity = intensity;
  m_on = on;
  return pFiler->filerStatus();
}

void OdDbLight::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  OdDbEntity::dwgOutFields(pFiler);
  pFiler->wrString(m_name);
  pFiler->wrInt8(static_cast<OdInt8>(m_type));
  pFiler->wrPoint3d(m_position);
  pFiler->wrPoint3d(m_target);
  pFiler->wrDouble(m_intensity);
  pFiler->wrBool(m_on);
}
