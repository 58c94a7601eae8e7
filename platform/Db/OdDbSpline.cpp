#include "Db/OdDbSpline.h"

#include "Db/OdDbDwgFiler.h"
#include "Gi/OdGiWorldDraw.h"
#include "Gi/OdGiWorldGeometry.h"

ODRX_DEFINE_MEMBERS_EX(OdDbSpline, OdDbCurve, DBOBJECT_CONSTR, 0, 0, 0, OdString(L"OdDbSpline"), OdString::kEmpty,
                       OdString::kEmpty, 0)

namespace {

// Samples drawn between two consecutive fit points of a cubic spline.
const int kSamplesPerSpan = 16;
// Bytes of one filed point or vector.
const OdUInt64 kTripleBytes = 24;

bool isZero(const OdGeVector3d& v)
{
  return v.x == 0.0 && v.y == 0.0 && v.z == 0.0;
}

} // namespace

OdDbSpline::SplineType OdDbSpline::type() const
{
  assertReadEnabled();
  return kFitPoints;
}

OdResult OdDbSpline::setType(SplineType type)
{
  assertWriteEnabled();
  return type == kFitPoints ? eOk : eNotApplicable;
}

OdResult OdDbSpline::setFitData(const OdGePoint3dArray& fitPoints, int degree, double fitTolerance,
                                const OdGeVector3d& startTangent, const OdGeVector3d& endTangent)
{
  assertWriteEnabled();
  return m_curve.setFitData(fitPoints, degree, fitTolerance, startTangent, endTangent);
}

OdResult OdDbSpline::setFitData(const OdGePoint3dArray& fitPoints, const OdGeVector3d& startTangent,
                                const OdGeVector3d& endTangent, KnotParameterization knotParam, int degree,
                                double fitTolerance)
{
  assertWriteEnabled();
  return m_curve.setFitData(fitPoints, degree, fitTolerance, startTangent, endTangent, knotParam);
}

OdResult OdDbSpline::setFitData(const OdGePoint3dArray& fitPoints, const OdGeVector3dArray& fitTangents, int degree,
                                double fitTolerance, KnotParameterization knotParam)
{
  assertWriteEnabled();
  return m_curve.setFitData(fitPoints, fitTangents, degree, fitTolerance, knotParam);
}

OdResult OdDbSpline::getFitData(OdGePoint3dArray& fitPoints, int& degree, double& fitTolerance, bool& tangentsExist,
                                OdGeVector3d& startTangent, OdGeVector3d& endTangent) const
{
  assertReadEnabled();
  return m_curve.getFitData(fitPoints, degree, fitTolerance, tangentsExist, startTangent, endTangent);
}

bool OdDbSpline::hasFitData() const
{
  assertReadEnabled();
  return m_curve.hasFitData();
}

int OdDbSpline::numFitPoints() const
{
  assertReadEnabled();
  return m_curve.numFitPoints();
}

OdResult OdDbSpline::getFitPointAt(int index, OdGePoint3d& point) const
{
  assertReadEnabled();
  return m_curve.getFitPointAt(index, point);
}

OdResult OdDbSpline::setFitPointAt(int index, const OdGePoint3d& point)
{
  assertWriteEnabled();
  return m_curve.setFitPointAt(index, point);
}

OdResult OdDbSpline::getFitTangents(OdGeVector3d& startTangent, OdGeVector3d& endTangent) const
{
  assertReadEnabled();
  return m_curve.getFitTangents(startTangent, endTangent);
}

OdResult OdDbSpline::setFitTangents(const OdGeVector3d& startTangent, const OdGeVector3d& endTangent)
{
  assertWriteEnabled();
  return m_curve.setFitTangents(startTangent, endTangent);
}

OdResult OdDbSpline::getFitTangentAt(int index, OdGeVector3d& tangent) const
{
  assertReadEnabled();
  return m_curve.getFitTangentAt(index, tangent);
}

OdDbSpline::KnotParameterization OdDbSpline::knotParameterization() const
{
  assertReadEnabled();
  return m_curve.knotParameterization();
}

int OdDbSpline::degree() const
{
  assertReadEnabled();
  return m_curve.degree();
}

double OdDbSpline::fitTolerance() const
{
  assertReadEnabled();
  return m_curve.fitTolerance();
}

int OdDbSpline::numControlPoints() const
{
  assertReadEnabled();
  return m_curve.numControlPoints();
}

OdResult OdDbSpline::getControlPointAt(int index, OdGePoint3d& point) const
{
  assertReadEnabled();
  return m_curve.getControlPointAt(index, point);
}

int OdDbSpline::numKnots() const
{
  assertReadEnabled();
  return m_curve.numKnots();
}

OdResult OdDbSpline::getKnotAt(int index, double& knot) const
{
  assertReadEnabled();
  return m_curve.knotAt(index, knot);
}

OdResult OdDbSpline::getStartParam(double& startParam) const
{
  assertReadEnabled();
  return m_curve.getStartParam(startParam);
}

OdResult OdDbSpline::getEndParam(double& endParam) const
{
  assertReadEnabled();
  return m_curve.getEndParam(endParam);
}

OdResult OdDbSpline::getPointAtParam(double param, OdGePoint3d& point) const
{
  assertReadEnabled();
  return m_curve.getPointAtParam(param, point);
}

OdResult OdDbSpline::getParamAtPoint(const OdGePoint3d& point, double& param) const
{
  assertReadEnabled();
  return m_curve.getParamAtPoint(point, param);
}

OdResult OdDbSpline::getDistAtParam(double param, double& dist) const
{
  assertReadEnabled();
  return m_curve.getDistAtParam(param, dist);
}

OdResult OdDbSpline::getParamAtDist(double dist, double& param) const
{
  assertReadEnabled();
  return m_curve.getParamAtDist(dist, param);
}

OdResult OdDbSpline::getFirstDeriv(double param, OdGeVector3d& firstDeriv) const
{
  assertReadEnabled();
  return m_curve.getFirstDeriv(param, firstDeriv);
}

bool OdDbSpline::isClosed() const
{
  assertReadEnabled();
  return m_curve.isClosed();
}

OdResult OdDbSpline::reverseCurve()
{
  assertWriteEnabled();
  return m_curve.reverseCurve();
}

OdResult OdDbSpline::subGetGeomExtents(OdGeExtents3d& extents) const
{
  const OdResult res = m_curve.getGeomExtents(extents);
  return res == eOk ? eOk : eInvalidExtents;
}

bool OdDbSpline::subWorldDraw(OdGiWorldDraw* pWd) const
{
  const int count = m_curve.numFitPoints();
  double start = 0.0;
  double end = 0.0;
  if (m_curve.getStartParam(start) != eOk || m_curve.getEndParam(end) != eOk || !(end > start))
    return true;
  // Span boundaries: the fit points' parameters, then the end (which a closed
  // curve reaches by returning to its first fit point).
  OdGeDoubleArray knots;
  for (int i = 0; i < count; ++i) {
    double param = 0.0;
    if (m_curve.getFitPointParam(i, param) == eOk && (knots.isEmpty() || param > knots.last()))
      knots.append(param);
  }
  if (knots.isEmpty() || end > knots.last())
    knots.append(end);
  const int samples = m_curve.degree() == 1 ? 1 : kSamplesPerSpan;
  OdGePoint3dArray points;
  points.reserve(static_cast<size_t>((knots.size() - 1) * samples + 1));
  OdGePoint3d point;
  for (unsigned int span = 0; span + 1 < knots.size(); ++span) {
    for (int k = 0; k < samples; ++k) {
      const double t = knots[span] + (knots[span + 1] - knots[span]) * k / samples;
      if (m_curve.getPointAtParam(t, point) == eOk)
        points.append(point);
    }
  }
  if (m_curve.getPointAtParam(end, point) == eOk)
    points.append(point);
  if (points.size() >= 2)
    pWd->geometry().polyline(static_cast<OdInt32>(points.size()), points.getPtr());
  return true;
}

OdResult OdDbSpline::subGetGripPoints(OdGePoint3dArray& gripPoints) const
{
  const int count = m_curve.numFitPoints();
  OdGePoint3d point;
  for (int i = 0; i < count; ++i) {
    if (m_curve.getFitPointAt(i, point) == eOk)
      gripPoints.append(point);
  }
  return eOk;
}

OdResult OdDbSpline::subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset)
{
  const int count = m_curve.numFitPoints();
  for (int index : indices) {
    if (index < 0 || index >= count)
      return eInvalidIndex;
  }
  // Work on a copy so that a refused point leaves the spline unchanged.
  OdGeNurbCurve3d moved(m_curve);
  OdGePoint3d point;
  for (int index : indices) {
    moved.getFitPointAt(index, point);
    const OdResult res = moved.setFitPointAt(index, point + offset);
    if (res != eOk)
      return res;
  }
  m_curve = moved;
  return eOk;
}

OdResult OdDbSpline::subTransformBy(const OdGeMatrix3d& xform)
{
  return m_curve.transformBy(xform);
}

OdResult OdDbSpline::dwgInFields(OdDbDwgFiler* pFiler)
{
  const OdResult res = OdDbCurve::dwgInFields(pFiler);
  if (res != eOk)
    return res;
  const int degree = pFiler->rdInt32();
  const double fitTolerance = pFiler->rdDouble();
  const OdInt8 knotParam = pFiler->rdInt8();
  const OdUInt32 count = static_cast<OdUInt32>(pFiler->rdInt32());
  if (knotParam < OdGeNurbCurve3d::kChord || knotParam > OdGeNurbCurve3d::kUniform
      || count > pFiler->bytesLeft() / kTripleBytes)
    return eInvalidInput;
  OdGePoint3dArray points;
  points.reserve(count);
  for (OdUInt32 i = 0; i < count; ++i)
    points.append(pFiler->rdPoint3d());
  OdGeVector3dArray tangents;
  if (pFiler->rdBool()) {
    if (count > pFiler->bytesLeft() / kTripleBytes)
      return eInvalidInput;
    tangents.reserve(count);
    for (OdUInt32 i = 0; i < count; ++i)
      tangents.append(pFiler->rdVector3d());
  } else {
    tangents.resize(count);
  }
  OdGeNurbCurve3d curve;
  if (count > 0) {
    const OdResult fit = curve.setFitData(points, tangents, degree, fitTolerance,
                                          static_cast<KnotParameterization>(knotParam));
    if (fit != eOk)
      return fit;
  }
  m_curve = curve;
  return pFiler->filerStatus();
}

void OdDbSpline::dwgOutFields(OdDbDwgFiler* pFiler) const
{
  OdDbCurve::dwgOutFields(pFiler);
  OdGePoint3dArray points;
  int degree = m_curve.degree();
  double fitTolerance = m_curve.fitTolerance();
  bool tangentsExist = false;
  OdGeVector3d startTangent;
  OdGeVector3d endTangent;
  m_curve.getFitData(points, degree, fitTolerance, tangentsExist, startTangent, endTangent);
  OdGeVector3dArray tangents(points.size());
  bool anyTangent = false;
  for (unsigned int i = 0; i < points.size(); ++i) {
    m_curve.getFitTangentAt(static_cast<int>(i), tangents[i]);
    anyTangent = anyTangent || !isZero(tangents[i]);
  }
  pFiler->wrInt32(degree);
  pFiler->wrDouble(fitTolerance);
  pFiler->wrInt8(static_cast<OdInt8>(m_curve.knotParameterization()));
  pFiler->wrInt32(static_cast<OdInt32>(points.size()));
  for (const OdGePoint3d& point : points)
    pFiler->wrPoint3d(point);
  pFiler->wrBool(anyTangent);
  if (anyTangent) {
    for (const OdGeVector3d& tangent : tangents)
      pFiler->wrVector3d(tangent);
  }
}
