// Format code 0, "PlanVault v1" (.xml): the floor outline and area and each
// room's number, area and outline (docs/floor-xml.md):
//
//   <?xml version="1.0" encoding="UTF-8"?>
//   <FLOOR xmlns="PROGRAM NAMESPACE" AREA="%.4f">
//     <point x="%.4f" y="%.4f"/>...                 the floor outline
//     <ROOMS>
//       <ROOM NUMBER SQINCH="%.6f" [TYPE DESCRIPTION COMMENT]>
//         <point x y/>...                           the room's contour
//       </ROOM>...
//     </ROOMS>
//   </FLOOR>
#ifndef FLOORXPORT_EXPORT_FLOOR_XML_V1_H_
#define FLOORXPORT_EXPORT_FLOOR_XML_V1_H_

#include <string>

#include "export/floor_source.h"

namespace fx::exports {

// The document of `floor`, unindented, written straight into one string
// (no tree: a floor of 20,000 rooms is 4 MB of text). `AREA` is empty and
// `FLOOR` has no points when the floor has no outline id; a floor outline
// that is no polyline has area 0 and no points. TYPE, DESCRIPTION and
// COMMENT are written only with `save_all_attributes`.
std::string FloorXmlV1Text(const FloorData& floor, bool save_all_attributes);

// Writes the current drawing's v1 document to `path` (whole or not at all),
// after the floor checks (floor_checks.h) in `strict` mode. Reports on the
// command line; true when the file was written.
bool WriteFloorXmlV1(const std::string& path, bool strict);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_FLOOR_XML_V1_H_
