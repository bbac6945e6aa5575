// B-spline curves (rational or not) as SPLINE entities and hatch edges store
// them: evaluation, sampling within a chord deviation, and extents.
#ifndef FLOORXPORT_HOST_DXF_DRAW_SPLINE_H_
#define FLOORXPORT_HOST_DXF_DRAW_SPLINE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <vector>

#include "host/geometry.h"

namespace fx::dxf {

class SplineCurve {
 public:
  // `weights` is empty for a non-rational curve, else one per control point.
  // A periodic curve may come with one knot more than control points (one
  // period of knots); it is unwrapped into the ordinary form here.
  SplineCurve(int degree, std::vector<double> knots, std::vector<AcGePoint3d> points,
              std::vector<double> weights);

  // Whether the data make a curve: degree 1 to 31, enough control points,
  // n + degree + 1 non-decreasing knots, positive weights. An invalid curve
  // is drawn and measured as its control polygon.
  bool valid() const { return valid_; }
  const std::vector<AcGePoint3d>& points() const { return points_; }
  double start() const;  // the parameter range of a valid curve
  double end() const;

  AcGePoint3d Evaluate(double t) const;
  // Points along the curve from start to end whose chords stay within
  // `max_deviation` of it (tested at the middle and quarters of each chord).
  std::vector<AcGePoint3d> Sample(double max_deviation) const;
  // Adds the curve's box: per knot span the extremes of each coordinate,
  // bracketed by sampling and refined to rounding precision.
  void AddExtents(AcDbExtents& box) const;
  // The same curve mapped by an affine transform (control points move,
  // weights stay).
  SplineCurve Transformed(const AcGeMatrix3d& transform) const;

 private:
  void Unwrap();

  int degree_;
  std::vector<double> knots_;
  std::vector<AcGePoint3d> points_;
  std::vector<double> weights_;
  bool valid_ = false;
};

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_SPLINE_H_
