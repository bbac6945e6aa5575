#include "rooms/contour_index.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>

namespace fx::rooms {
namespace {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;
using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;
using Entry = std::pair<Box, size_t>;

Box ToBox(const AcDbExtents& extents) {
  return {{extents.minPoint().x, extents.minPoint().y}, {extents.maxPoint().x, extents.maxPoint().y}};
}

// Query results come in the tree's order; callers test them in list order.
template <class Predicate>
std::vector<size_t> InListOrder(const bgi::rtree<Entry, bgi::rstar<16>>& tree, const Predicate& predicate) {
  std::vector<size_t> found;
  tree.query(predicate, boost::make_function_output_iterator(
                            [&found](const Entry& entry) { found.push_back(entry.second); }));
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace

struct ContourIndex::Tree {
  bgi::rtree<Entry, bgi::rstar<16>> rtree;
};

ContourIndex::ContourIndex(std::span<const ContourGeometry> contours) {
  std::vector<Entry> entries;
  entries.reserve(contours.size());
  for (size_t i = 0; i < contours.size(); ++i) {
    if (!contours[i].extents.isEmpty()) entries.emplace_back(ToBox(contours[i].extents), i);
  }
  // The range constructor packs the tree in one go (bulk loading).
  tree_ = std::make_unique<Tree>(Tree{{entries.begin(), entries.end()}});
}

ContourIndex::~ContourIndex() = default;

std::vector<size_t> ContourIndex::ContoursAt(const AcGePoint2d& point) const {
  return InListOrder(tree_->rtree, bgi::intersects(Point(point.x, point.y)));
}

std::vector<size_t> ContourIndex::ContoursMeeting(const AcDbExtents& box) const {
  if (box.isEmpty()) return {};
  return InListOrder(tree_->rtree, bgi::intersects(ToBox(box)));
}

}  // namespace fx::rooms
