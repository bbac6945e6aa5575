// The export driver shared by the SVG and floor document formats: it finds
// the export frame (export_frame.h), renders model space through the SVG
// renderer with the world-to-SVG transform x' = x - min x, y' = max y - y
// as its first model transform, and hands back the SVG document with the
// transform and its inverse.
#ifndef FLOORXPORT_EXPORT_EXPORT_DRIVER_H_
#define FLOORXPORT_EXPORT_EXPORT_DRIVER_H_

#include <memory>
#include <optional>

#include <pugixml.hpp>

#include "export/export_settings.h"
#include "host/geometry.h"
#include "svg/svg_document.h"
#include "svg/svg_options.h"

class AcDbDatabase;

namespace fx::exports {

struct DriverOptions {
  bool drawing_document = false;    // the target is a ".drawing"
  bool program_attributes = false;  // write ss:lid, ss:color and ss:lw (floor documents)
  fx::svg::LayerIdFunction layer_id;  // ss:lid of each layer
};

struct DriverResult {
  std::unique_ptr<fx::svg::SvgText> svg;
  fx::svg::Frame frame;
  AcGeMatrix3d world_to_svg;  // "A2SVG"
  AcGeMatrix3d svg_to_world;  // "SVG2A", its inverse
};

// The renderer's options for `settings` and `options`: "Approximate Arc",
// "Block optimization", "Hatch optimization" and "Draw Box" as set.
fx::svg::SvgOptions RendererOptions(const ExportSettings& settings, const DriverOptions& options);

// Runs the driver on `database` (the current document's). nullptr svg, with
// the failing step printed, when model space cannot be opened
// ("\nCDocData::GetBlockID = %s", "\npModelSpace.openStatus = %s",
// "\npModelSpace->newIterator = %s") or no frame is found: the export then
// writes nothing.
DriverResult RunExportDriver(AcDbDatabase& database, const ExportSettings& settings, const DriverOptions& options);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_EXPORT_DRIVER_H_
