// Measures the review atlas on drawings: the time of WriteAtlas (findings,
// floor drawing, page and findings.json written whole into a folder) and
// the size of both files. Loading and the room analysis are not counted.
//
//   atlas_bench [--iterations N] [--out DIR] FILE...
//
// Each FILE is a floor written by floorgen (layers FloorArea and
// RoomContours, block ROOMTAG); use floorgen --overlap for a floor with
// problems. The atlas of FILE goes to DIR/NAME (default: a temporary
// folder, removed at the end); bench/atlas_paint.mjs opens it in chromium.
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
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/console/terminal.h"
#include "review/atlas.h"
#include "rooms/doc_data.h"
#include "rooms/room_identification.h"
#include "settings/settings_path.h"

namespace {

using fx::bench::FloorgenLayers;
using fx::bench::Grouped;
using fx::bench::QuietTerminal;

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

}  // namespace

int main(int argc, char** argv) {
  int iterations = 3;
  std::string out;
  std::vector<std::string> files;
  bool usage_ok = true;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--iterations" && i + 1 < argc) iterations = std::max(1, std::atoi(argv[++i]));
    else if (arg == "--out" && i + 1 < argc) out = argv[++i];
    else if (arg.starts_with("--")) usage_ok = false;
    else files.push_back(arg);
  }
  if (!usage_ok || files.empty()) {
    std::fprintf(stderr, "usage: atlas_bench [--iterations N] [--out DIR] FILE...\n");
    return 2;
  }
  const fs::path scratch = fs::temp_directory_path() / ("atlas_bench_" + std::to_string(::getpid()));
  fs::create_directories(scratch);
  // Never the user's own settings: the export's defaults.
  fx::settings::SetSettingsFilePath((scratch / "settings.reg").string());
  const fs::path folder = out.empty() ? scratch : fs::path(out);

  QuietTerminal terminal;
  fx::console::AnswerPolicy answers;
  answers.SetYesNoDefault(fx::console::MessageButton::kYes);
  fx::console::Console console(terminal, answers);
  fx::console::CommandRunner runner(console, fx::console::Commands());
  fx::console::ModuleRegistry modules;
  int status = 0;
  std::printf("%-24s %6s %8s %10s %14s %12s\n", "drawing", "rooms", "findings", "write ms", "index.html",
              "findings.json");
  for (const std::string& drawing : files) {
    fx::console::HostSession session(runner, modules);
    std::string error;
    fx::rooms::CDocData& data = fx::rooms::DocVars().docData(session.document());
    if (!session.OpenDrawing(drawing, &error) || !fx::rooms::IdentifyRooms(FloorgenLayers(), data)) {
      std::fprintf(stderr, "atlas_bench: %s: %s\n", drawing.c_str(),
                   error.empty() ? "not a floor written by floorgen" : error.c_str());
      status = 1;
      continue;
    }
    const std::string name = fs::path(drawing).stem().string();
    const std::string dir = (folder / name).string();
    double best = 1e300;
    fx::review::AtlasResult result;
    for (int i = 0; i < iterations; ++i) {
      result = {};
      const Clock::time_point start = Clock::now();
      if (!fx::review::WriteAtlas(*acdbHostApplicationServices()->workingDatabase(), data, name, dir, &result,
                                  &error)) {
        std::fprintf(stderr, "atlas_bench: %s: %s\n", drawing.c_str(), error.c_str());
        status = 1;
        break;
      }
      best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
    }
    std::printf("%-24s %6zu %8zu %10.1f %14s %12s\n", name.c_str(), data.roomIds().size(),
                result.review.findings.size(), best * 1000, Grouped(result.page_bytes).c_str(),
                Grouped(result.json_bytes).c_str());
  }
  fs::remove_all(scratch);
  return status;
}
