#include "rooms/report.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

namespace fx::rooms {
namespace {

// Windows-1252 bytes 0x80..0x9F and the characters they stand for. The five
// bytes the code page leaves unassigned map to the C1 control characters of
// the same value, as the Windows conversion does.
// clang-format off
constexpr char32_t kHighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
// clang-format on

constexpr char kUnmappable = '?';

std::optional<char> AnsiByte(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (size_t i = 0; i < 32; ++i) {
    if (kHighControls[i] == c) return static_cast<char>(0x80 + i);
  }
  return std::nullopt;
}

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

}  // namespace

std::string Utf8ToAnsi(std::string_view utf8) {
  std::string ansi;
  ansi.reserve(utf8.size());
  size_t pos = 0;
  while (pos < utf8.size()) {
    std::optional<char32_t> c = NextCharacter(utf8, pos);
    std::optional<char> mapped = c ? AnsiByte(*c) : std::nullopt;
    ansi += mapped.value_or(kUnmappable);
  }
  return ansi;
}

std::string FormatReport(const std::vector<std::array<std::string, kRoomListColumnCount>>& rows) {
  std::string bytes;
  for (size_t column = 0; column < kRoomListColumnCount; ++column) {
    bytes += Utf8ToAnsi(std::string(column == 0 ? "" : ",") + kRoomListColumns[column].caption);
    bytes += '\0';  // each header field keeps its terminator: the format has it
  }
  bytes += "\r\n";
  for (const auto& cells : rows) {
    for (size_t column = 0; column < kRoomListColumnCount; ++column) {
      bytes += Utf8ToAnsi((column == 0 ? "" : ",") + cells[column]);
    }
    bytes += "\r\n";
  }
  return bytes;
}

std::string DefaultReportName(const std::string& document_file_name) {
  const std::string stem = std::filesystem::path(document_file_name).stem().string();
  return stem.empty() ? "Report1" : stem;
}

bool WriteReportFile(const std::string& path, std::string_view bytes) {
  const std::string temporary = path + ".tmp";
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.flush();
    if (!out) {
      out.close();
      std::remove(temporary.c_str());
      return false;
    }
  }
  std::error_code error;
  std::filesystem::rename(temporary, path, error);
  if (error) {
    std::remove(temporary.c_str());
    return false;
  }
  return true;
}

}  // namespace fx::rooms
