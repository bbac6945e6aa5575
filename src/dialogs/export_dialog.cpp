#include "dialogs/export_dialog.h"

#include <algorithm>
#include <cctype>

#include "dialogs/field_items.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/editor.h"
#include "rooms/doc_data.h"
#include "settings/duplicate_names_flag.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::dialogs {
namespace {

namespace fs = fx::settings;
constexpr int kSection = fs::kSectionExportOptions;

const char* const kCheckLabels[] = {"Automatically delete duplicate identifiers",
                                    "Planvault V1 format",
                                    "Save All Attributes",
                                    "Approximate Ar&cs",
                                    "Block o&ptimization",
                                    "Ha&tch optimization"};
const char* const kExtentsItem = "By drawing extents";
const char* const kBoundaryItem = "By polyline boundary";

enum FieldIndex : size_t { kPositionField = 6 };

// The data of the document that shows `database`; null when none does.
fx::rooms::CDocData* DocDataOf(const AcDbDatabase* database) {
  AcApDocument* document = database != nullptr ? acDocManagerPtr()->document(database) : nullptr;
  return document != nullptr ? &fx::rooms::DocVars().docData(document) : nullptr;
}



void ShowError(const char* text) { acedMessageBox(text, kExportDialogTitle, MB_OK | MB_ICONEXCLAMATION); }

// The names of the layer table's shown layers in table order.
std::vector<std::string> ReadLayers(AcDbDatabase& database) {
  std::vector<std::string> names;
  AcDbLayerTable* table = nullptr;
  if (database.getLayerTable(table, AcDb::kForRead) != Acad::eOk) return names;
  const std::vector<AcDbObjectId> ids = table->recordIds();
  table->close();
  for (AcDbObjectId id : ids) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
    if (layer.openStatus() != Acad::eOk) {
      ShowError(kLayerRecordErrorMessage);
      continue;
    }
    if (layer->isHidden()) continue;
    std::string name;
    if (layer->getName(name) != Acad::eOk) {
      ShowError(kLayerNameErrorMessage);
      break;
    }
    names.push_back(std::move(name));
  }
  return names;
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
  return text;
}

DialogField Field(const std::string& label, DialogField::Kind kind, const std::string& value,
                  std::vector<std::string> items = {}) {
  DialogField field;
  field.label = label;
  field.kind = kind;
  field.value = value;
  field.items = std::move(items);
  return field;
}

}  // namespace

std::vector<std::string> ExportedLayers(const AcDbDatabase* database) {
  const fx::rooms::CDocData* data = DocDataOf(database);
  if (data != nullptr && data->exportedLayers()) return *data->exportedLayers();
  return database != nullptr ? ReadLayers(*const_cast<AcDbDatabase*>(database)) : std::vector<std::string>();
}

CPvExportDialog::CPvExportDialog(AcDbDatabase* database) : database_(database) {
  if (database_ == nullptr) ShowError(kDatabaseErrorMessage);
  FillLayerLists();
  changed_ = false;
  checks_[kSaveAll] = fs::GetSettingInt(fs::kSaveAllAttributes, 0, kSection) != 0;
  checks_[kDuplicates] = fs::GetSettingInt(fs::kAutomaticallyResolveDuplicateNames, 1, kSection) != 0;
  checks_[kArcs] = fs::GetSettingInt(fs::kApproximateArc, 0, kSection) != 0;
  checks_[kBlocks] = fs::GetSettingInt(fs::kBlockOptimization, 1, kSection) != 0;
  checks_[kHatches] = fs::GetSettingInt(fs::kHatchOptimization, 0, kSection) != 0;
  position_ = fs::GetSettingInt(fs::kDrawingPosition, 0, kSection);
  if (position_ == 2) EnableViewboxLayer();
  int32_t version = fs::GetSettingInt(fs::kVantoryDrawingVersion, fs::kDrawingVersionNeverChosen, kSection);
  if (version == fs::kDrawingVersionNeverChosen) version = fs::kCurrentDrawingVersion;
  for (size_t i = 0; i < kDrawingVersions.size(); ++i) {
    if (kDrawingVersions[i].number == version) version_ = static_cast<int>(i);
  }
}

void CPvExportDialog::FillLayerLists() {
  layers_ = database_ != nullptr ? ReadLayers(*database_) : std::vector<std::string>();
  exported_.clear();
  for (const std::string& name : ExportedLayers(database_)) {
    if (FindItem(layers_, name) != nullptr) exported_.push_back(name);
  }
}

void CPvExportDialog::EnableViewboxLayer() {
  position_ = 2;
  if (layers_.empty()) {
    if (database_ == nullptr) ShowError(kDatabaseErrorMessage);
    else layers_ = ReadLayers(*database_);
  }
  const std::string stored = fs::GetSettingString(fs::kViewboxPolyExtLayer, kSection);
  const std::string* item = FindItem(layers_, stored);
  viewbox_layer_ = item != nullptr ? *item : std::string();
  changed_ = true;
}

std::vector<DialogField> CPvExportDialog::fields() const {
  std::vector<DialogField> fields;
  for (size_t i = 0; i < kCheckCount; ++i) {
    fields.push_back(Field(kCheckLabels[i], DialogField::kCheck, checks_[i] ? "Yes" : "No"));
  }
  fields.push_back(Field("SVG Drawing Box", DialogField::kChoice,
                         position_ == 0 ? kExtentsItem : position_ == 2 ? kBoundaryItem : "",
                         {kExtentsItem, kBoundaryItem}));
  if (position_ == 2) fields.push_back(Field("Layer:", DialogField::kText, viewbox_layer_, layers_));
  fields.push_back(Field("Exported Layers", DialogField::kList, Joined(exported_), layers_));
  std::vector<std::string> versions;
  for (const DrawingVersionEntry& entry : kDrawingVersions) versions.push_back(entry.text);
  fields.push_back(Field("Send &Drawing Version", DialogField::kText,
                         version_ >= 0 ? kDrawingVersions[static_cast<size_t>(version_)].text : "",
                         versions));
  return fields;
}

std::string CPvExportDialog::SetField(size_t index, const std::string& value) {
  if (index < kCheckCount) {
    const bool ticked = value == "Yes";
    if (ticked == checks_[index]) return {};
    checks_[index] = ticked;
    if (index == kDuplicates) {
      fs::SetSettingInt(fs::kAutomaticallyResolveDuplicateNames, ticked ? 1 : 0, kSection);
      fs::SetAutoResolveDuplicateNamesFlag(ticked);
    }
    changed_ = true;
    return {};
  }
  if (index == kPositionField) {
    if (value == kBoundaryItem) {
      if (position_ != 2) EnableViewboxLayer();
    } else if (position_ != 0) {
      position_ = 0;
      changed_ = true;
    }
    return {};
  }
  size_t field = index - kPositionField - 1;
  if (position_ != 2) ++field;  // no "Layer:"
  if (field == 0) {
    const std::string* item = FindItem(layers_, value);
    if (item == nullptr) return "\"" + value + "\" is not in the list (? lists it).";
    if (*item != viewbox_layer_) changed_ = true;
    viewbox_layer_ = *item;
    return {};
  }
  if (field == 1) {
    std::vector<std::string> chosen;
    size_t start = 0;
    while (!value.empty() && start <= value.size()) {
      size_t comma = value.find(',', start);
      if (comma == std::string::npos) comma = value.size();
      chosen.push_back(value.substr(start, comma - start));
      start = comma + 1;
    }
    if (chosen != exported_) changed_ = true;
    exported_ = std::move(chosen);
    return {};
  }
  if (field == 2) {
    for (size_t i = 0; i < kDrawingVersions.size(); ++i) {
      if (!SameText(kDrawingVersions[i].text, value)) continue;
      version_ = static_cast<int>(i);
      fs::SetSettingInt(fs::kVantoryDrawingVersion, kDrawingVersions[i].number, kSection);
      changed_ = true;
      return {};
    }
    return "\"" + value + "\" is not in the list (? lists it).";
  }
  return "No such field.";
}

void CPvExportDialog::Save() {
  if (!changed_) return;
  fs::SetSettingInt(fs::kExportInOldFormat, checks_[kOldFormat] ? 1 : 0, kSection);
  fs::SetSettingInt(fs::kApproximateArc, checks_[kArcs] ? 1 : 0, kSection);
  fs::SetSettingInt(fs::kBlockOptimization, checks_[kBlocks] ? 1 : 0, kSection);
  fs::SetSettingInt(fs::kHatchOptimization, checks_[kHatches] ? 1 : 0, kSection);
  fs::SetSettingInt(fs::kSaveAllAttributes, checks_[kSaveAll] ? 1 : 0, kSection);
  if (fx::rooms::CDocData* data = DocDataOf(database_)) data->setExportedLayers(exported_);
  fs::SetSettingInt(fs::kDrawingPosition, position_, kSection);
  if (position_ == 2 && !viewbox_layer_.empty()) {
    fs::SetSettingString(fs::kViewboxPolyExtLayer, viewbox_layer_, kSection);
  }
  changed_ = false;
}

DialogAction CPvExportDialog::Press(size_t index) {
  switch (index) {
    case kOk: Save(); return DialogAction::kClose;
    case kApply: Save(); return DialogAction::kStay;
    case kSetByDrawing:
      if (database_ == nullptr) {
        ShowError(kSetByDrawingDatabaseErrorMessage);
        return DialogAction::kStay;
      }
      if (fx::rooms::CDocData* data = DocDataOf(database_)) data->setExportedLayers(std::nullopt);
      FillLayerLists();
      return DialogAction::kStay;
    case kHelp:
      acutPrintf("\nThe export options are described in the README, \"Floor export\".");
      return DialogAction::kStay;
    default: return DialogAction::kClose;
  }
}

void ExportOptionsDialogCommand() {
  CPvExportDialog dialog(acdbHostApplicationServices()->workingDatabase());
  fx::ShowDialog(dialog);
}

}  // namespace fx::dialogs
