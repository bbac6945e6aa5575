// OVERKILL's second pass: overlapping collinear lines (see overkill.h).
//
// Lines are grouped by properties. Within a group each line goes into a
// hash grid cell by its direction angle (in (-pi/2, pi/2], a line and its
// reverse alike), its signed offset from a local origin and its height.
// Two lines lying on one line within the tolerance have directions that
// differ by at most 2 * tolerance / length of the shorter, so with cells
// `kAngleCell` wide and lines of at least 2 * tolerance / kAngleCell, such
// a pair is always in the same or neighbouring cells. Lines near the
// vertical also go into the cells at the other end of the angle range.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <span>
#include <string>
#include <unordered_map>

#include "host/database.h"
#include "host/dxf/cleanup/overkill_internal.h"
#include "host/dxf/imp_database.h"

namespace fx::cleanup {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kAngleCell = 1e-4;

struct Line {
  Candidate* candidate;
  AcGePoint3d a, b;  // as stored
  double angle = 0, offset = 0, length = 0;
  AcGeVector3d direction;  // unit, in the XY plane
};

struct Cell {
  int64_t angle, offset, z;
  bool operator==(const Cell&) const = default;
};
struct CellHash {
  size_t operator()(const Cell& c) const {
    uint64_t h = static_cast<uint64_t>(c.angle) * 1000003u;
    h = (h ^ static_cast<uint64_t>(c.offset)) * 1099511628211u;
    return static_cast<size_t>(h ^ static_cast<uint64_t>(c.z));
  }
};

double Cross(const AcGeVector3d& u, const AcGeVector3d& v) { return u.x * v.y - u.y * v.x; }

// Distance of `p` from the infinite line through `line`, in the XY plane.
double DistanceFrom(const Line& line, const AcGePoint3d& p) { return std::abs(Cross(line.direction, p - line.a)); }

bool Collinear(const Line& l, const Line& m, double tolerance) {
  return std::abs(l.a.z - m.a.z) <= tolerance && DistanceFrom(l, m.a) <= tolerance &&
         DistanceFrom(l, m.b) <= tolerance && DistanceFrom(m, l.a) <= tolerance && DistanceFrom(m, l.b) <= tolerance;
}

class UnionFind {
 public:
  explicit UnionFind(size_t n) : parent_(n) { std::iota(parent_.begin(), parent_.end(), size_t{0}); }
  size_t Find(size_t i) {
    while (parent_[i] != i) i = parent_[i] = parent_[parent_[i]];
    return i;
  }
  void Join(size_t i, size_t j) { parent_[Find(i)] = Find(j); }

 private:
  std::vector<size_t> parent_;
};

class OverlapMerger {
 public:
  OverlapMerger(AcDbImpDatabase& db, double tolerance, Eraser& eraser, OverkillResult& result)
      : db_(db), tolerance_(tolerance), eraser_(eraser), result_(result) {}

  void MergeGroup(std::vector<Line>& lines) {
    if (lines.size() < 2) return;
    Place(lines);
    UnionFind sets(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
      for (const Cell& cell : Neighbours(cells_[i])) {
        auto found = grid_.find(cell);
        if (found == grid_.end()) continue;
        for (size_t j : found->second)
          if (j != i && Collinear(lines[i], lines[j], tolerance_)) sets.Join(i, j);
      }
    }
    std::unordered_map<size_t, std::vector<Line*>> collinear;
    for (size_t i = 0; i < lines.size(); ++i) collinear[sets.Find(i)].push_back(&lines[i]);
    for (auto& [root, set] : collinear)
      if (set.size() > 1) MergeSet(set);
  }

 private:
  // Cells of every line; a line near the vertical goes in twice.
  void Place(std::vector<Line>& lines) {
    grid_.clear();
    cells_.clear();
    const AcGePoint3d origin = lines.front().a;
    double reach = 0;
    for (Line& line : lines) {
      line.offset = Cross(line.direction, line.a - origin);
      reach = std::max({reach, (line.a - origin).length(), (line.b - origin).length()});
    }
    // Lines within the angle cell of each other drift apart by up to reach * kAngleCell.
    offset_cell_ = std::max(10 * tolerance_, 2 * reach * kAngleCell);
    z_cell_ = std::max(10 * tolerance_, 1e-12);
    for (size_t i = 0; i < lines.size(); ++i) {
      const Line& line = lines[i];
      Cell cell{static_cast<int64_t>(std::floor(line.angle / kAngleCell)),
                static_cast<int64_t>(std::floor(line.offset / offset_cell_)),
                static_cast<int64_t>(std::floor(line.a.z / z_cell_))};
      cells_.push_back(cell);
      grid_[cell].push_back(i);
      if (line.angle > kPi / 2 - 2 * kAngleCell) {
        // The same line pointing the other way: angle - pi, offset negated.
        grid_[{static_cast<int64_t>(std::floor((line.angle - kPi) / kAngleCell)),
               static_cast<int64_t>(std::floor(-line.offset / offset_cell_)), cell.z}]
            .push_back(i);
      }
    }
  }

  static std::vector<Cell> Neighbours(const Cell& c) {
    std::vector<Cell> cells;
    cells.reserve(27);
    for (int64_t da = -1; da <= 1; ++da)
      for (int64_t dd = -1; dd <= 1; ++dd)
        for (int64_t dz = -1; dz <= 1; ++dz) cells.push_back({c.angle + da, c.offset + dd, c.z + dz});
    return cells;
  }

  struct Span {
    Line* line;
    double from, to;            // parameters along the set's direction
    AcGePoint3d low, high;  // the end points at `from` and `to`
  };

  void MergeSet(std::vector<Line*>& set) {
    const Line* reference = *std::max_element(set.begin(), set.end(),
                                              [](const Line* l, const Line* m) { return l->length < m->length; });
    std::vector<Span> spans;
    for (Line* line : set) {
      double ta = (line->a - reference->a).dotProduct(reference->direction);
      double tb = (line->b - reference->a).dotProduct(reference->direction);
      spans.push_back(ta <= tb ? Span{line, ta, tb, line->a, line->b} : Span{line, tb, ta, line->b, line->a});
    }
    std::sort(spans.begin(), spans.end(), [](const Span& s, const Span& t) { return s.from < t.from; });
    size_t begin = 0;
    double reach = spans[0].to;
    for (size_t i = 1; i <= spans.size(); ++i) {
      // Overlapping by more than the tolerance; touching end to end is not enough.
      if (i < spans.size() && spans[i].from < reach - tolerance_) {
        reach = std::max(reach, spans[i].to);
        continue;
      }
      if (i - begin > 1) MergeRun(std::span<Span>(spans).subspan(begin, i - begin));
      if (i < spans.size()) {
        begin = i;
        reach = spans[i].to;
      }
    }
  }

  void MergeRun(std::span<Span> run) {
    const Span* low = &run[0];
    const Span* high = &run[0];
    for (const Span& span : run)
      if (span.to > high->to) high = &span;
    auto first = [](const Span* s, const Span* t) { return s->line->candidate->order < t->line->candidate->order; };
    // A line that covers the run stays as it is; otherwise the first one is stretched.
    const Span* keeper = nullptr;
    for (const Span& span : run) {
      bool covers = span.from <= low->from + tolerance_ && span.to >= high->to - tolerance_;
      if (covers && (keeper == nullptr || first(&span, keeper))) keeper = &span;
    }
    if (keeper == nullptr) {
      keeper = &run[0];
      for (const Span& span : run)
        if (first(&span, keeper)) keeper = &span;
      if (!Stretch(*keeper, low->low, high->high)) return;
    }
    for (const Span& span : run)
      if (&span != keeper && eraser_.EraseEntity(span.line->candidate->stub)) ++result_.overlaps;
  }

  // Keeps the line's direction: its start goes to the end it was nearer.
  bool Stretch(const Span& keeper, const AcGePoint3d& low, const AcGePoint3d& high) {
    const Line& line = *keeper.line;
    const bool forward = keeper.low == line.a;
    AcDbObjectPointer<AcDbLine> entity(AcDbObjectId(line.candidate->stub), AcDb::kForWrite);
    if (entity.openStatus() != Acad::eOk) return false;
    entity->setStartPoint(forward ? low : high);
    entity->setEndPoint(forward ? high : low);
    ++result_.stretched;
    return true;
  }

  AcDbImpDatabase& db_;
  double tolerance_;
  Eraser& eraser_;
  OverkillResult& result_;
  std::unordered_map<Cell, std::vector<size_t>, CellHash> grid_;
  std::vector<Cell> cells_;
  double offset_cell_ = 1, z_cell_ = 1;
};

// A line the grid can place: in a plane parallel to XY, long enough.
bool MakeLine(Candidate& candidate, double tolerance, Line& line) {
  const Shape& shape = candidate.shape;
  if (!shape.is_line || shape.normal.z < 1 - 1e-12) return false;
  if (std::abs(shape.start.z - shape.end.z) > tolerance) return false;
  AcGeVector3d d(shape.end.x - shape.start.x, shape.end.y - shape.start.y, 0);
  line.length = d.length();
  if (line.length < 2 * tolerance / kAngleCell || line.length == 0) return false;
  line.candidate = &candidate;
  line.a = shape.start;
  line.b = shape.end;
  line.direction = d * (1 / line.length);
  // A direction and its reverse give one angle, in (-pi/2, pi/2].
  line.angle = std::atan2(line.direction.y, line.direction.x);
  if (line.angle <= -kPi / 2 || line.angle > kPi / 2) {
    line.angle += line.angle > 0 ? -kPi : kPi;
    line.direction = -line.direction;
  }
  return true;
}

}  // namespace

void MergeOverlaps(AcDbImpDatabase& db, std::vector<Candidate>& candidates, double tolerance,
                   Eraser& eraser, OverkillResult& result) {
  std::unordered_map<std::string, std::vector<Line>> groups;
  for (Candidate& candidate : candidates) {
    Line line;
    if (candidate.stub->erased || !MakeLine(candidate, tolerance, line)) continue;
    char thickness[32];
    std::snprintf(thickness, sizeof thickness, "%.17g", candidate.shape.thickness);
    groups[candidate.shape.properties + "\x1f" + thickness].push_back(line);
  }
  OverlapMerger merger(db, tolerance, eraser, result);
  for (auto& [key, lines] : groups) merger.MergeGroup(lines);
}

}  // namespace fx::cleanup
