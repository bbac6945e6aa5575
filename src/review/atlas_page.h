// index.html of the atlas: one self-contained page (docs/review-atlas.md).
// A header with the drawing's name and the legend (each kind's colour and
// count), the floor drawn whole with every finding outlined, then one card
// per finding in the order of the findings: a view of the floor cropped to
// the finding (a viewBox over <use> references of the one floor drawing,
// so the page holds the drawing once) and what was found. The page's
// Content-Security-Policy forbids every load from elsewhere.
#ifndef FLOORXPORT_REVIEW_ATLAS_PAGE_H_
#define FLOORXPORT_REVIEW_ATLAS_PAGE_H_

#include <string>
#include <string_view>

#include "review/atlas_floor.h"
#include "review/review_data.h"

namespace fx::review {

// The box a finding's card shows, in the page's SVG coordinates, as
// {x, y, width, height} with a 4:3 aspect: the outline and its room's
// contour with a margin; an identifier without a contour gets more room
// around it, so the walls near it are seen.
struct ViewBox {
  double x = 0, y = 0, width = 0, height = 0;
};
ViewBox CropBox(const fx::svg::Frame& view, const Finding& finding);

// Appends the page. `floor` holds the drawing with its marks (AddMarks).
void AppendAtlasPage(const ReviewData& review, const AtlasFloor& floor, std::string& page);

// Text for HTML content or a double-quoted attribute: cleaned as SVG text
// (svg_escape.h) and & < > " ' escaped.
std::string HtmlText(std::string_view utf8);

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_ATLAS_PAGE_H_
