#include "review_report.h"

#include <filesystem>

#include "analysis_options.h"
#include "host/database.h"
#include "host/editor.h"
#include "review/atlas.h"
#include "rooms/doc_data.h"

namespace fx::cli {
namespace {

// The atlas of the current document's analysis; false with *problem.
bool WriteAtlasOf(const std::string& drawing, const std::string& dir, std::string* problem) {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr) {
    *problem = "no drawing is open for the review atlas";
    return false;
  }
  fx::review::AtlasResult result;
  std::string error;
  const std::string name = std::filesystem::path(drawing).filename().string();
  if (!fx::review::WriteAtlas(*database, fx::rooms::DocVars().docData(), name, dir, &result, &error)) {
    *problem = "the review atlas was not written: " + error;
    return false;
  }
  const std::string page = (std::filesystem::path(dir) / fx::review::kPageFile).string();
  acutPrintf("\nReview atlas: %s (%zu %s)\n", page.c_str(), result.review.findings.size(),
             result.review.findings.size() == 1 ? "finding" : "findings");
  return true;
}

}  // namespace

bool ReadReportOptions(const ParsedArgs& parsed, const char* dir_option, ReportOptions* report,
                       std::string* error) {
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, dir_option)) report->dir = option.value;
    if (Is(option, "--fail-on") && !fx::review::ParseKindList(option.value, &report->fail_on, error)) {
      *error = "--fail-on: " + *error;
      return false;
    }
  }
  return true;
}

int RunAnalysisWithReport(RunOptions& options, const ReportOptions& report) {
  bool found = false;
  const std::string drawing = options.drawing;
  options.after_script = [&](std::string* problem) {
    if (!PrintAnalysisSummary(problem)) return false;
    const fx::rooms::CDocData& data = fx::rooms::DocVars().docData();
    for (const fx::review::KindInfo& info : fx::review::kKinds) {
      if (report.fail_on.contains(info.kind) && data.problemCount(info.kind) != 0) found = true;
    }
    return !report.dir || WriteAtlasOf(drawing, *report.dir, problem);
  };
  const int status = RunDrawing(options);
  return status == kExitOk && found ? kExitFindings : status;
}

}  // namespace fx::cli
