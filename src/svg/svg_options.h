// What the SVG renderer is asked to draw: the export frame and the
// switches of the export options.
#ifndef FLOORXPORT_SVG_SVG_OPTIONS_H_
#define FLOORXPORT_SVG_SVG_OPTIONS_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/geometry.h"
#include "host/ids.h"

namespace fx::svg {

// The export frame: an axis-aligned box in world X and Y that becomes the
// SVG view box. Its top-left corner (min x, max y) becomes the SVG origin.
struct Frame {
  AcGePoint2d min, max;
  double width() const { return max.x - min.x; }
  double height() const { return max.y - min.y; }
};

// The layer's id in the floor document's layer table, written as ss:lid;
// std::nullopt writes no ss:lid for that layer.
using LayerIdFunction = std::function<std::optional<long>(AcDbObjectId layer)>;

struct SvgOptions {
  // "Approximate Arc": arcs become polylines within deviation() instead of
  // SVG arc commands.
  bool approximate_arc = false;
  // "Block optimization": each block is written once under <defs> (per
  // scale and, where its contents inherit them, per insert properties) and
  // every insert becomes a <use>.
  bool block_optimization = true;
  // "Hatch optimization": pattern hatches are left out; solid fills stay.
  bool hatch_optimization = false;
  // "Draw Box": RenderModelSpace draws the frame outline after the drawing.
  bool draw_box = false;
  // The target is a ".drawing" document; kept for the caller, it does not
  // change what is drawn.
  bool drawing_document = false;
  // Write the program's attributes ss:lid, ss:color and ss:lw.
  bool program_attributes = false;
  // Draw the entities of the occupant import layer "!VANTORYIMPORT"
  // (left out by default: they are the service's own data).
  bool draw_import_layer = false;
  // The layers to draw, by name (compared without regard to case); the
  // others are left out as frozen layers are. nullopt draws every layer.
  std::optional<std::vector<std::string>> exported_layers;
  // Gives ss:lid; without it no ss:lid is written.
  LayerIdFunction layer_id;
  // The colour written for palette colour 7, the editor's foreground colour
  // (white on its dark screen): black, for a white page.
  uint32_t foreground_rgb = 0x000000;
};

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_OPTIONS_H_
