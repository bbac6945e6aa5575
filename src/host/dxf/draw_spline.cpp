#include "host/dxf/draw_spline.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fx::dxf {
namespace {

// The highest degree evaluated; files use 1 to 3, rarely up to 11.
constexpr size_t kMaxDegree = 31;
// Adaptive sampling halves a parameter interval at most this often.
constexpr int kMaxSampleDepth = 24;
// The most points one sampling returns, whatever the deviation asked for.
constexpr size_t kMaxSamplePoints = 200000;
// Golden-section steps when refining an extreme: 0.618^90 < 1e-18, below the
// rounding of any parameter.
constexpr int kRefineSteps = 90;

struct Homogeneous {
  double x, y, z, w;
};

double Coordinate(const AcGePoint3d& p, int axis) { return axis == 0 ? p.x : axis == 1 ? p.y : p.z; }

double DistanceToSegment(const AcGePoint3d& p, const AcGePoint3d& a, const AcGePoint3d& b) {
  AcGeVector3d ab = b - a;
  double length2 = ab.dotProduct(ab);
  if (length2 == 0) return p.distanceTo(a);
  double s = std::clamp((p - a).dotProduct(ab) / length2, 0.0, 1.0);
  return p.distanceTo(a + ab * s);
}

}  // namespace

SplineCurve::SplineCurve(int degree, std::vector<double> knots, std::vector<AcGePoint3d> points,
                         std::vector<double> weights)
    : degree_(degree), knots_(std::move(knots)), points_(std::move(points)),
      weights_(std::move(weights)) {
  if (weights_.size() != points_.size() ||
      std::all_of(weights_.begin(), weights_.end(), [](double w) { return w == 1; }))
    weights_.clear();
  size_t n = points_.size();
  size_t p = degree_ > 0 ? static_cast<size_t>(degree_) : 0;
  if (p == 0 || p > kMaxDegree || n <= p) return;
  if (knots_.size() == n + 1) Unwrap();
  n = points_.size();
  if (knots_.size() != n + p + 1) return;
  if (!std::is_sorted(knots_.begin(), knots_.end())) return;
  if (!(knots_[p] < knots_[n])) return;
  if (std::any_of(weights_.begin(), weights_.end(), [](double w) { return !(w > 0); })) return;
  valid_ = true;
}

void SplineCurve::Unwrap() {
  // One period of knots u0..un for n control points: the closed curve of
  // n spans uses the control points cyclically. Extend the knots by p on each
  // side (shifted by the period) and repeat the first p control points.
  size_t n = points_.size();
  size_t p = static_cast<size_t>(degree_);
  double period = knots_[n] - knots_[0];
  std::vector<double> knots(n + 2 * p + 1);
  for (size_t j = 0; j < knots.size(); ++j) {
    long k = static_cast<long>(j) - static_cast<long>(p);
    long ln = static_cast<long>(n);
    if (k < 0) knots[j] = knots_[static_cast<size_t>(k + ln)] - period;
    else if (k > ln) knots[j] = knots_[static_cast<size_t>(k - ln)] + period;
    else knots[j] = knots_[static_cast<size_t>(k)];
  }
  knots_ = std::move(knots);
  for (size_t j = 0; j < p; ++j) {
    points_.push_back(points_[j]);
    if (!weights_.empty()) weights_.push_back(weights_[j]);
  }
}

double SplineCurve::start() const { return valid_ ? knots_[static_cast<size_t>(degree_)] : 0; }
double SplineCurve::end() const { return valid_ ? knots_[points_.size()] : 1; }

AcGePoint3d SplineCurve::Evaluate(double t) const {
  if (!valid_) return points_.empty() ? AcGePoint3d() : points_.front();
  const size_t p = static_cast<size_t>(degree_);
  const size_t n = points_.size();
  t = std::clamp(t, start(), end());
  // The span [knots[k], knots[k+1]) holding t; the curve's end belongs to
  // the last non-empty span.
  size_t k = static_cast<size_t>(std::upper_bound(knots_.begin(), knots_.end(), t) - knots_.begin());
  k = std::clamp(k == 0 ? size_t{0} : k - 1, p, n - 1);
  while (k > p && knots_[k] == knots_[k + 1]) --k;
  // De Boor's algorithm in homogeneous coordinates.
  Homogeneous d[kMaxDegree + 1];
  for (size_t j = 0; j <= p; ++j) {
    const AcGePoint3d& q = points_[j + k - p];
    double w = weights_.empty() ? 1 : weights_[j + k - p];
    d[j] = {q.x * w, q.y * w, q.z * w, w};
  }
  for (size_t r = 1; r <= p; ++r) {
    for (size_t j = p; j >= r; --j) {
      double left = knots_[j + k - p];
      double span = knots_[j + 1 + k - r] - left;
      double a = span > 0 ? (t - left) / span : 0;
      d[j] = {(1 - a) * d[j - 1].x + a * d[j].x, (1 - a) * d[j - 1].y + a * d[j].y,
              (1 - a) * d[j - 1].z + a * d[j].z, (1 - a) * d[j - 1].w + a * d[j].w};
    }
  }
  return {d[p].x / d[p].w, d[p].y / d[p].w, d[p].z / d[p].w};
}

std::vector<AcGePoint3d> SplineCurve::Sample(double max_deviation) const {
  if (!valid_) return points_;
  if (!(max_deviation > 0)) {
    // No usable deviation: a millionth of the control polygon's size.
    AcDbExtents hull;
    for (const AcGePoint3d& q : points_) hull.addPoint(q);
    max_deviation = std::max(hull.minPoint().distanceTo(hull.maxPoint()) * 1e-6, 1e-300);
  }
  const size_t p = static_cast<size_t>(degree_);
  std::vector<AcGePoint3d> out{Evaluate(start())};
  struct Piece {
    double a, b;
    int depth;
  };
  std::vector<Piece> stack;
  for (size_t k = points_.size(); k-- > p;) {
    // Spans are pushed last to first so that they pop in order; each starts
    // as 2p pieces so that a span's inflections are not jumped over.
    double a = knots_[k], b = knots_[k + 1];
    if (!(a < b)) continue;
    size_t pieces = 2 * p;
    for (size_t i = pieces; i-- > 0;)
      stack.push_back({a + (b - a) * i / pieces, a + (b - a) * (i + 1) / pieces, 0});
  }
  while (!stack.empty() && out.size() < kMaxSamplePoints) {
    Piece piece = stack.back();
    stack.pop_back();
    AcGePoint3d pa = Evaluate(piece.a), pb = Evaluate(piece.b);
    bool flat = piece.depth >= kMaxSampleDepth;
    for (int q = 1; q <= 3 && !flat; ++q) {
      double t = piece.a + (piece.b - piece.a) * q / 4;
      if (DistanceToSegment(Evaluate(t), pa, pb) > max_deviation) break;
      if (q == 3) flat = true;
    }
    if (flat) {
      out.push_back(pb);
      continue;
    }
    double mid = (piece.a + piece.b) / 2;
    stack.push_back({mid, piece.b, piece.depth + 1});
    stack.push_back({piece.a, mid, piece.depth + 1});
  }
  return out;
}

void SplineCurve::AddExtents(AcDbExtents& box) const {
  if (!valid_) {
    for (const AcGePoint3d& q : points_) box.addPoint(q);
    return;
  }
  const size_t p = static_cast<size_t>(degree_);
  const size_t samples = 4 * (p + 1);
  std::vector<double> ts(samples + 1);
  std::vector<AcGePoint3d> ps(samples + 1);
  for (size_t k = p; k < points_.size(); ++k) {
    double a = knots_[k], b = knots_[k + 1];
    if (!(a < b)) continue;
    for (size_t i = 0; i <= samples; ++i) {
      ts[i] = a + (b - a) * i / samples;
      ps[i] = Evaluate(ts[i]);
      box.addPoint(ps[i]);
    }
    // A sample that beats its neighbours brackets an extreme of that
    // coordinate between them (an end sample: between it and its one
    // neighbour); golden-section search finds it.
    for (int axis = 0; axis < 3; ++axis) {
      for (size_t i = 0; i <= samples; ++i) {
        double here = Coordinate(ps[i], axis);
        double before = i > 0 ? Coordinate(ps[i - 1], axis) : here;
        double after = i < samples ? Coordinate(ps[i + 1], axis) : here;
        double sign = 0;
        if (here >= before && here >= after && (here > before || here > after)) sign = 1;
        else if (here <= before && here <= after && (here < before || here < after)) sign = -1;
        if (sign == 0) continue;
        double lo = ts[i > 0 ? i - 1 : 0], hi = ts[i < samples ? i + 1 : samples];
        constexpr double kGolden = 0.6180339887498949;
        double x1 = hi - kGolden * (hi - lo), x2 = lo + kGolden * (hi - lo);
        double f1 = sign * Coordinate(Evaluate(x1), axis), f2 = sign * Coordinate(Evaluate(x2), axis);
        for (int step = 0; step < kRefineSteps && hi - lo > 0; ++step) {
          if (f1 > f2) {
            hi = x2, x2 = x1, f2 = f1;
            x1 = hi - kGolden * (hi - lo);
            f1 = sign * Coordinate(Evaluate(x1), axis);
          } else {
            lo = x1, x1 = x2, f1 = f2;
            x2 = lo + kGolden * (hi - lo);
            f2 = sign * Coordinate(Evaluate(x2), axis);
          }
        }
        box.addPoint(Evaluate((lo + hi) / 2));
      }
    }
  }
}

SplineCurve SplineCurve::Transformed(const AcGeMatrix3d& transform) const {
  SplineCurve out = *this;
  for (AcGePoint3d& q : out.points_) q = transform * q;
  return out;
}

}  // namespace fx::dxf
