#include "Db/OdDbViewTableRecord.h"

#include "Db/OdDbDwgFiler.h"

#include <cmath>

ODRX_DEFINE_MEMBERS_EX(OdDbViewTableRecord, OdDbSymbolTableRecord, DBOBJECT_CONSTR, 0, 0, 0,
                       OdString(L"OdDbViewTableRecord"), OdString::kEmpty, OdString::kEmpty, 0)

namespace {

const double kPi = 3.14159265358979323846;
const double kHalfFrameWidthMm = 18.0;

bool isFinite(const OdGeVector3d& v)
{
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool isFinite(const OdGePoint3d& p)
{
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool isPositive(double value)
{
  return std::isfinite(value) && value > 0.0;
}

} // namespace

OdGePoint3d OdDbViewTableRecord::target() const
{
  assertReadEnabled();
  return m_target;
}

OdResult OdDbViewTableRecord::setTarget(const OdGePoint3d& target)
{
  assertWriteEnabled();
  if (!isFinite(target))
    return eInvalidInput;
  m_target = target;
  return eOk;
}

OdGeVector3d OdDbViewTableRecord::viewDirection() const
{
  assertReadEnabled();
  return m_viewDirection;
}

OdResult OdDbViewTableRecord::setViewDirection(const OdGeVector3d& direction)
{
  assertWriteEnabled();
  if (!isFinite(direction) || direction.isZeroLength())
    return eInvalidInput;
  m_viewDirection = direction;
  return eOk;
}

OdGeVector3d OdDbViewTableRecord::upVector() const
{
  assertReadEnabled();
  return m_upVector;
}

OdResult OdDbViewTableRecord::setUpVector(const OdGeVector3d& up)
{
  assertWriteEnabled();
  if (!isFinite(up) || up.isZeroLength())
    return eInvalidInput;
  m_upVector = up;
  return eOk;
}

OdGePoint3d OdDbViewTableRecord::eyePoint() const
{
  assertReadEnabled();
  return m_target + m_viewDirection;
}

OdResult OdDbViewTableRecord::setCamera(const OdGePoint3d& eye, const OdGePoint3d& target, const OdGeVector3d& up)
{
  assertWriteEnabled();
  const OdGeVector3d direction = eye - target;
  if (!isFinite(eye) || !isFinite(target) || !isFinite(up) || direction.isZeroLength() || up.isZeroLength()
      || up.isParallelTo(direction))
    return eInvalidInput;
  m_target = target;
  m_viewDirection = direction;
  m_upVector = up;
  return eOk;
}

double OdDbViewTableRecord::lensLength() const
{
  assertReadEnabled();
  return m_lensLength;
}

OdResult OdDbViewTableRecord::setLensLength(double lensLength)
{
  assertWriteEnabled();
  if (!isPositive(lensLength))
    return eInvalidInput;
  m_lensLength = lensLength;
  return eOk;
}

double OdDbViewTableRecord::fieldOfView() const
{
  assertReadEnabled();
  return 2.0 * std::atan(kHalfFrameWidthMm / m_lensLength);
}

OdResult OdDbViewTableRecord::setFieldOfView(double radians)
{
  assertWriteEnabled();
  if (!std::isfinite(radians) || radians <= 0.0 || radians >= kPi)
    return eInvalidInput;
  m_lensLength = kHalfFrameWidthMm / std::tan(radians / 2.0);
  return eOk;
}

double OdDbViewTableRecord::height() const
{
  assertReadEnabled();
  return m_height;
}

OdResult OdDbViewTableRecord::setHeight(double height)
{
  assertWriteEnabled();
  if (!isPositive(height))
    return eInvalidInput;
  m_height = height;
  return eOk;
}

double OdDbViewTableRecord::width() const
{
  assertReadEnabled();
  return m_width;
}

OdResult OdDbViewTableRecord::setWidth(double width)
{
  assertWriteEnabled();
  if (!isPositive(width))
    return eInvalidInput;
  m_width = width;
  return eOk;
}

bool OdDbViewTableRecord::perspectiveEnabled() const
{
  assertReadEnabled();
  return m_perspective;
}

void OdDbViewTableRecord::setPerspectiveEnabled(bool enabled)
{
  assertWriteEnabled();
  m_perspective = enabled;
}

OdResult OdDbViewTableRecord::dwgInFields(OdDbDwgFiler* pFiler)
{
  const OdResult res = OdDbSymbolTableRecord::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  const OdGePoint3d target = pFiler->rdPoint3d();
  const OdGeVector3d direction = pFiler->rdVector3d();
  const OdGeVector3d up = pFiler->rdVector3d();
  const double lensLength = pFiler->rdDouble();
  const double height = pFiler->rdDouble();
  const double width = pFiler->rdDouble();
  const bool perspective = pFiler->rdBool();
  // The setters' rules hold for filed data too: a view read from a file is
  // one that could have been set.
  if (!isFinite(target) || !isFinite(direction) || direction.isZeroLength() || !isFinite(up) || up.isZeroLength()
      || !isPositive(lensLength) || !isPositive(height) || !isPositive(width))
    return eInvalidInput;
  m_target = target;
  m_viewDirection = direction;
  m_upVector = up;
  m_lensLength = lensLength;
  m_height = height;
  m_width = width;
  m_perspective = perspective;
  return pFiler->filerStatus();
}

void OdDbViewTableRecord::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  OdDbSymbolTableRecord::dwgOutFields(pFiler);
  pFiler->wrPoint3d(m_target);
  pFiler->wrVector3d(m_viewDirection);
  pFiler->wrVector3d(m_upVector);
  pFiler->wrDouble(m_lensLength);
  pFiler->wrDouble(m_height);
  pFiler->wrDouble(m_width);
  pFiler->wrBool(m_perspective);
}
