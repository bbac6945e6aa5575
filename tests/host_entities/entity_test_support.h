// Test helpers for the typed entities: objects made from tags written as
// text, drawings written to a temporary file and loaded, and a world-draw
// sink that records what an entity draws.
#ifndef FLOORXPORT_TESTS_HOST_ENTITIES_ENTITY_TEST_SUPPORT_H_
#define FLOORXPORT_TESTS_HOST_ENTITIES_ENTITY_TEST_SUPPORT_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/database.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

namespace fx::testing {

// Tags from lines "CODE VALUE" (the value is the rest of the line after one
// blank; blank lines are skipped).
fx::dxf::TagList TagsFrom(std::string_view text);

// A new object of class T over the tags of `text`.
template <class T>
std::unique_ptr<T> Make(std::string_view text) {
  return std::make_unique<T>(std::make_unique<AcDbImpObject>(TagsFrom(text)));
}

// Writes `lines` ("CODE VALUE" lines, as above) as an ASCII DXF file named
// `name` in the test's temporary directory and loads it; nullptr (with a
// test failure) when it does not load.
std::unique_ptr<AcDbDatabase> LoadDrawing(std::string_view lines, const std::string& name);

// The ids of the model-space entities of a drawing, in order.
std::vector<AcDbObjectId> ModelSpaceIds(AcDbDatabase& db);

struct Primitive {
  enum Kind { kCircle, kArc, kPolyline, kPolygon, kShell, kText, kXline, kRay };
  Kind kind = kPolyline;
  std::vector<AcGePoint3d> points;  // world coordinates; arcs and circles: start, middle, end
  AcDbExtents box;                  // circle, arc: the box of 4097 points evenly along it
  AcGeVector3d normal, direction;
  std::string text;
  AcGiTextStyle style;
  AcGiFillType fill = kAcGiFillNever;
  AcGeMatrix3d model;  // model-to-world transform when it was drawn
};

// Records the primitives drawn into it, mapped to world coordinates by the
// transforms pushed, with the traits current at the time.
class RecordingDraw : public AcGiWorldDraw {
 public:
  RecordingDraw();
  ~RecordingDraw() override;
  AcGiWorldGeometry& geometry() const override;
  AcGiSubEntityTraits& subEntityTraits() const override;
  AcGiContext* context() override { return nullptr; }
  double deviation() const override { return deviation_; }

  void set_deviation(double deviation) { deviation_ = deviation; }
  // Whether the sink takes block inserts and hatches over through the hooks.
  void set_take_inserts(bool take);
  void set_take_hatches(bool take);

  const std::vector<Primitive>& primitives() const;
  size_t Count(Primitive::Kind kind) const;
  int begin_inserts() const;
  int end_inserts() const;
  int hatch_hooks() const;
  size_t depth() const;  // transforms pushed and not popped

 private:
  class Geometry;
  class Traits;
  std::unique_ptr<Traits> traits_;
  std::unique_ptr<Geometry> geometry_;
  double deviation_ = 1e-3;
};

// Expects `box` to run from `min` to `max`, each coordinate within `tolerance`.
void ExpectBox(const AcDbExtents& box, const AcGePoint3d& min, const AcGePoint3d& max, double tolerance = 1e-9);
inline void ExpectBox(const AcDbExtents& box, const AcDbExtents& expected, double tolerance) {
  ExpectBox(box, expected.minPoint(), expected.maxPoint(), tolerance);
}

// The box of what was drawn, text and infinite lines left out (arcs and
// circles by their sampled box, shells by the vertices their faces use), to
// compare with extents.
AcDbExtents BoxOfDrawing(const RecordingDraw& draw);

}  // namespace fx::testing

#endif  // FLOORXPORT_TESTS_HOST_ENTITIES_ENTITY_TEST_SUPPORT_H_
