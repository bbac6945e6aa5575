#include "export/export_commands.h"

#include <algorithm>
#include <exception>
#include <filesystem>

#include "export/export_file_dialog.h"
#include "export/export_formats.h"
#include "export/exporter.h"
#include "host/documents.h"
#include "host/editor.h"
#include "settings/known_settings.h"
#include "settings/settings.h"
#include "settings/settings_key.h"

namespace fx::exports {
namespace {

constexpr size_t kPathBufferSize = 260;     // the editor's MAX_PATH
constexpr size_t kKeywordBufferSize = 133;  // the editor's answer buffer

void RunExportCommand() {
  char path[kPathBufferSize];
  if (acedGetString(1, kPathPrompt, path, sizeof path) != RTNORM || path[0] == '\0') return;
  std::string file = path;
  file.erase(std::remove(file.begin(), file.end(), '"'), file.end());
  char keyword[kKeywordBufferSize];
  if (acedGetString(0, kFormatPrompt, keyword, sizeof keyword) != RTNORM) return;
  const std::optional<ExportFormat> format = FormatOfKeyword(keyword);
  if (!format) {
    acutPrintf("%s", kWrongFormatMessage);
    return;
  }
  Exporter().Export(static_cast<int>(*format), file, 0);
}

std::string ReplaceQuestion(const std::string& path) {
  const std::string name = std::filesystem::path(path).filename().string();
  const std::string_view format = kReplaceQuestion;
  const size_t at = format.find("%s");
  return std::string(format.substr(0, at)) + name + std::string(format.substr(at + 2));
}

void RunExportToFile() {
  namespace s = fx::settings;
  const ExportFormat remembered =
      FormatOfSettingValue(s::GetSettingString(s::kExportFileFormat, s::kSectionExportOptions));
  AcApDocument* document = acDocManagerPtr()->curDocument();
  const std::string initial = document != nullptr ? PathWithoutExtension(document->fileName()) : std::string();
  CPvExportFileDialog dialog(initial, kSaveFilter, RowOf(remembered).filter_index);
  if (ShowDialog(dialog) != CPvExportFileDialog::kSave) return;

  const std::string extension = dialog.filterExtension();
  const std::string path = PathWithExtension(dialog.fileName(), extension);
  std::error_code error;
  if (std::filesystem::exists(path, error) &&
      acedMessageBox(ReplaceQuestion(path).c_str(), "", MB_YESNO | MB_ICONWARNING) != IDYES) {
    return;
  }
  const ExportFormat format = FormatOfExtension(extension).value_or(remembered);
  acDocManagerPtr()->sendStringToExecute(document, ExportCommandLineFor(path, extension).c_str());
  s::SetSettingString(s::kExportFileFormat, RowOf(format).setting_value, s::kSectionExportOptions);
}

// The exception firewall of a command.
template <class Work>
void Guarded(const char* name, Work work) {
  try {
    work();
  } catch (const std::exception& error) {
    acutPrintf("\n%s failed: %s", name, error.what());
  } catch (...) {
    acutPrintf("\n%s failed.", name);
  }
}

}  // namespace

std::string ExportCommandLineFor(const std::string& path, const std::string& keyword) {
  return "_vantoryexport " + path + "\n" + keyword + "\n";
}

void ExportCommand() { Guarded("vantoryexport", RunExportCommand); }

void ExportToFileCommand() { Guarded("vantoryExportToFile", RunExportToFile); }

}  // namespace fx::exports
