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
// The ANSI code page: the editor writes the system's ANSI code page. On
// Linux there is none, so the report is written in Windows-1252, the ANSI
// code page of Western European Windows installations, which is what the
// files of our users hold. Characters it cannot represent become '?', as
// the Windows conversion writes them by default; so do bytes that are not
// valid UTF-8.
#ifndef FLOORXPORT_ROOMS_REPORT_H_
#define FLOORXPORT_ROOMS_REPORT_H_

#include <string>
#include <string_view>
#include <vector>

#include "rooms/room_list_rows.h"

namespace fx::rooms {

// The file dialog's filter, as the editor shows it.
inline constexpr const char* kReportFilter =
    "CSV (Comma delimited)(*.csv)|*.csv|All Files (*.*)|*.*||";
inline constexpr const char* kReportExtension = "csv";

// UTF-8 text in Windows-1252 (see above).
std::string Utf8ToAnsi(std::string_view utf8);

// The report's bytes for `rows` (each the six cells of one row).
std::string FormatReport(const std::vector<std::array<std::string, kRoomListColumnCount>>& rows);

// "Report1", or the document's file name without its folder and extension.
std::string DefaultReportName(const std::string& document_file_name);

// Writes `bytes` to `path` whole or not at all (a temporary file beside it,
// renamed over it). False when the file cannot be written; the caller then
// skips the report without a message.
bool WriteReportFile(const std::string& path, std::string_view bytes);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_REPORT_H_
