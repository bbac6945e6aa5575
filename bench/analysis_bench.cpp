// Measures room identification on a floor written by floorgen (layers
// FloorArea, RoomContours, RoomTags with the block ROOMTAG, RoomNames,
// RoomTypes, RoomDescriptions): the whole vantoryconvert work in Block and
// in Text mode, and the intersecting-pair search alone, through the spatial
// index and (up to --brute-force-limit contours) by testing every pair.
//
//   analysis_bench FILE [ITERATIONS] [--brute-force-limit N]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "bench_support.h"
#include "host/database.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/console/terminal.h"
#include "rooms/contour_overlap.h"
#include "rooms/doc_data.h"
#include "rooms/room_identification.h"

namespace {

using fx::bench::QuietTerminal;

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

fx::rooms::ConvertOptions Options(fx::rooms::IdentificationMode mode) {
  fx::rooms::ConvertOptions options;
  options.floor_layer = "FloorArea";
  options.contour_layer = "RoomContours";
  options.mode = mode;
  options.block_name = "ROOMTAG";
  options.name_tag = "NAME";
  options.category_tag = "CATEGORY";
  options.description_tag = "DESCRIPTION";
  options.name_layer = "RoomNames";
  options.type_layer = "RoomTypes";
  options.description_layer = "RoomDescriptions";
  return options;
}

std::vector<fx::rooms::ContourGeometry> Contours(AcDbDatabase& database) {
  std::vector<fx::rooms::ContourGeometry> contours;
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(database.modelSpaceId(), AcDb::kForRead);
  for (AcDbObjectId id : model_space->entityIds()) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    fx::rooms::ContourGeometry contour;
    if (entity->layer() == "RoomContours" && fx::rooms::ReadContourGeometry(*entity.object(), &contour)) {
      contours.push_back(std::move(contour));
    }
  }
  return contours;
}

// The best of `iterations` runs of `work`, in seconds.
template <class Work>
double Best(int iterations, Work work) {
  double best = 1e9;
  for (int i = 0; i < iterations; ++i) {
    const Clock::time_point start = Clock::now();
    work();
    best = std::min(best, Seconds(start));
  }
  return best;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  size_t brute_force_limit = 5000;
  for (size_t i = 0; i + 1 < args.size(); ++i) {
    if (args[i] == "--brute-force-limit") {
      brute_force_limit = std::strtoul(args[i + 1].c_str(), nullptr, 10);
      args.erase(args.begin() + static_cast<long>(i), args.begin() + static_cast<long>(i) + 2);
      break;
    }
  }
  if (args.empty()) {
    std::fprintf(stderr, "usage: analysis_bench FILE [ITERATIONS] [--brute-force-limit N]\n");
    return 2;
  }
  const int iterations = args.size() > 1 ? std::max(1, std::atoi(args[1].c_str())) : 3;

  QuietTerminal terminal;
  fx::console::Console console(terminal, fx::console::AnswerPolicy());
  fx::console::CommandRunner runner(console, fx::console::Commands());
  fx::console::ModuleRegistry modules;
  fx::console::HostSession session(runner, modules);
  std::string error;
  const Clock::time_point load_start = Clock::now();
  if (!session.OpenDrawing(args[0], &error)) {
    std::fprintf(stderr, "analysis_bench: %s\n", error.c_str());
    return 1;
  }
  const double load = Seconds(load_start);
  AcDbDatabase& database = *session.document()->database();
  fx::rooms::CDocData& data = fx::rooms::DocVars().docData(session.document());

  bool analysed = true;
  const double block = Best(iterations, [&] {
    analysed &= fx::rooms::IdentifyRooms(Options(fx::rooms::IdentificationMode::kBlock), data);
  });
  const double text = Best(iterations, [&] {
    analysed &= fx::rooms::IdentifyRooms(Options(fx::rooms::IdentificationMode::kText), data);
  });
  if (!analysed) {
    std::fprintf(stderr, "analysis_bench: %s is not a floor written by floorgen\n", args[0].c_str());
    return 1;
  }
  const std::vector<fx::rooms::ContourGeometry> contours = Contours(database);
  size_t pairs = 0;
  const double indexed = Best(iterations, [&] { pairs = fx::rooms::FindOverlappingPairs(contours).size(); });

  std::printf("%s: %zu contours, %zu rooms identified, %zu intersecting ordered pairs\n",
              args[0].c_str(), contours.size(), data.identifiedRoomCount(), pairs);
  std::printf("  load drawing               %8.3f s\n", load);
  std::printf("  vantoryconvert, Block mode %8.3f s\n", block);
  std::printf("  vantoryconvert, Text mode  %8.3f s\n", text);
  std::printf("  pair search, indexed       %8.4f s\n", indexed);
  if (contours.size() <= brute_force_limit) {
    size_t checked = 0;
    const double all = Best(1, [&] { checked = fx::rooms::FindOverlappingPairsBruteForce(contours).size(); });
    std::printf("  pair search, every pair    %8.4f s%s\n", all, checked == pairs ? "" : "  (DIFFERENT RESULT)");
  } else {
    std::printf("  pair search, every pair    (skipped above %zu contours)\n", brute_force_limit);
  }
  return 0;
}
