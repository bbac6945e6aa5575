#include "export/export_file_dialog.h"

#include <charconv>

#include "host/editor.h"

namespace fx::exports {

CPvExportFileDialog::CPvExportFileDialog(std::string file_name, std::string filter, int filter_index)
    : file_name_(std::move(file_name)), filters_(ParseFilter(filter)), filter_index_(filter_index) {
  if (filter_index_ < 1 || filter_index_ > static_cast<int>(filters_.size())) filter_index_ = 1;
}

std::string CPvExportFileDialog::typeLabel() const {
  std::string label = "Save as type [";
  for (size_t i = 0; i < filters_.size(); ++i) {
    if (i > 0) label += '/';
    label += std::to_string(i + 1) + " " + filters_[i].description;
  }
  return label + "]";
}

std::vector<DialogField> CPvExportFileDialog::fields() const {
  DialogField name;
  name.label = kFileNameLabel;
  name.kind = DialogField::kText;
  name.value = file_name_;
  DialogField type;
  type.label = typeLabel();
  type.kind = DialogField::kInteger;
  type.value = std::to_string(filter_index_);
  return {name, type};
}

std::string CPvExportFileDialog::SetField(size_t index, const std::string& value) {
  if (index == 0) {
    file_name_ = value;
    return {};
  }
  long long chosen = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), chosen);
  if (error != std::errc() || end != value.data() + value.size() || chosen < 1 ||
      chosen > static_cast<long long>(filters_.size())) {
    return "Requires an integer between 1 and " + std::to_string(filters_.size()) + ".";
  }
  filter_index_ = static_cast<int>(chosen);
  return {};
}

DialogAction CPvExportFileDialog::Press(size_t index) {
  if (index == kSave && file_name_.empty()) {
    acutPrintf("\n%s", kNoFileNameMessage);
    return DialogAction::kStay;
  }
  return DialogAction::kClose;
}

std::string CPvExportFileDialog::filterExtension() const {
  return filters_.empty() ? std::string() : filters_[static_cast<size_t>(filter_index_ - 1)].extension();
}

}  // namespace fx::exports
