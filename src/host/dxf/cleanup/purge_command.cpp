// PURGE on the console: its three prompts and its report (see
// cleanup_commands.h).
#include <string>

#include "host/dxf/cleanup/cleanup_commands.h"
#include "host/dxf/cleanup/command_support.h"
#include "host/dxf/cleanup/name_pattern.h"
#include "host/dxf/cleanup/purge.h"
#include "host/editor.h"

namespace fx::cleanup {
namespace {

enum class Answer { kYes, kNo, kCancel };

// A Yes/No question; an empty answer takes `default_yes`.
Answer AskYesNo(const std::string& prompt, bool default_yes) {
  acedInitGet(0, "Yes No");
  char answer[16];
  int status = acedGetKword(prompt.c_str(), answer, sizeof answer);
  if (status == RTNONE) return default_yes ? Answer::kYes : Answer::kNo;
  if (status != RTNORM) return Answer::kCancel;
  return std::string(answer) == "Yes" ? Answer::kYes : Answer::kNo;
}

bool AskKinds(PurgeOptions& options) {
  acedInitGet(RSG_NONULL, "Blocks LAyers LTypes STyles All");
  char kind[16];
  if (acedGetKword("\nEnter type of unused objects to purge [Blocks/LAyers/LTypes/STyles/All]: ",
                   kind, sizeof kind) != RTNORM) {
    return false;
  }
  const std::string chosen = kind;
  options.blocks = chosen == "Blocks" || chosen == "All";
  options.layers = chosen == "LAyers" || chosen == "All";
  options.linetypes = chosen == "LTypes" || chosen == "All";
  options.text_styles = chosen == "STyles" || chosen == "All";
  return true;
}

void PrintCounts(const PurgeResult& result) {
  if (result.total() == 0) {
    acutPrintf("\nNo unreferenced objects to purge.");
    return;
  }
  struct {
    int count;
    const char* singular;
    const char* plural;
  } const kinds[] = {{result.blocks, "block", "blocks"},
                     {result.layers, "layer", "layers"},
                     {result.linetypes, "linetype", "linetypes"},
                     {result.text_styles, "text style", "text styles"}};
  for (const auto& kind : kinds)
    if (kind.count > 0) acutPrintf("\n%s deleted.", Counted(kind.count, kind.singular, kind.plural).c_str());
}

}  // namespace

void PurgeCommand() {
  AcDbImpDatabase* db = DrawingOrFail();
  if (db == nullptr) return;
  PurgeOptions options;
  if (!AskKinds(options)) return;
  char names[512];
  int status = acedGetString(0, "\nEnter name(s) to purge <*>: ", names, sizeof names);
  if (status != RTNORM) return;
  const NamePattern pattern(names);
  options.matches = [&pattern](const std::string& name) { return pattern.Matches(name); };
  const Answer verify = AskYesNo("\nVerify each name to be purged? [Yes/No] <Y>: ", true);
  if (verify == Answer::kCancel) return;
  bool cancelled = false;
  if (verify == Answer::kYes) {
    options.confirm = [&cancelled](PurgeKind kind, const std::string& name) {
      if (cancelled) return false;
      Answer answer = AskYesNo(std::string("\nPurge ") + PurgeKindName(kind) + " \"" + name +
                                   "\"? [Yes/No] <N>: ",
                               false);
      cancelled = answer == Answer::kCancel;
      return answer == Answer::kYes;
    };
  }
  options.purged = [](PurgeKind kind, const std::string& name) {
    acutPrintf("\nDeleting %s \"%s\".", PurgeKindName(kind), name.c_str());
  };
  const PurgeResult result = Purge(*db, options);
  PrintCounts(result);
}

}  // namespace fx::cleanup
