// `floorxport rooms`: the room list of an analysed drawing, and its report.
#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli_args.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/console/terminal.h"
#include "rooms/report.h"
#include "rooms/room_list_rows.h"
#include "subcommands.h"

namespace fx::cli {

const char kRoomsUsage[] = R"(Usage: floorxport rooms DRAWING [-o REPORT.csv]

Prints the room list of a drawing analysed earlier (vantoryconvert): one
line per room with its name, category, description, comment, area and
problems, then the floor area. The rooms are read from the room records
the analysis stored on the drawing's entities; nothing is analysed again.

Options:
  -o, --output REPORT.csv  also write the list as the room list's report
                           (comma-separated, in the code page Windows takes
                           for the locale, as "Save" writes it)
  -h, --help               show this help
)";

namespace {

using Cells = std::array<std::string, fx::rooms::kRoomListColumnCount>;

// Characters, not bytes, so that names in UTF-8 line up.
size_t DisplayWidth(const std::string& text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

// The rows under the captions in columns two blanks apart; the Area column
// aligned right, as the list shows it.
std::string Table(const std::vector<Cells>& rows) {
  Cells captions;
  for (size_t i = 0; i < captions.size(); ++i) captions[i] = fx::rooms::kRoomListColumns[i].caption;
  std::array<size_t, fx::rooms::kRoomListColumnCount> widths{};
  for (const Cells& row : rows) {
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], DisplayWidth(row[i]));
  }
  for (size_t i = 0; i < captions.size(); ++i) {
    widths[i] = std::max(widths[i], DisplayWidth(captions[i]));
  }
  std::string text;
  auto line = [&](const Cells& cells) {
    std::string out;
    for (size_t i = 0; i < cells.size(); ++i) {
      const std::string padding(widths[i] - DisplayWidth(cells[i]), ' ');
      if (i > 0) out += "  ";
      out += fx::rooms::kRoomListColumns[i].right_aligned ? padding + cells[i] : cells[i] + padding;
    }
    while (!out.empty() && out.back() == ' ') out.pop_back();
    text += out + "\n";
  };
  line(captions);
  for (const Cells& row : rows) line(row);
  return text;
}

}  // namespace

int RoomsSubcommand(std::span<const std::string> args) {
  std::string path;
  std::optional<std::string> output;
  if (std::optional<int> status = ParseDrawingAndOutput(args, "rooms", kRoomsUsage, &path, &output)) return *status;
  std::string error;
  std::unique_ptr<fx::console::Terminal> terminal = fx::console::MakeProcessTerminal();
  fx::console::Console console(*terminal, fx::console::AnswerPolicy());
  fx::console::CommandRunner runner(console, fx::console::Commands());
  fx::console::ModuleRegistry no_modules;
  fx::console::HostSession session(runner, no_modules);
  auto warn = [&](const std::string& message) {
    terminal->WriteErr("floorxport: warning: " + message + "\n");
  };
  if (!session.OpenDrawing(path, &error, warn)) {
    terminal->WriteErr("floorxport: " + error + "\n");
    return kExitFailure;
  }
  AcDbDatabase& database = *session.document()->database();
  const std::vector<fx::rooms::RoomRow> rows =
      fx::rooms::BuildRoomRows(fx::rooms::RoomEntitiesInDrawing(database));
  std::vector<Cells> cells;
  for (const fx::rooms::RoomRow& row : rows) cells.push_back(fx::rooms::RowCells(row));
  terminal->WriteOut("Drawing: " + path + "\nRooms: " + std::to_string(rows.size()) + "\n" +
                     Table(cells) +
                     "Floor area: " + fx::rooms::AreaCell(fx::rooms::FloorArea(database)) + "\n");
  if (output) {
    std::string setting_warning;
    const unsigned code_page = fx::rooms::ReportCodePage(&database, &setting_warning);
    if (!setting_warning.empty()) warn(setting_warning);
    fx::rooms::Unmappable unmappable;
    if (!fx::rooms::WriteReportFile(*output, fx::rooms::FormatReport(cells, code_page, &unmappable))) {
      terminal->WriteErr("floorxport: cannot write the report to " + *output + "\n");
      return kExitFailure;
    }
    if (unmappable.count > 0) warn(fx::rooms::UnmappableWarning(code_page, unmappable));
    terminal->WriteOut("Report: " + *output + "\n");
  }
  return kExitOk;
}

}  // namespace fx::cli
