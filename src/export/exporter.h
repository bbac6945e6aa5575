// The floor exporter: the one process-wide object whose entry point every
// export goes through (vantoryexport, and the send workflow for its
// ".drawing"). It dispatches on the format code to the v1 writer, the floor
// document writer, or the export driver and an SVG save, and reports to the
// user itself; it keeps a record of each export for callers that need the
// outcome (the command line program's exit status).
#ifndef FLOORXPORT_EXPORT_EXPORTER_H_
#define FLOORXPORT_EXPORT_EXPORTER_H_

#include <string>
#include <vector>

#include "export/export_formats.h"

namespace fx::exports {

// "\nPlanVault: Exported %s" on success; nothing more is printed.
inline constexpr const char* kExportedMessage = "\nPlanVault: Exported %s";

struct ExportRecord {
  ExportFormat format;
  std::string path;
  bool written = false;  // false: stopped by a question or a failure (its message printed)
};

class CPvFloorExporter {
 public:
  // The entry point: export(format code, path, flag). `code` outside 0 to 4
  // does nothing. `strict` is the flag: 0 from vantoryexport; non-zero from
  // automated callers, for which the floor questions become warnings that
  // stop the export. The path is used as given (no extension is added).
  void Export(int code, const std::string& path, int strict);

  // Every export since the last ClearHistory, in order.
  const std::vector<ExportRecord>& history() const { return history_; }
  void ClearHistory() { history_.clear(); }

 private:
  std::vector<ExportRecord> history_;
};

// The process-wide exporter; lives as long as the module.
CPvFloorExporter& Exporter();

// The work of one export, without the record: true when the file was written.
bool ExportFile(ExportFormat format, const std::string& path, bool strict);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_EXPORTER_H_
