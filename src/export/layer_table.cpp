#include "export/layer_table.h"

#include <charconv>
#include <memory>
#include <unordered_map>

#include "host/database.h"

namespace fx::exports {

Acad::ErrorStatus ReadLayerTable(AcDbDatabase& database, std::vector<LayerEntry>& layers) {
  layers.clear();
  std::vector<AcDbObjectId> ids;
  {
    AcDbLayerTable* table = nullptr;
    const Acad::ErrorStatus status = database.getLayerTable(table, AcDb::kForRead);
    // A drawing without a layer table (an R12 file of entities only) has
    // no layers to list.
    if (status == Acad::eKeyNotFound) return Acad::eOk;
    if (status != Acad::eOk) return status;
    ids = table->recordIds();
    table->close();
  }
  layers.reserve(ids.size());
  for (AcDbObjectId id : ids) {
    AcDbObjectPointer<AcDbLayerTableRecord> record(id, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) continue;
    LayerEntry entry;
    entry.layer = id;
    entry.id = static_cast<long>(layers.size()) + 1;
    entry.name = record->getName();
    entry.visible = !record->isOff();
    entry.rgb = record->color().rgb();
    entry.weight = record->lineWeight();
    layers.push_back(std::move(entry));
  }
  return Acad::eOk;
}

fx::svg::LayerIdFunction LayerIdFunctionOf(const std::vector<LayerEntry>& layers) {
  auto numbers = std::make_shared<std::unordered_map<AcDbObjectId, long>>();
  for (const LayerEntry& entry : layers) numbers->emplace(entry.layer, entry.id);
  return [numbers](AcDbObjectId layer) -> std::optional<long> {
    const auto it = numbers->find(layer);
    if (it == numbers->end()) return std::nullopt;
    return it->second;
  };
}

std::set<long> LayerIdsDrawn(const pugi::xml_node& svg_root) {
  std::set<long> drawn;
  for (const pugi::xpath_node& found : svg_root.select_nodes(".//*[@ss:lid]")) {
    const char* text = found.node().attribute("ss:lid").value();
    const char* end = text + std::char_traits<char>::length(text);
    long value = 0;
    const auto [stop, error] = std::from_chars(text, end, value);
    if (error == std::errc() && stop == end) drawn.insert(value);
  }
  return drawn;
}

}  // namespace fx::exports
