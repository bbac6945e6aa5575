#include "export/floor_xml_v1.h"

#include "export/document_file.h"
#include "export/export_settings.h"
#include "export/floor_checks.h"
#include "export/floor_values.h"
#include "host/database.h"
#include "host/editor.h"
#include "svg/program_namespace.h"
#include "svg/svg_escape.h"

namespace fx::exports {
namespace {

void SetText(pugi::xml_node node, const char* name, const std::string& value) {
  node.append_attribute(name) = fx::svg::AttributeValue(value).c_str();
}

void AppendPoints(pugi::xml_node parent, const std::vector<AcGePoint2d>& vertices) {
  for (const AcGePoint2d& vertex : vertices) {
    pugi::xml_node point = parent.append_child("point");
    point.append_attribute("x") = Fixed4(vertex.x).c_str();
    point.append_attribute("y") = Fixed4(vertex.y).c_str();
  }
}

}  // namespace

void BuildFloorXmlV1(const FloorData& floor, bool save_all_attributes, pugi::xml_document& document) {
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";
  pugi::xml_node root = document.append_child("FLOOR");
  root.append_attribute("xmlns") = kProgramNamespace;
  pugi::xml_attribute area = root.append_attribute("AREA");
  if (!floor.floor_id.isNull()) {
    area = Fixed4(floor.floor ? floor.floor->area : 0.0).c_str();
    if (floor.floor) AppendPoints(root, floor.floor->vertices);
  }
  pugi::xml_node rooms = root.append_child("ROOMS");
  for (const FloorRoom& room : floor.rooms) {
    pugi::xml_node element = rooms.append_child("ROOM");
    SetText(element, "NUMBER", room.record.name);
    element.append_attribute("SQINCH") = Fixed6(room.outline ? room.outline->area : 0.0).c_str();
    if (save_all_attributes) {
      SetText(element, "TYPE", room.record.category);
      SetText(element, "DESCRIPTION", room.record.description);
      SetText(element, "COMMENT", room.record.comment);
    }
    if (room.outline) AppendPoints(element, room.outline->vertices);
  }
}

bool WriteFloorXmlV1(const std::string& path, bool strict) {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr) return false;
  const bool save_all = ReadExportSettings().save_all_attributes;
  FloorData floor;
  if (Acad::ErrorStatus status = ReadFloor(*database, AnalysedRoomIds(), floor); status != Acad::eOk) {
    acutPrintf("\npModelSpace.openStatus = %s", Acad::acadErrorStatusText(status));
    return false;
  }
  if (!CheckFloor(!floor.floor_id.isNull(), floor.floor ? floor.floor->area : 0.0, strict)) return false;
  pugi::xml_document document;
  BuildFloorXmlV1(floor, save_all, document);
  return SaveDocumentFile(document, path, Compression::kNone);
}

}  // namespace fx::exports
