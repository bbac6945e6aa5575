#include "rooms/room_list.h"

#include <charconv>
#include <utility>

#include "host/database.h"
#include "host/documents.h"
#include "host/editor.h"
#include "rooms/doc_data.h"
#include "rooms/marker.h"
#include "rooms/report_save.h"
#include "rooms/room_list_fields.h"
#include "rooms/room_prop_dialog.h"

namespace fx::rooms {
namespace {

constexpr const char* kHelpText =
    "Select a room by its number in the list. Zoom To shows it in the drawing; Properties edits "
    "its name, category, description and comment, and Apply (or OK) writes the edits to the "
    "drawing. Save writes the list as a CSV report. Delete All erases the room markers and "
    "empties the list.";

// Whether the dialog has taken the document's set of rooms once (from an
// analysis, or from the drawing) or Delete All emptied it: from then on the
// set is the document's and is not read from the drawing again.
struct RoomListState {
  bool rooms_known = false;
};

AcApDataManager<RoomListState>& ListStates() {
  static AcApDataManager<RoomListState> states;
  return states;
}

std::string JoinCells(const std::array<std::string, kRoomListColumnCount>& cells) {
  std::string line;
  for (size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) line += " | ";
    line += cells[i];
  }
  while (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

// The single-line text of a room that shows `old_name` now shows `name`.
void RenameRoomText(AcDbObjectId id, const std::string& old_name, const std::string& name) {
  AcDbObjectPointer<AcDbText> text(id, AcDb::kForRead);
  if (text.openStatus() != Acad::eOk || dynamic_cast<AcDbAttribute*>(text.object()) != nullptr) {
    return;
  }
  const std::string shown = text->textString();
  if (shown != old_name && !(old_name.empty() && shown == kUnknownName)) return;
  Acad::ErrorStatus status = text->upgradeOpen();
  if (status == Acad::eOk) status = text->setTextString(name.empty() ? kUnknownName : name.c_str());
  if (status != Acad::eOk)
    acutPrintf("\npText->setTextString = %s", Acad::acadErrorStatusText(status));
}

}  // namespace

CRoomListDlg::CRoomListDlg(AcApDocument* document, std::vector<RoomRow> rows,
                           std::optional<double> floor_area)
    : document_(document), rows_(std::move(rows)), floor_area_(floor_area) {}

std::string CRoomListDlg::listText() const {
  std::array<std::string, kRoomListColumnCount> captions;
  for (size_t i = 0; i < captions.size(); ++i) captions[i] = kRoomListColumns[i].caption;
  std::string text = "   #  " + JoinCells(captions);
  for (size_t i = 0; i < rows_.size(); ++i) {
    std::string number = std::to_string(i + 1);
    text += "\n" + std::string(number.size() < 4 ? 4 - number.size() : 0, ' ') + number + "  " +
            JoinCells(RowCells(rows_[i]));
  }
  return text + "\nFloor area: " + floorAreaText();
}

std::vector<DialogField> CRoomListDlg::fields() const {
  return {MakeField(listText() + "\nRoom", DialogField::kInteger,
                    selected_ ? std::to_string(*selected_ + 1) : std::string())};
}

std::string CRoomListDlg::SetField(size_t index, const std::string& value) {
  if (index != 0) return "No such field.";
  size_t number = 0;
  auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  if (error != std::errc() || end != value.data() + value.size()) return "Requires a room number.";
  if (number == 0) {
    selected_.reset();
    return {};
  }
  if (number > rows_.size()) {
    return "No room " + value + ": the list has " + std::to_string(rows_.size()) +
           (rows_.size() == 1 ? " room." : " rooms.");
  }
  selected_ = number - 1;
  return {};
}

std::vector<std::string> CRoomListDlg::buttons() const {
  return {"OK", "Cancel", "&Zoom To", "&Properties", "Delete All", "Save", "Apply", "Help"};
}

DialogAction CRoomListDlg::Press(size_t index) {
  switch (index) {
    case kOk:
      Apply();
      return DialogAction::kClose;
    case kCancel:
      return DialogAction::kClose;
    case kZoomTo:
      ZoomToSelected();
      break;
    case kProperties:
      EditSelected();
      break;
    case kDeleteAll:
      DeleteAll();
      break;
    case kSave:
      SaveRoomReport(rows_, document_ != nullptr ? document_->fileName() : "",
                     document_ != nullptr ? document_->database() : nullptr);
      break;
    case kApply:
      Apply();
      break;
    case kHelp:
      acedMessageBox(kHelpText, kRoomListCaption, MB_OK | MB_ICONINFORMATION);
      break;
    default:
      break;
  }
  return DialogAction::kStay;
}

void CRoomListDlg::ZoomToSelected() const {
  if (!selected_) return;
  ads_name name = {0, 0};
  if (acdbGetAdsName(name, rows_[*selected_].id) != Acad::eOk ||
      acedCommandS(RTSTR, "_ZOOM", RTSTR, "_O", RTENAME, name, RTSTR, "", RTNONE) != RTNORM) {
    acutPrintf("Can't zoom");
  }
}

void CRoomListDlg::EditSelected() {
  if (!selected_) return;
  RoomRow& row = rows_[*selected_];
  CPvRoomPropDialog dialog(row.record, row.area.value_or(0.0));
  if (fx::ShowDialog(dialog) != CPvRoomPropDialog::kOk) return;
  row.record = dialog.record();
  edited_.insert(*selected_);
}

void CRoomListDlg::DeleteAll() {
  if (acedMessageBox(kDeleteAllQuestion, kRoomListCaption, MB_OKCANCEL | MB_ICONWARNING) != IDOK) {
    return;
  }
  if (document_ != nullptr) {
    EraseMarkers(document_);
    DocVars().docData(document_).setRoomIds({});
    ListStates().docData(document_).rooms_known = true;
  }
  rows_.clear();
  selected_.reset();
  edited_.clear();
}

void CRoomListDlg::Apply() {
  for (size_t index : edited_) {
    const RoomRow& row = rows_[index];
    RoomRecord stored;
    const bool had_record = ReadRoomRecord(row.id, &stored);
    if (Acad::ErrorStatus status = SetXData(row.id, row.record); status != Acad::eOk) {
      acutPrintf("\nSetXData = %s", Acad::acadErrorStatusText(status));
      continue;
    }
    if (had_record && stored.name != row.record.name) {
      RenameRoomText(row.id, stored.name, row.record.name);
    }
  }
  edited_.clear();
}

void RoomListDialog() {
  AcApDocument* document = acDocManagerPtr()->curDocument();
  if (document == nullptr || document->database() == nullptr) return;
  CDocData& data = DocVars().docData(document);
  RoomListState& state = ListStates().docData(document);
  AcDbDatabase& database = *document->database();
  if (!state.rooms_known && !data.analysed()) {
    // No analysis this session: the rooms are those the drawing carries
    // (the markers placed so far among them).
    data.setRoomIds(RoomEntitiesInDrawing(database));
  }
  state.rooms_known = true;
  const std::optional<double> floor_area =
      data.analysed() ? EntityArea(data.floorOutline()) : FloorArea(database);
  CRoomListDlg dialog(document, BuildRoomRows(data.roomIds()), floor_area);
  fx::ShowDialog(dialog);
}

}  // namespace fx::rooms
