#include "review/atlas_floor.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "export/export_driver.h"
#include "export/export_settings.h"
#include "review/finding_kinds.h"
#include "svg/render_model_space.h"
#include "svg/svg_number.h"

namespace fx::review {
namespace {

constexpr double kPixelsPerMillimetre = 96 / 25.4;
// The view's margin around the extents, as a share of the larger side: an
// outline on the edge of the drawing stays whole.
constexpr double kViewMargin = 0.02;

// The width in pixels the overview of the floor is assumed to take, and the
// height below which its texts cannot be read there.
constexpr double kOverviewPixels = 1600;
constexpr double kReadableTextPixels = 4;

// Makes the strokes readable and measures the texts on the way.
class ScreenWalker : public pugi::xml_tree_walker {
 public:
  bool for_each(pugi::xml_node& node) override {
    if (pugi::xml_attribute width = node.attribute("stroke-width")) {
      width.set_value(ScreenStrokeWidth(width.value()).c_str());
      // The page's style does not reach into the copies a <use> makes of a
      // block: its elements carry the effect themselves.
      if (InDefinitions(node)) node.append_attribute("vector-effect").set_value("non-scaling-stroke");
    }
    if (std::string_view(node.name()) == "text") heights_.push_back(TextHeight(node));
    return true;
  }
  // The median height of the texts; 0 without texts.
  double MedianTextHeight() {
    if (heights_.empty()) return 0;
    auto middle = heights_.begin() + static_cast<std::ptrdiff_t>(heights_.size() / 2);
    std::nth_element(heights_.begin(), middle, heights_.end());
    return *middle;
  }

 private:
  // The font size scaled by the text's matrix "matrix(a b c d e f)", whose
  // (c, d) is the image of the text's y axis.
  static double TextHeight(const pugi::xml_node& text) {
    double size = text.attribute("font-size").as_double();
    double m[6] = {1, 0, 0, 1, 0, 0};
    std::string_view transform = text.attribute("transform").value();
    if (transform.starts_with("matrix(")) {
      const char* at = transform.data() + 7;
      const char* end = transform.data() + transform.size();
      for (double& value : m) {
        while (at < end && (*at == ' ' || *at == ',')) ++at;
        at = std::from_chars(at, end, value).ptr;
      }
    }
    return size * std::hypot(m[2], m[3]);
  }

  static bool InDefinitions(pugi::xml_node node) {
    for (; node; node = node.parent()) {
      if (std::string_view(node.name()) == "defs") return true;
    }
    return false;
  }

  std::vector<double> heights_;
};

int Decimals(const fx::svg::Frame& view) {
  return fx::svg::CoordinateDecimals(std::hypot(view.width(), view.height()));
}

}  // namespace

bool RenderAtlasFloor(AcDbDatabase& database, AtlasFloor* floor, std::string* error) {
  fx::svg::Frame extents;
  if (!fx::svg::ModelSpaceExtents(&database, extents)) {
    *error = "the drawing's model space has nothing to draw";
    return false;
  }
  const double margin = kViewMargin * std::max({extents.width(), extents.height(), 1e-9});
  floor->view = {{extents.min.x - margin, extents.min.y - margin}, {extents.max.x + margin, extents.max.y + margin}};
  fx::svg::SvgOptions options = fx::exports::RendererOptions(fx::exports::ReadExportSettings(), {});
  options.draw_box = false;
  Acad::ErrorStatus status = Acad::eOk;
  floor->svg = fx::svg::RenderModelSpace(&database, floor->view, options, &status);
  if (floor->svg == nullptr) {
    *error = std::string("model space cannot be read: ") + Acad::acadErrorStatusText(status);
    return false;
  }
  pugi::xml_node root = floor->svg->document_element();
  root.remove_attribute("version");
  root.prepend_attribute("id").set_value("floor-view");
  // The drawing group is the one that carries the view-box clip.
  for (pugi::xml_node group : root.children("g")) {
    if (group.attribute("clip-path")) group.prepend_attribute("id").set_value("floor");
  }
  ScreenWalker walker;
  floor->svg->traverse(walker);
  const double pixels = walker.MedianTextHeight() * kOverviewPixels / std::max(floor->view.width(), floor->view.height());
  if (pixels < kReadableTextPixels) root.append_attribute("class").set_value("small-text");
  return true;
}

std::string ScreenStrokeWidth(std::string_view width) {
  if (!width.ends_with("mm")) return std::string(width);
  double millimetres = 0;
  const char* end = width.data() + width.size() - 2;
  const auto [stop, failure] = std::from_chars(width.data(), end, millimetres);
  if (failure != std::errc() || stop != end) return std::string(width);
  std::string pixels;
  fx::svg::AppendGeneral(pixels, std::max(kMinStrokePixels, std::abs(millimetres) * kPixelsPerMillimetre), 3);
  return pixels;
}

AcGePoint2d ToView(const fx::svg::Frame& view, const AcGePoint2d& world) {
  return {world.x - view.min.x, view.max.y - world.y};
}

void AddMarks(const AtlasFloor& floor, const std::vector<Finding>& findings) {
  pugi::xml_node marks = floor.svg->document_element().append_child("g");
  marks.append_attribute("id").set_value("marks");
  const int decimals = Decimals(floor.view);
  for (size_t i = 0; i < findings.size(); ++i) {
    std::string points;
    for (const AcGePoint2d& world : findings[i].outline) {
      const AcGePoint2d point = ToView(floor.view, world);
      if (!points.empty()) points += ' ';
      fx::svg::AppendCoordinate(points, point.x, decimals);
      points += ',';
      fx::svg::AppendCoordinate(points, point.y, decimals);
    }
    pugi::xml_node mark = marks.append_child("polygon");
    mark.append_attribute("id").set_value(("m" + std::to_string(i + 1)).c_str());
    mark.append_attribute("class").set_value((std::string("mark k-") + Info(findings[i].kind).id).c_str());
    mark.append_attribute("points").set_value(points.c_str());
  }
}

}  // namespace fx::review
