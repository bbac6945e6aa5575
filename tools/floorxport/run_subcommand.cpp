#include "run_subcommand.h"

#include <filesystem>
#include <memory>
#include <string>

#include "cli_args.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/menu_bar.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/console/terminal.h"
#include "host/dxf/dwg_input.h"
#include "host/menu.h"
#include "plugin_modules.h"
#include "server_options.h"
#include "subcommands.h"

namespace fx::cli {

const char kRunUsage[] = R"(Usage: floorxport run DRAWING [options]

Loads DRAWING (DXF, or DWG converted on reading), runs command lines through the registered commands as
if they were typed in the editor, and saves the drawing when asked. The
transcript of prompts and answers goes to standard output.

Options:
  -c, --command LINE     run a command line; repeatable, in order with -s
  -s, --script FILE      run a script file; lines starting with ';' are comments
      --menu PATH        pick a menu item by its path, as
                         "&PlanVault/&Utils/&Shortcuts/&Purge": its macro runs
                         as typed; repeatable, in order with -c and -s
                         ("floorxport menu" lists the items)
  -o, --output OUT.dxf   save the drawing to OUT.dxf after the run
      --save             save over DRAWING (it is never changed otherwise)
      --yes, --no        answer Yes/No questions with Yes (or No)
      --answer "QUESTION=ANSWER"
                         answer one question with Yes, No, OK or Cancel;
                         QUESTION is its exact text, \n stands for a line break
      --recover          load a truncated DRAWING with what was read before
                         the cut (warnings say what was dropped) instead of
                         failing
  -h, --help             show this help

Command lines: a blank or a line end ends a command name or an answer; two
in a row, or an empty line, answer with Enter. An answer in double quotes
keeps its blanks, and "" inside it stands for one quote. The input never
waits: when it runs out while a command asks, the command is cancelled.
Without -c, -s and --menu, on a terminal, commands are read from the
terminal until the end of input (Ctrl-D).

Questions (message boxes) are answered by --answer, then --yes or --no, then
by the user on a terminal, else by their default: Cancel when the box has
it, otherwise No, otherwise OK. The transcript shows each question with its
answer; the questions answered without --answer are listed on standard
error at the end, as --answer options.

Exit status: 0 success; 1 the drawing did not load, a menu item was not
found, a command was unknown, failed or was cancelled, or the save failed
(nothing is saved after a failure); 2 wrong usage.
)";

namespace {

constexpr OptionDefinition kRunOptions[] = {
    {"-c", "--command", true},   {"-s", "--script", true},  {"-o", "--output", true},
    {nullptr, "--save", false},  {nullptr, "--yes", false}, {nullptr, "--no", false},
    {nullptr, "--answer", true}, {nullptr, "--menu", true}, {nullptr, "--recover", false},
    kUserOption,                 kPasswordFileOption,       kTlsVerifyOption,
    kCaFileOption,               {"-h", "--help", false},
};

void PrintErr(fx::console::Terminal& terminal, const std::string& message) {
  terminal.WriteErr("floorxport: " + message + "\n");
}

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  if (std::filesystem::equivalent(a, b, error)) return true;
  return std::filesystem::weakly_canonical(a, error) == std::filesystem::weakly_canonical(b, error);
}

// Reads the options into *options; false with *error for wrong usage.
bool ReadRunOptions(const ParsedArgs& parsed, RunOptions& options, std::string* error) {
  if (parsed.positional.size() != 1) {
    *error = parsed.positional.empty() ? "run needs a DRAWING" : "run takes one DRAWING";
    return false;
  }
  options.drawing = parsed.positional.front();
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--command")) options.script.push_back({ScriptItem::kLine, option.value});
    if (Is(option, "--script")) options.script.push_back({ScriptItem::kFile, option.value});
    if (Is(option, "--menu")) options.script.push_back({ScriptItem::kMenu, option.value});
    if (Is(option, "--output")) options.output = option.value;
    if (Is(option, "--save")) options.save_in_place = true;
  }
  if (!ReadAnswerOptions(parsed, options, error)) return false;
  if (options.output && options.save_in_place) {
    *error = "give either -o or --save";
    return false;
  }
  if (options.save_in_place && fx::dxf::IsDwgTarget(options.drawing)) {
    *error = DwgSaveRefusal(options.drawing);
    return false;
  }
  if (options.output && SameFile(*options.output, options.drawing)) {
    *error = "-o names the input drawing; use --save to write over it";
    return false;
  }
  return true;
}

// Standard error, after the transcript: what went wrong and which
// questions had no --answer (as options to paste back).
void Report(fx::console::Terminal& terminal, const fx::console::CommandRunner& runner,
            const fx::console::Console& console) {
  for (const std::string& problem : runner.problems()) PrintErr(terminal, problem);
  const auto& unanswered = console.unanswered();
  if (unanswered.empty()) return;
  std::string text = "floorxport: " + std::to_string(unanswered.size()) +
                     (unanswered.size() == 1 ? " question was" : " questions were") +
                     " answered without --answer:\n";
  for (const auto& question : unanswered) {
    text += "  " + fx::console::AnswerOption(question.text, question.answer.button) + "\n";
  }
  terminal.WriteErr(text);
}

// Adds the -c lines, -s files and --menu macros to the script, in order.
// Menu items are looked up in the menu the plug-in built, so this runs once
// the modules are loaded. False, with *error, when a file cannot be read or
// a menu item is not found.
bool AddScript(const std::vector<ScriptItem>& items, fx::console::ScriptInput& script,
               std::string* error) {
  for (const ScriptItem& item : items) {
    if (item.kind == ScriptItem::kLine) {
      script.AddLine(item.text);
    } else if (item.kind == ScriptItem::kFile) {
      if (!script.AddFile(item.text, error)) return false;
    } else {
      std::string reason;
      const AcApPopupMenuItem* picked = fx::console::FindMenuItem(item.text, &reason);
      if (picked == nullptr) {
        *error = "--menu \"" + item.text + "\": " + reason;
        return false;
      }
      for (const std::string& line : fx::console::MacroScriptLines(picked->macro())) {
        script.AddLine(line);
      }
    }
  }
  return true;
}

}  // namespace

bool ReadAnswerOptions(const ParsedArgs& parsed, RunOptions& options, std::string* error) {
  bool yes = false;
  bool no = false;
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--yes")) yes = true;
    if (Is(option, "--no")) no = true;
    if (Is(option, "--recover")) options.recover = true;
    if (Is(option, "--answer") && !options.answers.AddAnswer(option.value, error)) return false;
  }
  if (yes && no) {
    *error = "give either --yes or --no";
    return false;
  }
  if (yes || no) {
    options.answers.SetYesNoDefault(yes ? fx::console::MessageButton::kYes : fx::console::MessageButton::kNo);
  }
  return true;
}

int RunDrawing(const RunOptions& options) {
  std::unique_ptr<fx::console::Terminal> terminal = fx::console::MakeProcessTerminal();
  fx::console::Console console(*terminal, options.answers);
  const bool on_terminal = terminal->inputIsTerminal();
  console.SetInteractive(on_terminal && (options.script.empty() || options.ask_on_terminal));
  fx::console::CommandRunner runner(console, fx::console::Commands());
  runner.SetStopAtScriptEnd(options.ask_on_terminal);
  fx::console::ModuleRegistry modules;
  RegisterPlugInModules(modules);
  {
    fx::console::HostSession session(runner, modules);
    std::string error;
    auto warn = [&](const std::string& message) { PrintErr(*terminal, "warning: " + message); };
    if (!AddScript(options.script, console.script(), &error) ||
        (!options.without_drawing && !session.OpenDrawing(options.drawing, &error, warn,
                                                         options.recover ? fx::dxf::DamagedFile::kRecover
                                                                         : fx::dxf::DamagedFile::kRefuse))) {
      runner.AddProblem(error);
    } else {
      runner.RunScript();
      std::string problem;
      if (options.after_script && !runner.failed() && !options.after_script(&problem)) {
        runner.AddProblem(problem);
      }
      const std::optional<std::string> target =
          options.save_in_place ? std::optional<std::string>(options.drawing) : options.output;
      if (target && runner.failed()) {
        runner.AddProblem("the drawing was not saved because the run failed");
      } else if (target && !session.Save(*target, &error)) {
        runner.AddProblem(error);
      }
    }
  }
  console.Finish();
  Report(*terminal, runner, console);
  return runner.failed() ? kExitFailure : kExitOk;
}

int RunSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  std::string error;
  RunOptions options;
  const bool parsed_ok = ParseArgs(args, kRunOptions, parsed, &error);
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) {
      std::fputs(kRunUsage, stdout);
      std::fputs("\nFor the commands that talk to the service:\n", stdout);
      std::fputs(kLogInHelp, stdout);
      return kExitOk;
    }
  }
  // The commands may talk to the service (Send to, the offer to send the
  // changes when a linked drawing closes): they log in as the server
  // subcommands do.
  if (!parsed_ok || !ReadRunOptions(parsed, options, &error) || !TakeLogIn(parsed, &error) ||
      !TakeTlsOptions(parsed, &error)) {
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport run --help\" for usage.\n",
                 error.c_str());
    return kExitUsage;
  }
  return RunDrawing(options);
}

}  // namespace fx::cli
