// floorgen: writes a synthetic office floor plan as a DXF drawing, for
// benchmarks and sample data. See UsageText() for the options.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <span>
#include <stdexcept>

#include "atomic_file.h"
#include "command_line.h"
#include "drawing_writer.h"
#include "floor_layout.h"
#include "overlap.h"

namespace {

constexpr double kBytesPerMegabyte = 1024.0 * 1024.0;
constexpr int kExitUsage = 2;

int Run(const floorgen::Options& options) {
  floorgen::FloorLayout layout = floorgen::GenerateFloorLayout(options.rooms, options.seed);
  floorgen::EnlargeSomeContours(layout, options.overlap, options.seed);
  const auto target_bytes = static_cast<std::uint64_t>(std::ceil(options.target_megabytes * kBytesPerMegabyte));
  const floorgen::DrawingPlan plan = floorgen::PlanDrawing(layout, options.rooms, target_bytes);
  if (options.output) {
    floorgen::WriteFileAtomically(*options.output, [&](std::FILE* file) {
      floorgen::WriteDrawing(file, layout, options.rooms, plan);
    });
  } else {
    floorgen::WriteDrawing(stdout, layout, options.rooms, plan);
    if (std::fflush(stdout) != 0) throw std::runtime_error("cannot write to standard output");
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  floorgen::Options options;
  try {
    options = floorgen::ParseCommandLine(std::span<const char* const>(argv + 1, static_cast<std::size_t>(argc - 1)));
  } catch (const std::invalid_argument& error) {
    std::fprintf(stderr, "floorgen: %s\n%s", error.what(), floorgen::UsageText().c_str());
    return kExitUsage;
  }
  if (options.help) {
    std::fputs(floorgen::UsageText().c_str(), stdout);
    return 0;
  }
  try {
    return Run(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "floorgen: %s\n", error.what());
    return 1;
  }
}
