#include "rooms/report.h"

#include <cstdio>
#include <filesystem>
#include <optional>

#include "host/code_page.h"
#include "host/database.h"
#include "host/whole_file.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::rooms {
namespace {

constexpr char kUnmappable = '?';  // what the Windows conversion writes by default
constexpr char32_t kNotUtf8 = 0xFFFD;

// Decodes one character at `pos` and advances past it; nullopt (and one
// byte skipped) for a byte that does not start a valid sequence.
std::optional<char32_t> NextCharacter(std::string_view text, size_t& pos) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(pos);
  size_t length = 0;
  char32_t c = 0;
  char32_t minimum = 0;
  if (lead < 0x80) {
    ++pos;
    return lead;
  } else if ((lead & 0xE0) == 0xC0) {
    length = 2, c = lead & 0x1F, minimum = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, c = lead & 0x0F, minimum = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, c = lead & 0x07, minimum = 0x10000;
  } else {
    ++pos;
    return std::nullopt;
  }
  if (pos + length > text.size()) {
    ++pos;
    return std::nullopt;
  }
  for (size_t i = 1; i < length; ++i) {
    if ((byte(pos + i) & 0xC0) != 0x80) {
      ++pos;
      return std::nullopt;
    }
    c = (c << 6) | (byte(pos + i) & 0x3F);
  }
  if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
    ++pos;
    return std::nullopt;
  }
  pos += length;
  return c;
}

void AppendAnsi(std::string_view utf8, CodePageEncoder& encoder, std::string* out, Unmappable* unmappable) {
  size_t pos = 0;
  while (pos < utf8.size()) {
    const size_t start = pos;
    const std::optional<char32_t> c = NextCharacter(utf8, pos);
    if (c && encoder.Append(*c, out)) continue;
    *out += kUnmappable;
    if (unmappable != nullptr && unmappable->count++ == 0) {
      unmappable->first = c.value_or(kNotUtf8);
      unmappable->first_text = c ? std::string(utf8.substr(start, pos - start)) : std::string();
    }
  }
}

std::string Hex(char32_t c) {
  char text[16];
  std::snprintf(text, sizeof text, "%04X", static_cast<unsigned>(c));
  return text;
}

}  // namespace

unsigned ReportCodePage(const AcDbDatabase* database, std::string* warning) {
  if (warning != nullptr) warning->clear();
  const int32_t chosen = settings::GetSettingInt(settings::kAnsiCodePage, 0, settings::kSectionExportOptions);
  if (chosen > 0 && CanWriteCodePage(static_cast<unsigned>(chosen))) return static_cast<unsigned>(chosen);
  if (chosen != 0 && warning != nullptr) {
    *warning = std::string("the setting \"") + settings::kAnsiCodePage + "\" names code page " +
               std::to_string(chosen) + ", which cannot be written: the user's code page is taken";
  }
  if (const unsigned user = UserAnsiCodePage(); user != 0) return user;
  if (database != nullptr) {
    if (const unsigned drawing = CodePageOfDwgName(database->dwgcodepage()); drawing != 0) return drawing;
  }
  return kWindowsWestern;
}

std::string Utf8ToAnsi(std::string_view utf8, unsigned code_page, Unmappable* unmappable) {
  CodePageEncoder encoder(code_page);
  std::string ansi;
  ansi.reserve(utf8.size());
  AppendAnsi(utf8, encoder, &ansi, unmappable);
  return ansi;
}

std::string FormatReport(const std::vector<std::array<std::string, kRoomListColumnCount>>& rows,
                         unsigned code_page, Unmappable* unmappable) {
  CodePageEncoder encoder(code_page);
  std::string bytes;
  for (size_t column = 0; column < kRoomListColumnCount; ++column) {
    AppendAnsi(std::string(column == 0 ? "" : ",") + kRoomListColumns[column].caption, encoder, &bytes,
               unmappable);
    bytes += '\0';  // each header field keeps its terminator: the format has it
  }
  bytes += "\r\n";
  for (const auto& cells : rows) {
    for (size_t column = 0; column < kRoomListColumnCount; ++column) {
      AppendAnsi((column == 0 ? "" : ",") + cells[column], encoder, &bytes, unmappable);
    }
    bytes += "\r\n";
  }
  return bytes;
}

std::string UnmappableWarning(unsigned code_page, const Unmappable& unmappable) {
  const std::string first = unmappable.first_text.empty() ? "" : " \"" + unmappable.first_text + "\"";
  return "the report is written in code page " + std::to_string(code_page) + ", which cannot hold " +
         std::to_string(unmappable.count) + (unmappable.count == 1 ? " character" : " characters") +
         " (the first is U+" + Hex(unmappable.first) + first + "): they are written as \"?\"";
}

std::string DefaultReportName(const std::string& document_file_name) {
  const std::string stem = std::filesystem::path(document_file_name).stem().string();
  return stem.empty() ? "Report1" : stem;
}

bool WriteReportFile(const std::string& path, std::string_view bytes) {
  return fx::WriteWholeFile(path, bytes);
}

}  // namespace fx::rooms
