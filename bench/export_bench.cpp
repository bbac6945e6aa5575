// Measures the floor export on drawings: first the frame alone (the zoom to
// extents every export starts with), then for each format the time of the
// whole export through the exporter's entry point (frame, rendering,
// writing the file whole with its flush to disk) and the size of the file,
// with block optimisation on and off for the formats that embed the SVG.
// Loading (and, with --analyse, the room analysis) is not counted.
//
//   export_bench [--iterations N] [--analyse] [--out DIR] FILE...
//
// --analyse first identifies the rooms of a floor written by floorgen
// (layers FloorArea and RoomContours, block ROOMTAG), so that the floor
// formats carry its rooms; without it a drawing is exported as it is (the
// missing-floor question is answered Yes). Files go to DIR (default: a
// temporary folder, removed at the end).
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include "bench_support.h"
#include "export/export_frame.h"
#include "export/exporter.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/console/terminal.h"
#include "rooms/doc_data.h"
#include "rooms/room_identification.h"
#include "settings/known_settings.h"
#include "settings/settings.h"
#include "settings/settings_key.h"
#include "settings/settings_path.h"

namespace {

using fx::bench::FloorgenLayers;
using fx::bench::Grouped;
using fx::bench::QuietTerminal;

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

struct Args {
  int iterations = 3;
  bool analyse = false;
  std::string out;
  std::vector<std::string> files;
};

bool Parse(int argc, char** argv, Args& args) {
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--iterations" && i + 1 < argc) args.iterations = std::max(1, std::atoi(argv[++i]));
    else if (arg == "--out" && i + 1 < argc) args.out = argv[++i];
    else if (arg == "--analyse") args.analyse = true;
    else if (arg.starts_with("--")) return false;
    else args.files.push_back(arg);
  }
  return !args.files.empty();
}

// Exports `drawing` (open in `session`) in every format; false on a failure.
bool Measure(const std::string& drawing, const Args& args, const std::string& out, size_t rooms) {
  const std::string name = fs::path(drawing).stem().string();
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  fx::svg::Frame frame;
  double best_frame = 1e300;
  for (int i = 0; i < args.iterations && database != nullptr; ++i) {
    const Clock::time_point start = Clock::now();
    fx::exports::ExtentsFrame(*database, frame);
    best_frame = std::min(best_frame, Seconds(start));
  }
  std::printf("%-28s %6zu  %-10s %-6s %10.1f %14s\n", name.c_str(), rooms, "frame", "-", best_frame * 1000, "-");
  for (const fx::exports::FormatRow& row : fx::exports::kFormats) {
    const bool embeds_svg = row.code != fx::exports::ExportFormat::kXml;
    for (bool blocks : embeds_svg ? std::vector<bool>{true, false} : std::vector<bool>{true}) {
      fx::settings::SetSettingInt(fx::settings::kBlockOptimization, blocks ? 1 : 0,
                                  fx::settings::kSectionExportOptions);
      const std::string path = out + "/" + name + (blocks ? "" : ".inline") + "." + row.extension;
      double best = 1e300;
      for (int i = 0; i < args.iterations; ++i) {
        const Clock::time_point start = Clock::now();
        fx::exports::Exporter().Export(static_cast<int>(row.code), path, 0);
        best = std::min(best, Seconds(start));
        if (!fx::exports::Exporter().history().back().written) {
          std::fprintf(stderr, "export_bench: %s: the %s export failed\n", drawing.c_str(), row.keyword);
          return false;
        }
      }
      std::printf("%-28s %6zu  %-10s %-6s %10.1f %14s\n", name.c_str(), rooms, row.keyword,
                  embeds_svg ? (blocks ? "on" : "off") : "-", best * 1000, Grouped(fs::file_size(path)).c_str());
    }
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  Args args;
  if (!Parse(argc, argv, args)) {
    std::fprintf(stderr, "usage: export_bench [--iterations N] [--analyse] [--out DIR] FILE...\n");
    return 2;
  }
  const fs::path scratch = fs::temp_directory_path() / ("export_bench_" + std::to_string(::getpid()));
  fs::create_directories(scratch);
  const std::string out = args.out.empty() ? scratch.string() : args.out;
  fs::create_directories(out);
  // Never the user's own settings: the defaults, block optimisation switched per row.
  fx::settings::SetSettingsFilePath((scratch / "settings.reg").string());

  QuietTerminal terminal;
  fx::console::AnswerPolicy answers;
  answers.SetYesNoDefault(fx::console::MessageButton::kYes);
  fx::console::Console console(terminal, answers);
  fx::console::CommandRunner runner(console, fx::console::Commands());
  fx::console::ModuleRegistry modules;
  int status = 0;
  std::printf("%-28s %6s  %-10s %-6s %10s %14s\n", "drawing", "rooms", "format", "blocks", "ms", "bytes");
  for (const std::string& drawing : args.files) {
    fx::console::HostSession session(runner, modules);
    std::string error;
    if (!session.OpenDrawing(drawing, &error)) {
      std::fprintf(stderr, "export_bench: %s\n", error.c_str());
      status = 1;
      continue;
    }
    fx::rooms::CDocData& data = fx::rooms::DocVars().docData(session.document());
    if (args.analyse && !fx::rooms::IdentifyRooms(FloorgenLayers(), data)) {
      std::fprintf(stderr, "export_bench: %s is not a floor written by floorgen\n", drawing.c_str());
      status = 1;
      continue;
    }
    if (!Measure(drawing, args, out, data.roomIds().size())) status = 1;
  }
  fs::remove_all(scratch);
  return status;
}
