// The room report: the room list as a comma-separated file.
//
// Layout, byte for byte (kept as the product has always written it):
//   header  for each column caption in order: "," (not before the first)
//           and the caption, in the ANSI code page, followed by one NUL
//           byte; then "\r\n" (no NUL);
//   rows    for each row, for each of the six cells as the list shows them:
//           "," (not before the first) and the cell, in the ANSI code page,
//           no terminator; then "\r\n".
// Cells are neither quoted nor escaped: a comma in a name splits the field.
//
// The ANSI code page: the editor writes the system's ANSI code page, the one
// Windows takes for the user's locale; the host tells it (UserAnsiCodePage
// in host/code_page.h: 936 for zh_CN, 1251 for ru_RU, 1252 for western
// locales). The setting "ANSI Code Page" overrides it, and where the locale
// names no language (C, POSIX) the drawing's $DWGCODEPAGE decides.
// Characters the page cannot represent become '?', as the Windows
// conversion writes them by default; so do bytes that are not valid UTF-8.
// They are counted, so that the caller can say so once.
#ifndef FLOORXPORT_ROOMS_REPORT_H_
#define FLOORXPORT_ROOMS_REPORT_H_

#include <string>
#include <string_view>
#include <vector>

#include "rooms/room_list_rows.h"

class AcDbDatabase;

namespace fx::rooms {

// The file dialog's filter, as the editor shows it.
inline constexpr const char* kReportFilter =
    "CSV (Comma delimited)(*.csv)|*.csv|All Files (*.*)|*.*||";
inline constexpr const char* kReportExtension = "csv";

inline constexpr unsigned kWindowsWestern = 1252;

// The code page of the report (see above) for a drawing (null: none). A
// setting naming a page the host cannot write is not used; *warning (when
// given) then says so, and is empty otherwise. The .svgz text takes the
// same code page.
unsigned ReportCodePage(const AcDbDatabase* database, std::string* warning = nullptr);

// What a conversion could not write: how many characters (or bytes that are
// not UTF-8), and the first (U+FFFD and no text for such a byte).
struct Unmappable {
  size_t count = 0;
  char32_t first = 0;
  std::string first_text;  // UTF-8
};

// UTF-8 text in `code_page` (see above), adding what it cannot hold to
// *unmappable when given.
std::string Utf8ToAnsi(std::string_view utf8, unsigned code_page = kWindowsWestern,
                       Unmappable* unmappable = nullptr);

// The report's bytes for `rows` (each the six cells of one row).
std::string FormatReport(const std::vector<std::array<std::string, kRoomListColumnCount>>& rows,
                         unsigned code_page = kWindowsWestern, Unmappable* unmappable = nullptr);

// The warning for characters the report could not hold: "the report is
// written in code page 936, which cannot hold 3 characters (the first is
// U+D68C "회"): they are written as "?"".
std::string UnmappableWarning(unsigned code_page, const Unmappable& unmappable);

// "Report1", or the document's file name without its folder and extension.
std::string DefaultReportName(const std::string& document_file_name);

// Writes `bytes` to `path` whole or not at all (a temporary file beside it,
// renamed over it). False when the file cannot be written; the caller then
// skips the report without a message.
bool WriteReportFile(const std::string& path, std::string_view bytes);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_REPORT_H_
