#include "rooms/replace_block_dlg.h"

#include <algorithm>

#include "host/database.h"
#include "host/editor.h"
#include "rooms/room_list_fields.h"

namespace fx::rooms {
namespace {

std::string AppliedListText(const std::vector<AppliedExpression>& expressions) {
  std::string text;
  for (const AppliedExpression& applied : expressions) {
    if (!text.empty()) text += "; ";
    text += applied.tag + "=" + applied.expression;
  }
  return text;
}

// The block table's names in table order; false when a record's name cannot
// be read.
bool ReadBlockNames(AcDbDatabase& database, std::vector<std::string>& names) {
  AcDbBlockTable* table = nullptr;
  if (database.getBlockTable(table, AcDb::kForRead) != Acad::eOk) return true;
  const std::vector<AcDbObjectId> ids = table->recordIds();
  table->close();
  bool all_read = true;
  for (AcDbObjectId id : ids) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForRead);
    std::string name;
    if (block.openStatus() != Acad::eOk || block->getName(name) != Acad::eOk) {
      all_read = false;
      continue;
    }
    names.push_back(std::move(name));
  }
  return all_read;
}

}  // namespace

CReplaceBlockDlg::CReplaceBlockDlg(AcDbDatabase* database) : database_(database) {
  if (database_ == nullptr) {
    acutPrintf("%s", kNoDatabaseMessage);
    return;
  }
  if (!ReadBlockNames(*database_, block_names_)) {
    acedMessageBox(kNameNotAddedMessage, kReplaceBlockCaption, MB_OK | MB_ICONERROR);
  }
}

std::vector<std::string> BlockAttributeTags(AcDbDatabase* database, const std::string& block_name) {
  std::vector<std::string> tags;
  if (database == nullptr || block_name.empty()) return tags;
  AcDbObjectId block_id;
  {
    AcDbBlockTable* table = nullptr;
    if (database->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return tags;
    const Acad::ErrorStatus found = table->getAt(block_name.c_str(), block_id);
    table->close();
    if (found != Acad::eOk) return tags;
  }
  AcDbObjectPointer<AcDbBlockTableRecord> block(block_id, AcDb::kForRead);
  if (block.openStatus() != Acad::eOk) return tags;
  for (AcDbObjectId id : block->entityIds()) {
    AcDbObjectPointer<AcDbAttributeDefinition> definition(id, AcDb::kForRead);
    if (definition.openStatus() == Acad::eOk) tags.push_back(definition->tag());
  }
  return tags;
}

std::vector<CReplaceBlockDlg::Field> CReplaceBlockDlg::shownFields() const {
  std::vector<Field> shown = {Field::kOldBlock, Field::kNewBlock};
  if (!new_tags_.empty()) shown.push_back(Field::kAttribute);
  if (!old_tags_.empty()) shown.push_back(Field::kSource);
  shown.push_back(Field::kExpression);
  shown.push_back(Field::kApplied);
  shown.push_back(Field::kRemoveOld);
  return shown;
}

std::vector<DialogField> CReplaceBlockDlg::fields() const {
  std::vector<DialogField> fields;
  for (Field field : shownFields()) {
    switch (field) {
      case Field::kOldBlock:
        fields.push_back(
            MakeField("&Old block name", DialogField::kChoice, options_.old_block, block_names_));
        break;
      case Field::kNewBlock:
        fields.push_back(
            MakeField("&New block name", DialogField::kChoice, options_.new_block, block_names_));
        break;
      case Field::kAttribute:
        fields.push_back(MakeField("A&ttribute name", DialogField::kChoice, attribute_, new_tags_));
        break;
      case Field::kSource:
        fields.push_back(
            MakeField("&Source of attributes", DialogField::kChoice, source_, old_tags_));
        break;
      case Field::kExpression:
        fields.push_back(MakeField("Attribute &expression", DialogField::kText, expression_));
        break;
      case Field::kApplied:
        fields.push_back(
            ReadOnlyField("Applied expression list", AppliedListText(options_.expressions)));
        break;
      case Field::kRemoveOld:
        fields.push_back(MakeField("Remove old block references", DialogField::kCheck,
                                   options_.remove_old ? "Yes" : "No"));
        break;
    }
  }
  return fields;
}

std::string CReplaceBlockDlg::SetField(size_t index, const std::string& value) {
  const std::vector<Field> shown = shownFields();
  if (index >= shown.size()) return "No such field.";
  switch (shown[index]) {
    case Field::kOldBlock:
      options_.old_block = value;
      old_tags_ = BlockAttributeTags(database_, value);
      source_.clear();
      return {};
    case Field::kNewBlock:
      options_.new_block = value;
      new_tags_ = BlockAttributeTags(database_, value);
      if (std::find(new_tags_.begin(), new_tags_.end(), attribute_) == new_tags_.end()) {
        attribute_.clear();
      }
      return {};
    case Field::kAttribute:
      attribute_ = value;
      return {};
    case Field::kSource:
      // The expression builder: picking a source attribute quotes it into
      // the expression.
      source_ = value;
      expression_ += "%" + value + "%";
      return {};
    case Field::kExpression:
      expression_ = value;
      return {};
    case Field::kApplied:
      return kReadOnlyReason;
    case Field::kRemoveOld:
      options_.remove_old = value == "Yes";
      return {};
  }
  return "No such field.";
}

void CReplaceBlockDlg::ApplyExpressionButton() {
  if (options_.new_block.empty() || attribute_.empty()) return;
  if (expression_.empty()) {
    acedMessageBox(kEmptyExpressionMessage, kReplaceBlockCaption, MB_OK | MB_ICONEXCLAMATION);
    return;
  }
  for (AppliedExpression& applied : options_.expressions) {
    if (applied.tag == attribute_) {
      applied.expression = expression_;
      return;
    }
  }
  options_.expressions.push_back({attribute_, expression_});
}

DialogAction CReplaceBlockDlg::Press(size_t index) {
  if (index == kApplyExpression) {
    ApplyExpressionButton();
    return DialogAction::kStay;
  }
  return DialogAction::kClose;
}

}  // namespace fx::rooms
