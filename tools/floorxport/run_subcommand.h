// `floorxport run`: load a drawing, run command lines through the registered
// commands, save when asked.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_RUN_SUBCOMMAND_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_RUN_SUBCOMMAND_H_

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli_args.h"
#include "host/dxf/console/answer_policy.h"

namespace fx::cli {

struct ScriptItem {
  enum Kind { kLine, kFile, kMenu };
  Kind kind;
  // The command line, the script file's path, or the menu item's path
  // ("&PlanVault/&Utils/&Shortcuts/&Purge"), whose macro runs as typed.
  std::string text;
};

struct RunOptions {
  std::string drawing;
  std::vector<ScriptItem> script;     // in order; empty: interactive on a terminal
  std::optional<std::string> output;  // -o
  bool save_in_place = false;         // --save
  fx::console::AnswerPolicy answers;
  // Empty: no drawing is opened (the script's commands may open one).
  // Subcommands that run without a drawing set it so.
  bool without_drawing = false;
  // Questions and dialogs of the script's commands are asked on the terminal
  // when standard input is one; the run still ends with the script.
  bool ask_on_terminal = false;
  // --recover: a truncated drawing loads with what was read before the cut
  // (warnings say what was dropped) instead of failing the run.
  bool recover = false;
  // Called when the script ran without failing, while the drawing is still
  // open, so a subcommand can read and print what its commands left (the
  // analysis's problem lists). False, with *problem, fails the run: the
  // drawing is then not saved.
  std::function<bool(std::string* problem)> after_script;
};

// The options every subcommand that runs a drawing takes: --yes, --no,
// --answer (into options.answers) and --recover. False with *error for wrong
// usage.
bool ReadAnswerOptions(const ParsedArgs& parsed, RunOptions& options, std::string* error);

// Runs one drawing as `floorxport run` does and returns the exit status:
// kExitOk when the drawing loaded, every command ran to its end and the
// save (if asked) succeeded; kExitFailure otherwise, with the reasons on
// standard error. The drawing is not saved after a failed run.
int RunDrawing(const RunOptions& options);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_RUN_SUBCOMMAND_H_
