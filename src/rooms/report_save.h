// Saving the room report: the save-file dialog, as a model, and the save.
//
// The dialog ("Save As") has one field, "File &name", whose default is the
// report's default name with the extension "csv"; its buttons are "&Save"
// (index 0, the default) and "Cancel". A name without an extension gets
// ".csv". Saving over an existing file asks "<name> already exists.\nDo you
// want to replace it?" (Yes/No, warning icon, caption "Confirm Save As");
// No keeps the dialog open.
#ifndef FLOORXPORT_ROOMS_REPORT_SAVE_H_
#define FLOORXPORT_ROOMS_REPORT_SAVE_H_

#include <string>
#include <vector>

#include "host/dialog.h"
#include "rooms/room_list_rows.h"

class AcDbDatabase;

namespace fx::rooms {

class CReportFileDialog : public fx::DialogModel {
 public:
  enum Button { kSave = 0, kCancel = 1 };

  explicit CReportFileDialog(std::string default_name);

  std::string title() const override { return "Save As"; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override { return {"&Save", "Cancel"}; }
  DialogAction Press(size_t index) override;

  // The chosen path, with the default extension added.
  std::string path() const;

 private:
  std::string name_;
};

// The Save button of the room list: asks for the file (default: the active
// document's name, or "Report1", with ".csv") and writes the report of
// `rows` in the report's code page for `database` (report.h). Nothing
// happens on Cancel; a file that cannot be written is skipped without a
// message. Characters the code page cannot hold are reported once. True
// when the report was written.
bool SaveRoomReport(const std::vector<RoomRow>& rows, const std::string& document_file_name,
                    const AcDbDatabase* database);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_REPORT_SAVE_H_
