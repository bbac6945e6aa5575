#include "analysis_options.h"

#include <string_view>
#include <utility>

#include "host/editor.h"
#include "rooms/doc_data.h"

namespace fx::cli {

const std::vector<OptionDefinition> kAnalysisOptions = {
    {nullptr, "--floor-layer", true},    {nullptr, "--contour-layer", true},
    {nullptr, "--block", true},          {nullptr, "--name-tag", true},
    {nullptr, "--category-tag", true},   {nullptr, "--description-tag", true},
    {nullptr, "--remove-inserts", false}, {nullptr, "--name-layer", true},
    {nullptr, "--type-layer", true},     {nullptr, "--description-layer", true},
    {nullptr, "--yes", false},           {nullptr, "--no", false},
    {nullptr, "--answer", true},         {nullptr, "--recover", false},
    {"-h", "--help", false},
};

namespace {

// An answer in double quotes, a quote inside it doubled: the console reads
// it back with its blanks.
std::string Quoted(std::string_view answer) {
  std::string quoted = "\"";
  for (char c : answer) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

// The command line as the room identification dialog sends it.
std::string ConvertLine(const AnalysisArgs& args) {
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
void ReadValues(const ParsedArgs& parsed, AnalysisArgs& args) {
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
bool CheckMode(const AnalysisArgs& args, const char* command, std::string* error) {
  const bool block = !args.block.empty() || !args.name_tag.empty() || !args.category_tag.empty() ||
                     !args.description_tag.empty() || args.remove_inserts;
  const bool text = !args.name_layer.empty() || !args.type_layer.empty() || !args.description_layer.empty();
  if (args.floor_layer.empty() || args.contour_layer.empty()) {
    *error = std::string(command) + " needs --floor-layer and --contour-layer";
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

}  // namespace

bool ReadAnalysis(const ParsedArgs& parsed, const char* command, AnalysisArgs* args, RunOptions* options,
                  std::string* error) {
  ReadValues(parsed, *args);
  if (!CheckMode(*args, command, error)) return false;
  if (parsed.positional.size() != 1) {
    *error = std::string(command) + (parsed.positional.empty() ? " needs a DRAWING" : " takes one DRAWING");
    return false;
  }
  options->drawing = parsed.positional.front();
  options->script.push_back({ScriptItem::kLine, ConvertLine(*args)});
  return ReadAnswerOptions(parsed, *options, error);
}

bool PrintAnalysisSummary(std::string* problem) {
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

}  // namespace fx::cli
