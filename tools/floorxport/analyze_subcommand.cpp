// `floorxport analyze`: room identification (_vantoryconvert) with its
// answers taken from options, then a summary of what it found.
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "cli_args.h"
#include "host/dxf/dwg_input.h"
#include "host/editor.h"
#include "rooms/doc_data.h"
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
      --yes, --no                answer Yes/No questions with Yes (or No);
                                 a drawing without a floor outline asks
                                 whether to go on, and No is the default
      --answer "QUESTION=ANSWER" answer one question, as floorxport run does
      --recover                  load a truncated DRAWING with what was read
                                 before the cut, as floorxport run does
  -h, --help                     show this help

Exit status: 0 the analysis ran to its end (the problems it found are no
failure); 1 the drawing did not load, the analysis ended early (its message
is in the transcript) or the save failed, and nothing was saved; 2 wrong
usage.
)";

namespace {

constexpr OptionDefinition kAnalyzeOptions[] = {
    {nullptr, "--floor-layer", true},    {nullptr, "--contour-layer", true},
    {nullptr, "--block", true},          {nullptr, "--name-tag", true},
    {nullptr, "--category-tag", true},   {nullptr, "--description-tag", true},
    {nullptr, "--remove-inserts", false}, {nullptr, "--name-layer", true},
    {nullptr, "--type-layer", true},     {nullptr, "--description-layer", true},
    {"-o", "--output", true},            {nullptr, "--save", false},
    {nullptr, "--yes", false},           {nullptr, "--no", false},
    {nullptr, "--answer", true},         {nullptr, "--recover", false},
    {"-h", "--help", false},
};

struct AnalyzeArgs {
  std::string floor_layer, contour_layer;
  std::string block, name_tag, category_tag, description_tag;
  bool remove_inserts = false;
  std::string name_layer, type_layer, description_layer;
};

// An answer in double quotes, a quote inside it doubled: the console reads
// it back with its blanks.
std::string Quoted(std::string_view answer) {
  std::string quoted = "\"";
  for (char c : answer) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

// The command line as the room identification dialog sends it.
std::string ConvertLine(const AnalyzeArgs& args) {
  std::string line = "_vantoryconvert " + Quoted(args.floor_layer) + " " + Quoted(args.contour_layer);
  if (!args.block.empty()) {
    return line + " B " + Quoted(args.block) + " " + Quoted(args.name_tag) + " " +
           Quoted(args.category_tag) + " " + Quoted(args.description_tag) +
           (args.remove_inserts ? " Yes" : " No");
  }
  return line + " T " + Quoted(args.name_layer) + " " + Quoted(args.type_layer) + " " +
         Quoted(args.description_layer);
}

// The value of each option given, the last one when repeated.
void ReadValues(const ParsedArgs& parsed, AnalyzeArgs& args) {
  const std::pair<const char*, std::string*> values[] = {
      {"--floor-layer", &args.floor_layer},       {"--contour-layer", &args.contour_layer},
      {"--block", &args.block},                   {"--name-tag", &args.name_tag},
      {"--category-tag", &args.category_tag},     {"--description-tag", &args.description_tag},
      {"--name-layer", &args.name_layer},         {"--type-layer", &args.type_layer},
      {"--description-layer", &args.description_layer},
  };
  for (const ParsedOption& option : parsed.options) {
    for (const auto& [name, value] : values) {
      if (Is(option, name)) *value = option.value;
    }
    if (Is(option, "--remove-inserts")) args.remove_inserts = true;
  }
}

// The mode's options are complete and not mixed; false with *error.
bool CheckMode(const AnalyzeArgs& args, std::string* error) {
  const bool block = !args.block.empty() || !args.name_tag.empty() || !args.category_tag.empty() ||
                     !args.description_tag.empty() || args.remove_inserts;
  const bool text = !args.name_layer.empty() || !args.type_layer.empty() || !args.description_layer.empty();
  if (args.floor_layer.empty() || args.contour_layer.empty()) {
    *error = "analyze needs --floor-layer and --contour-layer";
  } else if (block == text) {
    *error = block ? "give either the block options or the text layer options, not both"
                   : "give --block with its tags, or the three text layers";
  } else if (block && (args.block.empty() || args.name_tag.empty() || args.category_tag.empty() ||
                       args.description_tag.empty())) {
    *error = "--block needs --name-tag, --category-tag and --description-tag";
  } else if (text && (args.name_layer.empty() || args.type_layer.empty() || args.description_layer.empty())) {
    *error = "text mode needs --name-layer, --type-layer and --description-layer";
  } else {
    return true;
  }
  return false;
}

// The run options: the one command line, the saving and answer options.
bool ReadRunOptions(const ParsedArgs& parsed, const AnalyzeArgs& args, RunOptions& options,
                    std::string* error) {
  if (parsed.positional.size() != 1) {
    *error = parsed.positional.empty() ? "analyze needs a DRAWING" : "analyze takes one DRAWING";
    return false;
  }
  options.drawing = parsed.positional.front();
  options.script.push_back({ScriptItem::kLine, ConvertLine(args)});
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--output")) options.output = option.value;
    if (Is(option, "--save")) options.save_in_place = true;
  }
  if (!ReadAnswerOptions(parsed, options, error)) return false;
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

// After the command: its result from the document's data, printed on the
// transcript. False when the analysis did not run to its end.
bool PrintSummary(std::string* problem) {
  const fx::rooms::CDocData& data = fx::rooms::DocVars().docData();
  if (!data.analysed()) {
    *problem = "the room analysis ended early (see its message above)";
    return false;
  }
  using fx::rooms::ProblemKind;
  const size_t empty = data.problemCount(ProblemKind::kEmptyContour);
  const AcDbObjectId floor = data.floorOutline();
  acutPrintf("\n\nRoom analysis:");
  acutPrintf("\n  Floor outline:                   %s",
             floor.isNull() ? "none" : ("handle " + floor.handle().ascii()).c_str());
  acutPrintf("\n  Room contours:                   %zu", data.identifiedRoomCount() + empty);
  acutPrintf("\n  Room identifiers:                %zu", data.roomIds().size());
  acutPrintf("\n  Rooms identified:                %zu", data.identifiedRoomCount());
  acutPrintf("\n  Area not found:                  %zu", data.problemCount(ProblemKind::kAreaNotFound));
  acutPrintf("\n  Duplicate numbers:               %zu", data.problemCount(ProblemKind::kDuplicateNumber));
  acutPrintf("\n  Intersected contours:            %zu", data.problemCount(ProblemKind::kIntersectedContour));
  acutPrintf("\n  Contours without identifiers:    %zu", empty);
  acutPrintf("\n  Rooms with multiple identifiers: %zu", data.problemCount(ProblemKind::kMultipleIds));
  acutPrintf("\n");
  return true;
}

}  // namespace

int AnalyzeSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  std::string error;
  const bool parsed_ok = ParseArgs(args, kAnalyzeOptions, parsed, &error);
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) {
      std::fputs(kAnalyzeUsage, stdout);
      return kExitOk;
    }
  }
  AnalyzeArgs analyze;
  RunOptions options;
  if (parsed_ok) ReadValues(parsed, analyze);
  if (!parsed_ok || !CheckMode(analyze, &error) || !ReadRunOptions(parsed, analyze, options, &error)) {
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport analyze --help\" for usage.\n", error.c_str());
    return kExitUsage;
  }
  options.after_script = PrintSummary;
  return RunDrawing(options);
}

}  // namespace fx::cli
