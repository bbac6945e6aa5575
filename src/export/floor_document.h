// Format codes 1, "PlanVault v2" (.planvault), and 3, "PlanVault DRW"
// (.drawing, the same document gzip-compressed): the floor, its rooms, the
// layer table, the world-to-SVG transform and its inverse, and the whole
// drawing as an embedded SVG element tree (docs/floor-xml.md):
//
//   <?xml version="1.0" encoding="UTF-8"?>
//   <file xmlns="PROGRAM NAMESPACE" name version="1.6" defaultUnits>
//     <floor area="%.4f" path="[x,y],[x,y],..."/>
//     <rooms>
//       <room name type description comment area="%.6f" path textPosition="%.6f,%.6f"/>...
//     </rooms>
//     <layouts>
//       <layout name="MODELSPACE">
//         <layers><layer id name visible color lw empty/>...</layers>
//         <matrix type="A2SVG" a b c d e f/>
//         <matrix type="SVG2A" a b c d e f/>
//       </layout>
//     </layouts>
//     <svg xmlns="http://www.w3.org/2000/svg" ...>the drawing</svg>
//   </file>
#ifndef FLOORXPORT_EXPORT_FLOOR_DOCUMENT_H_
#define FLOORXPORT_EXPORT_FLOOR_DOCUMENT_H_

#include <string>
#include <vector>

#include <pugixml.hpp>

#include "export/export_driver.h"
#include "export/export_formats.h"
#include "export/floor_source.h"
#include "export/layer_table.h"

namespace fx::exports {

inline constexpr const char* kFloorDocumentVersion = "1.6";
inline constexpr const char* kModelSpaceLayout = "MODELSPACE";

struct FloorDocumentParts {
  std::string file_name;  // the drawing's file name as the database reports it
  int units = 0;          // the drawing's insertion units code
  const FloorData* floor = nullptr;
  const std::vector<LayerEntry>* layers = nullptr;
  const DriverResult* drawing = nullptr;  // the SVG document and the transforms
};

// Builds the document into the empty `document`; every pointer of `parts`
// must be set. `floor` and `path` of <floor> are empty when the floor has
// no outline id. A layer is `empty` "true" when no element beneath the
// embedded <svg> has its id as ss:lid.
void BuildFloorDocument(const FloorDocumentParts& parts, pugi::xml_document& document);

// Writes the current drawing's document to `path` (whole or not at all):
// plain for kPlanVault, gzip "wb9" for kDrawing, after which a file above
// 614,400 bytes draws the warning of document_file.h. The floor checks
// (floor_checks.h) come first, in `strict` mode. True when written.
bool WriteFloorDocument(ExportFormat format, const std::string& path, bool strict);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_FLOOR_DOCUMENT_H_
