// The five export formats: their codes, command-line keywords, file
// extensions, save-dialog filters and the values the "Export file format"
// setting remembers them by. The codes and the dialog's filters run in
// different orders (xml, planvault, svg, drawing, svgz against v1, v2,
// Drawing, SVG, SVGZ); kFormats is the one mapping between them.
#ifndef FLOORXPORT_EXPORT_EXPORT_FORMATS_H_
#define FLOORXPORT_EXPORT_EXPORT_FORMATS_H_

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fx::exports {

enum class ExportFormat : int { kXml = 0, kPlanVault = 1, kSvg = 2, kDrawing = 3, kSvgz = 4 };

struct FormatRow {
  ExportFormat code;
  const char* keyword;        // typed to vantoryexport
  const char* extension;      // without the dot
  int filter_index;           // 1-based, in kSaveFilter
  const char* setting_value;  // stored under "Export file format"
};

inline constexpr std::array<FormatRow, 5> kFormats = {{
    {ExportFormat::kXml, "xml", "xml", 1, "PlanVault v1"},
    {ExportFormat::kPlanVault, "planvault", "planvault", 2, "PlanVault v2"},
    {ExportFormat::kSvg, "svg", "svg", 4, "SVG"},
    {ExportFormat::kDrawing, "drawing", "drawing", 3, "PlanVault DRW"},
    {ExportFormat::kSvgz, "svgz", "svgz", 5, "SVGZ"},
}};

// The save dialog's filter: pairs of description and pattern, '|' between
// them, ended by "||".
inline constexpr const char* kSaveFilter =
    "PlanVault v1 (*.xml)|*.xml|PlanVault v2 (*.planvault)|*.planvault|"
    "PlanVault Drawing (*.drawing)|*.drawing|SVG (*.svg)|*.svg|SVGZ (*.svgz)|*.svgz||";

const FormatRow& RowOf(ExportFormat code);
// The code of a numeric value; nullopt for anything but 0 to 4.
std::optional<ExportFormat> FormatOfCode(int code);

// The keyword typed to vantoryexport, compared exactly and case-sensitively
// ("XML" is no keyword); nullopt when none matches.
std::optional<ExportFormat> FormatOfKeyword(std::string_view keyword);
// The "Export file format" value: "PlanVault v1", "PlanVault v2", "SVG",
// "PlanVault DRW", "SVGZ"; any other text (or none) is kXml.
ExportFormat FormatOfSettingValue(std::string_view value);
// A filter's extension ("xml", ...), compared exactly; nullopt for others.
std::optional<ExportFormat> FormatOfExtension(std::string_view extension);
// The format of a 1-based filter index; nullopt outside 1 to 5.
std::optional<ExportFormat> FormatOfFilterIndex(int index);

// One entry of a file dialog's filter string.
struct FilterEntry {
  std::string description;  // "SVG (*.svg)"
  std::string pattern;      // "*.svg"
  // The pattern's extension without "*.", "svg"; empty for "*.*".
  std::string extension() const;
};
// The entries of a filter string in the "a|b|c|d||" form.
std::vector<FilterEntry> ParseFilter(std::string_view filter);

// The path the save dialog's choice names: `path` as chosen when its file
// name's extension is "." and `extension` (letter case ignored); otherwise
// "%s.%s" of path and extension. Only the file name's extension counts,
// not a dot in a folder name.
std::string PathWithExtension(const std::string& path, std::string_view extension);

// `path` without the extension of its file name ("/plans/a.dxf" gives
// "/plans/a"); the folder is kept.
std::string PathWithoutExtension(const std::string& path);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_EXPORT_FORMATS_H_
