#include "svg_test_support.h"

#include <gtest/gtest.h>

#include <charconv>
#include <filesystem>
#include <fstream>

#include "host/dxf/drawing_io.h"
#include "svg/render_model_space.h"
#include "svg/svg_document.h"

namespace fx::svg_test {

std::unique_ptr<AcDbDatabase> LoadDrawing(std::string_view records, const std::string& name) {
  std::string content;
  size_t start = 0;
  while (start < records.size()) {
    size_t end = records.find_first_of("|\n", start);
    if (end == std::string_view::npos) end = records.size();
    std::string_view tag = records.substr(start, end - start);
    start = end + 1;
    if (tag.find_first_not_of(' ') == std::string_view::npos) continue;
    const size_t blank = tag.find(' ');
    content += std::string(tag.substr(0, blank)) + "\n";
    content += (blank == std::string_view::npos ? std::string() : std::string(tag.substr(blank + 1))) + "\n";
  }
  const std::filesystem::path path = std::filesystem::path(::testing::TempDir()) / name;
  std::ofstream(path, std::ios::binary) << content;
  std::string error;
  std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path.string(), &error);
  EXPECT_NE(db, nullptr) << error;
  return db;
}

std::string R12(std::string_view tables, std::string_view blocks, std::string_view entities) {
  std::string out = "0 SECTION|2 HEADER|9 $ACADVER|1 AC1009\n0 ENDSEC\n";
  out += "0 SECTION|2 TABLES\n" + std::string(tables) + "\n0 ENDSEC\n";
  out += "0 SECTION|2 BLOCKS\n" + std::string(blocks) + "\n0 ENDSEC\n";
  out += "0 SECTION|2 ENTITIES\n" + std::string(entities) + "\n0 ENDSEC\n0 EOF\n";
  return out;
}

std::unique_ptr<pugi::xml_document> Render(AcDbDatabase& db, const fx::svg::Frame& frame,
                                           const fx::svg::SvgOptions& options) {
  Acad::ErrorStatus status = Acad::eOk;
  std::unique_ptr<pugi::xml_document> document = fx::svg::RenderModelSpace(&db, frame, options, &status);
  EXPECT_NE(document, nullptr) << status;
  if (document == nullptr) document = std::make_unique<pugi::xml_document>();
  return document;
}

std::string DrawnText(const pugi::xml_document& document) {
  const std::string text = fx::svg::DocumentText(document);
  const std::string open = R"(stroke-width="0.01mm" fill="none">)", close = "</g></svg>";
  const size_t start = text.find(open);
  if (start == std::string::npos || !text.ends_with(close)) return text;
  return text.substr(start + open.size(), text.size() - close.size() - start - open.size());
}

std::vector<pugi::xml_node> Elements(const pugi::xml_node& root, const char* name) {
  std::vector<pugi::xml_node> found;
  for (pugi::xpath_node node : root.select_nodes((std::string(".//") + name).c_str())) found.push_back(node.node());
  return found;
}

std::vector<double> Numbers(std::string_view text) {
  std::vector<double> numbers;
  for (const char* p = text.data(); p < text.data() + text.size();) {
    double value = 0;
    const auto [next, error] = std::from_chars(p, text.data() + text.size(), value);
    if (error == std::errc()) numbers.push_back(value);
    p = error == std::errc() ? next : p + 1;
  }
  return numbers;
}

Affine Affine::operator*(const Affine& r) const {
  return {a * r.a + c * r.b, b * r.a + d * r.b, a * r.c + c * r.d, b * r.c + d * r.d, a * r.e + c * r.f + e,
          b * r.e + d * r.f + f};
}

Affine TransformOf(const pugi::xml_node& node) {
  const std::vector<double> m = Numbers(node.attribute("transform").value());
  if (m.size() != 6) return {};
  return {m[0], m[1], m[2], m[3], m[4], m[5]};
}

namespace {

void Collect(const pugi::xml_node& parent, const Affine& map, const pugi::xml_node& defs,
             std::vector<Segment>& out, int depth) {
  for (pugi::xml_node node : parent.children()) {
    const std::string name = node.name();
    if (name == "line") {
      const std::vector<double> v = {node.attribute("x1").as_double(), node.attribute("y1").as_double(),
                                     node.attribute("x2").as_double(), node.attribute("y2").as_double()};
      out.push_back({map({v[0], v[1]}), map({v[2], v[3]})});
    } else if (name == "polyline" || name == "polygon") {
      const std::vector<double> v = Numbers(node.attribute("points").value());
      std::vector<fx::svg::Point2> points;
      for (size_t i = 0; i + 1 < v.size(); i += 2) points.push_back(map({v[i], v[i + 1]}));
      for (size_t i = 0; i + 1 < points.size(); ++i) out.push_back({points[i], points[i + 1]});
      if (name == "polygon" && points.size() > 2) out.push_back({points.back(), points.front()});
    } else if (name == "g" && node.parent() != defs) {
      Collect(node, map, defs, out, depth);
    } else if (name == "use" && depth < 32) {
      const std::string href = node.attribute("xlink:href").value();
      pugi::xml_node definition = defs.find_child_by_attribute("g", "id", href.substr(1).c_str());
      EXPECT_TRUE(definition) << href;
      if (definition) Collect(definition, map * TransformOf(node), defs, out, depth + 1);
    }
  }
}

}  // namespace

std::vector<Segment> Segments(const pugi::xml_document& document) {
  std::vector<Segment> out;
  const pugi::xml_node root = document.child("svg");
  Collect(root.child("g"), Affine{}, root.child("defs"), out, 0);
  return out;
}

}  // namespace fx::svg_test
