// The floor drawing of the atlas: model space drawn by the SVG export's
// renderer, made readable on a screen, with the findings outlined on top.
//
//   <svg id="floor-view" viewBox="0 0 W H">      the export's document root
//     <clipPath>, <defs>                         as the export writes them
//     <g id="floor" ...>the drawing</g>          the export's drawing group
//     <g id="marks"><polygon id="m1" class="mark k-KIND" points="..."/>...</g>
//   </svg>
//
// The export's stroke widths are physical (millimetres, as the format
// requires) and vanish at screen scale: each becomes a width in screen
// pixels, the millimetres at 96 pixels to the inch and at least one pixel,
// which the page draws without scaling (vector-effect: non-scaling-stroke;
// an attribute of each element of a block definition, a rule of the page
// for the rest).
// When the texts are too small to be read in the overview of the whole
// floor (their median height under 4 pixels with the floor 1,600 pixels
// wide), the root gets the class "small-text" and the page leaves them out
// there: they would cost a third of the time to the first picture and show
// nothing. The cropped views show them.
#ifndef FLOORXPORT_REVIEW_ATLAS_FLOOR_H_
#define FLOORXPORT_REVIEW_ATLAS_FLOOR_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "review/finding.h"
#include "svg/svg_options.h"

class AcDbDatabase;

namespace fx::review {

inline constexpr double kMinStrokePixels = 1.0;

struct AtlasFloor {
  std::unique_ptr<pugi::xml_document> svg;
  fx::svg::Frame view;  // the world box shown: model space's extents and a margin
};

// Renders `database`'s model space with the renderer options of the export
// settings ("Draw Box" aside: the view is the extents, not the export
// frame). False, with *error, when model space cannot be read or has
// nothing with extents.
bool RenderAtlasFloor(AcDbDatabase& database, AtlasFloor* floor, std::string* error);

// A stroke width of the export ("0.35mm") as screen pixels ("1.32");
// another text is returned unchanged.
std::string ScreenStrokeWidth(std::string_view width);

// Adds the marks group, one outline per finding with the id "m" and its
// number (from 1), on top of the drawing.
void AddMarks(const AtlasFloor& floor, const std::vector<Finding>& findings);

// World to the page's SVG coordinates.
AcGePoint2d ToView(const fx::svg::Frame& view, const AcGePoint2d& world);

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_ATLAS_FLOOR_H_
