#include "export/floor_xml_v1.h"

#include <string_view>
#include <vector>

#include "export/document_file.h"
#include "export/export_settings.h"
#include "export/floor_checks.h"
#include "host/database.h"
#include "host/editor.h"
#include "host/whole_file.h"
#include "svg/program_namespace.h"
#include "svg/svg_escape.h"
#include "svg/svg_number.h"

namespace fx::exports {
namespace {

// An attribute as `name="value"`, the value escaped as the XML library
// escapes attribute values (the floor files were written through it, and
// stay byte for byte the same): &, < and " as entities. The value holds no
// control characters: AttributeValue removes them from the drawing's texts.
void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
  out += ' ';
  out += name;
  out += "=\"";
  for (const char c : value) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  out += '"';
}

void AppendText(std::string& out, std::string_view name, const std::string& value) {
  AppendAttribute(out, name, fx::svg::AttributeValue(value));
}

// A number attribute: digits, sign and point need no escaping.
void AppendNumber(std::string& out, std::string_view name, double value, int decimals) {
  out += ' ';
  out += name;
  out += "=\"";
  fx::svg::AppendFixed(out, value, decimals);
  out += '"';
}

void AppendPoints(std::string& out, const std::vector<AcGePoint2d>& vertices) {
  for (const AcGePoint2d& vertex : vertices) {
    out += "<point";
    AppendNumber(out, "x", vertex.x, 4);
    AppendNumber(out, "y", vertex.y, 4);
    out += "/>";
  }
}

}  // namespace

std::string FloorXmlV1Text(const FloorData& floor, bool save_all_attributes) {
  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><FLOOR";
  AppendAttribute(out, "xmlns", kProgramNamespace);
  if (floor.floor_id.isNull()) {
    AppendAttribute(out, "AREA", "");
  } else {
    AppendNumber(out, "AREA", floor.floor ? floor.floor->area : 0.0, 4);
  }
  out += '>';
  if (!floor.floor_id.isNull() && floor.floor) AppendPoints(out, floor.floor->vertices);
  if (floor.rooms.empty()) {
    out += "<ROOMS/></FLOOR>";
    return out;
  }
  out += "<ROOMS>";
  for (const FloorRoom& room : floor.rooms) {
    out += "<ROOM";
    AppendText(out, "NUMBER", room.record.name);
    AppendNumber(out, "SQINCH", room.outline ? room.outline->area : 0.0, 6);
    if (save_all_attributes) {
      AppendText(out, "TYPE", room.record.category);
      AppendText(out, "DESCRIPTION", room.record.description);
      AppendText(out, "COMMENT", room.record.comment);
    }
    if (!room.outline || room.outline->vertices.empty()) {
      out += "/>";
      continue;
    }
    out += '>';
    AppendPoints(out, room.outline->vertices);
    out += "</ROOM>";
  }
  out += "</ROOMS></FLOOR>";
  return out;
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
  std::string error;
  if (WriteWholeFile(path, FloorXmlV1Text(floor, save_all), &error)) return true;
  acutPrintf("%s", SaveFailureMessage(error).c_str());
  return false;
}

}  // namespace fx::exports
