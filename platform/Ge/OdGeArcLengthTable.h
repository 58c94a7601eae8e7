#ifndef OD_GE_ARC_LENGTH_TABLE_H
#define OD_GE_ARC_LENGTH_TABLE_H

#include <cstddef>
#include <vector>

class Geom_BSplineCurve;

// Arc length along a B-spline, tabulated once so that a query costs a binary
// search and a polynomial. Between two nodes the length is the quintic Hermite
// interpolant of the lengths, speeds and speed derivatives at the nodes; nodes
// are added until that interpolation is within the tolerance given. An
// internal helper of OdGeNurbCurve3d.
class OdGeArcLengthTable {
public:
  // Tabulates the whole parameter range of curve, to within tolerance (an
  // absolute length). OCCT exceptions pass through.
  OdGeArcLengthTable(const Geom_BSplineCurve& curve, double tolerance);

  double length() const { return m_s.back(); }
  // Arc length from the start of the range to u (clamped into the range).
  double distAt(double u) const;
  // The parameter at arc length dist from the start (clamped to [0, length()]).
  double paramAt(double dist) const;

  // The speed |C'| and its derivative at one end of an interval, taken from
  // the polynomial of the interval's own knot span.
  struct Jet {
    double v;
    double w;
  };

private:
  std::vector<double> m_u; // node parameters, increasing
  std::vector<double> m_s; // arc length from the start at each node
  std::vector<Jet> m_a;    // per interval: at its start
  std::vector<Jet> m_b;    // per interval: at its end

  std::size_t intervalOf(const std::vector<double>& keys, double key) const;
  friend class OdGeArcLengthTableBuilder;
};

#endif
