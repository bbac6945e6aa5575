// One problem of a floor as a review reports it, and how the findings are
// gathered from the room analysis.
#ifndef FLOORXPORT_REVIEW_FINDING_H_
#define FLOORXPORT_REVIEW_FINDING_H_

#include <optional>
#include <string>
#include <vector>

#include "host/geometry.h"
#include "review/finding_kinds.h"

namespace fx::rooms {
class CDocData;
}

namespace fx::review {

struct Finding {
  ProblemKind kind;
  std::string handle;   // the entity the problem list names (identifier or contour)
  std::string layer;    // that entity's layer
  std::string room;     // the room's name; rooms sharing a contour joined by ", "; empty when none
  AcGePoint2d point;    // an identifier's point (the one the inside test got); a contour's box centre
  std::string contour;  // the handle of the room's contour; empty when it has none
  std::optional<double> area;  // the contour's enclosed area; nullopt without contour or area
  AcDbExtents contour_box;     // the contour's extents; empty without contour
  // What the atlas outlines, in world coordinates, as a closed ring: the
  // contour's vertices (its box when it has arcs), or an identifier's box.
  std::vector<AcGePoint2d> outline;
  std::string fingerprint;  // fingerprint.h
};

// The findings of the document's last analysis, one per entry of its five
// problem lists: the kinds in the summary's order, each list in its order.
// An entry whose entity can no longer be opened (erased since) is left out.
std::vector<Finding> CollectFindings(const fx::rooms::CDocData& data);

// The outline's box; the box of the point alone for an empty outline (a
// contour without vertices or extents).
AcDbExtents OutlineBox(const Finding& finding);

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_FINDING_H_
