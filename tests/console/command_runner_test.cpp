// The command runner: commands run by commands, transparent and deferred
// ones, reactors. The transcript of a script, unknown commands, running out
// of input and commands typed at a terminal are run end to end in
// tests/cli/cli_test.cpp.
#include "host/dxf/console/command_runner.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "console_fixture.h"
#include "host/documents.h"
#include "host/editor.h"

namespace fx::console {
namespace {

void Echo() {
  char text[64];
  if (acedGetString(0, "\nText: ", text, sizeof text) != RTNORM) {
    acutPrintf("\nEcho cancelled.");
    return;
  }
  acutPrintf("\nEchoed %s.", text);
}

void Throw() { throw std::runtime_error("broken"); }

void Nested() {
  int results[] = {
      acedCommandS(RTSTR, "ECHO", RTSTR, "inner words", RTNONE),
      acedCommandS(RTSTR, "ECHO", RTNONE),   // its answers run out
      acedCommandS(RTSTR, "BOGUS", RTNONE),  // unknown
      acedCommandS(RTSTR, "ECHO", RTSTR, "x", RTSTR, "_ECHO", RTSTR, "y", RTNONE),
      acedCommandS(RTSTR, "ECHO", RTREAL, 2.5, RTNONE),
      acedCommandS(RTSTR, "ECHO", RTSHORT, 7, RTNONE),
  };
  acutPrintf("\nResults");
  for (int result : results) acutPrintf(" %d", result);
}

void Sender() {
  CurrentRunner().SendString("ECHO sent");
  Echo();
}

void PrintData(void* data) { acutPrintf("\nDeferred %d.", *static_cast<int*>(data)); }

void Defer() {
  static int data = 42;
  EXPECT_EQ(acDocManagerPtr()->beginExecuteInCommandContext(PrintData, &data), 0);
  acutPrintf("\nDefer done.");
}

void Transparent() { acutPrintf("\nTransparent ran."); }

void RemoveItself() { Commands().removeCmd(kTestGroup, "SELFREMOVE"); }

class CommandRunnerTest : public ConsoleTest {
 protected:
  CommandRunnerTest() {
    AddCommand("ECHO", Echo);
    AddCommand("THROW", Throw);
    AddCommand("NESTED", Nested);
    AddCommand("SENDER", Sender);
    AddCommand("DEFER", Defer);
    AddCommand("TRANS", Transparent, ACRX_CMD_TRANSPARENT);
    AddCommand("SELFREMOVE", RemoveItself);
  }
};

TEST_F(CommandRunnerTest, AnExceptionFailsTheCommandAndStopsTheScript) {
  EXPECT_EQ(Run("THROW\nECHO b"), "\nCommand: THROW\nCommand THROW failed: broken\n");
  EXPECT_EQ(runner().problems(),
            std::vector<std::string>{"command THROW failed; the rest of the script was skipped"});
}

TEST_F(CommandRunnerTest, CommandsRunWithTheirOwnAnswers) {
  EXPECT_EQ(Run("NESTED\nECHO after"),
            "\nCommand: NESTED"
            "\nCommand: ECHO\nText: inner words\nEchoed inner words."
            "\nCommand: ECHO\nText: *Cancel*\nEcho cancelled."
            "\nCommand: BOGUS\nUnknown command \"BOGUS\"."
            "\nCommand: ECHO\nText: x\nEchoed x.\nCommand: _ECHO\nText: y\nEchoed y."
            "\nCommand: ECHO\nText: 2.5\nEchoed 2.5."
            "\nCommand: ECHO\nText: 7\nEchoed 7."
            "\nResults 5100 -5002 -5001 5100 5100 5100"
            "\nCommand: ECHO\nText: after\nEchoed after.\n");
  EXPECT_TRUE(runner().problems().empty());
}

TEST_F(CommandRunnerTest, SentLinesAndDeferredFunctionsRunAfterTheCurrentCommand) {
  EXPECT_EQ(Run("SENDER first\nDEFER\nECHO second"),
            "\nCommand: SENDER\nText: first\nEchoed first."
            "\nCommand: ECHO\nText: sent\nEchoed sent."
            "\nCommand: DEFER\nDefer done.\nDeferred 42."
            "\nCommand: ECHO\nText: second\nEchoed second.\n");
}

TEST_F(CommandRunnerTest, TransparentCommandsAtAPrompt) {
  EXPECT_EQ(Run("ECHO 'TRANS value\nECHO 'ECHO 'other"),
            "\nCommand: ECHO\nText: 'TRANS\nTransparent ran.\nText: value\nEchoed value."
            "\nCommand: ECHO\nText: 'ECHO\nCommand ECHO cannot run inside another command."
            "\nText: 'other\nEchoed 'other.\n");
  EXPECT_TRUE(runner().problems().empty());
}

TEST_F(CommandRunnerTest, ReactorsSeeEveryCommand) {
  struct Recorder : AcEditorReactor {
    void commandWillStart(const char* name) override { log.push_back(std::string("will ") + name); }
    void commandEnded(const char* name) override { log.push_back(std::string("ended ") + name); }
    std::vector<std::string> log;
  } recorder;
  acedEditor()->addReactor(&recorder);
  acedEditor()->addReactor(&recorder);
  Run("SENDER x");
  acedEditor()->removeReactor(&recorder);
  Run("ECHO y");
  EXPECT_EQ(recorder.log,
            (std::vector<std::string>{"will SENDER", "ended SENDER", "will ECHO", "ended ECHO"}));
}

TEST_F(CommandRunnerTest, ACommandMayRemoveItself) {
  EXPECT_EQ(Run("SELFREMOVE\nSELFREMOVE"),
            "\nCommand: SELFREMOVE\nCommand: SELFREMOVE\nUnknown command \"SELFREMOVE\".\n");
}

}  // namespace
}  // namespace fx::console
