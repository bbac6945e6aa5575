#include "rooms/report_save.h"

#include <filesystem>
#include <utility>

#include "host/editor.h"
#include "rooms/report.h"
#include "rooms/room_list_fields.h"

namespace fx::rooms {

CReportFileDialog::CReportFileDialog(std::string default_name)
    : name_(std::move(default_name) + "." + kReportExtension) {}

std::vector<DialogField> CReportFileDialog::fields() const {
  return {MakeField("File &name", DialogField::kText, name_)};
}

std::string CReportFileDialog::SetField(size_t index, const std::string& value) {
  if (index != 0) return "No such field.";
  name_ = value;
  return {};
}

std::string CReportFileDialog::path() const {
  std::filesystem::path path(name_);
  if (!path.has_extension()) path += std::string(".") + kReportExtension;
  return path.string();
}

DialogAction CReportFileDialog::Press(size_t index) {
  if (index != kSave) return DialogAction::kClose;
  if (name_.empty()) return DialogAction::kStay;
  std::error_code error;
  if (!std::filesystem::exists(path(), error)) return DialogAction::kClose;
  const std::string question = std::filesystem::path(path()).filename().string() +
                               " already exists.\nDo you want to replace it?";
  const int answer = acedMessageBox(question.c_str(), "Confirm Save As", MB_YESNO | MB_ICONWARNING);
  return answer == IDYES ? DialogAction::kClose : DialogAction::kStay;
}

bool SaveRoomReport(const std::vector<RoomRow>& rows, const std::string& document_file_name,
                    const AcDbDatabase* database) {
  CReportFileDialog dialog(DefaultReportName(document_file_name));
  if (fx::ShowDialog(dialog) != CReportFileDialog::kSave) return false;
  std::vector<std::array<std::string, kRoomListColumnCount>> cells;
  cells.reserve(rows.size());
  for (const RoomRow& row : rows) cells.push_back(RowCells(row));
  std::string warning;
  const unsigned code_page = ReportCodePage(database, &warning);
  if (!warning.empty()) acutPrintf("\nWarning: %s.", warning.c_str());
  Unmappable unmappable;
  if (!WriteReportFile(dialog.path(), FormatReport(cells, code_page, &unmappable))) return false;
  if (unmappable.count > 0) acutPrintf("\nWarning: %s.", UnmappableWarning(code_page, unmappable).c_str());
  return true;
}

}  // namespace fx::rooms
