// `floorxport analyze`: room identification (_vantoryconvert) with its
// answers taken from options, then a summary of what it found.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "analysis_options.h"
#include "cli_args.h"
#include "host/dxf/dwg_input.h"
#include "review_report.h"
#include "run_subcommand.h"
#include "subcommands.h"

namespace fx::cli {

const char kAnalyzeUsage[] = R"(Usage: floorxport analyze DRAWING --floor-layer LAYER --contour-layer LAYER
         (--block NAME --name-tag TAG --category-tag TAG --description-tag TAG
          [--remove-inserts]
          | --name-layer LAYER --type-layer LAYER --description-layer LAYER)
         [options]

Identifies the rooms of DRAWING (DXF or DWG) by running _vantoryconvert with the
answers given: marks the floor outline, matches every room identifier (an
insert of the room block, or a text on the name layer) to the room contour
that holds it, writes the room record on each identifier, and prints a
summary of the rooms and problems found after the command's transcript.

Options:
      --floor-layer LAYER        layer of the floor outline polyline
      --contour-layer LAYER      layer of the room contours
  Block mode (rooms named by inserts of a block with attributes):
      --block NAME               the room block
      --name-tag TAG             tag of the attribute with the room name
      --category-tag TAG         tag of the attribute with the room category
      --description-tag TAG      tag of the attribute with the description
      --remove-inserts           answer Yes to "Do you want remove block
                                 inserts?": each insert that alone names
                                 its room hands its record to the contour
                                 and is erased
  Text mode (rooms named by texts on layers):
      --name-layer LAYER         layer of the room names
      --type-layer LAYER         layer of the room types
      --description-layer LAYER  layer of the room descriptions
  -o, --output OUT.dxf           save the analysed drawing to OUT.dxf
      --save                     save over DRAWING (never changed otherwise)
      --report DIR               write the review atlas into DIR, as
                                 floorxport review does
      --fail-on KINDS            exit with status 3 when problems of these
                                 kinds were found (see floorxport review)
      --yes, --no                answer Yes/No questions with Yes (or No);
                                 a drawing without a floor outline asks
                                 whether to go on, and No is the default
      --answer "QUESTION=ANSWER" answer one question, as floorxport run does
      --recover                  load a truncated DRAWING with what was read
                                 before the cut, as floorxport run does
  -h, --help                     show this help

Exit status: 0 the analysis ran to its end (the problems it found are no
failure); 1 the drawing did not load, the analysis ended early (its message
is in the transcript), the atlas or the save failed, and nothing was saved;
2 wrong usage; 3 the work succeeded (the drawing was saved when asked) and
problems of a --fail-on kind were found.
)";

namespace {

// The analysis's options and those of analyze alone.
std::vector<OptionDefinition> AnalyzeOptions() {
  std::vector<OptionDefinition> options = kAnalysisOptions;
  options.push_back({"-o", "--output", true});
  options.push_back({nullptr, "--save", false});
  options.push_back({nullptr, "--report", true});
  options.push_back({nullptr, "--fail-on", true});
  return options;
}

// Saving: -o or --save, never both, never DXF over a DWG or over the input
// by -o. False with *error.
bool ReadSaving(const ParsedArgs& parsed, RunOptions& options, std::string* error) {
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--output")) options.output = option.value;
    if (Is(option, "--save")) options.save_in_place = true;
  }
  std::error_code same_error;
  if (options.output && options.save_in_place) {
    *error = "give either -o or --save";
  } else if (options.save_in_place && fx::dxf::IsDwgTarget(options.drawing)) {
    *error = DwgSaveRefusal(options.drawing);
  } else if (options.output && std::filesystem::equivalent(*options.output, options.drawing, same_error)) {
    *error = "-o names the input drawing; use --save to write over it";
  } else {
    return true;
  }
  return false;
}

}  // namespace

int AnalyzeSubcommand(std::span<const std::string> args) {
  const std::vector<OptionDefinition> definitions = AnalyzeOptions();
  ParsedArgs parsed;
  std::string error;
  const bool parsed_ok = ParseArgs(args, definitions, parsed, &error);
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) {
      std::fputs(kAnalyzeUsage, stdout);
      return kExitOk;
    }
  }
  AnalysisArgs analysis;
  RunOptions options;
  ReportOptions report;
  if (!parsed_ok || !ReadAnalysis(parsed, "analyze", &analysis, &options, &error) ||
      !ReadSaving(parsed, options, &error) || !ReadReportOptions(parsed, "--report", &report, &error)) {
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport analyze --help\" for usage.\n", error.c_str());
    return kExitUsage;
  }
  return RunAnalysisWithReport(options, report);
}

}  // namespace fx::cli
