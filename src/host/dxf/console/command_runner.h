// Runs commands on the console editor: the command loop over the script,
// commands run with answers (acedCommandS), transparent commands typed at a
// prompt, and work deferred until the current command ends (command lines
// sent for execution, functions to run in command context).
//
// A batch run stops at the first unknown or failed command: later lines
// would answer the wrong prompts. The problems are kept for the report.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_COMMAND_RUNNER_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_COMMAND_RUNNER_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/dxf/console/console.h"

namespace fx::console {

class CommandRegistry;

class CommandRunner {
 public:
  // `console` and `registry` must outlive the runner.
  CommandRunner(Console& console, CommandRegistry& registry);
  CommandRunner(const CommandRunner&) = delete;
  CommandRunner& operator=(const CommandRunner&) = delete;

  Console& console() { return console_; }

  // Runs commands until the input runs out or a batch run stops. Interactive
  // runs prompt "Command: " on the terminal.
  void RunScript();
  // Runs the commands named in `tokens`, each followed by its answers; the
  // answers come only from `tokens`. RTNORM when every command ran to its
  // end, RTCAN when one was cancelled (its answers ran out), RTERROR when
  // one is unknown or failed. With the console's command echo off, the
  // commands' names, prompts and answers are not shown.
  int RunWithAnswers(std::vector<std::string> tokens);

  // Reads an answer for the running command, running transparent commands
  // typed at a blank-ended prompt ("'ZOOM") and asking again afterwards.
  // When the input runs out, the running command is cancelled (unless
  // `run_out` says that only a list ends).
  ReadStatus ReadAnswer(std::string_view prompt, TokenEnd end, std::string& answer,
                        RunOut run_out = RunOut::kCancels);

  // Reads a hidden line answer (Console::ReadSecretAnswer); running out
  // cancels the running command.
  ReadStatus ReadSecretAnswer(std::string_view prompt, std::string& answer);

  // The running command failed (a host command reports its own message).
  void FailCommand();
  // The running command was cancelled (unless it failed already).
  void CancelCommand();
  bool commandRunning() const { return !frames_.empty(); }

  // Deferred until the current command ends (or, outside commands, until
  // the loop reads the next command).
  void SendString(std::string_view command_line);
  void ExecuteInCommandContext(void (*function)(void*), void* data);

  bool failed() const { return !problems_.empty(); }
  // With true, RunScript returns once the script's lines are used up, even
  // on a terminal where it would go on reading commands; dialogs and
  // questions of the script's commands are still asked there.
  void SetStopAtScriptEnd(bool stop) { stop_at_script_end_ = stop; }
  // One line per problem: "unknown command \"FOO\"; the rest of the script was skipped".
  const std::vector<std::string>& problems() const { return problems_; }
  // Records a problem of the run found outside commands (a failed save).
  void AddProblem(std::string problem) { problems_.push_back(std::move(problem)); }

 private:
  struct Frame {
    std::string name;
    int result;
  };
  int Execute(std::string_view typed);
  bool RunTransparent(std::string_view typed);
  void RunDeferredWork();
  void Stop(std::string problem);

  Console& console_;
  CommandRegistry& registry_;
  std::vector<Frame> frames_;
  std::vector<std::string> sent_lines_;
  std::deque<std::pair<void (*)(void*), void*>> deferred_;
  std::vector<std::string> problems_;
  int transparent_depth_ = 0;
  bool stopped_ = false;
  bool stop_at_script_end_ = false;
};

// The runner the editor functions use: the one a ScopedRunner installed,
// otherwise one on the process's streams with no input.
CommandRunner& CurrentRunner();

class ScopedRunner {
 public:
  explicit ScopedRunner(CommandRunner& runner);
  ~ScopedRunner();
  ScopedRunner(const ScopedRunner&) = delete;
  ScopedRunner& operator=(const ScopedRunner&) = delete;

 private:
  CommandRunner* previous_;
};

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_COMMAND_RUNNER_H_
