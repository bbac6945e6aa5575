#include "server/sync_dialog.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>

#include "host/editor.h"
#include "server/create_floor_dialog.h"
#include "server/server_list.h"
#include "server/service_errors.h"

namespace fx::server {
namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

bool Contains(std::string_view text, std::string_view part) {
  return Lower(text).find(Lower(part)) != std::string::npos;
}

std::string Trimmed(std::string_view text) {
  const size_t start = text.find_first_not_of(" \t");
  if (start == std::string_view::npos) return {};
  return std::string(text.substr(start, text.find_last_not_of(" \t") - start + 1));
}

std::optional<int> ParseId(std::string_view text) {
  if (!text.empty() && text.front() == '#') text.remove_prefix(1);
  int id = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return id;
}

DialogField Shown(const char* label, std::string value) {
  DialogField field{label, DialogField::kText, std::move(value), {}};
  field.shown_only = true;
  return field;
}

}  // namespace

CPvSyncVantoryDialog::CPvSyncVantoryDialog(SyncMode mode, std::string server_address, int first_id,
                                           int floor_id)
    : mode_(mode), server_(std::move(server_address)), first_id_(first_id),
      initial_floor_id_(floor_id) {}

bool CPvSyncVantoryDialog::Refresh() {
  const int kept_floor = floor_id();
  std::vector<BuildingEntry> listed;
  const int result = ListBuildingsAndFloors(server_, listed);
  if (result != 0) {
    const std::string report = CallErrorReport(server_, result, kOpRefreshing);
    acedMessageBox(report.c_str(), "PlanVault Error", MB_OK | MB_ICONERROR);
    return false;
  }
  AddServerToList(server_);
  SetLastUsedServer(server_);
  buildings_ = std::move(listed);
  selection_.reset();
  SelectFloorId(kept_floor >= 0 ? kept_floor : initial_floor_id_);
  return true;
}

std::string CPvSyncVantoryDialog::title() const {
  return mode_ == SyncMode::kOpen ? "Open from Vantory" : "Send to Vantory";
}

std::string CPvSyncVantoryDialog::TreeText() const {
  if (buildings_.empty()) return "(none)";
  std::string tree;
  for (const BuildingEntry& building : buildings_) {
    tree += "\n  " + building.name;
    for (const FloorEntry& floor : building.floors) {
      tree += "\n    #" + std::to_string(floor.id) + " " + floor.name;
      if (floor.dwg_available) {
        tree += " (drawing" + (floor.binary_format.empty() ? "" : ": " + floor.binary_format) + ")";
      }
    }
  }
  return tree;
}

std::vector<DialogField> CPvSyncVantoryDialog::fields() const {
  const BuildingEntry* building = selection_ ? &buildings_[selection_->building] : nullptr;
  const FloorEntry* floor = chosen_floor();
  auto of_building = [&](std::string BuildingEntry::*member) {
    return building != nullptr ? building->*member : std::string();
  };
  std::string area;
  if (floor != nullptr && floor->has_area) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", floor->area);
    area = text;
  }
  std::string chosen;
  if (floor != nullptr) chosen = building_name() + "/" + floor->name + " (#" + std::to_string(floor->id) + ")";
  std::vector<DialogField> result = {
      Shown("Buildings and floors", TreeText()),
      {"&Floor", DialogField::kText, chosen, {}},
      {"Find:", DialogField::kText, find_text_, {}},
      Shown("Building Name", of_building(&BuildingEntry::name)),
      Shown("City", of_building(&BuildingEntry::city)),
      Shown("Street", of_building(&BuildingEntry::street)),
      Shown("Street2", of_building(&BuildingEntry::street2)),
      Shown("Code", of_building(&BuildingEntry::code)),
      Shown("State", of_building(&BuildingEntry::state)),
      Shown("Floor Name", floor != nullptr ? floor->name : std::string()),
      Shown("Area, sq in:", area),
  };
  if (mode_ == SyncMode::kSend) result.push_back({"Drawing Notes", DialogField::kText, notes_, {}});
  return result;
}

std::string CPvSyncVantoryDialog::SetField(size_t index, const std::string& value) {
  switch (index) {
    case kFloor: return SelectFloor(Trimmed(value));
    case kFind: return Find(value);
    case kNotes: notes_ = value; return {};
    default: return {};
  }
}

void CPvSyncVantoryDialog::SelectFloorId(int id) {
  for (size_t b = 0; b < buildings_.size(); ++b) {
    const auto& floors = buildings_[b].floors;
    for (size_t f = 0; f < floors.size(); ++f) {
      if (floors[f].id == id) {
        selection_ = Selection{b, f};
        return;
      }
    }
  }
}

std::string CPvSyncVantoryDialog::SelectFloor(const std::string& answer) {
  if (std::optional<int> id = ParseId(answer)) {
    selection_.reset();
    SelectFloorId(*id);
    if (chosen_floor() != nullptr) return {};
    return "No floor #" + std::to_string(*id) + ".";
  }
  // "building/floor", or a floor name that names one floor.
  const size_t slash = answer.rfind('/');
  const std::string building_part = slash == std::string::npos ? "" : Trimmed(answer.substr(0, slash));
  const std::string floor_part = Trimmed(slash == std::string::npos ? answer : answer.substr(slash + 1));
  std::vector<Selection> matches;
  for (size_t b = 0; b < buildings_.size(); ++b) {
    if (slash != std::string::npos && Lower(buildings_[b].name) != Lower(building_part)) continue;
    const auto& floors = buildings_[b].floors;
    for (size_t f = 0; f < floors.size(); ++f) {
      if (Lower(floors[f].name) == Lower(floor_part)) matches.push_back({b, f});
    }
  }
  if (matches.size() == 1) {
    selection_ = matches.front();
    return {};
  }
  if (matches.empty()) return "No floor \"" + answer + "\".";
  return "Several floors are named \"" + answer + "\": give the floor's id.";
}

// Searches buildings and floors in tree order, starting after the selection
// and wrapping around once.
std::string CPvSyncVantoryDialog::Find(const std::string& text) {
  find_text_ = text;
  if (text.empty()) return {};
  std::vector<Selection> order;
  for (size_t b = 0; b < buildings_.size(); ++b) {
    order.push_back({b, std::nullopt});
    for (size_t f = 0; f < buildings_[b].floors.size(); ++f) order.push_back({b, f});
  }
  size_t start = 0;
  if (selection_) {
    auto current = std::find_if(order.begin(), order.end(), [&](const Selection& s) {
      return s.building == selection_->building && s.floor == selection_->floor;
    });
    if (current != order.end()) start = static_cast<size_t>(current - order.begin()) + 1;
  }
  for (size_t step = 0; step < order.size(); ++step) {
    const Selection& candidate = order[(start + step) % order.size()];
    const BuildingEntry& building = buildings_[candidate.building];
    const std::string& name =
        candidate.floor ? building.floors[*candidate.floor].name : building.name;
    if (Contains(name, text)) {
      selection_ = candidate;
      return {};
    }
  }
  acedMessageBox("The specified text was not found.", title().c_str(), MB_OK | MB_ICONINFORMATION);
  return {};
}

std::vector<std::string> CPvSyncVantoryDialog::buttons() const {
  std::vector<std::string> labels;
  if (chosen_floor() != nullptr) labels.push_back(mode_ == SyncMode::kOpen ? "Open" : "Send");
  labels.insert(labels.end(), {"&Refresh", "&Create Floor", "Cancel"});
  return labels;
}

DialogAction CPvSyncVantoryDialog::Press(size_t index) {
  const std::vector<std::string> labels = buttons();
  if (index >= labels.size()) return DialogAction::kStay;
  const std::string& label = labels[index];
  if (label == "Open" || label == "Send") {
    confirmed_ = true;
    return DialogAction::kClose;
  }
  if (label == "&Refresh") return Refresh() ? DialogAction::kStay : DialogAction::kClose;
  if (label == "&Create Floor") return CreateFloorInSelectedBuilding();
  return DialogAction::kClose;
}

DialogAction CPvSyncVantoryDialog::CreateFloorInSelectedBuilding() {
  if (!selection_) {
    acedMessageBox("Select the building of the new floor first.", "Create Floor Dialog",
                   MB_OK | MB_ICONEXCLAMATION);
    return DialogAction::kStay;
  }
  const BuildingEntry& building = buildings_[selection_->building];
  CPvCreateFloorDialog create(building.name);
  if (ShowDialog(create) != CPvCreateFloorDialog::kOk) return DialogAction::kStay;
  int new_floor = 0;
  const int result = CreateFloor(server_, building.id, create.floor_name(), new_floor);
  if (result != 0) {
    const std::string report = CallErrorReport(server_, result, kOpCreateFloor);
    acedMessageBox(report.c_str(), "Error", MB_OK | MB_ICONERROR);
    return DialogAction::kStay;
  }
  if (!Refresh()) return DialogAction::kClose;
  selection_.reset();
  SelectFloorId(new_floor);
  return DialogAction::kStay;
}

const FloorEntry* CPvSyncVantoryDialog::chosen_floor() const {
  if (!selection_ || !selection_->floor) return nullptr;
  return &buildings_[selection_->building].floors[*selection_->floor];
}

int CPvSyncVantoryDialog::floor_id() const {
  const FloorEntry* floor = chosen_floor();
  return floor != nullptr ? floor->id : -1;
}

std::string CPvSyncVantoryDialog::building_name() const {
  return selection_ ? buildings_[selection_->building].name : std::string();
}

std::string CPvSyncVantoryDialog::floor_name() const {
  const FloorEntry* floor = chosen_floor();
  return floor != nullptr ? floor->name : std::string();
}

}  // namespace fx::server
