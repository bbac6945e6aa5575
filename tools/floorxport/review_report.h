// What `review` and `analyze --report` do after the analysis: write the
// review atlas and tell whether findings of the --fail-on kinds exist.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_REVIEW_REPORT_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_REVIEW_REPORT_H_

#include <optional>
#include <string>

#include "cli_args.h"
#include "review/finding_kinds.h"
#include "run_subcommand.h"

namespace fx::cli {

// Exit status when the work succeeded and findings of a --fail-on kind exist.
constexpr int kExitFindings = 3;

struct ReportOptions {
  std::optional<std::string> dir;  // the atlas folder; none: no atlas
  fx::review::KindSet fail_on;
};

// Reads --report DIR (or, for review, -o DIR) and --fail-on KINDS; false with
// *error when a kind is wrong.
bool ReadReportOptions(const ParsedArgs& parsed, const char* dir_option, ReportOptions* report,
                       std::string* error);

// Sets options->after_script to print the analysis's summary and then write
// the atlas of `report` for options->drawing, and runs the drawing: the
// exit status of RunDrawing, or kExitFindings when the run succeeded and
// the analysis found problems of a fail_on kind.
int RunAnalysisWithReport(RunOptions& options, const ReportOptions& report);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_REVIEW_REPORT_H_
