#include "server/occupant_import.h"

#include <cmath>
#include <filesystem>
#include <map>

#include "host/database.h"
#include "host/documents.h"
#include "host/editor.h"
#include "rooms/layer_unlocks.h"
#include "server/occupant_data.h"
#include "server/occupant_placement.h"
#include "server/occupant_request.h"
#include "server/server_address.h"
#include "server/server_data.h"
#include "server/workflow_result.h"

namespace fx::server {
namespace {

// How an attribute stands in the block: from the block's definition, or
// the import's own layout for a tag the definition lacks.
struct AttributeLayout {
  AcGePoint3d position;
  AcGePoint3d alignment;
  double height = 1;
  double rotation = 0;
  AcDbTextHorzMode horizontal = kTextCenter;
  AcDbTextVertMode vertical = kTextVertMid;
  bool default_alignment = false;
};

// Line i of the import's own layout: centred on the base point's vertical,
// the five lines around its height.
AttributeLayout OwnLayout(size_t line) {
  AttributeLayout layout;
  layout.position = AcGePoint3d(0, (2 - static_cast<double>(line)) * kLinePitch, 0);
  layout.alignment = layout.position;
  return layout;
}

std::string StatusText(const std::string& what, Acad::ErrorStatus status) {
  return what + " failed: " + Acad::acadErrorStatusText(status) + ".";
}

// The import block, made with its five attribute definitions when missing.
bool EnsureBlock(AcDbDatabase& database, AcDbObjectId& block_id, std::string& error) {
  AcDbBlockTable* blocks = nullptr;
  if (Acad::ErrorStatus status = database.getBlockTable(blocks, AcDb::kForRead); status != Acad::eOk) {
    error = StatusText("Reading the block table", status);
    return false;
  }
  if (blocks->getAt(kImportBlock, block_id) == Acad::eOk) {
    blocks->close();
    return true;
  }
  Acad::ErrorStatus status = blocks->upgradeOpen();
  auto* block = new AcDbBlockTableRecord();
  if (status == Acad::eOk) status = block->setName(kImportBlock);
  if (status == Acad::eOk) status = blocks->add(block_id, block);
  blocks->close();
  if (status != Acad::eOk) {
    delete block;
    error = StatusText("Making the block " + std::string(kImportBlock), status);
    return false;
  }
  block->setOrigin(AcGePoint3d::kOrigin);
  const char* const prompts[] = {"Room number", "Name", "Job title", "Room type", "Cost center"};
  for (size_t line = 0; line < kOccupantTags.size() && status == Acad::eOk; ++line) {
    const AttributeLayout layout = OwnLayout(line);
    auto* definition =
        new AcDbAttributeDefinition(layout.position, "", kOccupantTags[line], prompts[line], AcDbObjectId(), 1);
    definition->setHorizontalMode(layout.horizontal);
    definition->setVerticalMode(layout.vertical);
    definition->setAlignmentPoint(layout.alignment);
    AcDbObjectId definition_id;
    status = block->appendAcDbEntity(definition_id, definition);
    if (status == Acad::eOk) {
      definition->setLayer("0");
      definition->close();
    } else {
      delete definition;
    }
  }
  block->close();
  if (status != Acad::eOk) error = StatusText("Making the attribute definitions", status);
  return status == Acad::eOk;
}

bool EnsureLayer(AcDbDatabase& database, AcDbObjectId& layer_id, std::string& error) {
  AcDbLayerTable* layers = nullptr;
  if (Acad::ErrorStatus status = database.getLayerTable(layers, AcDb::kForRead); status != Acad::eOk) {
    error = StatusText("Reading the layer table", status);
    return false;
  }
  if (layers->getAt(kImportLayer, layer_id) == Acad::eOk) {
    layers->close();
    return true;
  }
  Acad::ErrorStatus status = layers->upgradeOpen();
  auto* layer = new AcDbLayerTableRecord();
  if (status == Acad::eOk) status = layer->setName(kImportLayer);
  if (status == Acad::eOk) status = layer->setColor(AcCmColor::fromIndex(kImportLayerColor));
  if (status == Acad::eOk) status = layers->add(layer_id, layer);
  layers->close();
  if (status != Acad::eOk) {
    delete layer;
    error = StatusText("Making the layer " + std::string(kImportLayer), status);
    return false;
  }
  layer->close();
  return true;
}

std::map<std::string, AttributeLayout> DefinitionLayouts(AcDbObjectId block_id) {
  std::map<std::string, AttributeLayout> layouts;
  AcDbObjectPointer<AcDbBlockTableRecord> block(block_id, AcDb::kForRead);
  if (block.openStatus() != Acad::eOk) return layouts;
  for (AcDbObjectId id : block->entityIds()) {
    AcDbObjectPointer<AcDbAttributeDefinition> definition(id, AcDb::kForRead);
    if (definition.openStatus() != Acad::eOk) continue;
    AttributeLayout layout;
    layout.position = definition->position();
    layout.alignment = definition->alignmentPoint();
    layout.height = definition->height();
    layout.rotation = definition->rotation();
    layout.horizontal = definition->horizontalMode();
    layout.vertical = definition->verticalMode();
    layout.default_alignment = definition->isDefaultAlignment();
    layouts.emplace(definition->tag(), layout);
  }
  return layouts;
}

// Erases every model-space entity on the import layer.
Acad::ErrorStatus EraseEarlierImport(AcDbDatabase& database, AcDbObjectId layer_id) {
  std::vector<AcDbObjectId> ids;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForRead);
    if (model.openStatus() != Acad::eOk) return model.openStatus();
    ids = model->entityIds();
  }
  for (AcDbObjectId id : ids) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || entity->layerId() != layer_id) continue;
    if (Acad::ErrorStatus status = entity->upgradeOpen(); status != Acad::eOk) return status;
    entity->erase();
  }
  return Acad::eOk;
}

// A point of the block as the insert places it: scaled, turned, moved.
AcGePoint3d Placed(const PlannedInsert& insert, const AcGePoint3d& point) {
  const double c = std::cos(insert.rotation);
  const double s = std::sin(insert.rotation);
  const double x = point.x * insert.text_height;
  const double y = point.y * insert.text_height;
  return insert.position + AcGeVector3d(x * c - y * s, x * s + y * c, 0);
}

Acad::ErrorStatus Insert(AcDbBlockTableRecord& model, AcDbObjectId block_id, AcDbObjectId layer_id,
                         const std::map<std::string, AttributeLayout>& layouts,
                         const PlannedInsert& planned) {
  auto* reference = new AcDbBlockReference(planned.position, block_id);
  AcDbObjectId reference_id;
  if (Acad::ErrorStatus status = model.appendAcDbEntity(reference_id, reference); status != Acad::eOk) {
    delete reference;
    return status;
  }
  AcDbObjectPointer<AcDbBlockReference> held(reference);
  // The layer first: the attributes' end marker takes the insert's.
  reference->setLayer(layer_id);
  reference->setScaleFactors({planned.text_height, planned.text_height, planned.text_height});
  reference->setRotation(planned.rotation);
  for (size_t line = 0; line < kOccupantTags.size(); ++line) {
    const auto found = layouts.find(kOccupantTags[line]);
    const AttributeLayout layout = found != layouts.end() ? found->second : OwnLayout(line);
    auto* attribute = new AcDbAttribute();
    AcDbObjectId attribute_id;
    if (Acad::ErrorStatus status = reference->appendAttribute(attribute_id, attribute);
        status != Acad::eOk) {
      delete attribute;
      return status;
    }
    attribute->setLayer(layer_id);
    attribute->setTag(kOccupantTags[line]);
    attribute->setTextString(planned.values[line].c_str());
    attribute->setHeight(layout.height * planned.text_height);
    attribute->setRotation(layout.rotation + planned.rotation);
    attribute->setHorizontalMode(layout.horizontal);
    attribute->setVerticalMode(layout.vertical);
    attribute->setPosition(Placed(planned, layout.position));
    if (!layout.default_alignment) attribute->setAlignmentPoint(Placed(planned, layout.alignment));
    attribute->close();
  }
  return Acad::eOk;
}

// Makes what is missing, erases the earlier import, inserts the plan.
// `changed` tells whether the drawing was changed before a failure.
bool Apply(AcDbDatabase& database, const OccupantPlan& plan, std::string& error, bool& changed) {
  AcDbObjectId block_id;
  AcDbObjectId layer_id;
  changed = true;
  if (!EnsureBlock(database, block_id, error) || !EnsureLayer(database, layer_id, error)) return false;
  const std::map<std::string, AttributeLayout> layouts = DefinitionLayouts(block_id);
  fx::rooms::LayerUnlocks unlocks;
  unlocks.Unlock(layer_id);
  if (Acad::ErrorStatus status = EraseEarlierImport(database, layer_id); status != Acad::eOk) {
    error = StatusText("Erasing the earlier import", status);
    return false;
  }
  AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForWrite);
  if (model.openStatus() != Acad::eOk) {
    error = StatusText("Opening model space", model.openStatus());
    return false;
  }
  for (const PlannedInsert& planned : plan.inserts) {
    if (Acad::ErrorStatus status = Insert(*model.object(), block_id, layer_id, layouts, planned);
        status != Acad::eOk) {
      error = StatusText("Inserting the block for room \"" + planned.values[0] + "\"", status);
      return false;
    }
  }
  return true;
}

// Where the command takes its data from.
struct Source {
  std::optional<std::string> server;
  std::optional<int> floor_id;
};
Source g_source;

struct AfterOpening {
  std::string path;
  std::string server;
  int floor_id = -1;
};
std::optional<AfterOpening> g_after_opening;

std::optional<OccupantImportResult> g_last;

bool SamePath(const std::string& a, const std::string& b) {
  std::error_code error;
  return std::filesystem::weakly_canonical(a, error) == std::filesystem::weakly_canonical(b, error);
}

void QueueImportAfterOpening(void*) {
  AcApDocManager* documents = acDocManagerPtr();
  AcApDocument* document = documents->curDocument();
  if (!g_after_opening || document == nullptr || !SamePath(document->fileName(), g_after_opening->path) ||
      documents->sendStringToExecute(document, "_vantoryUpdateVantoryData\n") != Acad::eOk) {
    g_after_opening.reset();  // the drawing did not open
  }
}

constexpr size_t kProblemsShown = 10;

void PrintOutcome(const OccupantImportResult& outcome) {
  if (outcome.result != kSucceeded) {
    acutPrintf("\nPlanVault: Vantory attributes were not updated: %s\n%s", outcome.error.c_str(),
               outcome.drawing_changed ? "The import is incomplete: run it again."
                                       : "The drawing was not changed.");
    return;
  }
  std::string missing;
  for (const std::string& name : outcome.not_in_drawing) missing += (missing.empty() ? ": " : ", ") + name;
  acutPrintf("\nRooms updated: %zu\nVantory rooms not in the drawing: %zu%s"
             "\nDrawing rooms without Vantory data: %zu",
             outcome.updated, outcome.not_in_drawing.size(), missing.c_str(), outcome.without_data);
  if (outcome.drawing_rooms == 0) {
    acutPrintf("\nThe drawing has no rooms: identify them first (vantoryconvert).");
  }
  if (outcome.problems.empty()) return;
  acutPrintf("\nEntries of the answer left out or read in part: %zu", outcome.problems.size());
  for (size_t i = 0; i < outcome.problems.size() && i < kProblemsShown; ++i) {
    acutPrintf("\n  %s", outcome.problems[i].c_str());
  }
  if (outcome.problems.size() > kProblemsShown) {
    acutPrintf("\n  ... and %zu more.", outcome.problems.size() - kProblemsShown);
  }
}

}  // namespace

OccupantImportResult ImportOccupants(AcDbDatabase& database, const std::string& server, int floor_id) {
  OccupantImportResult outcome;
  std::string body;
  outcome.result = RequestOccupantRooms(server, floor_id, body, outcome.error);
  if (outcome.result != kSucceeded) return outcome;
  std::vector<OccupantRoom> rooms;
  if (!ReadOccupantRooms(body, rooms, outcome.problems, outcome.error)) {
    outcome.result = kFailed;
    return outcome;
  }
  body.clear();
  const OccupantPlan plan = PlanOccupantImport(database, rooms);
  if (!Apply(database, plan, outcome.error, outcome.drawing_changed)) {
    outcome.result = kFailed;
    return outcome;
  }
  outcome.drawing_rooms = plan.drawing_rooms;
  outcome.updated = plan.inserts.size();
  outcome.without_data = plan.without_data;
  outcome.not_in_drawing = plan.not_in_drawing;
  return outcome;
}

void UpdateVantoryDataCommand() {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  OccupantImportResult outcome;
  if (database == nullptr) {
    outcome.error = "No drawing is open.";
    g_last = outcome;
    PrintOutcome(outcome);
    return;
  }
  const ServerData record = ReadServerData(database);
  std::string server = g_source.server ? FormServerAddress(*g_source.server) : record.server;
  int floor_id = g_source.floor_id.value_or(record.floor_id);
  if (g_after_opening && SamePath(database->filename(), g_after_opening->path)) {
    server = g_after_opening->server;
    floor_id = g_after_opening->floor_id;
  }
  g_after_opening.reset();
  if (server.empty() || floor_id <= 0) {
    outcome.error =
        "The drawing is linked to no Vantory floor: open it from Vantory or send it there first.";
    g_last = outcome;
    PrintOutcome(outcome);
    return;
  }
  acutPrintf("\nPlanVault: Updating Vantory attributes of floor %d from %s...", floor_id, server.c_str());
  outcome = ImportOccupants(*database, server, floor_id);
  g_last = outcome;
  PrintOutcome(outcome);
}

std::optional<OccupantImportResult> LastOccupantImport() { return g_last; }

void SetOccupantSource(std::optional<std::string> server, std::optional<int> floor_id) {
  g_source = {std::move(server), floor_id};
}

void ImportAfterOpening(const std::string& path, const std::string& server, int floor_id) {
  g_after_opening = AfterOpening{path, server, floor_id};
  acDocManagerPtr()->beginExecuteInCommandContext(QueueImportAfterOpening, nullptr);
}

}  // namespace fx::server
