// Rendering a drawing's model space to an SVG document: the convenience
// entry of the export driver.
#ifndef FLOORXPORT_SVG_RENDER_MODEL_SPACE_H_
#define FLOORXPORT_SVG_RENDER_MODEL_SPACE_H_

#include <memory>

#include <pugixml.hpp>

#include "host/geometry.h"
#include "host/status.h"
#include "svg/svg_document.h"
#include "svg/svg_options.h"

class AcDbDatabase;
class AcGiWorldGeometry;
class AcGiSubEntityTraits;

namespace fx::svg {

// World to SVG: x' = x - min x, y' = max y - y (the frame's top-left
// corner becomes (0, 0) and y points down). Its own inverse would be the
// same map with the frame's values: SvgToWorld gives it.
AcGeMatrix3d WorldToSvg(const Frame& frame);
AcGeMatrix3d SvgToWorld(const Frame& frame);

// The box of the extents of the visible model-space entities that have
// extents: the frame of "Drawing Position" 0 without running ZOOM. False
// when there is none.
bool ModelSpaceExtents(AcDbDatabase* database, Frame& frame);

// Draws the frame outline as a closed polyline through (min x, min y),
// (min x, max y), (max x, max y), (max x, min y), in world coordinates, on
// layer "0" with the layer's colour ("Draw Box").
void DrawFrameOutline(AcGiWorldGeometry& geometry, AcGiSubEntityTraits& traits, const Frame& frame);

// Renders each visible model-space entity of `database` in database order
// through a PvSvgWorldDraw whose first model transform is WorldToSvg(frame),
// then the frame outline when options.draw_box is set. Returns the
// document's text; nullptr when model space cannot be opened (*status, when
// given, is the host's status then, eOk otherwise).
std::unique_ptr<SvgText> RenderModelSpaceText(AcDbDatabase* database, const Frame& frame, const SvgOptions& options,
                                              Acad::ErrorStatus* status = nullptr);
// The same, parsed as a tree.
std::unique_ptr<pugi::xml_document> RenderModelSpace(AcDbDatabase* database, const Frame& frame,
                                                     const SvgOptions& options,
                                                     Acad::ErrorStatus* status = nullptr);

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_RENDER_MODEL_SPACE_H_
