// CPvExportFileDialog: the save dialog of "Export to File" as a model. The
// fields are the file name and the file type (the 1-based index of an entry
// of the filter kSaveFilter); the buttons "Save" and "Cancel".
//
// The console shows it as (the default values in angle brackets):
//
//   Export to File
//   File name <C:/plans/level-1>: 
//   Save as type [1 PlanVault v1 (*.xml)/2 PlanVault v2 (*.planvault)/3 PlanVault Drawing (*.drawing)/4 SVG (*.svg)/5 SVGZ (*.svgz)] <1>: 
//   [Save/Cancel] <Save>: 
//
// The file name takes the whole line (blanks included); Enter keeps the
// default. "Save" with an empty file name says "Type a file name." and asks
// again, as a file dialog does not close without one.
#ifndef FLOORXPORT_EXPORT_EXPORT_FILE_DIALOG_H_
#define FLOORXPORT_EXPORT_EXPORT_FILE_DIALOG_H_

#include <string>
#include <vector>

#include "export/export_formats.h"
#include "host/dialog.h"

namespace fx::exports {

inline constexpr const char* kExportDialogTitle = "Export to File";
inline constexpr const char* kFileNameLabel = "File name";
inline constexpr const char* kNoFileNameMessage = "Type a file name.";

class CPvExportFileDialog : public fx::DialogModel {
 public:
  enum Button { kSave, kCancel };

  // `filter` in the "description|pattern|...||" form; `filter_index` the
  // entry chosen first (1-based).
  CPvExportFileDialog(std::string file_name, std::string filter, int filter_index);

  std::string title() const override { return kExportDialogTitle; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override { return {"Save", "Cancel"}; }
  DialogAction Press(size_t index) override;

  const std::string& fileName() const { return file_name_; }
  int filterIndex() const { return filter_index_; }
  // The chosen filter's extension ("svg").
  std::string filterExtension() const;
  // "Save as type [1 PlanVault v1 (*.xml)/.../5 SVGZ (*.svgz)]"
  std::string typeLabel() const;

 private:
  std::string file_name_;
  std::vector<FilterEntry> filters_;
  int filter_index_;
};

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_EXPORT_FILE_DIALOG_H_
