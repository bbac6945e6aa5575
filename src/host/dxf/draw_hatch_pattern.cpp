#include <algorithm>
#include <cmath>

#include "host/dxf/draw_hatch.h"

namespace fx::dxf {
namespace {

double Dot(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.x + a.y * b.y; }

struct Family {
  AcGeVector2d along, across;  // unit vectors along the lines and across them
  double spacing = 0;          // signed distance from one line to the next
  long first = 0, last = -1;   // the lines k that cross the box
};

// The lines of a family that cross the box of `corners`; none for a family
// whose lines do not advance across themselves.
Family Lines(const AcDbHatchPatternLine& line, const AcGePoint2d (&corners)[4], double size) {
  Family family;
  family.along = {std::cos(line.angle), std::sin(line.angle)};
  family.across = {-family.along.y, family.along.x};
  family.spacing = Dot(line.offset, family.across);
  if (!(std::abs(family.spacing) > size * 1e-9)) return family;
  double low = HUGE_VAL, high = -HUGE_VAL;
  for (const AcGePoint2d& corner : corners) {
    double s = Dot(corner - line.base, family.across) / family.spacing;
    low = std::min(low, s);
    high = std::max(high, s);
  }
  // More lines than any limit would allow are not counted exactly.
  if (high - low > 1e9) {
    family.first = 0, family.last = static_cast<long>(1e9);
    return family;
  }
  family.first = static_cast<long>(std::ceil(low));
  family.last = static_cast<long>(std::floor(high));
  return family;
}

// Distances along the line through `origin` where it crosses the polygons'
// edges, in order. An edge end on the line counts on the side of positive
// distance across it being "above": the half-open rule.
std::vector<double> Crossings(const std::vector<std::vector<AcGePoint2d>>& polygons,
                              const AcGePoint2d& origin, const Family& family) {
  std::vector<double> ts;
  for (const std::vector<AcGePoint2d>& polygon : polygons) {
    size_t n = polygon.size();
    for (size_t i = 0; i < n && n >= 3; ++i) {
      AcGeVector2d a = polygon[i] - origin, b = polygon[(i + 1) % n] - origin;
      double sa = Dot(a, family.across), sb = Dot(b, family.across);
      if ((sa > 0) == (sb > 0)) continue;
      double ta = Dot(a, family.along), tb = Dot(b, family.along);
      ts.push_back(ta + (tb - ta) * (sa / (sa - sb)));
    }
  }
  std::sort(ts.begin(), ts.end());
  return ts;
}

// Appends the dashes of `pattern` that fall on [t0, t1] of the line through
// `origin`; the pattern repeats from distance 0.
void AppendDashes(const std::vector<double>& pattern, double period, const AcGePoint2d& origin,
                  const AcGeVector2d& along, double t0, double t1, std::vector<PatternDash>& out) {
  auto at = [&](double t) { return origin + along * t; };
  if (pattern.empty() || !(period > 0)) {
    out.push_back({at(t0), at(t1)});
    return;
  }
  double position = std::floor(t0 / period) * period;
  for (size_t k = 0; position <= t1 && out.size() <= kMaxPatternDashes; k = (k + 1) % pattern.size()) {
    double length = std::abs(pattern[k]);
    if (pattern[k] > 0) {
      double a = std::max(position, t0), b = std::min(position + length, t1);
      if (a < b) out.push_back({at(a), at(b)});
    } else if (pattern[k] == 0 && position >= t0 && position <= t1) {
      out.push_back({at(position), at(position)});  // a dot
    }
    position += length;
  }
}

}  // namespace

bool ClipPattern(const std::vector<std::vector<AcGePoint2d>>& polygons,
                 const std::vector<AcDbHatchPatternLine>& families, std::vector<PatternDash>& dashes) {
  dashes.clear();
  double min_x = HUGE_VAL, min_y = HUGE_VAL, max_x = -HUGE_VAL, max_y = -HUGE_VAL;
  for (const auto& polygon : polygons)
    for (const AcGePoint2d& p : polygon) {
      min_x = std::min(min_x, p.x), max_x = std::max(max_x, p.x);
      min_y = std::min(min_y, p.y), max_y = std::max(max_y, p.y);
    }
  if (!(min_x <= max_x && min_y <= max_y)) return true;
  const AcGePoint2d corners[4] = {{min_x, min_y}, {max_x, min_y}, {min_x, max_y}, {max_x, max_y}};
  const double size = std::hypot(max_x - min_x, max_y - min_y);

  // Count first, so that an impossible pattern costs nothing to refuse.
  std::vector<Family> lines;
  double line_count = 0, dash_count = 0;
  for (const AcDbHatchPatternLine& line : families) {
    lines.push_back(Lines(line, corners, size));
    double count = static_cast<double>(lines.back().last - lines.back().first + 1);
    line_count += count;
    double period = 0;
    for (double dash : line.dashes) period += std::abs(dash);
    double per_line = period > 0 ? (size / period + 1) * static_cast<double>(line.dashes.size()) : 1;
    dash_count += count * per_line;
  }
  if (line_count > static_cast<double>(kMaxPatternLines) || dash_count > static_cast<double>(kMaxPatternDashes))
    return false;

  for (size_t f = 0; f < families.size(); ++f) {
    const Family& family = lines[f];
    double period = 0;
    for (double dash : families[f].dashes) period += std::abs(dash);
    for (long k = family.first; k <= family.last; ++k) {
      AcGePoint2d origin = families[f].base + families[f].offset * static_cast<double>(k);
      std::vector<double> ts = Crossings(polygons, origin, family);
      for (size_t i = 0; i + 1 < ts.size(); i += 2)
        AppendDashes(families[f].dashes, period, origin, family.along, ts[i], ts[i + 1], dashes);
      if (dashes.size() > kMaxPatternDashes) {
        dashes.clear();
        return false;
      }
    }
  }
  return true;
}

}  // namespace fx::dxf
