#include "settings/known_settings.h"

#include "settings/reg_file.h"
#include "settings/settings_key.h"

namespace fx::settings {
namespace {

constexpr int kExport = kSectionExportOptions;
constexpr int kConvert = kSectionConvertOptions;
constexpr int kServer = kSectionServer;
using enum SettingKind;

constexpr KnownSetting kKnownSettings[] = {
    {kExport, kExportFileFormat, kString, true, 0,
     "last file type chosen for export to a file: \"PlanVault v1\", \"PlanVault v2\", \"SVG\", "
     "\"PlanVault DRW\" or \"SVGZ\"; empty or any other text counts as \"PlanVault v1\""},
    {kExport, kExportInOldFormat, kBoolean, false, 0,
     "the export dialog's old-format check box; written, never read back"},
    {kExport, kAutomaticallyResolveDuplicateNames, kBoolean, true, 1,
     "resolve duplicate room names automatically"},
    {kExport, kSaveAllAttributes, kBoolean, true, 0, "the export option \"Save All Attributes\""},
    {kExport, kApproximateArc, kBoolean, true, 0, "the export option \"Approximate Arc\""},
    {kExport, kBlockOptimization, kBoolean, true, 1, "the export option \"Block optimization\""},
    {kExport, kHatchOptimization, kBoolean, true, 0, "the export option \"Hatch optimization\""},
    {kExport, kDrawingPosition, kInteger, true, 0,
     "export frame: 0 by drawing extents, 2 by a polyline boundary on a layer (1 is unused)"},
    {kExport, kViewboxPolyExtLayer, kString, true, 0,
     "layer whose polyline frames the export when \"Drawing Position\" is 2"},
    {kExport, kDrawBox, kBoolean, true, 0, "the export option \"Draw Box\" (set by hand only)"},
    {kExport, kVantoryDrawingVersion, kInteger, true, kDrawingVersionNeverChosen,
     "file format of drawings saved for the service: 29, 31 or 33 for the 2010, 2013 and 2018 "
     "formats, 255 for the current one; 254 means never chosen and acts as 255"},
    {kExport, kAnsiCodePage, kInteger, true, 0,
     "Windows code page of the room report and the .svgz text (1252, 1251, 936, 932, 65001 for "
     "UTF-8...); 0 takes the one Windows takes for the user's locale (LC_ALL, LC_CTYPE, LANG), or "
     "the drawing's $DWGCODEPAGE where the locale names no language"},
    {kExport, kDrawImportLayer, kBoolean, true, 0,
     "the export draws the occupant import's layer \"!VANTORYIMPORT\" (set by hand only)"},
    {kConvert, kContourFloorAreaLayer, kString, true, 0, "layer holding the floor-area outline"},
    {kConvert, kContourLayer, kString, true, 0, "layer holding the room contours"},
    {kConvert, kIdentificationType, kInteger, true, 0,
     "rooms identified by 0 a block and its attributes, 1 layers"},
    {kConvert, kBlockName, kString, true, 0, "name of the room block (type 0)"},
    {kConvert, kAttributeName, kString, true, 0, "attribute tag of the room name (type 0)"},
    {kConvert, kAttributeType, kString, true, 0, "attribute tag of the room type (type 0)"},
    {kConvert, kBlockDescription, kString, true, 0,
     "attribute tag of the room description (type 0)"},
    {kConvert, kLayerAttributeName, kString, true, 0, "layer giving the room name (type 1)"},
    {kConvert, kLayerAttributeType, kString, true, 0, "layer giving the room type (type 1)"},
    {kConvert, kLayerAttributeDescription, kString, true, 0,
     "layer giving the room description (type 1)"},
    {kServer, kServerList, kString, true, 0, "the remembered service connections"},
    {kServer, kLastUsedServer, kString, true, 0, "the service connection chosen last"},
    {kServer, kVerifyServerCertificate, kBoolean, true, 0,
     "1: verify the site's certificate and host name; 0: accept any certificate"},
    {kServer, kServerCaFile, kString, true, 0,
     "PEM file of the authorities trusted when verifying (empty: the system's)"},
};

}  // namespace

std::span<const KnownSetting> KnownSettings() { return kKnownSettings; }

const KnownSetting* FindKnownSetting(std::string_view name) {
  for (const KnownSetting& setting : kKnownSettings) {
    if (SameRegistryName(setting.name, name)) return &setting;
  }
  return nullptr;
}

const char* SettingKindName(SettingKind kind) {
  switch (kind) {
    case SettingKind::kInteger:
      return "integer";
    case SettingKind::kBoolean:
      return "boolean";
    case SettingKind::kString:
      return "string";
  }
  return "integer";
}

}  // namespace fx::settings
