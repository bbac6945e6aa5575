// What one review shows: the drawing, the floor's view box and the findings
// of its last analysis. The atlas page and findings.json are written from it.
#ifndef FLOORXPORT_REVIEW_REVIEW_DATA_H_
#define FLOORXPORT_REVIEW_REVIEW_DATA_H_

#include <string>
#include <vector>

#include "review/finding.h"
#include "svg/svg_options.h"

namespace fx::review {

struct ReviewData {
  std::string drawing;          // the drawing's file name, as the page titles it
  size_t rooms_identified = 0;  // contours matched to an identifier
  // The world box the floor drawing shows. The page's SVG coordinates are
  // x' = x - view.min.x, y' = view.max.y - y (the export's transform).
  fx::svg::Frame view;
  std::vector<Finding> findings;

  size_t count(ProblemKind kind) const {
    size_t n = 0;
    for (const Finding& finding : findings) n += finding.kind == kind ? 1 : 0;
    return n;
  }
};

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_REVIEW_DATA_H_
