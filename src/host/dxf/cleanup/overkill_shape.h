// An entity as OVERKILL compares it: a key that must be equal (type,
// properties, texts, flags) and numbers that must agree within the
// tolerance, in a canonical order so that a line drawn the other way round
// or a closed polyline started elsewhere compares equal.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_SHAPE_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_SHAPE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/dxf_tag.h"
#include "host/dxf/dxf_tag_range.h"
#include "host/geometry.h"

namespace fx::cleanup {

struct Shape {
  std::string key;
  std::vector<double> values;  // the most selective number first
  // LINE only: its end points as stored, its thickness and normal.
  bool is_line = false;
  AcGePoint3d start, end;
  double thickness = 0;
  AcGeVector3d normal{0, 0, 1};
  std::string properties;  // the common part of the key
};

// The shape of an entity record of `type`; nullopt for what OVERKILL leaves
// alone (see overkill.h).
std::optional<Shape> ShapeOf(std::string_view type, fx::dxf::TagRange tags, double tolerance);

// a < b, coordinates differing by no more than `tolerance` counting as equal.
bool TolerantLess(const AcGePoint3d& a, const AcGePoint3d& b, double tolerance);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_SHAPE_H_
