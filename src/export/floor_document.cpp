#include "export/floor_document.h"

#include <filesystem>

#include "export/document_file.h"
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

void AppendRoom(pugi::xml_node rooms, const FloorRoom& room) {
  pugi::xml_node element = rooms.append_child("room");
  SetText(element, "name", room.record.name);
  SetText(element, "type", room.record.category);
  SetText(element, "description", room.record.description);
  SetText(element, "comment", room.record.comment);
  const Outline* outline = room.outline ? &*room.outline : nullptr;
  element.append_attribute("area") = Fixed6(outline != nullptr ? outline->area : 0.0).c_str();
  element.append_attribute("path") = outline != nullptr ? VertexList(outline->vertices).c_str() : "";
  std::optional<std::string> centre = outline != nullptr ? BoxCentreText(outline->extents) : std::nullopt;
  element.append_attribute("textPosition") = centre ? centre->c_str() : "";
}

void AppendLayer(pugi::xml_node layers, const LayerEntry& entry) {
  pugi::xml_node layer = layers.append_child("layer");
  layer.append_attribute("id") = std::to_string(entry.id).c_str();
  SetText(layer, "name", entry.name);
  layer.append_attribute("visible") = entry.visible ? "true" : "false";
  layer.append_attribute("color") = LayerColorText(entry.rgb).c_str();
  layer.append_attribute("lw") = LayerWeightText(entry.weight).c_str();
  layer.append_attribute("empty") = "";  // known once the SVG is in place
}

// x' = a x + c y + e, y' = b x + d y + f.
void AppendMatrix(pugi::xml_node layout, const char* type, const AcGeMatrix3d& m) {
  pugi::xml_node matrix = layout.append_child("matrix");
  matrix.append_attribute("type") = type;
  const std::pair<const char*, double> coefficients[] = {
      {"a", m(0, 0)}, {"b", m(1, 0)}, {"c", m(0, 1)}, {"d", m(1, 1)}, {"e", m(0, 3)}, {"f", m(1, 3)},
  };
  for (const auto& [name, value] : coefficients) matrix.append_attribute(name) = MatrixCoefficient(value).c_str();
}

void SetEmptyFlags(pugi::xml_node layers, const pugi::xml_node& svg_root) {
  const std::set<long> drawn = LayerIdsDrawn(svg_root);
  for (pugi::xml_node layer : layers.children("layer")) {
    const long id = layer.attribute("id").as_llong();
    layer.attribute("empty") = drawn.count(id) != 0 ? "false" : "true";
  }
}

}  // namespace

void BuildFloorDocument(const FloorDocumentParts& parts, pugi::xml_document& document) {
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";
  pugi::xml_node root = document.append_child("file");
  root.append_attribute("xmlns") = kProgramNamespace;
  SetText(root, "name", parts.file_name);
  root.append_attribute("version") = kFloorDocumentVersion;
  root.append_attribute("defaultUnits") = DefaultUnitsName(parts.units);

  const FloorData& floor = *parts.floor;
  pugi::xml_node floor_element = root.append_child("floor");
  const bool found = !floor.floor_id.isNull();
  floor_element.append_attribute("area") = found ? Fixed4(floor.floor ? floor.floor->area : 0.0).c_str() : "";
  floor_element.append_attribute("path") = found && floor.floor ? VertexList(floor.floor->vertices).c_str() : "";

  pugi::xml_node rooms = root.append_child("rooms");
  for (const FloorRoom& room : floor.rooms) AppendRoom(rooms, room);

  pugi::xml_node layouts = root.append_child("layouts");
  pugi::xml_node layout = layouts.append_child("layout");
  layout.append_attribute("name") = kModelSpaceLayout;
  pugi::xml_node layers = layout.append_child("layers");
  for (const LayerEntry& entry : *parts.layers) AppendLayer(layers, entry);
  AppendMatrix(layout, "A2SVG", parts.drawing->world_to_svg);
  AppendMatrix(layout, "SVG2A", parts.drawing->svg_to_world);

  pugi::xml_node svg;
  if (parts.drawing->svg != nullptr) svg = parts.drawing->svg->AppendTo(root);
  SetEmptyFlags(layers, svg);
}

bool WriteFloorDocument(ExportFormat format, const std::string& path, bool strict) {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr) return false;
  const ExportSettings settings = ReadExportSettings();
  FloorData floor;
  if (Acad::ErrorStatus status = ReadFloor(*database, AnalysedRoomIds(), floor); status != Acad::eOk) {
    acutPrintf("\npModelSpace.openStatus = %s", Acad::acadErrorStatusText(status));
    return false;
  }
  if (!CheckFloor(!floor.floor_id.isNull(), floor.floor ? floor.floor->area : 0.0, strict)) return false;
  std::vector<LayerEntry> layers;
  if (Acad::ErrorStatus status = ReadLayerTable(*database, layers); status != Acad::eOk) {
    acutPrintf("\npDb->getLayerTable = %s", Acad::acadErrorStatusText(status));
    return false;
  }
  DriverOptions options;
  options.drawing_document = format == ExportFormat::kDrawing;
  options.program_attributes = true;
  options.layer_id = LayerIdFunctionOf(layers);
  const DriverResult drawing = RunExportDriver(*database, settings, options);
  if (drawing.svg == nullptr) return false;

  pugi::xml_document document;
  BuildFloorDocument({database->filename(), static_cast<int>(database->insunits()), &floor, &layers, &drawing},
                     document);
  if (format != ExportFormat::kDrawing) return SaveDocumentFile(document, path, Compression::kNone);
  if (!SaveDocumentFile(document, path, Compression::kGzipBest)) return false;
  std::error_code error;
  const uintmax_t size = std::filesystem::file_size(path, error);
  if (!error && IsLargeDrawingFile(size)) acedMessageBox(kLargeDrawingWarning, "", MB_OK | MB_ICONWARNING);
  return true;
}

}  // namespace fx::exports
