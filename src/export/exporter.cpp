#include "export/exporter.h"

#include <exception>

#include "export/export_driver.h"
#include "export/document_file.h"
#include "export/floor_document.h"
#include "export/floor_xml_v1.h"
#include "host/database.h"
#include "host/editor.h"
#include "rooms/report.h"
#include "svg/svg_save.h"

namespace fx::exports {
namespace {

// Codes 2 and 4: the driver's SVG document saved as it is, in UTF-8, or
// compressed (zlib mode "wb6f") in the room report's code page, which its
// declaration names.
bool ExportSvg(ExportFormat format, const std::string& path) {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr) return false;
  const DriverResult drawing = RunExportDriver(*database, ReadExportSettings(), DriverOptions());
  if (drawing.svg == nullptr) return false;
  std::string error;
  bool saved = false;
  if (format == ExportFormat::kSvg) {
    saved = fx::svg::SaveSvg(*drawing.svg, path, &error);
  } else {
    std::string warning;
    const unsigned code_page = fx::rooms::ReportCodePage(database, &warning);
    if (!warning.empty()) acutPrintf("\nWarning: %s.", warning.c_str());
    saved = fx::svg::SaveSvgz(*drawing.svg, path, &error, code_page);
  }
  if (!saved) acutPrintf("%s", SaveFailureMessage(error).c_str());
  return saved;
}

}  // namespace

bool ExportFile(ExportFormat format, const std::string& path, bool strict) {
  switch (format) {
    case ExportFormat::kXml: return WriteFloorXmlV1(path, strict);
    case ExportFormat::kPlanVault:
    case ExportFormat::kDrawing: return WriteFloorDocument(format, path, strict);
    case ExportFormat::kSvg:
    case ExportFormat::kSvgz: return ExportSvg(format, path);
  }
  return false;
}

void CPvFloorExporter::Export(int code, const std::string& path, int strict) {
  const std::optional<ExportFormat> format = FormatOfCode(code);
  if (!format) return;
  ExportRecord record{*format, path, false};
  // The exception firewall of every export: nothing thrown leaves it, and
  // the target is never half written (the saves are whole or not at all).
  try {
    record.written = ExportFile(*format, path, strict != 0);
  } catch (const std::exception& error) {
    acutPrintf("%s", SaveFailureMessage(path + ": " + error.what()).c_str());
  } catch (...) {
    acutPrintf("%s", SaveFailureMessage(path).c_str());
  }
  if (record.written) acutPrintf(kExportedMessage, path.c_str());
  history_.push_back(std::move(record));
}

CPvFloorExporter& Exporter() {
  static CPvFloorExporter exporter;
  return exporter;
}

}  // namespace fx::exports
