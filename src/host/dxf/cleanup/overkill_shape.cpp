#include "host/dxf/cleanup/overkill_shape.h"

#include <algorithm>
#include <cmath>

#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"

namespace fx::cleanup {
namespace {

using fx::dxf::Tag;
using fx::dxf::TagRange;
constexpr double kDegrees = 3.14159265358979323846 / 180.0;

// Reads an entity's own tags: after the 0-tag, before extended data and
// before an embedded object (group 101), whose tags repeat the entity's codes.
class Reader {
 public:
  explicit Reader(TagRange tags) : tags_(tags) {
    end_ = 1;
    while (end_ < tags.size() && tags[end_].code != 1001 && tags[end_].code != 101) ++end_;
  }
  size_t end() const { return end_; }
  Tag operator[](size_t i) const { return tags_[i]; }

  size_t Find(int code) const {
    for (size_t i = 1; i < end_; ++i)
      if (tags_[i].code == code) return i;
    return end_;
  }
  bool Has(int code) const { return Find(code) != end_; }
  std::string_view Text(int code, std::string_view fallback = {}) const {
    size_t i = Find(code);
    return i == end_ ? fallback : tags_[i].value;
  }
  double Double(int code, double fallback = 0) const {
    size_t i = Find(code);
    return i == end_ ? fallback : fx::dxf::ParseDouble(tags_[i].value).value_or(fallback);
  }
  int64_t Int(int code, int64_t fallback = 0) const {
    size_t i = Find(code);
    return i == end_ ? fallback : fx::dxf::ParseInt(tags_[i].value).value_or(fallback);
  }
  AcGePoint3d Point(int code, AcGePoint3d fallback = {}) const {
    return {Double(code, fallback.x), Double(code + 10, fallback.y), Double(code + 20, fallback.z)};
  }

 private:
  TagRange tags_;
  size_t end_;
};

void AddPoint(std::vector<double>& values, const AcGePoint3d& p) { values.insert(values.end(), {p.x, p.y, p.z}); }
void AddVector(std::vector<double>& values, const AcGeVector3d& v) { values.insert(values.end(), {v.x, v.y, v.z}); }

AcGeVector3d Normal(const Reader& r) {
  AcGePoint3d n = r.Point(210, {0, 0, 1});
  return AcGeVector3d(n.x, n.y, n.z).normal();
}

// Type, the common properties with their defaults made explicit, extended data.
std::string Properties(std::string_view type, TagRange tags, const Reader& r) {
  std::string key(type);
  auto field = [&](std::string_view value) {
    key += '\x1f';
    key += value;
  };
  field(fx::dxf::FoldCase(r.Text(8, "0")));
  field(fx::dxf::FoldCase(r.Text(6, "ByLayer")));
  field(std::to_string(r.Int(62, 256)));
  field(std::to_string(r.Int(370, -1)));
  field(std::to_string(r.Int(60, 0)));
  field(fx::dxf::FormatDouble(r.Double(48, 1.0)));
  for (int code : {420, 430, 440, 390, 347}) field(fx::dxf::TrimBlanks(r.Text(code)));
  for (size_t i = r.end(); i < tags.size(); ++i) {
    if (tags[i].code == 101) break;
    field(std::to_string(tags[i].code) + "=" + std::string(fx::dxf::TrimBlanks(tags[i].value)));
  }
  return key;
}

// Associative or dictionary-carrying entities, inserts with attributes.
bool LeftAlone(std::string_view type, const Reader& r) {
  for (size_t i = 1; i < r.end(); ++i) {
    if (r[i].code != 102) continue;
    std::string_view group = fx::dxf::TrimBlanks(r[i].value);
    if (group == "{ACAD_XDICTIONARY" || group == "{ACAD_REACTORS") return true;
  }
  return type == "INSERT" && r.Int(66, 0) == 1;
}

struct Vertex {
  AcGePoint3d point;  // z unused
  double bulge = 0, start_width = 0, end_width = 0;  // of the segment that starts here
};

// Reversed segment data: the segment from b to a of the one from a to b.
Vertex Reversed(const Vertex& at, const Vertex& segment) {
  return {at.point, -segment.bulge, segment.end_width, segment.start_width};
}

bool SequenceLess(const std::vector<Vertex>& a, const std::vector<Vertex>& b, double tolerance) {
  for (size_t i = 0; i < a.size(); ++i) {
    if (TolerantLess(a[i].point, b[i].point, tolerance)) return true;
    if (TolerantLess(b[i].point, a[i].point, tolerance)) return false;
  }
  return false;
}

// The vertices from `start`, forward or backward; closed polylines wrap.
std::vector<Vertex> Walk(const std::vector<Vertex>& v, size_t start, bool forward, bool closed) {
  const size_t n = v.size();
  std::vector<Vertex> out;
  out.reserve(n);
  for (size_t i = 0; i < n; ++i) {
    if (forward) {
      out.push_back(v[(start + i) % n]);
    } else {
      size_t at = (start + n - i) % n;
      size_t before = (at + n - 1) % n;  // the segment from `before` to `at`, reversed
      out.push_back(Reversed(v[at], v[before]));
    }
  }
  // An open polyline's last vertex starts no segment.
  if (!closed && !out.empty()) out.back() = {out.back().point, 0, 0, 0};
  return out;
}

bool LwPolyline(const Reader& r, double tolerance, Shape& shape) {
  std::vector<Vertex> v;
  for (size_t i = 1; i < r.end(); ++i) {
    const Tag& tag = r[i];
    double value = fx::dxf::ParseDouble(tag.value).value_or(0);
    if (tag.code == 10) v.push_back({{value, 0, 0}});
    if (v.empty()) continue;
    if (tag.code == 20) v.back().point.y = value;
    if (tag.code == 40) v.back().start_width = value;
    if (tag.code == 41) v.back().end_width = value;
    if (tag.code == 42) v.back().bulge = value;
  }
  if (v.empty()) return false;
  const int64_t flags = r.Int(70, 0);
  const bool closed = (flags & 1) != 0;
  std::vector<Vertex> best;
  if (closed) {
    size_t start = 0;
    for (size_t i = 1; i < v.size(); ++i)
      if (TolerantLess(v[i].point, v[start].point, tolerance)) start = i;
    best = Walk(v, start, true, true);
    std::vector<Vertex> backward = Walk(v, start, false, true);
    if (SequenceLess(backward, best, tolerance)) best = std::move(backward);
  } else {
    best = Walk(v, 0, true, false);
    std::vector<Vertex> backward = Walk(v, v.size() - 1, false, false);
    if (SequenceLess(backward, best, tolerance)) best = std::move(backward);
  }
  shape.key += "\x1f" + std::to_string(flags & (1 | 128)) + "\x1f" + std::to_string(v.size());
  for (const Vertex& vertex : best)
    shape.values.insert(shape.values.end(),
                        {vertex.point.x, vertex.point.y, vertex.bulge, vertex.start_width, vertex.end_width});
  shape.values.insert(shape.values.end(), {r.Double(38), r.Double(43), r.Double(39)});
  AddVector(shape.values, Normal(r));
  return true;
}

void Line(const Reader& r, double tolerance, Shape& shape) {
  shape.is_line = true;
  shape.start = r.Point(10);
  shape.end = r.Point(11);
  shape.thickness = r.Double(39);
  shape.normal = Normal(r);
  AcGePoint3d a = shape.start, b = shape.end;
  if (TolerantLess(b, a, tolerance)) std::swap(a, b);
  AddPoint(shape.values, a);
  AddPoint(shape.values, b);
  shape.values.push_back(shape.thickness);
  AddVector(shape.values, shape.normal);
}

void Arc(const Reader& r, Shape& shape, bool full) {
  const AcGePoint3d c = r.Point(10);
  const double radius = r.Double(40);
  AddPoint(shape.values, c);
  shape.values.push_back(radius);
  if (!full) {
    // End points rather than angles: 359.9999999 and 0 are the same direction.
    for (int code : {50, 51}) {
      double angle = r.Double(code) * kDegrees;
      shape.values.insert(shape.values.end(), {c.x + radius * std::cos(angle), c.y + radius * std::sin(angle)});
    }
  }
  shape.values.push_back(r.Double(39));
  AddVector(shape.values, Normal(r));
}

void Text(const Reader& r, Shape& shape) {
  const int64_t horizontal = r.Int(72, 0), vertical = r.Int(73, 0);
  shape.key += "\x1f" + std::string(r.Text(1)) + "\x1f" + fx::dxf::FoldCase(r.Text(7, "Standard")) + "\x1f" +
               std::to_string(r.Int(71, 0)) + "\x1f" + std::to_string(horizontal) + "\x1f" +
               std::to_string(vertical);
  AddPoint(shape.values, r.Point(10));
  // The second alignment point means something only for aligned text.
  if (horizontal != 0 || vertical != 0) AddPoint(shape.values, r.Point(11));
  shape.values.insert(shape.values.end(),
                      {r.Double(40), r.Double(50), r.Double(41, 1), r.Double(51), r.Double(39)});
  AddVector(shape.values, Normal(r));
}

void MText(const Reader& r, Shape& shape) {
  std::string contents;
  for (size_t i = 1; i < r.end(); ++i)
    if (r[i].code == 3) contents += r[i].value;
  contents += r.Text(1);
  shape.key += "\x1f" + contents + "\x1f" + fx::dxf::FoldCase(r.Text(7, "Standard")) + "\x1f" +
               std::to_string(r.Int(71, 1)) + "\x1f" + std::to_string(r.Int(72, 1));
  AddPoint(shape.values, r.Point(10));
  shape.values.insert(shape.values.end(), {r.Double(40), r.Double(41), r.Double(44, 1), r.Double(50)});
  AddPoint(shape.values, r.Point(11, {1, 0, 0}));
  AddVector(shape.values, Normal(r));
}

void Insert(const Reader& r, Shape& shape) {
  shape.key += "\x1f" + fx::dxf::FoldCase(r.Text(2)) + "\x1f" + std::to_string(r.Int(70, 1)) + "\x1f" +
               std::to_string(r.Int(71, 1));
  AddPoint(shape.values, r.Point(10));
  shape.values.insert(shape.values.end(),
                      {r.Double(41, 1), r.Double(42, 1), r.Double(43, 1), r.Double(50), r.Double(44), r.Double(45)});
  AddVector(shape.values, Normal(r));
}

void PointEntity(const Reader& r, Shape& shape) {
  AddPoint(shape.values, r.Point(10));
  shape.values.insert(shape.values.end(), {r.Double(39), r.Double(50)});
  AddVector(shape.values, Normal(r));
}

}  // namespace

bool TolerantLess(const AcGePoint3d& a, const AcGePoint3d& b, double tolerance) {
  if (std::abs(a.x - b.x) > tolerance) return a.x < b.x;
  if (std::abs(a.y - b.y) > tolerance) return a.y < b.y;
  if (std::abs(a.z - b.z) > tolerance) return a.z < b.z;
  return false;
}

std::optional<Shape> ShapeOf(std::string_view type, TagRange tags, double tolerance) {
  const Reader r(tags);
  if (LeftAlone(type, r)) return std::nullopt;
  Shape shape;
  shape.properties = Properties(type, tags, r);
  shape.key = shape.properties;
  if (type == "LINE") {
    Line(r, tolerance, shape);
  } else if (type == "LWPOLYLINE") {
    if (!LwPolyline(r, tolerance, shape)) return std::nullopt;
  } else if (type == "ARC" || type == "CIRCLE") {
    Arc(r, shape, type == "CIRCLE");
  } else if (type == "TEXT") {
    Text(r, shape);
  } else if (type == "MTEXT") {
    MText(r, shape);
  } else if (type == "INSERT") {
    Insert(r, shape);
  } else if (type == "POINT") {
    PointEntity(r, shape);
  } else {
    return std::nullopt;
  }
  return shape;
}

}  // namespace fx::cleanup
