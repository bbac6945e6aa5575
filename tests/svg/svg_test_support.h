// Test helpers for the SVG renderer: small drawings written as text and
// loaded by the headless host, rendering them, and reading the SVG back.
#ifndef FLOORXPORT_TESTS_SVG_SVG_TEST_SUPPORT_H_
#define FLOORXPORT_TESTS_SVG_SVG_TEST_SUPPORT_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "host/database.h"
#include "svg/svg_options.h"
#include "svg/svg_path.h"

namespace fx::svg_test {

// A drawing from records, one per line, each a run of tags "CODE VALUE"
// separated by '|' (the value is what follows the first blank), loaded from
// a file `name` in the test's temporary directory. nullptr (with a test
// failure) when it does not load.
std::unique_ptr<AcDbDatabase> LoadDrawing(std::string_view records, const std::string& name);

// The records of an R12 drawing with these TABLES, BLOCKS and ENTITIES
// records (each may be empty).
std::string R12(std::string_view tables, std::string_view blocks, std::string_view entities);

// Renders model space; fails the test when it cannot.
std::unique_ptr<pugi::xml_document> Render(AcDbDatabase& db, const fx::svg::Frame& frame,
                                           const fx::svg::SvgOptions& options = {});

// What the drawing group holds, as the document's text writes it.
std::string DrawnText(const pugi::xml_document& document);

// Every element named `name`, in document order.
std::vector<pugi::xml_node> Elements(const pugi::xml_node& root, const char* name);

// The numbers in a text ("M1,2 L3,4" gives 1 2 3 4), read with from_chars.
std::vector<double> Numbers(std::string_view text);

// A 2-D affine map as SVG writes it: x' = a x + c y + e, y' = b x + d y + f.
struct Affine {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
  fx::svg::Point2 operator()(fx::svg::Point2 p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  Affine operator*(const Affine& r) const;
};
// The map of a "transform" attribute ("matrix(...)"), identity when absent.
Affine TransformOf(const pugi::xml_node& node);

// Every straight stroke the document draws, in SVG coordinates: <line>
// elements and the sides of <polyline> and <polygon> elements, also those
// reached through <use> (each mapped by the transforms on the way).
struct Segment {
  fx::svg::Point2 a, b;
};
std::vector<Segment> Segments(const pugi::xml_document& document);

}  // namespace fx::svg_test

#endif  // FLOORXPORT_TESTS_SVG_SVG_TEST_SUPPORT_H_
