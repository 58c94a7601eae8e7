#ifndef OD_DB_SPLINE_H
#define OD_DB_SPLINE_H

#include "Db/OdDbCurve.h"
#include "Ge/OdGeNurbCurve3d.h"
#include "Ge/OdGeVector3dArray.h"

// A spline through fit points: the entity around an OdGeNurbCurve3d, whose
// comment says how the curve is built and parameterised. The fit data is what
// the spline files; the curve is rebuilt from it. Knot parameterisations are
// OdGeNurbCurve3d::KnotParameterization (kChord, kSqrtChord, kUniform).
class OdDbSpline : public OdDbCurve {
  ODDB_DECLARE_MEMBERS(OdDbSpline);

public:
  enum SplineType { kFitPoints = 0, kControlPoints = 1 };
  typedef OdGeNurbCurve3d::KnotParameterization KnotParameterization;

  OdDbSpline() = default;

  // Always kFitPoints: this platform keeps splines as fit data.
  SplineType type() const;
  // eOk for kFitPoints; eNotApplicable for kControlPoints.
  OdResult setType(SplineType type);

  // Replace the fit data (see OdGeNurbCurve3d::setFitData); eInvalidInput
  // leaves the spline as it was.
  OdResult setFitData(const OdGePoint3dArray& fitPoints, int degree, double fitTolerance,
                      const OdGeVector3d& startTangent, const OdGeVector3d& endTangent);
  OdResult setFitData(const OdGePoint3dArray& fitPoints, const OdGeVector3d& startTangent,
                      const OdGeVector3d& endTangent, KnotParameterization knotParam, int degree = 3,
                      double fitTolerance = 0.0);
  // One tangent per fit point (zero leaves the curve free there).
  OdResult setFitData(const OdGePoint3dArray& fitPoints, const OdGeVector3dArray& fitTangents, int degree,
                      double fitTolerance, KnotParameterization knotParam = OdGeNurbCurve3d::kChord);
  OdResult getFitData(OdGePoint3dArray& fitPoints, int& degree, double& fitTolerance, bool& tangentsExist,
                      OdGeVector3d& startTangent, OdGeVector3d& endTangent) const;
  bool hasFitData() const;
  int numFitPoints() const;
  OdResult getFitPointAt(int index, OdGePoint3d& point) const;
  OdResult setFitPointAt(int index, const OdGePoint3d& point);
  OdResult getFitTangents(OdGeVector3d& startTangent, OdGeVector3d& endTangent) const;
  OdResult setFitTangents(const OdGeVector3d& startTangent, const OdGeVector3d& endTangent);
  // The tangent at one fit point (zero where the curve is free).
  OdResult getFitTangentAt(int index, OdGeVector3d& tangent) const;
  KnotParameterization knotParameterization() const;
  // The degree of the built curve (see OdGeNurbCurve3d::degree).
  int degree() const;
  double fitTolerance() const;

  // The built curve's clamped control points and knots.
  int numControlPoints() const;
  OdResult getControlPointAt(int index, OdGePoint3d& point) const;
  int numKnots() const;
  OdResult getKnotAt(int index, double& knot) const;

  OdResult getStartParam(double& startParam) const override;
  OdResult getEndParam(double& endParam) const override;
  OdResult getPointAtParam(double param, OdGePoint3d& point) const override;
  OdResult getParamAtPoint(const OdGePoint3d& point, double& param) const override;
  OdResult getDistAtParam(double param, double& dist) const override;
  OdResult getParamAtDist(double dist, double& param) const override;
  OdResult getFirstDeriv(double param, OdGeVector3d& firstDeriv) const override;
  bool isClosed() const override;
  OdResult reverseCurve() override;

  OdResult dwgInFields(OdDbDwgFiler* pFiler) override;
  void dwgOutFields(OdDbDwgFiler* pFiler) const override;

protected:
  OdResult subGetGeomExtents(OdGeExtents3d& extents) const override;
  // A polyline through points sampled along the curve: the fit points
  // themselves and evenly spaced parameters between them.
  bool subWorldDraw(OdGiWorldDraw* pWd) const override;
  // The grips are the fit points.
  OdResult subGetGripPoints(OdGePoint3dArray& gripPoints) const override;
  OdResult subMoveGripPointsAt(const OdIntArray& indices, const OdGeVector3d& offset) override;
  OdResult subTransformBy(const OdGeMatrix3d& xform) override;

private:
  OdGeNurbCurve3d m_curve;
};

typedef OdSmartPtr<OdDbSpline> OdDbSplinePtr;

#endif
