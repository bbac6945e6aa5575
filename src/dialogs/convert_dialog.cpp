#include "dialogs/convert_dialog.h"

#include <algorithm>
#include <cctype>

#include "dialogs/field_items.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/editor.h"
#include "rooms/replace_block_dlg.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::dialogs {
namespace {

using fx::settings::kSectionConvertOptions;

// The radio buttons "Block &Inserts" and "Text &Entities" as one choice.
const char* const kModeItems[] = {"Block Inserts", "Text Entities"};


std::string Stored(const char* name) { return fx::settings::GetSettingString(name, kSectionConvertOptions); }
void Store(const char* name, const std::string& value) {
  fx::settings::SetSettingString(name, value, kSectionConvertOptions);
}

// The layer table's names in table order, reporting what cannot be read.
std::vector<std::string> ReadLayerNames(AcDbDatabase* database) {
  std::vector<std::string> names;
  if (database == nullptr) {
    acutPrintf("%s", kNoDrawingDatabaseMessage);
    return names;
  }
  AcDbLayerTable* table = nullptr;
  if (database->getLayerTable(table, AcDb::kForRead) != Acad::eOk) {
    acutPrintf("%s", kNoLayerTableMessage);
    return names;
  }
  const std::vector<AcDbObjectId> ids = table->recordIds();
  table->close();
  for (AcDbObjectId id : ids) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
    std::string name;
    if (layer.openStatus() != Acad::eOk || layer->getName(name) != Acad::eOk) {
      acutPrintf("%s", kLayerNotAddedMessage);
      continue;
    }
    names.push_back(std::move(name));
  }
  return names;
}

// The names of the blocks a room tag can be: not the layouts, not anonymous.
std::vector<std::string> ReadBlockNames(AcDbDatabase* database) {
  std::vector<std::string> names;
  AcDbBlockTable* table = nullptr;
  if (database == nullptr || database->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return names;
  const std::vector<AcDbObjectId> ids = table->recordIds();
  table->close();
  for (AcDbObjectId id : ids) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForRead);
    std::string name;
    if (block.openStatus() != Acad::eOk || block->getName(name) != Acad::eOk) continue;
    if (!name.empty() && name[0] != '*') names.push_back(std::move(name));
  }
  return names;
}


DialogField ListField(const char* label, const std::string& value, const std::vector<std::string>& items) {
  DialogField field;
  field.label = label;
  field.kind = DialogField::kText;
  field.value = value;
  field.items = items;
  return field;
}

// "(None)" stands for no source.
std::string Source(const std::string& text) { return text == kNoneItem ? std::string() : text; }

}  // namespace

CPvConvertDialog::CPvConvertDialog(AcDbDatabase* database) : database_(database) {
  floor_layer_ = Stored(fx::settings::kContourFloorAreaLayer);
  contour_layer_ = Stored(fx::settings::kContourLayer);
  const int32_t type =
      fx::settings::GetSettingInt(fx::settings::kIdentificationType, 0, kSectionConvertOptions);
  block_ = Stored(fx::settings::kBlockName);
  block_copy_.texts = {Stored(fx::settings::kAttributeName), Stored(fx::settings::kAttributeType),
                       Stored(fx::settings::kBlockDescription)};
  text_copy_.texts = {Stored(fx::settings::kLayerAttributeName),
                      Stored(fx::settings::kLayerAttributeType),
                      Stored(fx::settings::kLayerAttributeDescription)};
  layers_ = ReadLayerNames(database_);
  blocks_ = ReadBlockNames(database_);
  SetMode(type != 0 ? kTextMode : kBlockMode);
}

void CPvConvertDialog::SetMode(Mode mode) {
  mode_ = mode;
  SavedTexts& entered = mode == kBlockMode ? block_copy_ : text_copy_;
  SavedTexts& left = mode == kBlockMode ? text_copy_ : block_copy_;
  if (left.current) {
    left.texts = texts_;
    left.current = false;
  }
  if (!entered.current) {
    texts_ = entered.texts;
    entered.current = true;
  }
  FillFieldLists();
}

void CPvConvertDialog::FillFieldLists() {
  field_items_ = {kNoneItem};
  const std::vector<std::string> sources =
      mode_ == kBlockMode ? fx::rooms::BlockAttributeTags(database_, block_) : layers_;
  field_items_.insert(field_items_.end(), sources.begin(), sources.end());
  for (std::string& text : texts_) {
    if (text.empty()) text = kNoneItem;
  }
}

std::vector<CPvConvertDialog::Field> CPvConvertDialog::shownFields() const {
  std::vector<Field> shown = {Field::kFloorLayer, Field::kContourLayer, Field::kMode};
  if (mode_ == kBlockMode) shown.push_back(Field::kBlock);
  shown.insert(shown.end(), {Field::kName, Field::kType, Field::kDescription});
  if (mode_ == kBlockMode) shown.push_back(Field::kRemove);
  return shown;
}

std::vector<DialogField> CPvConvertDialog::fields() const {
  std::vector<DialogField> fields;
  for (Field field : shownFields()) {
    switch (field) {
      case Field::kFloorLayer: fields.push_back(ListField("Floor &Area Layer", floor_layer_, layers_)); break;
      case Field::kContourLayer:
        fields.push_back(ListField("Room Contours &Layer", contour_layer_, layers_));
        break;
      case Field::kMode: {
        DialogField choice;
        choice.label = "Identification";
        choice.kind = DialogField::kChoice;
        choice.items = {kModeItems[0], kModeItems[1]};
        choice.value = kModeItems[mode_];
        fields.push_back(choice);
        break;
      }
      case Field::kBlock: fields.push_back(ListField("&Block Name", block_, blocks_)); break;
      case Field::kName: fields.push_back(ListField("&Name Attribute", texts_[0], field_items_)); break;
      case Field::kType: fields.push_back(ListField("&Type Attribute", texts_[1], field_items_)); break;
      case Field::kDescription:
        fields.push_back(ListField("&Description", texts_[2], field_items_));
        break;
      case Field::kRemove: {
        DialogField check;
        check.label = "&Remove Block Inserts";
        check.kind = DialogField::kCheck;
        check.value = remove_inserts_ ? "Yes" : "No";
        fields.push_back(check);
        break;
      }
    }
  }
  return fields;
}

std::string CPvConvertDialog::SetField(size_t index, const std::string& value) {
  const std::vector<Field> shown = shownFields();
  if (index >= shown.size()) return "No such field.";
  const Field field = shown[index];
  if (field == Field::kMode) {
    const Mode mode = value == kModeItems[kTextMode] ? kTextMode : kBlockMode;
    if (mode != mode_) SetMode(mode);
    return {};
  }
  if (field == Field::kRemove) {
    remove_inserts_ = value == "Yes";
    return {};
  }
  const std::vector<std::string>& items = field == Field::kFloorLayer || field == Field::kContourLayer
                                              ? layers_
                                          : field == Field::kBlock ? blocks_
                                                                   : field_items_;
  const std::string* item = FindItem(items, value);
  if (item == nullptr) return "\"" + value + "\" is not in the list (? lists it).";
  switch (field) {
    case Field::kFloorLayer: floor_layer_ = *item; break;
    case Field::kContourLayer: contour_layer_ = *item; break;
    case Field::kBlock:
      if (*item != block_) {
        block_ = *item;
        FillFieldLists();
      }
      break;
    case Field::kName: texts_[0] = *item; break;
    case Field::kType: texts_[1] = *item; break;
    case Field::kDescription: texts_[2] = *item; break;
    case Field::kMode:
    case Field::kRemove: break;
  }
  return {};
}

std::string CPvConvertDialog::CommandLine() const {
  std::string line = "_vantoryconvert \"" + floor_layer_ + "\" \"" + contour_layer_ + "\" ";
  line += mode_ == kBlockMode ? "B \"" + block_ + "\" " : std::string("T ");
  line += "\"" + Source(texts_[0]) + "\" \"" + Source(texts_[1]) + "\" \"" + Source(texts_[2]) + "\"";
  if (mode_ == kBlockMode) line += remove_inserts_ ? " Yes" : " No";
  return line + "\n";
}

DialogAction CPvConvertDialog::Press(size_t index) {
  if (index != kOk) return DialogAction::kClose;
  if (floor_layer_.empty()) {
    acedMessageBox(kSelectFloorAreaMessage, kConvertDialogTitle, MB_OK | MB_ICONEXCLAMATION);
    return DialogAction::kStay;
  }
  if (contour_layer_.empty()) {
    acedMessageBox(kSelectContoursMessage, kConvertDialogTitle, MB_OK | MB_ICONEXCLAMATION);
    return DialogAction::kStay;
  }
  Store(fx::settings::kContourFloorAreaLayer, floor_layer_);
  Store(fx::settings::kContourLayer, contour_layer_);
  fx::settings::SetSettingInt(fx::settings::kIdentificationType, mode_, kSectionConvertOptions);
  if (mode_ == kBlockMode) {
    Store(fx::settings::kBlockName, block_);
    Store(fx::settings::kAttributeName, texts_[0]);
    Store(fx::settings::kAttributeType, texts_[1]);
    Store(fx::settings::kBlockDescription, texts_[2]);
  } else {
    Store(fx::settings::kLayerAttributeName, texts_[0]);
    Store(fx::settings::kLayerAttributeType, texts_[1]);
    Store(fx::settings::kLayerAttributeDescription, texts_[2]);
  }
  AcApDocManager* documents = acDocManagerPtr();
  documents->sendStringToExecute(documents->curDocument(), CommandLine().c_str());
  return DialogAction::kClose;
}

void ConvertDialogCommand() {
  CPvConvertDialog dialog(acdbHostApplicationServices()->workingDatabase());
  fx::ShowDialog(dialog);
}

}  // namespace fx::dialogs
