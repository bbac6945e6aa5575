// CPvSyncVantoryDialog: the buildings and floors of a server, to choose the
// floor to open from or send to, with "Find:", "&Create Floor" and (when
// sending) "Drawing Notes".
//
// Fields in order: "Buildings and floors" (shown: the tree, one line per
// building and per floor with its id), "&Floor" (the chosen floor: answered
// by its id, by "building/floor", or by a floor name that only one floor
// has), "Find:" (selects the next building or floor whose name holds the
// text), the Building group ("Name", "City", "Street", "Street2", "Code",
// "State") and the Floor group ("Name", "Area, sq in:") of the selection,
// shown only, and in Send mode "Drawing Notes".
// Buttons: the action ("Open" or "Send"), present only once a floor is
// chosen, then "&Refresh", "&Create Floor" and "Cancel".
#ifndef FLOORXPORT_SERVER_SYNC_DIALOG_H_
#define FLOORXPORT_SERVER_SYNC_DIALOG_H_

#include <optional>
#include <string>
#include <vector>

#include "host/dialog.h"
#include "server/service_calls.h"

namespace fx::server {

enum class SyncMode { kOpen = 0, kSend = 1 };

class CPvSyncVantoryDialog : public fx::DialogModel {
 public:
  // `first_id` and `floor_id` are the drawing record's; `floor_id` is
  // chosen when the listing holds it.
  CPvSyncVantoryDialog(SyncMode mode, std::string server_address, int first_id, int floor_id);

  // Lists the server's buildings and floors, as on opening and Refresh. On
  // failure shows the error report in a "PlanVault Error" box and returns
  // false: the dialog is then closed.
  bool Refresh();

  std::string title() const override;
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override;
  DialogAction Press(size_t index) override;

  // True when the dialog ended with its action button.
  bool confirmed() const { return confirmed_; }
  int floor_id() const;
  std::string building_name() const;
  std::string floor_name() const;
  const FloorEntry* chosen_floor() const;
  const std::string& notes() const { return notes_; }
  int first_id() const { return first_id_; }
  const std::vector<BuildingEntry>& buildings() const { return buildings_; }

 private:
  struct Selection {
    size_t building = 0;
    std::optional<size_t> floor;
  };
  enum FieldIndex : size_t {
    kTree, kFloor, kFind, kBuildingName, kCity, kStreet, kStreet2, kCode, kState,
    kFloorName, kArea, kNotes
  };

  std::string TreeText() const;
  std::string SelectFloor(const std::string& answer);
  std::string Find(const std::string& text);
  void SelectFloorId(int floor_id);
  DialogAction CreateFloorInSelectedBuilding();

  SyncMode mode_;
  std::string server_;
  int first_id_;
  int initial_floor_id_;
  std::vector<BuildingEntry> buildings_;
  std::optional<Selection> selection_;
  std::string find_text_;
  std::string notes_;
  bool confirmed_ = false;
};

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SYNC_DIALOG_H_
