// CPvConvertDialog, "Room Identification": the layers and the source of each
// room's name, type and description for room identification. On OK it
// stores the choices (ConvertOptions) and sends one `_vantoryconvert` line
// to the current document; it analyses nothing itself.
//
// As a model, fields in order (the controls a mode disables are left out):
//   "Floor &Area Layer"       drop-down of the drawing's layers
//   "Room Contours &Layer"    drop-down of the drawing's layers
//   "Identification"          choice "Block Inserts" / "Text Entities"
//   "&Block Name"             block mode: drop-down of the drawing's blocks
//   "&Name Attribute"         "(None)", then the block's attribute tags in
//   "&Type Attribute"         its entity order (block mode) or every layer
//   "&Description"            (text mode)
//   "&Remove Block Inserts"   block mode: Yes/No
// The drop-downs take only their items (letter case is free; the item's
// own spelling is kept). Buttons: "OK" (index 0, the default), "Cancel".
// The text-mode "Text Entities Layer" list has no part in the command line
// and is not shown.
//
// Each mode keeps its own copy of the three field texts: switching modes
// saves the current texts into the mode left and takes them from the mode
// entered, so nothing entered for either mode is lost. A refill of the
// field lists (a mode switch, a new block name) shows an empty text as
// "(None)".
#ifndef FLOORXPORT_DIALOGS_CONVERT_DIALOG_H_
#define FLOORXPORT_DIALOGS_CONVERT_DIALOG_H_

#include <array>
#include <string>
#include <vector>

#include "host/dialog.h"

class AcDbDatabase;

namespace fx::dialogs {

inline constexpr const char* kConvertDialogTitle = "Room Identification";
inline constexpr const char* kNoneItem = "(None)";
inline constexpr const char* kSelectFloorAreaMessage = "Please, select Floor Area Layer.";
inline constexpr const char* kSelectContoursMessage = "Please, select Room Contours Layer.";
// Kept exactly as the product prints them (grave accent, spelling).
inline constexpr const char* kNoDrawingDatabaseMessage = "\nError: Can`t acess drawning database!";
inline constexpr const char* kNoLayerTableMessage = "\nError: Can`t acess LayerTable!";
inline constexpr const char* kLayerNotAddedMessage = "Error: Can`t append layer name to Combo Box";

class CPvConvertDialog : public fx::DialogModel {
 public:
  enum Button { kOk = 0, kCancel = 1 };
  enum Mode { kBlockMode = 0, kTextMode = 1 };

  // Reads the stored choices and the drawing's layers and blocks; a null
  // database prints kNoDrawingDatabaseMessage and leaves the lists empty.
  // `database` must outlive the dialog.
  explicit CPvConvertDialog(AcDbDatabase* database);

  std::string title() const override { return kConvertDialogTitle; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override { return {"OK", "Cancel"}; }
  DialogAction Press(size_t index) override;

  // The mode switch, as a click on a radio button.
  void SetMode(Mode mode);
  Mode mode() const { return mode_; }
  // The three field texts (name, type, description) as shown.
  const std::array<std::string, 3>& fieldTexts() const { return texts_; }
  // The `_vantoryconvert` line the current choices make, with its line end.
  std::string CommandLine() const;

 private:
  enum class Field { kFloorLayer, kContourLayer, kMode, kBlock, kName, kType, kDescription, kRemove };
  struct SavedTexts {
    std::array<std::string, 3> texts;
    bool current = false;
  };
  std::vector<Field> shownFields() const;
  void FillFieldLists();

  AcDbDatabase* database_;
  std::vector<std::string> layers_;
  std::vector<std::string> blocks_;
  std::vector<std::string> field_items_;  // "(None)" first
  std::string floor_layer_;
  std::string contour_layer_;
  Mode mode_ = kBlockMode;
  std::string block_;
  std::array<std::string, 3> texts_;
  SavedTexts block_copy_;
  SavedTexts text_copy_;
  bool remove_inserts_ = false;
};

// The command "vantorconvertdlg": shows the dialog for the working database.
void ConvertDialogCommand();

}  // namespace fx::dialogs

#endif  // FLOORXPORT_DIALOGS_CONVERT_DIALOG_H_
