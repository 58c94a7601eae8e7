#include "Ge/OdGeNurbCurve3d.h"

#include "Ge/OdGeArcLengthTable.h"
#include "Ge/OdGeCurveProjector.h"
#include "Ge/OdGeExtents3d.h"
#include "Ge/OdGeMatrix3d.h"

#include <BndLib_Add3dCurve.hxx>
#include <Bnd_Box.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Standard_Failure.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColStd_HArray1OfBoolean.hxx>
#include <TColStd_HArray1OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array1OfVec.hxx>
#include <TColgp_HArray1OfPnt.hxx>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <limits>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace {

// Arc-length error allowed, relative to the fit polygon's length (a lower
// bound of the curve's length): a hundred times below what callers rely on.
const double kArcTableRelTol = 1e-9;
// Parameters this close to the range (relative to its size) count as inside.
const double kParamRelTol = 1e-9;

bool isFinite(const OdGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }
bool isFinite(const OdGeVector3d& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

gp_Pnt toGp(const OdGePoint3d& p) { return gp_Pnt(p.x, p.y, p.z); }
gp_Vec toGp(const OdGeVector3d& v) { return gp_Vec(v.x, v.y, v.z); }
OdGePoint3d fromGp(const gp_Pnt& p) { return OdGePoint3d(p.X(), p.Y(), p.Z()); }
OdGeVector3d fromGp(const gp_Vec& v) { return OdGeVector3d(v.X(), v.Y(), v.Z()); }

// OCCT reports failures by exception; none may leave the curve's API.
template <class F>
OdResult guarded(F&& body)
{
  try {
    return body();
  } catch (const Standard_Failure&) {
    return eDegenerateGeometry;
  } catch (const std::bad_alloc&) {
    return eOutOfMemory;
  } catch (const std::exception&) {
    return eDegenerateGeometry;
  }
}

// A value computed on first use and then shared read-only: readers that find
// it built pay one atomic load; the first ones build it under the mutex.
// Copies share the computed value. reset() needs exclusive access.
template <class T>
class Lazy {
public:
  Lazy() = default;
  Lazy(const Lazy& other)
  {
    std::lock_guard<std::mutex> lock(other.m_mutex);
    m_owner = other.m_owner;
    m_ptr.store(m_owner.get(), std::memory_order_release);
  }
  Lazy& operator=(const Lazy&) = delete;

  template <class Make>
  const T& get(Make&& make) const
  {
    const T* value = m_ptr.load(std::memory_order_acquire);
    if (value)
      return *value;
    std::lock_guard<std::mutex> lock(m_mutex);
    value = m_ptr.load(std::memory_order_relaxed);
    if (!value) {
      m_owner = make();
      value = m_owner.get();
      m_ptr.store(value, std::memory_order_release);
    }
    return *value;
  }
  void reset()
  {
    m_ptr.store(nullptr, std::memory_order_relaxed);
    m_owner.reset();
  }

private:
  mutable std::atomic<const T*> m_ptr{nullptr};
  mutable std::shared_ptr<const T> m_owner;
  mutable std::mutex m_mutex;
};

// The curve built from one state of the fit data; immutable once made.
struct Built {
  OdResult status = eDegenerateGeometry;
  bool isPoint = false;
  OdGePoint3d point;                 // the whole curve when isPoint
  Handle(Geom_BSplineCurve) curve;   // as interpolated (periodic when closed)
  Handle(Geom_BSplineCurve) clamped; // the same shape in clamped form
  std::vector<double> fitParams;     // one per given fit point
  double start = 0.0;
  double end = 0.0;
  double polygonLength = 0.0;        // through the distinct fit points
  Lazy<OdGeArcLengthTable> arc;
  Lazy<OdGeCurveProjector> projector;

  bool periodic() const { return !curve.IsNull() && curve->IsPeriodic(); }
  double paramTol() const { return std::max(kParamRelTol * (end - start), kParamRelTol); }
};

struct FitData {
  OdGePoint3dArray points;
  OdGeVector3dArray pointTangents; // empty, or one per point (its ends are start and end)
  OdGeVector3d start;
  OdGeVector3d end;
  int degree = 3;
  double tolerance = 0.0;
  OdGeNurbCurve3d::KnotParameterization knotParam = OdGeNurbCurve3d::kChord;
  bool closed = false;

  // The tangent asked for at fit point i: the start and end tangents at the
  // ends, the per-point tangent elsewhere.
  OdGeVector3d tangentAt(unsigned i) const
  {
    if (i == 0)
      return start;
    if (i + 1 == points.size())
      return end;
    return pointTangents.isEmpty() ? OdGeVector3d() : pointTangents[i];
  }
};

OdResult checkFitInput(const OdGePoint3dArray& points, int degree, double fitTolerance, int knotParam)
{
  if (degree != 1 && degree != 3)
    return eInvalidInput;
  if (!std::isfinite(fitTolerance) || fitTolerance < 0.0)
    return eInvalidInput;
  if (knotParam < OdGeNurbCurve3d::kChord || knotParam > OdGeNurbCurve3d::kUniform)
    return eInvalidInput;
  for (const OdGePoint3d& p : points) {
    if (!isFinite(p))
      return eInvalidInput;
  }
  return eOk;
}

bool validIndex(int index, unsigned size) { return index >= 0 && static_cast<unsigned>(index) < size; }

// With per-point tangents the start and end tangents are those of the end points.
void syncEndTangents(FitData& d)
{
  if (d.pointTangents.isEmpty())
    return;
  d.start = d.pointTangents.first();
  d.end = d.pointTangents.last();
}

// ---------------------------------------------------------------------------
// Building the B-spline

// The fit points to interpolate: consecutive duplicates merged, each keeping
// the first tangent given among the points it stands for.
struct Distinct {
  std::vector<OdGePoint3d> points;
  std::vector<OdGeVector3d> tangents;
  std::vector<int> groupOf; // per given fit point, its distinct point
};

Distinct mergeDuplicates(const FitData& data)
{
  const double tol = OdGeContext::gTol.equalPoint();
  Distinct d;
  for (unsigned i = 0; i < data.points.size(); ++i) {
    const OdGePoint3d& p = data.points[i];
    if (d.points.empty() || !p.isEqualTo(d.points.back(), tol)) {
      d.points.push_back(p);
      d.tangents.push_back(OdGeVector3d());
    }
    OdGeVector3d& t = d.tangents.back();
    if (t.isZeroLength())
      t = data.tangentAt(i);
    d.groupOf.push_back(static_cast<int>(d.points.size()) - 1);
  }
  return d;
}

// A last distinct point equal to the first is the join of a closed curve:
// merge it into the first.
void foldJoin(Distinct& d)
{
  if (d.points.size() < 2 || !d.points.back().isEqualTo(d.points.front()))
    return;
  const int last = static_cast<int>(d.points.size()) - 1;
  if (d.tangents.front().isZeroLength())
    d.tangents.front() = d.tangents.back();
  d.points.pop_back();
  d.tangents.pop_back();
  for (int& g : d.groupOf) {
    if (g == last)
      g = -1; // marks the join at the end of the period
  }
}

double paramStep(const OdGePoint3d& a, const OdGePoint3d& b, OdGeNurbCurve3d::KnotParameterization kp)
{
  const double chord = a.distanceTo(b);
  switch (kp) {
  case OdGeNurbCurve3d::kSqrtChord:
    return std::sqrt(chord);
  case OdGeNurbCurve3d::kUniform:
    return 1.0;
  case OdGeNurbCurve3d::kChord:
    break;
  }
  return chord;
}

// Parameters of the distinct points from 0; a periodic curve gets one more,
// the end of the period back at the first point.
std::vector<double> fitParameters(const std::vector<OdGePoint3d>& pts, bool periodic,
                                  OdGeNurbCurve3d::KnotParameterization kp)
{
  std::vector<double> t(1, 0.0);
  for (size_t i = 1; i < pts.size(); ++i)
    t.push_back(t.back() + paramStep(pts[i - 1], pts[i], kp));
  if (periodic)
    t.push_back(t.back() + paramStep(pts.back(), pts.front(), kp));
  return t;
}

// The derivative constraints handed to the interpolation. The given tangents
// are directions; their length is set to the curve's speed expected there
// (chord over parameter step of the neighbouring intervals, 1 for chord
// parameters), so that a tangent bends the curve no more than a free point
// would. OCCT's own tangent scaling is not used: it measures the speed at the
// first fit points for every tangent, which blows up tangents further along.
void scaleTangents(const std::vector<OdGePoint3d>& pts, const std::vector<double>& t, bool periodic,
                   std::vector<OdGeVector3d>& tangents)
{
  const size_t n = pts.size();
  auto ratio = [&](size_t i) { // interval from point i to the next
    const size_t j = (i + 1) % n;
    return pts[i].distanceTo(pts[j]) / (t[i + 1] - t[i]);
  };
  for (size_t i = 0; i < n; ++i) {
    if (tangents[i].isZeroLength())
      continue;
    double sum = 0.0;
    int count = 0;
    if (i > 0 || periodic) {
      sum += ratio(i > 0 ? i - 1 : n - 1);
      ++count;
    }
    if (i + 1 < n || periodic) {
      sum += ratio(i);
      ++count;
    }
    tangents[i] = tangents[i].normal() * (sum / count);
  }
}

// Direction at the join of a periodic curve with no tangent there: that of the
// parabola through the join and its two neighbours. OCCT would estimate it
// from the points after the join only, so that the shape would depend on which
// fit point comes first and reversing would change it.
OdGeVector3d joinTangent(const std::vector<OdGePoint3d>& pts, const std::vector<double>& t)
{
  const size_t n = pts.size();
  const double h0 = t[n] - t[n - 1];
  const double h1 = t[1] - t[0];
  const OdGeVector3d d0 = (pts[0] - pts[n - 1]) / h0;
  const OdGeVector3d d1 = (pts[1] - pts[0]) / h1;
  return (d0 * h1 + d1 * h0) / (h0 + h1);
}

Handle(Geom_BSplineCurve) polyline(const std::vector<OdGePoint3d>& pts, const std::vector<double>& t,
                                   bool periodic)
{
  const int n = static_cast<int>(pts.size());
  const int nk = static_cast<int>(t.size());
  TColgp_Array1OfPnt poles(1, n);
  TColStd_Array1OfReal knots(1, nk);
  TColStd_Array1OfInteger mults(1, nk);
  for (int i = 0; i < n; ++i)
    poles.SetValue(i + 1, toGp(pts[i]));
  for (int i = 0; i < nk; ++i) {
    knots.SetValue(i + 1, t[i]);
    mults.SetValue(i + 1, 1);
  }
  if (!periodic) {
    mults.SetValue(1, 2);
    mults.SetValue(nk, 2);
  }
  return new Geom_BSplineCurve(poles, knots, mults, 1, periodic);
}

Handle(Geom_BSplineCurve) interpolate(const std::vector<OdGePoint3d>& pts, const std::vector<double>& t,
                                      std::vector<OdGeVector3d> tangents, bool periodic)
{
  const int n = static_cast<int>(pts.size());
  Handle(TColgp_HArray1OfPnt) poles = new TColgp_HArray1OfPnt(1, n);
  for (int i = 0; i < n; ++i)
    poles->SetValue(i + 1, toGp(pts[i]));
  Handle(TColStd_HArray1OfReal) params = new TColStd_HArray1OfReal(1, static_cast<int>(t.size()));
  for (size_t i = 0; i < t.size(); ++i)
    params->SetValue(static_cast<int>(i) + 1, t[i]);

  if (periodic && tangents[0].isZeroLength())
    tangents[0] = joinTangent(pts, t);
  // Two points with one tangent: the other end leaves along the chord rather
  // than stopping (OCCT would take a zero derivative there).
  if (!periodic && n == 2 && (!tangents[0].isZeroLength() || !tangents[1].isZeroLength())) {
    for (OdGeVector3d& tan : tangents) {
      if (tan.isZeroLength())
        tan = pts[1] - pts[0];
    }
  }
  scaleTangents(pts, t, periodic, tangents);

  GeomAPI_Interpolate interp(poles, params, periodic, OdGeContext::gTol.equalPoint());
  TColgp_Array1OfVec vecs(1, n);
  Handle(TColStd_HArray1OfBoolean) flags = new TColStd_HArray1OfBoolean(1, n);
  bool any = false;
  for (int i = 0; i < n; ++i) {
    const bool given = !tangents[i].isZeroLength();
    vecs.SetValue(i + 1, toGp(tangents[i]));
    flags->SetValue(i + 1, given);
    any = any || given;
  }
  if (any)
    interp.Load(vecs, flags, Standard_False);
  interp.Perform();
  if (!interp.IsDone())
    return Handle(Geom_BSplineCurve)();
  return interp.Curve();
}

double polygonLength(const std::vector<OdGePoint3d>& pts, bool periodic)
{
  double len = 0.0;
  for (size_t i = 1; i < pts.size(); ++i)
    len += pts[i - 1].distanceTo(pts[i]);
  if (periodic)
    len += pts.back().distanceTo(pts.front());
  return len;
}

void buildInto(const FitData& data, Built& b)
{
  if (data.points.isEmpty())
    return;
  for (unsigned i = 0; i < data.points.size(); ++i) {
    if (!isFinite(data.points[i]) || !isFinite(data.tangentAt(i))) {
      b.status = eInvalidInput;
      return;
    }
  }
  Distinct d = mergeDuplicates(data);
  if (d.points.size() == 1) {
    b.isPoint = true;
    b.point = d.points.front();
    b.fitParams.assign(data.points.size(), 0.0);
    b.status = eOk;
    return;
  }
  Distinct closedForm = d;
  foldJoin(closedForm);
  const bool periodic = data.closed && closedForm.points.size() >= 3;
  if (periodic)
    d = std::move(closedForm);

  const std::vector<double> t = fitParameters(d.points, periodic, data.knotParam);
  b.curve = data.degree == 1 ? polyline(d.points, t, periodic) : interpolate(d.points, t, d.tangents, periodic);
  if (b.curve.IsNull()) {
    b.status = eNoInterpolation;
    return;
  }
  b.clamped = b.curve;
  if (periodic) {
    b.clamped = Handle(Geom_BSplineCurve)::DownCast(b.curve->Copy());
    b.clamped->SetNotPeriodic();
    b.clamped->Segment(t.front(), t.back());
  }
  for (int g : d.groupOf)
    b.fitParams.push_back(g < 0 ? t.back() : t[g]);
  b.start = b.curve->FirstParameter();
  b.end = b.curve->LastParameter();
  b.polygonLength = polygonLength(d.points, periodic);
  b.status = eOk;
}

std::shared_ptr<const Built> build(const FitData& data)
{
  auto b = std::make_shared<Built>();
  const OdResult res = guarded([&] {
    buildInto(data, *b);
    return eOk;
  });
  if (res != eOk) {
    b = std::make_shared<Built>();
    b->status = res == eOutOfMemory ? eOutOfMemory : eNoInterpolation;
  }
  return b;
}

const OdGeArcLengthTable& arcTable(const Built& b)
{
  const double tol = kArcTableRelTol * std::max(b.polygonLength, std::numeric_limits<double>::min());
  return b.arc.get([&] { return std::make_shared<const OdGeArcLengthTable>(*b.curve, tol); });
}

const OdGeCurveProjector& projector(const Built& b)
{
  return b.projector.get([&] { return std::make_shared<const OdGeCurveProjector>(*b.curve); });
}

} // namespace

// ---------------------------------------------------------------------------

struct OdGeNurbCurve3d::Impl {
  FitData data;
  Lazy<Built> built;

  const Built& curve() const
  {
    return built.get([this] { return build(data); });
  }
  void changed() { built.reset(); }

  // The parameter made valid for evaluation: wrapped into one period for a
  // closed curve, snapped into the range for an open one.
  OdResult checkParam(const Built& b, double& u) const
  {
    if (!std::isfinite(u))
      return eInvalidInput;
    if (b.periodic())
      return eOk;
    if (u < b.start - b.paramTol() || u > b.end + b.paramTol())
      return eOutOfRange;
    u = std::min(std::max(u, b.start), b.end);
    return eOk;
  }
  // The same for a derivative, which a curve collapsed to a point lacks.
  OdResult checkDerivParam(const Built& b, double& u) const
  {
    if (b.status != eOk)
      return b.status;
    return b.isPoint ? eDegenerateGeometry : checkParam(b, u);
  }
};

OdGeNurbCurve3d::OdGeNurbCurve3d() : m_impl(new Impl) {}
OdGeNurbCurve3d::OdGeNurbCurve3d(const OdGeNurbCurve3d& other) : m_impl(new Impl(*other.m_impl)) {}
OdGeNurbCurve3d::~OdGeNurbCurve3d() = default;

OdGeNurbCurve3d& OdGeNurbCurve3d::operator=(const OdGeNurbCurve3d& other)
{
  if (this != &other)
    m_impl.reset(new Impl(*other.m_impl));
  return *this;
}

// --- fit data ---------------------------------------------------------------

OdResult OdGeNurbCurve3d::setFitData(const OdGePoint3dArray& fitPoints, int degree, double fitTolerance,
                                     const OdGeVector3d& startTangent, const OdGeVector3d& endTangent)
{
  return setFitData(fitPoints, degree, fitTolerance, startTangent, endTangent, kChord);
}

OdResult OdGeNurbCurve3d::setFitData(const OdGePoint3dArray& fitPoints, int degree, double fitTolerance,
                                     const OdGeVector3d& startTangent, const OdGeVector3d& endTangent,
                                     KnotParameterization knotParam)
{
  return guarded([&] {
    if (checkFitInput(fitPoints, degree, fitTolerance, knotParam) != eOk || !isFinite(startTangent) ||
        !isFinite(endTangent))
      return eInvalidInput;
    FitData next = m_impl->data;
    next.points = fitPoints;
    next.pointTangents.clear();
    next.start = startTangent;
    next.end = endTangent;
    next.degree = degree;
    next.tolerance = fitTolerance;
    next.knotParam = knotParam;
    m_impl->data = std::move(next);
    m_impl->changed();
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::setFitData(const OdGePoint3dArray& fitPoints, const OdGeVector3dArray& tangents,
                                     int degree, double fitTolerance, KnotParameterization knotParam)
{
  return guarded([&] {
    if (tangents.size() != fitPoints.size() || checkFitInput(fitPoints, degree, fitTolerance, knotParam) != eOk)
      return eInvalidInput;
    for (const OdGeVector3d& t : tangents) {
      if (!isFinite(t))
        return eInvalidInput;
    }
    FitData next = m_impl->data;
    next.points = fitPoints;
    next.pointTangents = tangents;
    next.start = next.end = OdGeVector3d();
    syncEndTangents(next);
    next.degree = degree;
    next.tolerance = fitTolerance;
    next.knotParam = knotParam;
    m_impl->data = std::move(next);
    m_impl->changed();
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::getFitData(OdGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                                     bool& tangentsExist, OdGeVector3d& startTangent,
                                     OdGeVector3d& endTangent) const
{
  return guarded([&] {
    const FitData& d = m_impl->data;
    if (d.points.isEmpty())
      return eNotApplicable;
    fitPoints = d.points;
    degree = d.degree;
    fitTolerance = d.tolerance;
    tangentsExist = !d.start.isZeroLength() || !d.end.isZeroLength();
    startTangent = d.start;
    endTangent = d.end;
    return eOk;
  });
}

bool OdGeNurbCurve3d::hasFitData() const { return !m_impl->data.points.isEmpty(); }

int OdGeNurbCurve3d::numFitPoints() const { return static_cast<int>(m_impl->data.points.size()); }

OdResult OdGeNurbCurve3d::getFitPointAt(int index, OdGePoint3d& point) const
{
  if (!validIndex(index, m_impl->data.points.size()))
    return eInvalidIndex;
  point = m_impl->data.points[index];
  return eOk;
}

OdResult OdGeNurbCurve3d::setFitPointAt(int index, const OdGePoint3d& point)
{
  if (!validIndex(index, m_impl->data.points.size()))
    return eInvalidIndex;
  if (!isFinite(point))
    return eInvalidInput;
  m_impl->data.points[index] = point;
  m_impl->changed();
  return eOk;
}

OdResult OdGeNurbCurve3d::addFitPointAt(int index, const OdGePoint3d& point)
{
  return guarded([&] {
    FitData& d = m_impl->data;
    if (index < 0 || static_cast<unsigned>(index) > d.points.size())
      return eInvalidIndex;
    if (!isFinite(point))
      return eInvalidInput;
    FitData next = d;
    next.points.insertAt(index, point);
    if (!next.pointTangents.isEmpty())
      next.pointTangents.insertAt(index, OdGeVector3d());
    syncEndTangents(next);
    d = std::move(next);
    m_impl->changed();
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::deleteFitPointAt(int index)
{
  FitData& d = m_impl->data;
  if (!validIndex(index, d.points.size()))
    return eInvalidIndex;
  d.points.removeAt(index);
  if (!d.pointTangents.isEmpty())
    d.pointTangents.removeAt(index);
  syncEndTangents(d);
  m_impl->changed();
  return eOk;
}

OdResult OdGeNurbCurve3d::getFitTangents(OdGeVector3d& startTangent, OdGeVector3d& endTangent) const
{
  if (m_impl->data.points.isEmpty())
    return eNotApplicable;
  startTangent = m_impl->data.start;
  endTangent = m_impl->data.end;
  return eOk;
}

OdResult OdGeNurbCurve3d::setFitTangents(const OdGeVector3d& startTangent, const OdGeVector3d& endTangent)
{
  if (!isFinite(startTangent) || !isFinite(endTangent))
    return eInvalidInput;
  FitData& d = m_impl->data;
  d.start = startTangent;
  d.end = endTangent;
  if (!d.pointTangents.isEmpty()) {
    d.pointTangents[0] = startTangent;
    d.pointTangents[d.pointTangents.size() - 1] = endTangent;
    syncEndTangents(d);
  }
  m_impl->changed();
  return eOk;
}

OdResult OdGeNurbCurve3d::getFitTangentAt(int index, OdGeVector3d& tangent) const
{
  if (!validIndex(index, m_impl->data.points.size()))
    return eInvalidIndex;
  tangent = m_impl->data.tangentAt(static_cast<unsigned>(index));
  return eOk;
}

double OdGeNurbCurve3d::fitTolerance() const { return m_impl->data.tolerance; }

OdResult OdGeNurbCurve3d::setFitTolerance(double fitTolerance)
{
  if (!std::isfinite(fitTolerance) || fitTolerance < 0.0)
    return eInvalidInput;
  m_impl->data.tolerance = fitTolerance; // does not change the interpolated shape
  return eOk;
}

OdGeNurbCurve3d::KnotParameterization OdGeNurbCurve3d::knotParameterization() const
{
  return m_impl->data.knotParam;
}

int OdGeNurbCurve3d::degree() const
{
  int result = m_impl->data.degree;
  guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status == eOk && !b.isPoint)
      result = b.curve->Degree();
    return eOk;
  });
  return result;
}

// --- parameters and evaluation ----------------------------------------------

OdResult OdGeNurbCurve3d::getStartParam(double& param) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status == eOk)
      param = b.start;
    return b.status;
  });
}

OdResult OdGeNurbCurve3d::getEndParam(double& param) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status == eOk)
      param = b.end;
    return b.status;
  });
}

OdResult OdGeNurbCurve3d::getFitPointParam(int index, double& param) const
{
  return guarded([&] {
    if (!validIndex(index, m_impl->data.points.size()))
      return eInvalidIndex;
    const Built& b = m_impl->curve();
    if (b.status == eOk)
      param = b.fitParams[index];
    return b.status;
  });
}

OdResult OdGeNurbCurve3d::getPointAtParam(double param, OdGePoint3d& point) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    OdResult res = b.status;
    if (res == eOk)
      res = m_impl->checkParam(b, param);
    if (res != eOk)
      return res;
    if (b.isPoint) {
      point = b.point;
      return eOk;
    }
    gp_Pnt p;
    b.curve->D0(param, p);
    point = fromGp(p);
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::getFirstDeriv(double param, OdGeVector3d& deriv) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    const OdResult res = m_impl->checkDerivParam(b, param);
    if (res != eOk)
      return res;
    gp_Pnt p;
    gp_Vec d1;
    b.curve->D1(param, p, d1);
    deriv = fromGp(d1);
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::getSecondDeriv(double param, OdGeVector3d& deriv) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    const OdResult res = m_impl->checkDerivParam(b, param);
    if (res != eOk)
      return res;
    gp_Pnt p;
    gp_Vec d1;
    gp_Vec d2;
    b.curve->D2(param, p, d1, d2);
    deriv = fromGp(d2);
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::getParamAtPoint(const OdGePoint3d& point, double& param) const
{
  return guarded([&] {
    if (!isFinite(point))
      return eInvalidInput;
    const Built& b = m_impl->curve();
    if (b.status != eOk)
      return b.status;
    if (b.isPoint) {
      param = 0.0;
      return eOk;
    }
    const OdGePoint3dArray& fit = m_impl->data.points;
    for (unsigned i = 0; i < fit.size(); ++i) {
      if (fit[i].isEqualTo(point)) {
        param = b.fitParams[i];
        return eOk;
      }
    }
    double u = projector(b).nearestParam(point);
    if (b.periodic() && u >= b.end - b.paramTol())
      u = b.start;
    param = u;
    return eOk;
  });
}

// --- arc length ---------------------------------------------------------------

OdResult OdGeNurbCurve3d::getDistAtParam(double param, double& dist) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status != eOk)
      return b.status;
    if (!std::isfinite(param))
      return eInvalidInput;
    if (param < b.start - b.paramTol() || param > b.end + b.paramTol())
      return eOutOfRange;
    if (b.isPoint) {
      dist = 0.0;
      return eOk;
    }
    dist = arcTable(b).distAt(param);
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::getParamAtDist(double dist, double& param) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status != eOk)
      return b.status;
    if (!std::isfinite(dist))
      return eInvalidInput;
    const double len = b.isPoint ? 0.0 : arcTable(b).length();
    const double tol = kParamRelTol * std::max(len, 1.0);
    if (dist < -tol || dist > len + tol)
      return eOutOfRange;
    param = b.isPoint ? 0.0 : arcTable(b).paramAt(dist);
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::length(double& len) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status == eOk)
      len = b.isPoint ? 0.0 : arcTable(b).length();
    return b.status;
  });
}

// --- closing, reversing, transforming ---------------------------------------

bool OdGeNurbCurve3d::isClosed() const
{
  bool closed = false;
  guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status != eOk || b.isPoint)
      return b.status;
    closed = b.periodic() || b.curve->Value(b.start).Distance(b.curve->Value(b.end)) <= OdGeContext::gTol.equalPoint();
    return eOk;
  });
  return closed;
}

OdResult OdGeNurbCurve3d::setClosed(bool closed)
{
  if (m_impl->data.closed != closed) {
    m_impl->data.closed = closed;
    m_impl->changed();
  }
  return eOk;
}

OdResult OdGeNurbCurve3d::makeClosed() { return setClosed(true); }

OdResult OdGeNurbCurve3d::reverseCurve()
{
  return guarded([&] {
    FitData& d = m_impl->data;
    const unsigned n = d.points.size();
    if (n == 0)
      return eOk;
    // A periodic curve keeps its join where it is (OCCT's periodic shape
    // depends on it): the first fit point stays first, the others reverse.
    // With a last fit point on the join, plain reversal already does that.
    const Built& b = m_impl->curve();
    const bool keepFirst = b.status == eOk && b.periodic() && !d.points.last().isEqualTo(d.points.first());
    OdGePoint3dArray points(n);
    OdGeVector3dArray tangents(n);
    for (unsigned i = 0; i < n; ++i) {
      const unsigned from = keepFirst ? (n - i) % n : n - 1 - i;
      points[i] = d.points[from];
      tangents[i] = -d.tangentAt(from);
    }
    bool interior = false;
    for (unsigned i = 1; i + 1 < n; ++i)
      interior = interior || !tangents[i].isZeroLength();
    FitData next = d;
    next.points = points;
    next.start = tangents.first();
    next.end = tangents.last();
    next.pointTangents.clear();
    if (interior || !d.pointTangents.isEmpty())
      next.pointTangents = tangents;
    d = std::move(next);
    m_impl->changed();
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::transformBy(const OdGeMatrix3d& xform)
{
  return guarded([&] {
    FitData next = m_impl->data;
    for (OdGePoint3d& p : next.points) {
      p.transformBy(xform);
      if (!isFinite(p))
        return eInvalidInput;
    }
    for (OdGeVector3d* v : {&next.start, &next.end})
      v->transformBy(xform);
    for (OdGeVector3d& v : next.pointTangents)
      v.transformBy(xform);
    syncEndTangents(next);
    if (!isFinite(next.start) || !isFinite(next.end))
      return eInvalidInput;
    for (const OdGeVector3d& v : next.pointTangents) {
      if (!isFinite(v))
        return eInvalidInput;
    }
    m_impl->data = std::move(next);
    m_impl->changed();
    return eOk;
  });
}

OdResult OdGeNurbCurve3d::getGeomExtents(OdGeExtents3d& extents) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status != eOk)
      return b.status;
    if (b.isPoint) {
      extents.set(b.point, b.point);
      return eOk;
    }
    Bnd_Box box;
    BndLib_Add3dCurve::AddOptimal(GeomAdaptor_Curve(b.curve), 0.0, box);
    if (box.IsVoid())
      return eDegenerateGeometry;
    double x0, y0, z0, x1, y1, z1;
    box.Get(x0, y0, z0, x1, y1, z1);
    extents.set(OdGePoint3d(x0, y0, z0), OdGePoint3d(x1, y1, z1));
    return eOk;
  });
}

// --- control points -----------------------------------------------------------

int OdGeNurbCurve3d::numControlPoints() const
{
  int count = 0;
  guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status == eOk && !b.isPoint)
      count = b.clamped->NbPoles();
    return eOk;
  });
  return count;
}

OdResult OdGeNurbCurve3d::getControlPointAt(int index, OdGePoint3d& point) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status != eOk)
      return b.status;
    if (b.isPoint || !validIndex(index, static_cast<unsigned>(b.clamped->NbPoles())))
      return eInvalidIndex;
    point = fromGp(b.clamped->Pole(index + 1));
    return eOk;
  });
}

int OdGeNurbCurve3d::numKnots() const
{
  int count = 0;
  guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status == eOk && !b.isPoint)
      count = b.clamped->KnotSequence().Length();
    return eOk;
  });
  return count;
}

OdResult OdGeNurbCurve3d::knotAt(int index, double& knot) const
{
  return guarded([&] {
    const Built& b = m_impl->curve();
    if (b.status != eOk)
      return b.status;
    if (b.isPoint)
      return eInvalidIndex;
    const TColStd_Array1OfReal& seq = b.clamped->KnotSequence();
    if (!validIndex(index, static_cast<unsigned>(seq.Length())))
      return eInvalidIndex;
    knot = seq.Value(seq.Lower() + index);
    return eOk;
  });
}
