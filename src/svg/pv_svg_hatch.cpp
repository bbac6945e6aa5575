// Hatches. The boundary loops become one path (exact arcs unless arcs are
// approximated); a solid hatch is that path filled by the even-odd rule. A
// pattern hatch puts the path into a clip path "HP%u" under <defs> and
// draws its line families as one path in a group clipped by it. The lines
// are also cut to the loops (flattened within deviation()) by the even-odd
// rule, so the file holds only the dashes that show; the clip path trims
// what flattening leaves at curved edges.
//
// A loop is invalid, and the hatch is skipped with "Invalid hatch loop!",
// when it has no edges or fewer than two vertices, when a polyline loop's
// bulges do not match its vertices, when a coordinate is not finite, when
// an arc has no positive radius, or a spline edge fewer than two points.
// Gaps between consecutive edges are bridged by straight lines.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/db_entities.h"
#include "host/editor.h"
#include "svg/pv_svg_world_draw.h"
#include "svg/svg_number.h"

using fx::svg::Box2;
using fx::svg::EllipticArc;
using fx::svg::Point2;
using fx::svg::ResolvedStyle;

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr int kOuterLoop = 1;
constexpr int kStyleIgnore = 2;
// The most pattern lines and dashes written for one hatch; a denser
// pattern is written as its boundary outline instead.
constexpr size_t kMaxPatternLines = 20000;
constexpr size_t kMaxPatternDashes = 200000;
// Points of a loop closer than this fraction of the flattening deviation
// are one point: the end of an edge and the start of the next.
constexpr double kJoinFraction = 1e-3;

bool Finite(const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

// The counter-clockwise sweep from `start` to `end` in (0, 2pi]: equal
// angles are a full turn.
double CcwSweep(double start, double end) {
  double sweep = std::fmod(end - start, kTwoPi);
  if (sweep <= 0) sweep += kTwoPi;
  return sweep;
}

// A curve in the hatch plane, C + U cos t + V sin t.
struct PlaneArc {
  AcGePoint2d center;
  AcGeVector2d u, v;
  double start = 0, sweep = 0;
  AcGePoint2d At(double t) const { return center + u * std::cos(t) + v * std::sin(t); }
};

// Maps plane points to output coordinates and records the flattened loop.
class LoopBuilder {
 public:
  LoopBuilder(const AcGeMatrix3d& to_output, fx::svg::PathWriter& path, double plane_deviation,
              bool approximate, double deviation)
      : to_output_(to_output), path_(path), plane_deviation_(plane_deviation),
        approximate_(approximate), deviation_(deviation) {}

  Point2 Out(const AcGePoint2d& p) const {
    const AcGePoint3d q = to_output_ * AcGePoint3d(p.x, p.y, 0);
    return {q.x, q.y};
  }
  Point2 OutVector(const AcGeVector2d& v) const {
    const AcGeVector3d w = to_output_ * AcGeVector3d(v.x, v.y, 0);
    return {w.x, w.y};
  }

  // Continues the loop to `p`, starting it there when it is empty. The
  // line to it is written when the loop goes on from it: the last one,
  // back to the start, is the "Z" of Close.
  void To(const AcGePoint2d& p) {
    if (plane_.empty()) {
      path_.MoveTo(Out(p));
    } else if (p.distanceTo(plane_.back()) <= plane_deviation_ * kJoinFraction) {
      return;
    } else {
      Flush();
      pending_ = true;
    }
    Add(p);
  }

  void Arc(const PlaneArc& arc) {
    To(arc.At(arc.start));
    Flush();
    EllipticArc out{Out(arc.center), OutVector(arc.u), OutVector(arc.v), arc.start, arc.sweep};
    path_.Arc(out, false, approximate_, deviation_);
    box_.Merge(out.Bounds());
    // The flattened loop, for cutting the pattern lines.
    const double radius = std::max(arc.u.length(), arc.v.length());
    double step = std::numbers::pi / 2;
    if (plane_deviation_ > 0 && plane_deviation_ < radius) step = std::min(step, 2 * std::acos(1 - plane_deviation_ / radius));
    const int count = std::clamp(static_cast<int>(std::ceil(std::abs(arc.sweep) / step)), 1, 4096);
    for (int i = 1; i <= count; ++i) plane_.push_back(arc.At(arc.start + arc.sweep * i / count));
  }

  void Close() {
    if (plane_.size() > 1 && plane_.front().distanceTo(plane_.back()) <= plane_deviation_ * kJoinFraction) {
      plane_.pop_back();
      pending_ = false;
    }
    Flush();
    path_.Close();
  }

  std::vector<AcGePoint2d>& plane() { return plane_; }
  const Box2& box() const { return box_; }

 private:
  void Add(const AcGePoint2d& p) {
    plane_.push_back(p);
    box_.Add(Out(p));
  }
  // Writes the line to the last point when it is still pending.
  void Flush() {
    if (pending_) path_.LineTo(Out(plane_.back()));
    pending_ = false;
  }

  const AcGeMatrix3d& to_output_;
  fx::svg::PathWriter& path_;
  double plane_deviation_;
  bool approximate_;
  double deviation_;
  std::vector<AcGePoint2d> plane_;
  Box2 box_;
  bool pending_ = false;
};

PlaneArc BulgeArc(const AcGePoint2d& a, const AcGePoint2d& b, double bulge) {
  const AcGeVector2d chord = b - a;
  const AcGeVector2d left(-chord.y, chord.x);
  PlaneArc arc;
  arc.center = AcGePoint2d((a.x + b.x) / 2, (a.y + b.y) / 2) + left * ((1 - bulge * bulge) / (4 * bulge));
  const double radius = arc.center.distanceTo(a);
  arc.u = {radius, 0};
  arc.v = {0, radius};
  arc.start = std::atan2(a.y - arc.center.y, a.x - arc.center.x);
  arc.sweep = 4 * std::atan(bulge);
  return arc;
}

// An arc edge from its start towards its end, whichever way it runs.
bool EdgeArc(const AcDbHatchEdge& edge, PlaneArc& arc) {
  if (!Finite(edge.center) || !std::isfinite(edge.start_angle) || !std::isfinite(edge.end_angle)) return false;
  arc.center = edge.center;
  if (edge.kind == AcDbHatchEdge::kCircArc) {
    if (!(edge.radius > 0) || !std::isfinite(edge.radius)) return false;
    arc.u = {edge.radius, 0};
    arc.v = {0, edge.radius};
  } else {
    if (!(edge.major_axis.length() > 0) || !(edge.minor_ratio > 0) || !std::isfinite(edge.minor_ratio)) return false;
    arc.u = edge.major_axis;
    arc.v = AcGeVector2d(-edge.major_axis.y, edge.major_axis.x) * edge.minor_ratio;
  }
  arc.start = edge.start_angle;
  arc.sweep = edge.counter_clockwise ? CcwSweep(edge.start_angle, edge.end_angle)
                                     : -CcwSweep(edge.end_angle, edge.start_angle);
  return true;
}

}  // namespace

bool PvSvgWorldDraw::LoopPath(const AcDbHatchLoop& loop, const AcGeMatrix3d& to_output,
                              std::vector<std::vector<Point2>>& polygons, Box2& box) {
  const double scale = to_output.scale();
  LoopBuilder builder(to_output, path_, scale > 0 ? deviation_ / scale : deviation_, options_.approximate_arc,
                      deviation_);
  if (loop.is_polyline) {
    const size_t n = loop.vertices.size();
    if (n < 2 || (!loop.bulges.empty() && loop.bulges.size() != n)) return false;
    for (size_t i = 0; i < n; ++i)
      if (!Finite(loop.vertices[i]) || (!loop.bulges.empty() && !std::isfinite(loop.bulges[i]))) return false;
    builder.To(loop.vertices[0]);
    // A hatch loop is closed whatever its flag says.
    for (size_t i = 0; i < n; ++i) {
      const AcGePoint2d& a = loop.vertices[i];
      const AcGePoint2d& b = loop.vertices[(i + 1) % n];
      const double bulge = loop.bulges.empty() ? 0 : loop.bulges[i];
      if (bulge == 0 || a == b) builder.To(b);
      else builder.Arc(BulgeArc(a, b, bulge));
    }
  } else {
    if (loop.edges.empty()) return false;
    for (const AcDbHatchEdge& edge : loop.edges) {
      switch (edge.kind) {
        case AcDbHatchEdge::kLine:
          if (!Finite(edge.start) || !Finite(edge.end)) return false;
          builder.To(edge.start);
          builder.To(edge.end);
          break;
        case AcDbHatchEdge::kCircArc:
        case AcDbHatchEdge::kEllipArc: {
          PlaneArc arc;
          if (!EdgeArc(edge, arc)) return false;
          builder.Arc(arc);
          break;
        }
        case AcDbHatchEdge::kSpline:
          if (edge.points.size() < 2) return false;
          for (const AcGePoint2d& p : edge.points) {
            if (!Finite(p)) return false;
            builder.To(p);
          }
          break;
        default:
          return false;
      }
    }
  }
  builder.Close();
  std::vector<Point2> polygon;
  for (const AcGePoint2d& p : builder.plane()) polygon.push_back({p.x, p.y});
  polygons.push_back(std::move(polygon));
  box.Merge(builder.box());
  return true;
}

bool PvSvgWorldDraw::hatch(const AcDbHatch& hatch, const std::vector<AcDbHatchLoop>& loops,
                           const AcGeMatrix3d& plane_to_model) {
  const ResolvedStyle& style = CurrentStyle();
  const bool solid = hatch.isSolidFill();
  if (style.hidden || (!solid && options_.hatch_optimization)) return true;
  // Hatch style "ignore" fills the outer loops only, where there are any.
  bool any_outer = false;
  for (const AcDbHatchLoop& loop : loops) any_outer = any_outer || (loop.loop_type & kOuterLoop);
  const bool outer_only = hatch.hatchStyle() == kStyleIgnore && any_outer;

  const AcGeMatrix3d to_output = transforms_.back() * plane_to_model;
  path_.Clear();
  std::vector<std::vector<Point2>> polygons;  // plane coordinates
  Box2 box;
  for (const AcDbHatchLoop& loop : loops) {
    if (outer_only && !(loop.loop_type & kOuterLoop)) continue;
    if (!LoopPath(loop, to_output, polygons, box)) {
      acutPrintf("\nInvalid hatch loop!");
      return true;
    }
  }
  if (path_.empty() || !Keep(box)) return true;
  const std::string boundary = path_.text();

  if (solid) {
    fx::svg::XmlElement node = Element("path");
    node.Attribute("d", boundary);
    node.Attribute("fill", fx::svg::ColorText(style.rgb));
    node.Attribute("fill-rule", "evenodd");
    node.Attribute("stroke", "none");
    ProgramAttributes(node, style);
    return true;
  }
  const std::vector<AcDbHatchPatternLine> families = hatch.patternLines();
  if (families.empty()) return true;
  path_.Clear();
  if (!PatternPath(families, polygons, to_output)) {
    // Too dense to write: the boundary shows where the hatch is.
    fx::svg::XmlElement node = Element("path");
    node.Attribute("d", boundary);
    Stroke(node, style, false);
    return true;
  }
  if (path_.empty()) return true;
  const std::string id = "HP" + std::to_string(hatch_count_++);
  fx::svg::XmlElement clip = text_->Define("clipPath");
  clip.Attribute("id", id);
  fx::svg::XmlElement outline = clip.Child("path");
  outline.Attribute("d", boundary);
  outline.Attribute("clip-rule", "evenodd");
  fx::svg::XmlElement group = Element("g");
  group.Attribute("clip-path", "url(#" + id + ")");
  fx::svg::XmlElement lines = group.Child("path");
  lines.Attribute("d", path_.text());
  Stroke(lines, style, false);
  return true;
}

// Line family: lines at `angle` through base + k * offset for every k that
// meets the loops; the dash sequence of each line starts at its own base
// point. Each line is cut where it crosses the loops' edges; a vertex on a
// line counts on the side of the edge's other end (half-open rule), so it
// is counted once.
bool PvSvgWorldDraw::PatternPath(const std::vector<AcDbHatchPatternLine>& families,
                                 const std::vector<std::vector<Point2>>& polygons, const AcGeMatrix3d& to_output) {
  size_t line_total = 0, dash_total = 0;
  const double scale = to_output.scale();
  const double widen = 2 * (scale > 0 ? deviation_ / scale : deviation_);
  const auto out = [&](double x, double y) {
    const AcGePoint3d q = to_output * AcGePoint3d(x, y, 0);
    return Point2{q.x, q.y};
  };
  for (const AcDbHatchPatternLine& family : families) {
    const double dx = std::cos(family.angle), dy = std::sin(family.angle);
    const double nx = -dy, ny = dx;
    const double spacing = family.offset.x * nx + family.offset.y * ny;
    const double base_n = family.base.x * nx + family.base.y * ny;
    if (!(std::abs(spacing) > 1e-12) || !std::isfinite(spacing)) continue;
    double low = INFINITY, high = -INFINITY;
    for (const auto& polygon : polygons)
      for (const Point2& p : polygon) {
        low = std::min(low, p.x * nx + p.y * ny);
        high = std::max(high, p.x * nx + p.y * ny);
      }
    double k_low = (low - base_n) / spacing, k_high = (high - base_n) / spacing;
    if (k_low > k_high) std::swap(k_low, k_high);
    const double first = std::ceil(k_low), last = std::floor(k_high);
    if (!(last >= first)) continue;
    if (last - first + 1 > static_cast<double>(kMaxPatternLines - line_total)) return false;
    const size_t count = static_cast<size_t>(last - first) + 1;
    line_total += count;
    // The crossings of each line with the edges, as distances along it
    // from the line's base point.
    std::vector<std::vector<double>> crossings(count);
    for (const auto& polygon : polygons) {
      for (size_t i = 0; i < polygon.size(); ++i) {
        const Point2 a = polygon[i], b = polygon[(i + 1) % polygon.size()];
        const double na = a.x * nx + a.y * ny, nb = b.x * nx + b.y * ny;
        if (na == nb) continue;
        double ka = (na - base_n) / spacing, kb = (nb - base_n) / spacing;
        if (ka > kb) std::swap(ka, kb);
        const double from = std::max(first, std::floor(ka)), to = std::min(last, std::ceil(kb));
        for (double k = from; k <= to; ++k) {
          const double level = base_n + k * spacing;
          if ((na > level) == (nb > level)) continue;
          const double f = (level - na) / (nb - na);
          const double x = a.x + f * (b.x - a.x), y = a.y + f * (b.y - a.y);
          const double px = family.base.x + k * family.offset.x, py = family.base.y + k * family.offset.y;
          crossings[static_cast<size_t>(k - first)].push_back((x - px) * dx + (y - py) * dy);
        }
      }
    }
    double period = 0;
    for (double dash : family.dashes) period += std::abs(dash);
    const bool continuous = family.dashes.empty() || !(period > 1e-12);
    for (size_t line = 0; line < count; ++line) {
      std::vector<double>& ts = crossings[line];
      std::sort(ts.begin(), ts.end());
      const double k = first + static_cast<double>(line);
      const double px = family.base.x + k * family.offset.x, py = family.base.y + k * family.offset.y;
      auto segment = [&](double t0, double t1) {
        path_.MoveTo(out(px + t0 * dx, py + t0 * dy));
        path_.LineTo(out(px + t1 * dx, py + t1 * dy));
        ++dash_total;
      };
      for (size_t i = 0; i + 1 < ts.size(); i += 2) {
        // Widened by the flattening's deviation: the chords of a curved
        // edge lie inside it, the clip path trims the rest exactly.
        const double t0 = ts[i] - widen, t1 = ts[i + 1] + widen;
        if (continuous) {
          segment(t0, t1);
          continue;
        }
        if ((t1 - t0) / period > static_cast<double>(kMaxPatternDashes)) return false;
        // The dashes of the periods that meet [t0, t1].
        for (double start = std::floor(t0 / period) * period; start < t1; start += period) {
          double at = start;
          for (double dash : family.dashes) {
            const double length = dash == 0 ? period / 100 : std::abs(dash);
            if (dash >= 0) {
              const double a = std::max(at, t0), b = std::min(at + length, t1);
              if (a < b) segment(a, b);
            }
            at += std::abs(dash);
          }
          if (dash_total > kMaxPatternDashes) return false;
        }
      }
      if (dash_total > kMaxPatternDashes) return false;
    }
  }
  return true;
}
