// The options of a room analysis that `analyze` and `review` share: the
// layers, the mode with its sources, and the answers to questions.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_ANALYSIS_OPTIONS_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_ANALYSIS_OPTIONS_H_

#include <string>
#include <vector>

#include "cli_args.h"
#include "run_subcommand.h"

namespace fx::cli {

// --floor-layer ... --description-layer, --yes, --no, --answer, --help.
extern const std::vector<OptionDefinition> kAnalysisOptions;

struct AnalysisArgs {
  std::string floor_layer, contour_layer;
  std::string block, name_tag, category_tag, description_tag;
  bool remove_inserts = false;
  std::string name_layer, type_layer, description_layer;
};

// Reads the analysis options into *args and *options (the
// _vantoryconvert line as the script, the answers), with the one DRAWING.
// False, with *error, when the mode's options are incomplete or mixed, the
// drawing is missing or the answers are wrong.
bool ReadAnalysis(const ParsedArgs& parsed, const char* command, AnalysisArgs* args, RunOptions* options,
                  std::string* error);

// After the command: the analysis's result from the document's data,
// printed on the transcript. False, with *problem, when the analysis did
// not run to its end.
bool PrintAnalysisSummary(std::string* problem);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_ANALYSIS_OPTIONS_H_
