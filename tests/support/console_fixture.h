// A console editor on a fake terminal, installed as the current runner, and
// a command group for test commands that is removed after each test.
#ifndef FLOORXPORT_TESTS_SUPPORT_CONSOLE_FIXTURE_H_
#define FLOORXPORT_TESTS_SUPPORT_CONSOLE_FIXTURE_H_

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "host/command_stack.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/terminal.h"

namespace fx::console {

class FakeTerminal : public Terminal {
 public:
  void WriteOut(std::string_view text) override { out += text; }
  void WriteErr(std::string_view text) override { err += text; }
  bool ReadLine(std::string& line) override {
    if (typed.empty()) return false;
    line = typed.front();
    typed.pop_front();
    return true;
  }
  bool inputIsTerminal() const override { return input_is_terminal; }
  bool errorIsTerminal() const override { return error_is_terminal; }

  std::string out;
  std::string err;
  std::deque<std::string> typed;  // lines the user types, in order
  bool input_is_terminal = false;
  bool error_is_terminal = false;
};

inline constexpr const char* kTestGroup = "FX_TESTS";

class ConsoleTest : public ::testing::Test {
 protected:
  ConsoleTest() { Restart(AnswerPolicy()); }
  ~ConsoleTest() override { Commands().removeGroup(kTestGroup); }

  // A fresh console with `policy` (the terminal and its output stay).
  void Restart(AnswerPolicy policy) {
    scoped_.reset();
    runner_.reset();
    console_ = std::make_unique<Console>(terminal_, std::move(policy));
    runner_ = std::make_unique<CommandRunner>(*console_, Commands());
    scoped_ = std::make_unique<ScopedRunner>(*runner_);
  }

  static void AddCommand(const char* name, AcRxFunctionPtr function,
                         int32_t flags = ACRX_CMD_MODAL) {
    ASSERT_EQ(Commands().addCommand(kTestGroup, name, name, flags, function), 0) << name;
  }

  // Runs `script` as -c lines would and returns the transcript.
  const std::string& Run(std::string_view script) {
    console_->script().AddLine(script);
    runner_->RunScript();
    console_->Finish();
    return terminal_.out;
  }

  Console& console() { return *console_; }
  CommandRunner& runner() { return *runner_; }

  FakeTerminal terminal_;

 private:
  std::unique_ptr<Console> console_;
  std::unique_ptr<CommandRunner> runner_;
  std::unique_ptr<ScopedRunner> scoped_;
};

}  // namespace fx::console

#endif  // FLOORXPORT_TESTS_SUPPORT_CONSOLE_FIXTURE_H_
