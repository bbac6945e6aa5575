// OVERKILL on a drawing made for the test: which copies go, which lines
// merge, and what stays apart.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

#include "cleanup_fixture.h"

namespace fx::cleanup_test {
namespace {

std::string Num(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.12g", value);
  return text;
}

Tags Line(double x1, double y1, double x2, double y2) {
  return {{100, "AcDbLine"}, {10, Num(x1)}, {20, Num(y1)}, {30, "0.0"}, {11, Num(x2)}, {21, Num(y2)}, {31, "0.0"}};
}
Tags Circle(double x, double y, double r) {
  return {{100, "AcDbCircle"}, {10, Num(x)}, {20, Num(y)}, {30, "0.0"}, {40, Num(r)}};
}
Tags Arc(double x, double y, double r, double start, double end) {
  Tags tags = Circle(x, y, r);
  tags.insert(tags.end(), {{100, "AcDbArc"}, {50, Num(start)}, {51, Num(end)}});
  return tags;
}
// Vertices as x, y, bulge.
Tags Polyline(std::vector<std::array<double, 3>> vertices, bool closed) {
  Tags tags{{100, "AcDbPolyline"}, {90, std::to_string(vertices.size())}, {70, closed ? "1" : "0"}};
  for (const auto& [x, y, bulge] : vertices) {
    tags.insert(tags.end(), {{10, Num(x)}, {20, Num(y)}});
    if (bulge != 0) tags.emplace_back(42, Num(bulge));
  }
  return tags;
}
Tags Text(const char* text) {
  return {{100, "AcDbText"}, {10, "100.0"}, {20, "0.0"}, {30, "0.0"}, {40, "2.5"}, {1, text}, {100, "AcDbText"}};
}

// The test names its entities by type: Line, Circle, Arc, Polyline, Text, locKed, Vertical, Wrapping.
const char* TypeOf(const char* name) {
  switch (name[0]) {
    case 'C': return "CIRCLE";
    case 'A': return "ARC";
    case 'P': return "LWPOLYLINE";
    case 'T': return "TEXT";
    default: return "LINE";
  }
}

class OverkillTest : public CleanupTest {
 protected:
  void SetUp() override {
    TestDrawing d;
    d.Layer("A");
    d.Layer("Locked", {{70, "4"}});
    auto add = [&](const char* name, const std::string& layer, const Tags& body, const Tags& common = {}) {
      handles_[name] = d.Entity("", TypeOf(name), layer, body, common);
    };
    add("L1", "0", Line(0, 0, 10, 0));
    add("L2", "0", Line(10, 0, 0, 0));  // L1 reversed
    add("L3", "0", Line(5, 0, 15, 0));  // overlaps L1
    add("L4", "0", Line(12, 0, 20, 0));  // overlaps L3
    add("L5", "0", Line(2, 0, 3, 0));    // inside L1
    add("L6", "0", Line(20, 0, 30, 0));  // touches L4 end to end
    add("L7", "0", Line(0, 5, 10, 5));
    add("L8", "A", Line(0, 5, 10, 5));  // another layer
    add("L9", "0", Line(0, 10, 10, 10));
    add("L10", "0", Line(0, 10.0000005, 10, 10));  // within the tolerance
    add("L11", "0", Line(0, 20, 10, 20));
    add("L12", "0", Line(0, 20.00001, 10, 20));  // beyond it
    add("L13", "0", Line(0, 30, 10, 30), {{62, "1"}});
    add("L14", "0", Line(0, 30, 10, 30));  // another colour
    add("C1", "0", Circle(50, 50, 5));
    add("C2", "0", Circle(50, 50, 5));
    add("C3", "0", Circle(50, 50, 5.1));
    add("A1", "0", Arc(60, 60, 2, 0, 90));
    add("A2", "0", Arc(60, 60, 2, 360, 90));  // 360 degrees is 0
    add("P1", "0", Polyline({{{0, 40, 0}, {10, 40, 0}, {10, 50, 0}}}, false));
    add("P2", "0", Polyline({{{10, 50, 0}, {10, 40, 0}, {0, 40, 0}}}, false));  // reversed
    add("P3", "0", Polyline({{{0, 60, 0}, {10, 60, 0}, {10, 70, 0}, {0, 70, 0}}}, true));
    add("P4", "0", Polyline({{{10, 70, 0}, {10, 60, 0}, {0, 60, 0}, {0, 70, 0}}}, true));  // other start and way
    add("P5", "0", Polyline({{{0, 80, 0.5}, {10, 80, 0}}}, false));
    add("P6", "0", Polyline({{{10, 80, -0.5}, {0, 80, 0}}}, false));  // the same arc reversed
    add("P7", "0", Polyline({{{10, 80, 0.5}, {0, 80, 0}}}, false));   // the arc on the other side
    add("T1", "0", Text("Room 1"));
    add("T2", "0", Text("Room 1"));
    add("T3", "0", Text("Room 2"));
    add("K1", "Locked", Line(0, 90, 10, 90));
    add("K2", "Locked", Line(0, 90, 10, 90));
    add("V1", "0", Line(200, 0, 200, 10));
    add("V2", "0", Line(200, 15, 200, 5));  // overlaps V1, drawn downwards
    // Near the vertical, leaning either way: one at +pi/2, one just past it.
    add("W1", "0", Line(300, 0, 300, 100));
    add("W2", "0", Line(300.0000002, 50, 299.9999998, 150));
    Open(d);
  }

  std::set<std::string> Erased() {
    std::set<std::string> erased;
    const std::vector<std::string> left = ModelSpace();
    for (const auto& [name, handle] : handles_)
      if (std::find(left.begin(), left.end(), handle) == left.end()) erased.insert(name);
    return erased;
  }
  AcGePoint3d Point(const char* name, int code) {
    fx::dxf::TagList tags = RecordTags(handles_[name]);
    return tags.GetPoint(code, tags.Body());
  }

  std::map<std::string, std::string> handles_;
};

TEST_F(OverkillTest, RemovesCopiesAndMergesOverlappingLines) {
  EXPECT_EQ(RunCommands("_-OVERKILL All  Done"),
            "\nCommand: _-OVERKILL\nSelect objects: All\n35 found\nSelect objects: "
            "\nEnter an option [Tolerance/Done] <Done>: Done"
            "\n8 duplicate(s) deleted, 5 overlapping object(s) or segment(s) deleted\n");
  EXPECT_EQ(Erased(), (std::set<std::string>{"L2", "L3", "L4", "L5", "L10", "C2", "A2", "P2", "P4", "P6", "T2",
                                             "V2", "W2"}));
  // The first line of a run is stretched over it, keeping its direction.
  EXPECT_EQ(Point("L1", 10), AcGePoint3d(0, 0, 0));
  EXPECT_EQ(Point("L1", 11), AcGePoint3d(20, 0, 0));
  EXPECT_EQ(Point("L6", 10), AcGePoint3d(20, 0, 0));
  EXPECT_EQ(Point("V1", 10), AcGePoint3d(200, 0, 0));
  EXPECT_EQ(Point("V1", 11), AcGePoint3d(200, 15, 0));
  EXPECT_EQ(Point("W1", 11), AcGePoint3d(299.9999998, 150, 0));
}

TEST_F(OverkillTest, SelectionByHandleAndTolerance) {
  const std::string out = RunCommands("_-OVERKILL " + handles_["L11"] + " " + handles_["L12"] + " zz  T 0.0001 D");
  EXPECT_EQ(out, "\nCommand: _-OVERKILL\nSelect objects: " + handles_["L11"] + "\n1 found, 1 total\nSelect objects: " +
                     handles_["L12"] + "\n1 found, 2 total\nSelect objects: zz"
                     "\nNo object in model space has the handle \"zz\".\nSelect objects: "
                     "\nEnter an option [Tolerance/Done] <Done>: T\nEnter tolerance <0.000001>: 0.0001"
                     "\nEnter an option [Tolerance/Done] <Done>: D"
                     "\n1 duplicate(s) deleted, 0 overlapping object(s) or segment(s) deleted\n");
  EXPECT_EQ(Erased(), std::set<std::string>{"L12"});
}

}  // namespace
}  // namespace fx::cleanup_test
