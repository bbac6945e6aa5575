// `floorxport info`: what a drawing holds.
#include <charconv>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli_args.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/active_view.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/console/terminal.h"
#include "host/dxf/console/units_names.h"
#include "host/dxf/drawing_io.h"
#include "host/dxf/model_space_extents.h"
#include "subcommands.h"

namespace fx::cli {

const char kInfoUsage[] = R"(Usage: floorxport info DRAWING [-o OUT.dxf]

DRAWING is a DXF or a DWG (converted to DXF on reading: the DWG's version
and the entities the conversion dropped are printed too).

Prints the drawing's format version, units, extents, active view, its layers
with the number of model-space entities on each, and the model-space
entities by type.

Options:
  -o, --output OUT.dxf   save a copy of the drawing, as loaded, to OUT.dxf
  -h, --help             show this help
)";

namespace {

// Up to four decimals, without trailing zeros: "1213.3214", "0", "-2.5".
std::string Number(double value) {
  char buffer[64];
  auto [end, error] =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 4);
  if (error != std::errc()) return "?";
  std::string text(buffer, end);
  if (text.find('.') != std::string::npos) {
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string Point(double x, double y) { return "(" + Number(x) + ", " + Number(y) + ")"; }

std::string Box(const AcDbExtents& box) {
  if (box.isEmpty()) return "none";
  return Point(box.minPoint().x, box.minPoint().y) + " - " +
         Point(box.maxPoint().x, box.maxPoint().y);
}

// "  NAME  COUNT" lines, names padded to one column.
std::string Table(const std::vector<std::pair<std::string, size_t>>& rows) {
  size_t width = 0;
  for (const auto& row : rows) width = std::max(width, row.first.size());
  std::string text;
  for (const auto& [name, count] : rows) {
    text += "\n  " + name + std::string(width - name.size() + 2, ' ') + std::to_string(count);
  }
  return text;
}

std::vector<std::string> LayerNames(AcDbDatabase& database) {
  std::vector<std::string> names;
  AcDbLayerTable* table = nullptr;
  if (database.getLayerTable(table, AcDb::kForRead) != Acad::eOk) return names;
  for (AcDbObjectId id : table->recordIds()) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
    if (layer.openStatus() == Acad::eOk) names.push_back(layer->getName());
  }
  table->close();
  return names;
}

std::string Describe(AcDbDatabase& database, const std::string& path) {
  std::map<std::string, size_t> by_layer;
  std::map<std::string, size_t> by_type;
  size_t entities = 0;
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(database.modelSpaceId(), AcDb::kForRead);
  if (model_space.openStatus() == Acad::eOk) {
    for (AcDbObjectId id : model_space->entityIds()) {
      AcDbEntityPointer entity(id, AcDb::kForRead);
      if (entity.openStatus() != Acad::eOk) continue;
      ++entities;
      ++by_layer[entity->layer()];
      ++by_type[entity->dxfName()];
    }
  }
  const int units = database.insunits();
  std::string text = "Drawing: " + path;
  text += "\nVersion: " + database.version();
  if (const fx::dxf::DwgSource* dwg = fx::dxf::DwgSourceOf(database)) {
    text += "\nDWG: " + dwg->version + " (" + dwg->release + "), read through DXF";
    std::string dropped;
    for (const std::string& item : dwg->dropped) dropped += (dropped.empty() ? "" : ", ") + item;
    text += "\nDropped in conversion: " + (dropped.empty() ? std::string("nothing") : dropped);
  }
  text += "\nUnits: " + std::to_string(units) + " (" + fx::console::InsunitsName(units) + ")";
  AcDbExtents extents;
  fx::dxf::ModelSpaceExtents(database, extents);
  text += "\nExtents: " + Box(extents);
  text += "\nHeader extents: " + Box(AcDbExtents(database.extmin(), database.extmax()));
  fx::console::View view;
  if (fx::console::GetActiveView(database, view) == Acad::eOk) {
    text += "\nView: centre " + Point(view.center.x, view.center.y) + ", height " +
            Number(view.height) + ", width " + Number(view.width);
  } else {
    text += "\nView: none";
  }
  // Layers in table order, then names used by entities but missing from the table.
  std::vector<std::pair<std::string, size_t>> layers;
  for (const std::string& name : LayerNames(database)) {
    auto it = by_layer.find(name);
    layers.emplace_back(name, it == by_layer.end() ? 0 : it->second);
    if (it != by_layer.end()) by_layer.erase(it);
  }
  for (const auto& [name, count] : by_layer)
    layers.emplace_back(name + " (not in the layer table)", count);
  text += "\nLayers: " + std::to_string(layers.size()) + Table(layers);
  text += "\nEntities in model space: " + std::to_string(entities) +
          Table({by_type.begin(), by_type.end()});
  return text + "\n";
}

}  // namespace

int InfoSubcommand(std::span<const std::string> args) {
  std::string path;
  std::optional<std::string> output;
  if (std::optional<int> status = ParseDrawingAndOutput(args, "info", kInfoUsage, &path, &output)) return *status;
  std::string error;
  std::unique_ptr<fx::console::Terminal> terminal = fx::console::MakeProcessTerminal();
  fx::console::Console console(*terminal, fx::console::AnswerPolicy());
  fx::console::CommandRunner runner(console, fx::console::Commands());
  fx::console::ModuleRegistry no_modules;
  fx::console::HostSession session(runner, no_modules);
  auto warn = [&](const std::string& message) {
    terminal->WriteErr("floorxport: warning: " + message + "\n");
  };
  if (!session.OpenDrawing(path, &error, warn)) {
    terminal->WriteErr("floorxport: " + error + "\n");
    return kExitFailure;
  }
  terminal->WriteOut(Describe(*session.document()->database(), path));
  if (output && !session.Save(*output, &error)) {
    terminal->WriteErr("floorxport: " + error + "\n");
    return kExitFailure;
  }
  return kExitOk;
}

}  // namespace fx::cli
