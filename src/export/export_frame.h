// The export frame: the box in world X and Y that becomes the SVG view box,
// found as "Drawing Position" says.
//
//   0  zoom to extents (the host's "_ZOOM" "E", with CMDECHO 0 so that its
//      prompts stay off the command line), then the drawing's extents (the
//      system variables EXTMIN to EXTMAX, brought up to date by the zoom);
//   2  the extents of the first entity of the "Viewbox poly_ext layer"
//      whose extents are not a point;
//   1  the active viewport's view: its centre minus and plus half its width
//      and height, both corners converted from the view's display
//      coordinates to world ones (acedTrans); the frame is the box of the
//      two converted corners.
//
// 2 falls back to 1 when the layer setting is empty, the layer does not
// exist, or no entity of it has extents that are not a point; 0 falls back
// to 1 when the extents are no box (a drawing without entities). 1 prints
// the failing step when the drawing has no active viewport:
//   "\npDb->getViewportTable(pViewPortTable, AcDb::kForRead) = %s"
//   "\npViewPortTable->getAt(_T(\"*ACTIVE\"), idViewport) = %s"
//   "\npViewPort.openStatus() = %s"
#ifndef FLOORXPORT_EXPORT_EXPORT_FRAME_H_
#define FLOORXPORT_EXPORT_EXPORT_FRAME_H_

#include <string>

#include "export/export_settings.h"
#include "svg/svg_options.h"

class AcDbDatabase;

namespace fx::exports {

// False when no frame was found (its message printed): the export ends
// without output.
bool FindExportFrame(AcDbDatabase& database, const ExportSettings& settings, fx::svg::Frame& frame);

// The single ways, for the tests: each false when it finds no frame.
bool ExtentsFrame(AcDbDatabase& database, fx::svg::Frame& frame);
bool LayerEntityFrame(AcDbDatabase& database, const std::string& layer, fx::svg::Frame& frame);
bool ActiveViewFrame(AcDbDatabase& database, fx::svg::Frame& frame);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_EXPORT_FRAME_H_
