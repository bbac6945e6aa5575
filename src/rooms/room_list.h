// CRoomListDlg, "Room List": every room of the current document with its
// texts, area and problems (the report-style list CRoomInfoListCtrl), the
// floor area, and what the user does with a room.
//
// As a model: one field, "Room", the number of the selected row (1 for the
// first; empty or 0 for none). Its label carries the list as text for hosts
// that show a dialog as text: the column captions and one line per row,
// cells joined by " | ", then "Floor area: " and the area ("%.4f", or "Not
// found"), then "Room". Buttons, the first the default:
//   "OK"           applies the edits (as Apply) and closes;
//   "Cancel"       closes; edits not applied are dropped;
//   "&Zoom To"     zooms to the selected room's entity: the host's "_ZOOM"
//                  with "_O", the entity and an empty input; anything but
//                  normal completion prints "Can't zoom". No selection: nothing;
//   "&Properties"  edits the selected room in CPvRoomPropDialog (the list's
//                  double click); OK keeps the texts in the list until applied;
//   "Delete All"   asks "Markers will be deleted. Continue?" (OK/Cancel,
//                  caption "Room List"); OK erases the document's markers,
//                  empties its marker list and its set of rooms, and deletes
//                  every row;
//   "Save"         writes the list as a report (report_save.h);
//   "Apply"        writes the edited records on their entities; a single-line
//                  text that showed the room's old name shows the new one;
//   "Help"         says what the buttons do, in a message box.
// Every button but OK and Cancel keeps the dialog open.
#ifndef FLOORXPORT_ROOMS_ROOM_LIST_H_
#define FLOORXPORT_ROOMS_ROOM_LIST_H_

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/dialog.h"
#include "rooms/room_list_rows.h"

class AcApDocument;

namespace fx::rooms {

inline constexpr const char* kDeleteAllQuestion = "Markers will be deleted. Continue?";
inline constexpr const char* kRoomListCaption = "Room List";

class CRoomListDlg : public fx::DialogModel {
 public:
  enum Button { kOk, kCancel, kZoomTo, kProperties, kDeleteAll, kSave, kApply, kHelp };

  // `document` must outlive the dialog.
  CRoomListDlg(AcApDocument* document, std::vector<RoomRow> rows, std::optional<double> floor_area);

  std::string title() const override { return kRoomListCaption; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override;
  DialogAction Press(size_t index) override;

  const std::vector<RoomRow>& rows() const { return rows_; }
  std::optional<size_t> selected() const { return selected_; }
  // "%.4f" of the floor area, or "Not found".
  std::string floorAreaText() const { return AreaCell(floor_area_); }
  // The list as text, as the field's label shows it (without "\nRoom").
  std::string listText() const;

 private:
  void ZoomToSelected() const;
  void EditSelected();
  void DeleteAll();
  void Apply();

  AcApDocument* document_;
  std::vector<RoomRow> rows_;
  std::optional<double> floor_area_;
  std::optional<size_t> selected_;
  std::set<size_t> edited_;  // rows whose texts changed since the last Apply
};

// The command vantoryroomlistdlg: the dialog over the current document's
// rooms (CDocData::roomIds) and the area of its floor outline. In a document
// that no analysis has gone through this session, the first time takes the
// rooms from the drawing instead: the model-space entities that carry a room
// record (markers placed so far among them), and the floor outline is the
// entity whose record is named kFloorOutlineName; so a drawing analysed
// earlier lists its rooms. After Delete All the set stays as emptied.
void RoomListDialog();

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_ROOM_LIST_H_
