#include "settings/settings_key.h"

namespace fx::settings {
namespace {

constexpr char kCompanyPath[] = "Software\\PlanVault\\";
constexpr char kApplicationKey[] = "VantoryApp";
constexpr char kUserRoot[] = "HKEY_CURRENT_USER\\";

const char* SectionSuffix(int section) {
  switch (section) {
    case kSectionExportOptions:
      return "\\ExportOptions\\";
    case kSectionConvertOptions:
      return "\\ConvertOptions\\";
    case kSectionServer:
      return "\\Server\\";
    default:
      return "";
  }
}

}  // namespace

std::string BuildSettingsKeyPath(int section) {
  return std::string(kCompanyPath) + kApplicationKey + SectionSuffix(section);
}

const char* SettingsSectionName(int section) {
  switch (section) {
    case kSectionExportOptions:
      return "ExportOptions";
    case kSectionConvertOptions:
      return "ConvertOptions";
    case kSectionServer:
      return "Server";
    default:
      return kApplicationKey;
  }
}

std::string SettingsFileKeyPath(int section) {
  std::string path = kUserRoot + BuildSettingsKeyPath(section);
  while (path.ends_with('\\')) path.pop_back();
  return path;
}

}  // namespace fx::settings
