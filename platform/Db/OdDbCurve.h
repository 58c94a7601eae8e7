#ifndef OD_DB_CURVE_H
#define OD_DB_CURVE_H

#include "Db/OdDbEntity.h"

// An entity that is a parametric curve. Every query returns eOk or says why
// it can't answer (eDegenerateGeometry for a curve without geometry,
// eOutOfRange for a parameter or distance off an open curve).
class OdDbCurve : public OdDbEntity {
  ODDB_DECLARE_MEMBERS(OdDbCurve);

public:
  virtual OdResult getStartParam(double& startParam) const = 0;
  virtual OdResult getEndParam(double& endParam) const = 0;
  virtual OdResult getPointAtParam(double param, OdGePoint3d& point) const = 0;
  // The parameter of the curve's point nearest to point.
  virtual OdResult getParamAtPoint(const OdGePoint3d& point, double& param) const = 0;
  // Arc length from the start to param, and back.
  virtual OdResult getDistAtParam(double param, double& dist) const = 0;
  virtual OdResult getParamAtDist(double dist, double& param) const = 0;
  virtual OdResult getFirstDeriv(double param, OdGeVector3d& firstDeriv) const = 0;
  virtual bool isClosed() const = 0;
  // Same shape, opposite direction.
  virtual OdResult reverseCurve() = 0;

protected:
  OdDbCurve() = default;
};

typedef OdSmartPtr<OdDbCurve> OdDbCurvePtr;

#endif
