#include "export/export_formats.h"

#include <filesystem>

namespace fx::exports {
namespace {

bool EqualNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

template <class Match>
std::optional<ExportFormat> Find(Match match) {
  for (const FormatRow& row : kFormats) {
    if (match(row)) return row.code;
  }
  return std::nullopt;
}

}  // namespace

const FormatRow& RowOf(ExportFormat code) {
  for (const FormatRow& row : kFormats) {
    if (row.code == code) return row;
  }
  return kFormats.front();  // unreachable for a valid code
}

std::optional<ExportFormat> FormatOfCode(int code) {
  return Find([code](const FormatRow& row) { return static_cast<int>(row.code) == code; });
}

std::optional<ExportFormat> FormatOfKeyword(std::string_view keyword) {
  return Find([keyword](const FormatRow& row) { return keyword == row.keyword; });
}

ExportFormat FormatOfSettingValue(std::string_view value) {
  return Find([value](const FormatRow& row) { return value == row.setting_value; }).value_or(ExportFormat::kXml);
}

std::optional<ExportFormat> FormatOfExtension(std::string_view extension) {
  return Find([extension](const FormatRow& row) { return extension == row.extension; });
}

std::optional<ExportFormat> FormatOfFilterIndex(int index) {
  return Find([index](const FormatRow& row) { return row.filter_index == index; });
}

std::string FilterEntry::extension() const {
  if (pattern.size() > 2 && pattern.compare(0, 2, "*.") == 0 && pattern != "*.*") return pattern.substr(2);
  return {};
}

std::vector<FilterEntry> ParseFilter(std::string_view filter) {
  std::vector<std::string> parts;
  size_t start = 0;
  while (start < filter.size()) {
    const size_t bar = filter.find('|', start);
    const size_t end = bar == std::string_view::npos ? filter.size() : bar;
    if (end == start) break;  // "||" ends the list
    parts.emplace_back(filter.substr(start, end - start));
    start = end + 1;
  }
  std::vector<FilterEntry> entries;
  for (size_t i = 0; i + 1 < parts.size(); i += 2) entries.push_back({parts[i], parts[i + 1]});
  return entries;
}

std::string PathWithExtension(const std::string& path, std::string_view extension) {
  const std::string current = std::filesystem::path(path).filename().extension().string();
  if (!current.empty() && EqualNoCase(current, "." + std::string(extension))) return path;
  return path + "." + std::string(extension);
}

std::string PathWithoutExtension(const std::string& path) {
  std::filesystem::path result(path);
  if (!result.has_filename()) return path;
  return result.replace_extension().string();
}

}  // namespace fx::exports
