// `floorxport convert`: a DWG (or DXF) drawing saved as DXF.
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "cli_args.h"
#include "host/database.h"
#include "host/dxf/drawing_io.h"
#include "subcommands.h"

namespace fx::cli {

const char kConvertUsage[] = R"(Usage: floorxport convert DRAWING OUT.dxf

Reads DRAWING, a DWG (R13 to R2018, converted by tools/dwg2dxf under node:
install it with "bash scripts/setup") or a DXF, and saves it as DXF to
OUT.dxf, in the drawing's own version. Prints the DWG's version and what the
conversion dropped. OUT.dxf is written whole or not at all; a DWG is never
written.

Options:
  -h, --help   show this help
)";

int ConvertSubcommand(std::span<const std::string> args) {
  std::vector<std::string> positional;
  for (const std::string& arg : args) {
    if (arg == "-h" || arg == "--help") {
      std::fputs(kConvertUsage, stdout);
      return kExitOk;
    }
    positional.push_back(arg);
  }
  if (positional.size() != 2) {
    std::fputs("floorxport: convert takes DRAWING and OUT.dxf\n"
               "Run \"floorxport convert --help\" for usage.\n", stderr);
    return kExitUsage;
  }
  const std::string& input = positional[0];
  const std::string& output = positional[1];
  if (fx::dxf::IsDwgTarget(output)) {
    std::fprintf(stderr, "floorxport: %s: drawings are saved as DXF only, never over a DWG; "
                 "give an output file ending in .dxf\n", output.c_str());
    return kExitFailure;
  }
  std::string error;
  auto warn = [](const std::string& message) {
    std::fprintf(stderr, "floorxport: warning: %s\n", message.c_str());
  };
  std::unique_ptr<AcDbDatabase> database = fx::dxf::ReadDrawing(input, &error, warn);
  if (database == nullptr) {
    std::fprintf(stderr, "floorxport: %s\n", error.c_str());
    return kExitFailure;
  }
  std::string what = "DXF " + database->version();
  if (const fx::dxf::DwgSource* dwg = fx::dxf::DwgSourceOf(*database)) {
    what = "DWG " + dwg->version + " (" + dwg->release + ")";
  }
  if (database->saveAs(output.c_str()) != Acad::eOk) {
    std::fprintf(stderr, "floorxport: cannot write %s\n", output.c_str());
    return kExitFailure;
  }
  std::printf("%s: %s saved as DXF to %s\n", input.c_str(), what.c_str(), output.c_str());
  return kExitOk;
}

}  // namespace fx::cli
