#ifndef OD_GE_TOL_H
#define OD_GE_TOL_H

// Tolerances for geometric comparisons: equalPoint bounds the distance at which
// two points count as the same, equalVector the difference (or length) at which
// two vectors count as the same (or as zero).
class OdGeTol {
public:
  constexpr OdGeTol(double t = 1e-10) : m_pointTol(t), m_vectorTol(t) {}
  constexpr OdGeTol(double pointTol, double vectorTol) : m_pointTol(pointTol), m_vectorTol(vectorTol) {}

  constexpr double equalPoint() const { return m_pointTol; }
  constexpr double equalVector() const { return m_vectorTol; }
  void setEqualPoint(double tol) { m_pointTol = tol; }
  void setEqualVector(double tol) { m_vectorTol = tol; }

private:
  double m_pointTol;
  double m_vectorTol;
};

// Process-wide tolerances used wherever a caller gives none. gTol is 1e-10 for
// points and vectors; gZeroTol is as tight as doubles allow, for comparisons
// meant to be exact. Both may be changed by the application, which affects
// every comparison made afterwards (do it at start-up, not during evaluation).
struct OdGeContext {
  static OdGeTol gTol;
  static OdGeTol gZeroTol;
};

#endif
