#include "entity_test_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>

#include "host/dxf/drawing_io.h"

namespace fx::testing {

fx::dxf::TagList TagsFrom(std::string_view text) {
  fx::dxf::TagList tags;
  while (!text.empty()) {
    size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    size_t first = line.find_first_not_of(' ');
    if (first == std::string_view::npos) continue;
    line.remove_prefix(first);
    size_t blank = line.find(' ');
    int code = std::stoi(std::string(line.substr(0, blank)));
    tags.Append(code, blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1));
  }
  return tags;
}

std::unique_ptr<AcDbDatabase> LoadDrawing(std::string_view lines, const std::string& name) {
  fx::dxf::TagList tags = TagsFrom(lines);
  std::string content;
  for (const fx::dxf::Tag& tag : tags.tags())
    content += std::to_string(tag.code) + "\n" + std::string(tag.value) + "\n";
  std::filesystem::path path = std::filesystem::path(::testing::TempDir()) / name;
  std::ofstream(path, std::ios::binary) << content;
  std::string error;
  std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path.string(), &error);
  EXPECT_NE(db, nullptr) << error;
  return db;
}

std::vector<AcDbObjectId> ModelSpaceIds(AcDbDatabase& db) {
  AcDbObjectPointer<AcDbBlockTableRecord> model(db.modelSpaceId(), AcDb::kForRead);
  return model.openStatus() == Acad::eOk ? model->entityIds() : std::vector<AcDbObjectId>();
}

class RecordingDraw::Traits : public AcGiSubEntityTraits {
 public:
  void setColor(uint16_t aci) override { color_ = aci; }
  void setTrueColor(const AcCmEntityColor& color) override { true_color_ = color; }
  void setLayer(AcDbObjectId layer) override { layer_ = layer; }
  void setLineType(AcDbObjectId linetype) override { linetype_ = linetype; }
  void setLineTypeScale(double scale) override { linetype_scale_ = scale; }
  void setLineWeight(AcDb::LineWeight weight) override { weight_ = weight; }
  void setFillType(AcGiFillType fill) override { fill_ = fill; }
  void setThickness(double) override {}
  uint16_t color() const override { return color_; }
  AcCmEntityColor trueColor() const override { return true_color_; }
  AcDbObjectId layerId() const override { return layer_; }
  AcDbObjectId lineTypeId() const override { return linetype_; }
  double lineTypeScale() const override { return linetype_scale_; }
  AcDb::LineWeight lineWeight() const override { return weight_; }
  AcGiFillType fillType() const override { return fill_; }

 private:
  uint16_t color_ = 0;
  AcCmEntityColor true_color_;
  AcDbObjectId layer_, linetype_;
  double linetype_scale_ = 1;
  AcDb::LineWeight weight_ = AcDb::kLnWtByLayer;
  AcGiFillType fill_ = kAcGiFillNever;
};

class RecordingDraw::Geometry : public AcGiWorldGeometry {
 public:
  explicit Geometry(const Traits& traits) : traits_(traits) { stack_.push_back(AcGeMatrix3d()); }

  bool circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) override {
    Primitive p = Start(Primitive::kCircle);
    p.normal = Model() * normal;
    AcGeMatrix3d frame = AcGeMatrix3d::planeToWorld(normal);
    Sample(p, center, frame * AcGeVector3d(radius, 0, 0), frame * AcGeVector3d(0, radius, 0), 2 * std::numbers::pi);
    return Add(std::move(p));
  }
  bool circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                   const AcGeVector3d& start_vector, double sweep_angle, AcGiArcType) override {
    Primitive p = Start(Primitive::kArc);
    p.normal = Model() * normal;
    AcGeVector3d x = start_vector.normal(), y = normal.normal().crossProduct(x);
    Sample(p, center, x * radius, y * radius, sweep_angle);
    return Add(std::move(p));
  }
  bool polyline(uint32_t count, const AcGePoint3d* points, const AcGeVector3d*) override {
    return Add(WithPoints(Primitive::kPolyline, count, points));
  }
  bool polygon(uint32_t count, const AcGePoint3d* points) override {
    return Add(WithPoints(Primitive::kPolygon, count, points));
  }
  // Records the vertices the faces use: what a shell shows.
  bool shell(uint32_t count, const AcGePoint3d* vertices, uint32_t list_size, const int32_t* faces) override {
    Primitive p = Start(Primitive::kShell);
    for (uint32_t i = 0; i < list_size; i += static_cast<uint32_t>(std::abs(faces[i])) + 1)
      for (int32_t k = 1; k <= std::abs(faces[i]) && i + k < list_size; ++k)
        if (static_cast<uint32_t>(faces[i + k]) < count) p.points.push_back(Model() * vertices[faces[i + k]]);
    return Add(std::move(p));
  }
  bool text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
            const char* text, bool, const AcGiTextStyle& style) override {
    Primitive p = Start(Primitive::kText);
    p.points.push_back(Model() * position);
    p.normal = Model() * normal;
    p.direction = Model() * direction;
    p.text = text;
    p.style = style;
    return Add(std::move(p));
  }
  bool xline(const AcGePoint3d& first, const AcGePoint3d& second) override {
    const AcGePoint3d points[2] = {first, second};
    return Add(WithPoints(Primitive::kXline, 2, points));
  }
  bool ray(const AcGePoint3d& base, const AcGePoint3d& through) override {
    const AcGePoint3d points[2] = {base, through};
    return Add(WithPoints(Primitive::kRay, 2, points));
  }
  void pushModelTransform(const AcGeMatrix3d& transform) override { stack_.push_back(Model() * transform); }
  void popModelTransform() override { stack_.pop_back(); }
  AcGeMatrix3d getModelToWorldTransform() const override { return Model(); }
  bool beginBlockReference(const AcDbBlockReference&, const AcGeMatrix3d&) override {
    ++begin_inserts_;
    return take_inserts_;
  }
  void endBlockReference(const AcDbBlockReference&) override { ++end_inserts_; }
  bool hatch(const AcDbHatch&, const std::vector<AcDbHatchLoop>&, const AcGeMatrix3d&) override {
    ++hatch_hooks_;
    return take_hatches_;
  }

  const AcGeMatrix3d& Model() const { return stack_.back(); }

  std::vector<Primitive> primitives_;
  std::vector<AcGeMatrix3d> stack_;
  bool take_inserts_ = false, take_hatches_ = false;
  int begin_inserts_ = 0, end_inserts_ = 0, hatch_hooks_ = 0;

 private:
  // The start, middle and end points of the curve centre + x cos t
  // + y sin t (t from 0 to sweep), and the box of 4097 points evenly along
  // it, all in world coordinates. The points are sampled, so that the box
  // does not share the host's extents arithmetic; cos and sin are stepped
  // by rotation, which the corpus test needs to be fast.
  void Sample(Primitive& p, const AcGePoint3d& center, const AcGeVector3d& x, const AcGeVector3d& y,
              double sweep) const {
    constexpr int kSteps = 4096;
    const AcGePoint3d c = Model() * center;
    const AcGeVector3d u = Model() * x, v = Model() * y;
    const double step_cos = std::cos(sweep / kSteps), step_sin = std::sin(sweep / kSteps);
    double cos_t = 1, sin_t = 0;
    for (int i = 0; i <= kSteps; ++i) {
      const AcGePoint3d q = c + u * cos_t + v * sin_t;
      p.box.addPoint(q);
      if (i == 0 || i == kSteps / 2 || i == kSteps) p.points.push_back(q);
      const double next_cos = cos_t * step_cos - sin_t * step_sin;
      sin_t = sin_t * step_cos + cos_t * step_sin;
      cos_t = next_cos;
    }
  }
  Primitive Start(Primitive::Kind kind) const {
    Primitive p;
    p.kind = kind;
    p.fill = traits_.fillType();
    p.model = Model();
    return p;
  }
  Primitive WithPoints(Primitive::Kind kind, uint32_t count, const AcGePoint3d* points) const {
    Primitive p = Start(kind);
    for (uint32_t i = 0; i < count; ++i) p.points.push_back(Model() * points[i]);
    return p;
  }
  bool Add(Primitive p) {
    primitives_.push_back(std::move(p));
    return false;
  }

  const Traits& traits_;
};

RecordingDraw::RecordingDraw()
    : traits_(std::make_unique<Traits>()), geometry_(std::make_unique<Geometry>(*traits_)) {}
RecordingDraw::~RecordingDraw() = default;
AcGiWorldGeometry& RecordingDraw::geometry() const { return *geometry_; }
AcGiSubEntityTraits& RecordingDraw::subEntityTraits() const { return *traits_; }
void RecordingDraw::set_take_inserts(bool take) { geometry_->take_inserts_ = take; }
void RecordingDraw::set_take_hatches(bool take) { geometry_->take_hatches_ = take; }
const std::vector<Primitive>& RecordingDraw::primitives() const { return geometry_->primitives_; }
int RecordingDraw::begin_inserts() const { return geometry_->begin_inserts_; }
int RecordingDraw::end_inserts() const { return geometry_->end_inserts_; }
int RecordingDraw::hatch_hooks() const { return geometry_->hatch_hooks_; }
size_t RecordingDraw::depth() const { return geometry_->stack_.size() - 1; }

size_t RecordingDraw::Count(Primitive::Kind kind) const {
  size_t n = 0;
  for (const Primitive& p : primitives()) n += p.kind == kind;
  return n;
}

void ExpectBox(const AcDbExtents& box, const AcGePoint3d& min, const AcGePoint3d& max, double tolerance) {
  const AcGePoint3d corners[][2] = {{box.minPoint(), min}, {box.maxPoint(), max}};
  for (const auto& [actual, expected] : corners) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
  }
}

AcDbExtents BoxOfDrawing(const RecordingDraw& draw) {
  AcDbExtents box;
  for (const Primitive& p : draw.primitives())
    if (p.kind == Primitive::kArc || p.kind == Primitive::kCircle) {
      box.addPoint(p.box.minPoint());
      box.addPoint(p.box.maxPoint());
    } else if (p.kind != Primitive::kText && p.kind != Primitive::kXline && p.kind != Primitive::kRay) {
      for (const AcGePoint3d& q : p.points) box.addPoint(q);
    }
  return box;
}

}  // namespace fx::testing
