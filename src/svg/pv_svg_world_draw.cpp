// The renderer's state and the curve and polygon primitives. Text, hatches
// and block inserts are in pv_svg_text.cpp, pv_svg_hatch.cpp and
// pv_svg_blocks.cpp.
#include "svg/pv_svg_world_draw.h"

#include <algorithm>
#include <cmath>

#include "host/database.h"
#include "svg/svg_number.h"

using fx::svg::Box2;
using fx::svg::EllipticArc;
using fx::svg::Point2;
using fx::svg::ResolvedStyle;

namespace {

// How much of the last written decimal a curve approximation may deviate.
constexpr double kDeviationInDecimals = 5;

}  // namespace

PvSvgWorldDraw::PvSvgWorldDraw(AcDbDatabase* database, const fx::svg::Frame& frame,
                               fx::svg::SvgOptions options)
    : database_(database),
      frame_(frame),
      options_(std::move(options)),
      decimals_(fx::svg::CoordinateDecimals(std::hypot(frame.width(), frame.height()))),
      deviation_(kDeviationInDecimals * std::pow(10.0, -decimals_)),
      shortest_dash_(std::pow(10.0, -decimals_)),
      drawing_linetype_scale_(database != nullptr ? database->ltscale() : 1.0),
      text_(std::make_unique<fx::svg::SvgText>(frame)),
      context_(database),
      styles_(database, options_),
      path_(decimals_) {
  transforms_.push_back(AcGeMatrix3d::kIdentity);
  inherited_.push_back(styles_.Root());
  parents_.push_back(text_->Drawing());
}

PvSvgWorldDraw::~PvSvgWorldDraw() = default;

const pugi::xml_document& PvSvgWorldDraw::document() const {
  parsed_ = text_->Document();
  return *parsed_;
}

std::unique_ptr<pugi::xml_document> PvSvgWorldDraw::takeDocument() {
  std::unique_ptr<pugi::xml_document> document = text_->Document();
  text_.reset();
  return document;
}

AcGiWorldGeometry& PvSvgWorldDraw::geometry() const { return const_cast<PvSvgWorldDraw&>(*this); }

AcGiSubEntityTraits& PvSvgWorldDraw::subEntityTraits() const { return traits_; }

const ResolvedStyle& PvSvgWorldDraw::CurrentStyle() {
  if (style_traits_ != traits_.generation() || style_inherited_ != inherited_generation_) {
    style_inherits_ = false;
    style_ = styles_.Resolve(traits_, inherited_.back(), style_inherits_);
    style_traits_ = traits_.generation();
    style_inherited_ = inherited_generation_;
  }
  // What consults an insert's properties makes the definition being written
  // for that insert depend on them.
  const int definition = inherited_.back().definition;
  if (style_inherits_ && definition >= 0) writing_[static_cast<size_t>(definition)].inherits = true;
  return style_;
}

void PvSvgWorldDraw::PushInherited(const fx::svg::InheritedStyle& style) {
  inherited_.push_back(style);
  ++inherited_generation_;
}

void PvSvgWorldDraw::PopInherited() {
  if (inherited_.size() > 1) inherited_.pop_back();
  ++inherited_generation_;
}

// ---- Transforms -------------------------------------------------------------

void PvSvgWorldDraw::pushModelTransform(const AcGeMatrix3d& transform) {
  // An insert drawn by the host pushes its transform right after
  // beginBlockReference (once per MINSERT cell): its contents inherit from
  // the insert. Any other push (a dimension drawing its block) hands down
  // the properties of the entity that pushes; the first push, before any
  // entity, is the world-to-SVG transform.
  const bool insert_cell = !insert_depths_.empty() && insert_depths_.back() == transforms_.size();
  fx::svg::InheritedStyle inherited = inherited_.back();
  if (!insert_cell && traits_.generation() != 0) inherited = fx::svg::StyleResolver::HandDown(CurrentStyle(), -1);
  transforms_.push_back(transforms_.back() * transform);
  PushInherited(inherited);
}

void PvSvgWorldDraw::popModelTransform() {
  if (transforms_.size() > 1) transforms_.pop_back();
  PopInherited();
}

AcGeMatrix3d PvSvgWorldDraw::getModelToWorldTransform() const { return transforms_.back(); }

Point2 PvSvgWorldDraw::Out(const AcGePoint3d& p) const {
  const AcGePoint3d q = transforms_.back() * p;
  return {q.x, q.y};
}

Point2 PvSvgWorldDraw::OutVector(const AcGeVector3d& v) const {
  const AcGeVector3d w = transforms_.back() * v;
  return {w.x, w.y};
}

// ---- Elements and their style -------------------------------------------------

bool PvSvgWorldDraw::Keep(const Box2& box) {
  if (!writing_.empty()) {
    writing_.back().bounds.Merge(box);
    return true;
  }
  Box2 frame;
  frame.Add({0, 0});
  frame.Add({frame_.width(), frame_.height()});
  return box.Intersects(frame);
}

fx::svg::XmlElement PvSvgWorldDraw::Element(const char* name) { return parents_.back().Child(name); }

void PvSvgWorldDraw::ProgramAttributes(const fx::svg::XmlElement& node, const ResolvedStyle& style) {
  if (!options_.program_attributes) return;
  const fx::svg::LayerStyle& layer = styles_.Layer(style.layer);
  if (layer.lid) node.Attribute("ss:lid", static_cast<long long>(*layer.lid));
  node.Attribute("ss:color", style.color_source);
  node.Attribute("ss:lw", style.weight_source);
}

const std::string& PvSvgWorldDraw::ColorOf(uint32_t rgb) {
  if (rgb != color_rgb_ || color_text_.empty()) {
    color_rgb_ = rgb;
    color_text_ = fx::svg::ColorText(rgb);
  }
  return color_text_;
}

void PvSvgWorldDraw::Stroke(const fx::svg::XmlElement& node, const ResolvedStyle& style, bool filled) {
  const std::string& color = ColorOf(style.rgb);
  node.Attribute("stroke", color);
  if (style.weight != width_weight_ || width_text_.empty()) {
    width_weight_ = style.weight;
    width_text_ = fx::svg::LineWeightText(style.weight);
  }
  node.Attribute("stroke-width", width_text_);
  // Dash lengths scale with the entity's and the drawing's linetype scale and with inserts.
  const std::vector<double>& dashes = styles_.Dashes(style.linetype);
  if (!dashes.empty()) {
    const double scale = style.linetype_scale * drawing_linetype_scale_ * transforms_.back().scale();
    if (fx::svg::DashAttributes(dashes, scale, shortest_dash_, dash_array_, dash_offset_)) {
      node.Attribute("stroke-dasharray", dash_array_);
      if (!dash_offset_.empty()) node.Attribute("stroke-dashoffset", dash_offset_);
    }
  }
  if (filled) node.Attribute("fill", color);
  ProgramAttributes(node, style);
}

bool PvSvgWorldDraw::Points(const char* name, const std::vector<Point2>& points, bool filled) {
  Box2 box;
  for (const Point2& p : points) box.Add(p);
  if (!Keep(box)) return false;
  path_.Clear();
  for (const Point2& p : points) path_.Pair(p);
  fx::svg::XmlElement node = Element(name);
  node.Attribute("points", path_.text());
  Stroke(node, CurrentStyle(), filled);
  return false;
}

// ---- Primitives -----------------------------------------------------------------

bool PvSvgWorldDraw::circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) {
  const ResolvedStyle& style = CurrentStyle();
  if (style.hidden || !(radius > 0)) return false;
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal);
  EllipticArc arc{Out(center), OutVector(plane * AcGeVector3d(radius, 0, 0)),
                  OutVector(plane * AcGeVector3d(0, radius, 0)), 0, 2 * std::numbers::pi};
  if (!Keep(arc.Bounds())) return false;
  const bool filled = traits_.fillType() == kAcGiFillAlways;
  const fx::svg::EllipseAxes axes = fx::svg::AxesOf(arc.u, arc.v);
  fx::svg::XmlElement node;
  if (axes.rx == axes.ry) {
    // Seen square on, still a circle.
    node = Element("circle");
    path_.Clear();
    path_.Number(arc.center.x);
    node.Attribute("cx", path_.text());
    path_.Clear();
    path_.Number(arc.center.y);
    node.Attribute("cy", path_.text());
    path_.Clear();
    path_.Number(axes.rx);
    node.Attribute("r", path_.text());
  } else {
    path_.Clear();
    path_.Arc(arc, true, options_.approximate_arc, deviation_);
    path_.Close();
    node = Element("path");
    node.Attribute("d", path_.text());
  }
  Stroke(node, style, filled);
  return false;
}

bool PvSvgWorldDraw::circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                                 const AcGeVector3d& start_vector, double sweep_angle, AcGiArcType arc_type) {
  const ResolvedStyle& style = CurrentStyle();
  if (style.hidden || !(radius > 0) || !std::isfinite(sweep_angle)) return false;
  const AcGeVector3d x = start_vector.normal(), z = normal.normal();
  const AcGeVector3d y = z.crossProduct(x);
  EllipticArc arc{Out(center), OutVector(x * radius), OutVector(y * radius), 0, sweep_angle};
  Box2 box = arc.Bounds();
  if (!Keep(box)) return false;
  if (arc_type == kAcGiArcSimple && options_.approximate_arc) {
    return Points("polyline", fx::svg::ArcPoints(arc, deviation_), false);
  }
  path_.Clear();
  if (arc_type == kAcGiArcSector) {
    path_.MoveTo(arc.center);
    path_.LineTo(arc.At(0));
    path_.Arc(arc, false, options_.approximate_arc, deviation_);
    path_.Close();
  } else {
    path_.Arc(arc, true, options_.approximate_arc, deviation_);
    if (arc_type == kAcGiArcChord) path_.Close();
  }
  fx::svg::XmlElement node = Element("path");
  node.Attribute("d", path_.text());
  Stroke(node, style, arc_type != kAcGiArcSimple && traits_.fillType() == kAcGiFillAlways);
  return false;
}

bool PvSvgWorldDraw::polyline(uint32_t count, const AcGePoint3d* points, const AcGeVector3d* normal) {
  (void)normal;
  const ResolvedStyle& style = CurrentStyle();
  if (style.hidden || count < 2) return false;
  std::vector<Point2> out;
  out.reserve(count);
  for (uint32_t i = 0; i < count; ++i) out.push_back(Out(points[i]));
  if (count == 2) {
    Box2 box;
    box.Add(out[0]);
    box.Add(out[1]);
    if (!Keep(box)) return false;
    fx::svg::XmlElement node = Element("line");
    const char* names[4] = {"x1", "y1", "x2", "y2"};
    const double values[4] = {out[0].x, out[0].y, out[1].x, out[1].y};
    for (int i = 0; i < 4; ++i) {
      path_.Clear();
      path_.Number(values[i]);
      node.Attribute(names[i], path_.text());
    }
    Stroke(node, style, false);
    return false;
  }
  // A closed outline (last point on the first) is a polygon.
  if (count >= 4 && points[0].isEqualTo(points[count - 1])) {
    out.pop_back();
    return Points("polygon", out, false);
  }
  return Points("polyline", out, false);
}

bool PvSvgWorldDraw::polygon(uint32_t count, const AcGePoint3d* points) {
  const ResolvedStyle& style = CurrentStyle();
  if (style.hidden || count < 2) return false;
  if (count == 2) return polyline(count, points);
  std::vector<Point2> out;
  out.reserve(count);
  for (uint32_t i = 0; i < count; ++i) out.push_back(Out(points[i]));
  return Points("polygon", out, traits_.fillType() == kAcGiFillAlways);
}

bool PvSvgWorldDraw::shell(uint32_t vertex_count, const AcGePoint3d* vertices, uint32_t face_list_size,
                           const int32_t* face_list) {
  const ResolvedStyle& style = CurrentStyle();
  if (style.hidden) return false;
  path_.Clear();
  Box2 box;
  for (uint32_t i = 0; i < face_list_size;) {
    const int32_t signed_count = face_list[i++];
    const uint32_t count = static_cast<uint32_t>(signed_count < 0 ? -static_cast<int64_t>(signed_count) : signed_count);
    if (count > face_list_size - i) break;  // a face list cut short
    bool valid = count >= 2;
    for (uint32_t k = 0; k < count && valid; ++k) valid = face_list[i + k] >= 0 && static_cast<uint32_t>(face_list[i + k]) < vertex_count;
    if (valid) {
      for (uint32_t k = 0; k < count; ++k) {
        const Point2 p = Out(vertices[face_list[i + k]]);
        box.Add(p);
        if (k == 0) path_.MoveTo(p);
        else path_.LineTo(p);
      }
      path_.Close();
    }
    i += count;
  }
  if (path_.empty() || !Keep(box)) return false;
  const bool filled = traits_.fillType() == kAcGiFillAlways;
  fx::svg::XmlElement node = Element("path");
  node.Attribute("d", path_.text());
  Stroke(node, style, filled);
  if (filled) node.Attribute("fill-rule", "evenodd");
  return false;
}

// ---- Infinite lines ---------------------------------------------------------------

bool PvSvgWorldDraw::xline(const AcGePoint3d& first, const AcGePoint3d& second) {
  return InfiniteLine(first, second, true);
}

bool PvSvgWorldDraw::ray(const AcGePoint3d& base, const AcGePoint3d& through) {
  return InfiniteLine(base, through, false);
}

// The line is cut to the frame in SVG coordinates (Liang-Barsky) and drawn
// as a <line> between the cuts: a ray from its base, an xline both ways.
bool PvSvgWorldDraw::InfiniteLine(const AcGePoint3d& base, const AcGePoint3d& through, bool both_ways) {
  const ResolvedStyle& style = CurrentStyle();
  if (style.hidden) return false;
  // Inside a block definition the cut depends on where the insert is.
  AcGeMatrix3d to_svg = AcGeMatrix3d::kIdentity;
  if (!writing_.empty()) {
    // Every definition that holds this one through a <use> is placed too.
    for (Definition& definition : writing_) definition.placed = true;
    to_svg = writing_.back().to_svg;
  }
  const AcGePoint3d p0 = to_svg * (transforms_.back() * base);
  const AcGePoint3d p1 = to_svg * (transforms_.back() * through);
  const double dx = p1.x - p0.x, dy = p1.y - p0.y;
  if (dx == 0 && dy == 0) return false;
  double t0 = both_ways ? -INFINITY : 0, t1 = INFINITY;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {p0.x, frame_.width() - p0.x, p0.y, frame_.height() - p0.y};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0) {
      if (q[i] < 0) return false;  // parallel to this side and outside it
      continue;
    }
    const double t = q[i] / p[i];
    if (p[i] < 0) t0 = std::max(t0, t);
    else t1 = std::min(t1, t);
  }
  if (!(t0 <= t1) || !std::isfinite(t0) || !std::isfinite(t1)) return false;
  // Back to output coordinates (those of the definition being written).
  const AcGeMatrix3d from_svg = to_svg.inverse();
  const AcGePoint3d a = from_svg * AcGePoint3d(p0.x + t0 * dx, p0.y + t0 * dy, 0);
  const AcGePoint3d b = from_svg * AcGePoint3d(p0.x + t1 * dx, p0.y + t1 * dy, 0);
  // Drawn as a two-point polyline in output coordinates.
  transforms_.push_back(AcGeMatrix3d::kIdentity);
  const AcGePoint3d ends[2] = {a, b};
  polyline(2, ends);
  transforms_.pop_back();
  return false;
}
