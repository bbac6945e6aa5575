#include "host/dxf/console/command_runner.h"

#include <exception>
#include <memory>

#include "host/command_stack.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/editor_events.h"
#include "host/dxf/console/terminal.h"
#include "host/dxf/console/text_case.h"
#include "host/resbuf.h"

namespace fx::console {
namespace {

CommandRunner* g_current = nullptr;

// Pops the answers pushed for a command run with answers, however it ends.
class AnswersGuard {
 public:
  AnswersGuard(Console& console, std::vector<std::string> answers, bool echo) : console_(console) {
    console_.PushAnswers(std::move(answers), echo);
  }
  ~AnswersGuard() { console_.PopAnswers(); }
  AnswersGuard(const AnswersGuard&) = delete;
  AnswersGuard& operator=(const AnswersGuard&) = delete;

 private:
  Console& console_;
};

}  // namespace

CommandRunner::CommandRunner(Console& console, CommandRegistry& registry)
    : console_(console), registry_(registry) {}

void CommandRunner::RunScript() {
  for (;;) {
    RunDeferredWork();
    if (stopped_ || (stop_at_script_end_ && !console_.script().hasPending())) return;
    // On a terminal the prompt comes first; script commands are echoed
    // after it as they are read (and an Enter there shows nothing).
    const bool prompted = console_.interactive() && !console_.script().hasPending();
    if (prompted) console_.Print("\nCommand: ");
    std::string name;
    TokenOrigin origin;
    if (console_.ReadCommandName(name, origin) != ReadStatus::kOk) return;
    if (name.empty()) continue;
    if (!prompted) console_.Print("\nCommand: " + name);
    AcEdCommand* command = registry_.Resolve(name).command;
    const int result = Execute(name);
    // A user at the terminal sees what went wrong and goes on.
    if (result == RTNORM || console_.interactive()) continue;
    if (command == nullptr) {
      Stop("unknown command \"" + ToUpper(name) + "\"; the rest of the script was skipped");
    } else if (result == RTCAN) {
      Stop("command " + ToUpper(name) +
           " was cancelled: the input ran out while it waited for an answer");
    } else {
      Stop("command " + ToUpper(name) + " failed; the rest of the script was skipped");
    }
  }
}

int CommandRunner::RunWithAnswers(std::vector<std::string> tokens) {
  // CMDECHO as the call begins decides for all of its commands.
  const bool echo = console_.commandEcho();
  AnswersGuard guard(console_, std::move(tokens), echo);
  int result = RTNORM;
  std::string name;
  TokenOrigin origin;
  while (result == RTNORM && console_.ReadCommandName(name, origin) == ReadStatus::kOk) {
    if (name.empty()) continue;
    if (echo) console_.Print("\nCommand: " + name);
    result = Execute(name);
  }
  return result;
}

// RTERROR for an unknown command, after saying so.
int CommandRunner::Execute(std::string_view typed) {
  TypedCommand found = registry_.Resolve(typed);
  if (found.command == nullptr) {
    console_.Print("\nUnknown command \"" + ToUpper(typed) + "\".");
    return RTERROR;
  }
  // Copies: a command may remove itself from the stack while it runs.
  const std::string global = found.command->globalName();
  const AcRxFunctionPtr function = found.command->functionAddr();
  frames_.push_back({ToUpper(typed), RTNORM});
  Events().CommandWillStart(global.c_str());
  try {
    if (function != nullptr) function();
  } catch (const std::exception& error) {
    console_.Print("\nCommand " + frames_.back().name + " failed: " + error.what());
    frames_.back().result = RTERROR;
  } catch (...) {
    console_.Print("\nCommand " + frames_.back().name + " failed.");
    frames_.back().result = RTERROR;
  }
  Events().CommandEnded(global.c_str());
  const int result = frames_.back().result;
  frames_.pop_back();
  return result;
}

// False when `typed` names no command: it is then an answer like any other.
bool CommandRunner::RunTransparent(std::string_view typed) {
  AcEdCommand* command = registry_.Resolve(typed).command;
  if (command == nullptr) return false;
  if ((command->commandFlags() & ACRX_CMD_TRANSPARENT) == 0 || transparent_depth_ > 0) {
    console_.Print("\nCommand " + ToUpper(typed.substr(1)) + " cannot run inside another command.");
    return true;
  }
  ++transparent_depth_;
  Execute(typed);
  --transparent_depth_;
  return true;
}

ReadStatus CommandRunner::ReadAnswer(std::string_view prompt, TokenEnd end, std::string& answer,
                                     RunOut run_out) {
  for (;;) {
    if (console_.ReadAnswer(prompt, end, answer, nullptr, run_out) == ReadStatus::kRanOut) {
      if (run_out == RunOut::kCancels) CancelCommand();
      return ReadStatus::kRanOut;
    }
    if (end == TokenEnd::kBlank && answer.size() > 1 && answer.front() == '\'' &&
        RunTransparent(answer)) {
      continue;  // the prompt is shown again
    }
    return ReadStatus::kOk;
  }
}

ReadStatus CommandRunner::ReadSecretAnswer(std::string_view prompt, std::string& answer) {
  if (console_.ReadSecretAnswer(prompt, answer) == ReadStatus::kRanOut) {
    CancelCommand();
    return ReadStatus::kRanOut;
  }
  return ReadStatus::kOk;
}

void CommandRunner::CancelCommand() {
  if (!frames_.empty() && frames_.back().result == RTNORM) frames_.back().result = RTCAN;
}

void CommandRunner::FailCommand() {
  if (!frames_.empty()) frames_.back().result = RTERROR;
}

void CommandRunner::SendString(std::string_view command_line) {
  if (!stopped_) sent_lines_.emplace_back(command_line);
}

void CommandRunner::ExecuteInCommandContext(void (*function)(void*), void* data) {
  if (!stopped_ && function != nullptr) deferred_.emplace_back(function, data);
}

void CommandRunner::RunDeferredWork() {
  while (!deferred_.empty() && !stopped_) {
    auto [function, data] = deferred_.front();
    deferred_.pop_front();
    try {
      function(data);
    } catch (const std::exception& error) {
      console_.Print(std::string("\nA function run in command context failed: ") + error.what());
    } catch (...) {
      console_.Print("\nA function run in command context failed.");
    }
  }
  // The first line sent runs first.
  for (auto it = sent_lines_.rbegin(); it != sent_lines_.rend(); ++it) {
    console_.script().InsertFront(*it);
  }
  sent_lines_.clear();
}

void CommandRunner::Stop(std::string problem) {
  problems_.push_back(std::move(problem));
  stopped_ = true;
  console_.script().Clear();
  sent_lines_.clear();
  deferred_.clear();
}

CommandRunner& CurrentRunner() {
  if (g_current != nullptr) return *g_current;
  static std::unique_ptr<Terminal> terminal = MakeProcessTerminal();
  static Console console(*terminal, AnswerPolicy());
  static CommandRunner fallback(console, Commands());
  return fallback;
}

ScopedRunner::ScopedRunner(CommandRunner& runner) : previous_(g_current) { g_current = &runner; }

ScopedRunner::~ScopedRunner() { g_current = previous_; }

}  // namespace fx::console
