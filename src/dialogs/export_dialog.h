// CPvExportDialog, "Settings": the export options (ExportOptions), the
// room identification's "Automatically delete duplicate identifiers", the
// drawing version sent to the service and the drawing's exported layers.
//
// As a model, fields in order:
//   "Automatically delete duplicate identifiers"   Yes/No, stored at once
//   "Planvault V1 format", "Save All Attributes", "Approximate Ar&cs",
//   "Block o&ptimization", "Ha&tch optimization"   Yes/No
//   "SVG Drawing Box"        choice "By drawing extents" (0) / "By polyline
//                            boundary" (2); empty for any other position
//   "Layer:"                 only at position 2: drop-down of the layers
//   "Exported Layers"        list of the layers, kept per drawing
//   "Send &Drawing Version"  drop-down of kDrawingVersions, stored at once
// Drop-downs take only their items (letter case is free).
// Buttons: "OK" (index 0, the default: saves, then closes), "&Apply"
// (saves, stays), "Set by &Drawing" (the drawing's layers again, all
// exported), "&Help" (stays), "Cancel".
//
// Saving happens only when something was changed since the last save, and
// writes the five check boxes, the exported layers, "Drawing Position" and,
// at position 2 with a layer chosen, "Viewbox poly_ext layer". Cancel keeps
// what was written at once (the duplicate box and the version).
#ifndef FLOORXPORT_DIALOGS_EXPORT_DIALOG_H_
#define FLOORXPORT_DIALOGS_EXPORT_DIALOG_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "host/dialog.h"

class AcDbDatabase;

namespace fx::dialogs {

inline constexpr const char* kExportDialogTitle = "Settings";
// Kept exactly as the product shows them (one with "acessing", grave accents).
inline constexpr const char* kDatabaseErrorMessage = "Error accessing Database";
inline constexpr const char* kSetByDrawingDatabaseErrorMessage = "Error acessing Database";
inline constexpr const char* kLayerRecordErrorMessage = "Error: can`t access Layer table record";
inline constexpr const char* kLayerNameErrorMessage = "Error: can`t read Layer name";

struct DrawingVersionEntry {
  const char* text;
  int32_t number;  // "Vantory Drawing Version"
};
inline constexpr std::array<DrawingVersionEntry, 4> kDrawingVersions = {{
    {"Current (AutoCAD 2018)", 255},
    {"AutoCAD 2010", 29},
    {"AutoCAD 2013", 31},
    {"AutoCAD 2018", 33},
}};

// The layers exported from `database`, by name: the choice saved for its
// document (CDocData, kept while the document is open), otherwise every layer.
std::vector<std::string> ExportedLayers(const AcDbDatabase* database);

class CPvExportDialog : public fx::DialogModel {
 public:
  enum Button { kOk = 0, kApply = 1, kSetByDrawing = 2, kHelp = 3, kCancel = 4 };

  // Reads the settings and `database`'s layers (null: the message box
  // kDatabaseErrorMessage, and empty lists). `database` must outlive the
  // dialog.
  explicit CPvExportDialog(AcDbDatabase* database);

  std::string title() const override { return kExportDialogTitle; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override {
    return {"OK", "&Apply", "Set by &Drawing", "&Help", "Cancel"};
  }
  DialogAction Press(size_t index) override;

  bool changed() const { return changed_; }
  int drawingPosition() const { return position_; }

 private:
  enum Check { kDuplicates, kOldFormat, kSaveAll, kArcs, kBlocks, kHatches, kCheckCount };
  void FillLayerLists();
  void EnableViewboxLayer();
  void Save();

  AcDbDatabase* database_;
  std::vector<std::string> layers_;
  std::vector<std::string> exported_;
  std::array<bool, kCheckCount> checks_{};
  int position_ = 0;
  std::string viewbox_layer_;
  int version_ = -1;  // index into kDrawingVersions; -1 for none
  bool changed_ = false;
};

// The command "vantoryexpdlg": shows the dialog for the working database.
void ExportOptionsDialogCommand();

}  // namespace fx::dialogs

#endif  // FLOORXPORT_DIALOGS_EXPORT_DIALOG_H_
