// The export options as the export reads them from the settings store
// (section ExportOptions), each with its documented default.
#ifndef FLOORXPORT_EXPORT_EXPORT_SETTINGS_H_
#define FLOORXPORT_EXPORT_EXPORT_SETTINGS_H_

#include <string>

namespace fx::exports {

// "Drawing Position": how the export frame is found.
enum class DrawingPosition : int {
  kExtents = 0,      // "By drawing extents": zoom to extents, the drawing's extents
  kActiveView = 1,   // the active viewport's view (and the fallback of the others)
  kLayerEntity = 2,  // "By polyline boundary": the first entity of a layer
};

struct ExportSettings {
  bool save_all_attributes = false;  // "Save All Attributes"
  bool approximate_arc = false;      // "Approximate Arc"
  bool block_optimization = true;    // "Block optimization"
  bool hatch_optimization = false;   // "Hatch optimization"
  // "Drawing Position" as stored: 0, 1 or 2; any other value acts as 1.
  int drawing_position = 0;
  std::string frame_layer;  // "Viewbox poly_ext layer"
  bool draw_box = false;    // "Draw Box"
  bool draw_import_layer = false;  // "Draw Import Layer"

  DrawingPosition position() const;
};

// Reads every option above; a value that is missing or unreadable gives
// its default. Booleans are true for any non-zero integer.
ExportSettings ReadExportSettings();

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_EXPORT_SETTINGS_H_
