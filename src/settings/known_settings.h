// Every value the plug-in keeps in its settings: the names to pass to the
// settings functions, and a table of them with kinds and defaults.
#ifndef FLOORXPORT_SETTINGS_KNOWN_SETTINGS_H_
#define FLOORXPORT_SETTINGS_KNOWN_SETTINGS_H_

#include <cstdint>
#include <span>
#include <string_view>

namespace fx::settings {

// ExportOptions (section 0).
inline constexpr char kExportFileFormat[] = "Export file format";
inline constexpr char kExportInOldFormat[] = "Export in Old Format";
inline constexpr char kAutomaticallyResolveDuplicateNames[] =
    "Automatically Resolve Duplicate Names";
inline constexpr char kSaveAllAttributes[] = "Save All Attributes";
inline constexpr char kApproximateArc[] = "Approximate Arc";
inline constexpr char kBlockOptimization[] = "Block optimization";
inline constexpr char kHatchOptimization[] = "Hatch optimization";
inline constexpr char kDrawingPosition[] = "Drawing Position";
inline constexpr char kViewboxPolyExtLayer[] = "Viewbox poly_ext layer";
inline constexpr char kDrawBox[] = "Draw Box";
inline constexpr char kVantoryDrawingVersion[] = "Vantory Drawing Version";
inline constexpr char kAnsiCodePage[] = "ANSI Code Page";
inline constexpr char kDrawImportLayer[] = "Draw Import Layer";
// ConvertOptions (section 1).
inline constexpr char kContourFloorAreaLayer[] = "Contour FloorArea Layer";
inline constexpr char kContourLayer[] = "Contour Layer";
inline constexpr char kIdentificationType[] = "Identification type";
inline constexpr char kBlockName[] = "Block name";
inline constexpr char kAttributeName[] = "Attribute name";
inline constexpr char kAttributeType[] = "Attribute type";
inline constexpr char kBlockDescription[] = "Block description";
inline constexpr char kLayerAttributeName[] = "Layer Attribute name";
inline constexpr char kLayerAttributeType[] = "Layer Attribute type";
inline constexpr char kLayerAttributeDescription[] = "Layer Attribute description";
// Server (section 2).
inline constexpr char kServerList[] = "Server list";
inline constexpr char kLastUsedServer[] = "Last used server";
inline constexpr char kVerifyServerCertificate[] = "Verify Server Certificate";
inline constexpr char kServerCaFile[] = "Server CA File";

// "Vantory Drawing Version" when no version was ever chosen; shown and used
// as kCurrentDrawingVersion.
inline constexpr int32_t kDrawingVersionNeverChosen = 254;
inline constexpr int32_t kCurrentDrawingVersion = 255;

enum class SettingKind {
  kInteger,
  kBoolean,  // an integer, 1 for a ticked check box and 0 otherwise
  kString,
};

struct KnownSetting {
  int section;
  const char* name;
  SettingKind kind;
  bool has_default;       // false for a value that nothing reads back
  int32_t default_value;  // integers and booleans; every string defaults to empty
  const char* meaning;
};

// In section order, then in the order the values are listed to the user.
std::span<const KnownSetting> KnownSettings();

// The entry of that name (compared as registry names are), or null. Names are
// unique over all sections.
const KnownSetting* FindKnownSetting(std::string_view name);

// "integer", "boolean", "string".
const char* SettingKindName(SettingKind kind);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_KNOWN_SETTINGS_H_
