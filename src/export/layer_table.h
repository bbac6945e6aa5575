// The layer table of the floor document: every layer of the drawing with
// its display properties and the number that the SVG renderer writes as
// ss:lid on the elements of that layer.
#ifndef FLOORXPORT_EXPORT_LAYER_TABLE_H_
#define FLOORXPORT_EXPORT_LAYER_TABLE_H_

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "host/ids.h"
#include "host/status.h"
#include "svg/svg_options.h"

class AcDbDatabase;

namespace fx::exports {

struct LayerEntry {
  AcDbObjectId layer;  // the layer table record
  long id = 0;         // its number in the export: 1 for the first layer of the table, and so on
  std::string name;
  bool visible = true;  // not switched off (freezing does not count)
  uint32_t rgb = 0;     // the layer's colour as a true colour (palette 7 is white)
  int weight = 0;       // lineweight in hundredths of a millimetre, or a symbolic value
};

// The layers of `database` in table order; none for a drawing without a
// layer table. The host's status when the table cannot be opened; a record
// that cannot be opened is left out.
Acad::ErrorStatus ReadLayerTable(AcDbDatabase& database, std::vector<LayerEntry>& layers);

// The renderer's ss:lid of each layer of `layers` (a copy is kept, so
// `layers` need not outlive the function); nullopt for other ids.
fx::svg::LayerIdFunction LayerIdFunctionOf(const std::vector<LayerEntry>& layers);

// The ss:lid values of the elements beneath `svg_root` (the root <svg>),
// found by the XPath ".//*[@ss:lid]"; a value that is not a whole number is
// left out.
std::set<long> LayerIdsDrawn(const pugi::xml_node& svg_root);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_LAYER_TABLE_H_
