// `floorxport review`: room identification as `analyze` runs it, then the
// review atlas of what it found; the drawing is not saved.
#include <cstdio>
#include <string>
#include <vector>

#include "analysis_options.h"
#include "cli_args.h"
#include "review_report.h"
#include "run_subcommand.h"
#include "subcommands.h"

namespace fx::cli {

const char kReviewUsage[] = R"(Usage: floorxport review DRAWING [analysis options] -o DIR [--fail-on KINDS]

Identifies the rooms of DRAWING as "floorxport analyze" does (same analysis
options: --floor-layer, --contour-layer, the block or text layer options,
--yes, --no, --answer, --recover), prints its summary and writes the review atlas into
DIR (made when missing; each file whole or not at all):

  DIR/findings.json   one entry per problem: kind, handle, layer, room name,
                      point, the contour's area, the box outlined and a
                      fingerprint that stays the same when the drawing is
                      saved again, purged or gets new handles
  DIR/index.html      one self-contained page: the floor with every problem
                      outlined in the colour of its kind, a legend with the
                      counts, and a cropped view of each problem in list order

The drawing is never changed.

Options:
  -o, --output DIR           the atlas folder
      --fail-on KINDS        exit with status 3 when problems of these kinds
                             were found: "any", or a comma-separated list of
                             area-not-found, duplicate-number,
                             intersected-contour, empty-contour, multiple-ids
  -h, --help                 show this help

Exit status: 0 the atlas was written; 1 the drawing did not load, the
analysis ended early (its message is in the transcript) or the atlas could
not be written; 2 wrong usage; 3 the atlas was written and problems of a
--fail-on kind were found.
)";

int ReviewSubcommand(std::span<const std::string> args) {
  std::vector<OptionDefinition> definitions = kAnalysisOptions;
  definitions.push_back({"-o", "--output", true});
  definitions.push_back({nullptr, "--fail-on", true});
  ParsedArgs parsed;
  std::string error;
  const bool parsed_ok = ParseArgs(args, definitions, parsed, &error);
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) {
      std::fputs(kReviewUsage, stdout);
      return kExitOk;
    }
  }
  AnalysisArgs analysis;
  RunOptions options;
  ReportOptions report;
  if (parsed_ok && ReadAnalysis(parsed, "review", &analysis, &options, &error) &&
      ReadReportOptions(parsed, "--output", &report, &error) && !report.dir) {
    error = "review needs -o DIR, the atlas folder";
  }
  if (!error.empty()) {
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport review --help\" for usage.\n", error.c_str());
    return kExitUsage;
  }
  return RunAnalysisWithReport(options, report);
}

}  // namespace fx::cli
