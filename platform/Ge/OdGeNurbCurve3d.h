#ifndef OD_GE_NURB_CURVE3D_H
#define OD_GE_NURB_CURVE3D_H

#include "Ge/OdGePoint3dArray.h"
#include "Ge/OdGeVector3dArray.h"
#include "Rx/OdResult.h"

#include <memory>

class OdGeExtents3d;
class OdGeMatrix3d;

// A spline through fit points: a value type (a copy is an independent curve)
// whose B-spline is rebuilt on the first query after the fit data changed, so
// queries never rebuild. Const members may be called from several threads at
// once; a non-const member needs exclusive access, as with any value.
//
// Parameters: the fit points get increasing parameters, starting at 0 and
// growing by the chord length between consecutive fit points (kChord), its
// square root (kSqrtChord) or 1 (kUniform); a closed curve adds the step from
// the last fit point back to the first. The curve runs from 0 to the sum, and
// getFitPointParam() gives each fit point's parameter.
//
// Shape: degree 3 interpolates with continuous curvature, except at fit points
// that carry a tangent (continuous tangent there); degree 1 is the polyline
// through the fit points and ignores tangents. Two distinct fit points give a
// straight segment unless a tangent is given; three without tangents give a
// parabola. A zero tangent leaves that point free; a tangent fixes the
// direction of the first derivative there, its length does not matter. The
// curve passes through every fit point exactly: fitTolerance is kept with the
// fit data but does not relax the interpolation.
//
// Tangents: given per fit point, a tangent stays with its point when points
// are inserted or removed; given as start and end tangents, they stay with the
// curve's ends.
//
// Degenerate data: no fit points fails every query with eDegenerateGeometry.
// A consecutive fit point equal to its predecessor (within gTol.equalPoint) is
// not interpolated again and shares its predecessor's parameter. When all fit
// points coincide the curve is that single point: parameter 0 only, length 0,
// no derivatives (eDegenerateGeometry), no control points, not closed. Setters
// reject non-finite input with eInvalidInput and keep the previous data.
//
// Closing: setClosed(true) makes a periodic interpolation through the fit
// points, joined at the first fit point with a continuous tangent: the start
// tangent when given, else the direction of the parabola through the first
// fit point and its two neighbours. The end tangent applies at the last fit
// point. A last fit point equal to the first is the join itself (its
// parameter is the end of the period). Fewer than three distinct fit points
// cannot close: such a curve stays open.
class OdGeNurbCurve3d {
public:
  enum KnotParameterization { kChord = 0, kSqrtChord = 1, kUniform = 2 };

  OdGeNurbCurve3d();
  OdGeNurbCurve3d(const OdGeNurbCurve3d& other);
  OdGeNurbCurve3d& operator=(const OdGeNurbCurve3d& other);
  ~OdGeNurbCurve3d();

  // Replaces the fit data. degree is 1 or 3; fitTolerance is >= 0; a zero
  // tangent leaves that end free. Keeps the closed flag. eInvalidInput (and
  // nothing changed) on a bad degree, tolerance, parameterization or
  // non-finite input.
  OdResult setFitData(const OdGePoint3dArray& fitPoints, int degree, double fitTolerance,
                      const OdGeVector3d& startTangent, const OdGeVector3d& endTangent);
  OdResult setFitData(const OdGePoint3dArray& fitPoints, int degree, double fitTolerance,
                      const OdGeVector3d& startTangent, const OdGeVector3d& endTangent,
                      KnotParameterization knotParam);
  // As above with one tangent per fit point (zero = free there); the first and
  // last become the start and end tangents. eInvalidInput unless the sizes match.
  OdResult setFitData(const OdGePoint3dArray& fitPoints, const OdGeVector3dArray& tangents,
                      int degree, double fitTolerance, KnotParameterization knotParam = kChord);

  // The fit data as given. tangentsExist is true when a start or end tangent
  // is set. eNotApplicable when there are no fit points.
  OdResult getFitData(OdGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                      bool& tangentsExist, OdGeVector3d& startTangent, OdGeVector3d& endTangent) const;
  bool hasFitData() const;
  int numFitPoints() const;
  OdResult getFitPointAt(int index, OdGePoint3d& point) const;
  // Moves, inserts (before index; index == numFitPoints() appends) or removes
  // one fit point; an inserted point has no tangent of its own.
  OdResult setFitPointAt(int index, const OdGePoint3d& point);
  OdResult addFitPointAt(int index, const OdGePoint3d& point);
  OdResult deleteFitPointAt(int index);
  OdResult getFitTangents(OdGeVector3d& startTangent, OdGeVector3d& endTangent) const;
  OdResult setFitTangents(const OdGeVector3d& startTangent, const OdGeVector3d& endTangent);
  // The tangent at one fit point: the start/end tangent at the ends, the
  // per-point tangent (or zero) elsewhere.
  OdResult getFitTangentAt(int index, OdGeVector3d& tangent) const;
  double fitTolerance() const;
  OdResult setFitTolerance(double fitTolerance);
  KnotParameterization knotParameterization() const;

  // The degree of the built B-spline (lower than the fit degree for two or
  // three fit points); the fit degree while no curve can be built.
  int degree() const;

  OdResult getStartParam(double& param) const;
  OdResult getEndParam(double& param) const;
  // The parameter of fit point index (duplicates share their predecessor's).
  OdResult getFitPointParam(int index, double& param) const;

  // Evaluation. An open curve accepts parameters within [start, end]
  // (eOutOfRange beyond); a closed curve repeats with the period end - start.
  OdResult getPointAtParam(double param, OdGePoint3d& point) const;
  OdResult getFirstDeriv(double param, OdGeVector3d& deriv) const;
  OdResult getSecondDeriv(double param, OdGeVector3d& deriv) const;
  // The parameter of the point of the curve nearest to point; a fit point gets
  // its own parameter exactly. On a closed curve the join answers the start
  // parameter.
  OdResult getParamAtPoint(const OdGePoint3d& point, double& param) const;

  // Arc length from the start, within [start, end] / [0, length].
  OdResult getDistAtParam(double param, double& dist) const;
  OdResult getParamAtDist(double dist, double& param) const;
  OdResult length(double& len) const;

  // True for a built periodic curve, or when the open curve's ends coincide.
  bool isClosed() const;
  // Asks for a periodic curve (true) or an open one (false).
  OdResult setClosed(bool closed);
  OdResult makeClosed();

  // Reverses the fit points and the tangents: same shape, opposite direction.
  // A closed curve keeps its first fit point (the join) first.
  OdResult reverseCurve();
  OdResult transformBy(const OdGeMatrix3d& xform);
  OdResult getGeomExtents(OdGeExtents3d& extents) const;

  // The built B-spline as clamped control points and knots (a closed curve
  // is given in its clamped, non-periodic form): numKnots() ==
  // numControlPoints() + degree() + 1. Zero counts while no curve is built.
  int numControlPoints() const;
  OdResult getControlPointAt(int index, OdGePoint3d& point) const;
  int numKnots() const;
  OdResult knotAt(int index, double& knot) const;

private:
  struct Impl;
  std::unique_ptr<Impl> m_impl;
};

#endif
