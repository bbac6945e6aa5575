#include "host/dxf/console/message_box.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "console_fixture.h"
#include "host/editor.h"

namespace fx::console {
namespace {

// An --answer option: the question (escaped: \n, \\), the last '=', the
// answer; or what is wrong with it.
TEST(AnswerPolicyTest, ReadsAnswerOptions) {
  struct Case {
    const char* option;
    const char* question;
    MessageButton answer;
    const char* error;  // nullptr: the option is read
  };
  const Case cases[] = {
      {"Continue?=Yes", "Continue?", MessageButton::kYes, nullptr},
      {"Continue?=no", "Continue?", MessageButton::kNo, nullptr},
      {"a=b=OK", "a=b", MessageButton::kOk, nullptr},
      {"Drawing has been changed.\\nSend?=cancel", "Drawing has been changed.\nSend?", MessageButton::kCancel,
       nullptr},
      {"C:\\\\temp\\x=Yes", "C:\\temp\\x", MessageButton::kYes, nullptr},
      {"no equals sign", "", {}, "--answer needs QUESTION=ANSWER, got \"no equals sign\""},
      {"Continue?=Maybe", "", {}, "--answer \"Continue?=Maybe\": the answer must be Yes, No, OK or Cancel"},
      {"=Yes", "", {}, "--answer \"=Yes\": the question is empty"},
  };
  for (const Case& c : cases) {
    AnswerPolicy policy;
    std::string error;
    EXPECT_EQ(policy.AddAnswer(c.option, &error), c.error == nullptr) << c.option;
    EXPECT_EQ(error, c.error != nullptr ? c.error : "") << c.option;
    if (c.error == nullptr) {
      EXPECT_EQ(policy.AnswerFor(c.question), c.answer) << c.option;
    }
  }
}

// The option the transcript suggests for an unanswered question reads back
// as that question, and survives the shell.
TEST(AnswerPolicyTest, SuggestedOptionsReadBackAndAreQuotedForTheShell) {
  const std::string question = "Line one\nC:\\path";
  EXPECT_EQ(EscapeQuestion(question), "Line one\\nC:\\\\path");
  AnswerPolicy policy;
  std::string error;
  ASSERT_TRUE(policy.AddAnswer(EscapeQuestion(question) + "=Yes", &error));
  EXPECT_EQ(policy.AnswerFor(question), MessageButton::kYes);
  EXPECT_EQ(AnswerOption("Changed.\nSend?", MessageButton::kNo), "--answer 'Changed.\\nSend?=No'");
  EXPECT_EQ(AnswerOption("Don't \"$HOME\"?", MessageButton::kYes), "--answer 'Don'\\''t \"$HOME\"?=Yes'");
}

class MessageBoxConsoleTest : public ConsoleTest {};

TEST_F(MessageBoxConsoleTest, PolicyAnswersAndTranscript) {
  constexpr unsigned kQuestion = MB_YESNO | MB_ICONWARNING;
  struct Case {
    const char* answer_option;  // nullptr: none
    std::optional<MessageButton> yes_no_default;
    unsigned type;
    const char* printed;
    int result;
    size_t unanswered;
  };
  const Case cases[] = {
      {nullptr, std::nullopt, kQuestion, "\n[Warning] Changed.\nSend? [Yes/No] -> No (default)",
       IDNO, 1},
      {nullptr, MessageButton::kYes, kQuestion,
       "\n[Warning] Changed.\nSend? [Yes/No] -> Yes (--yes)", IDYES, 1},
      {nullptr, MessageButton::kNo, kQuestion, "\n[Warning] Changed.\nSend? [Yes/No] -> No (--no)",
       IDNO, 1},
      {"Changed.\\nSend?=Yes", MessageButton::kNo, kQuestion,
       "\n[Warning] Changed.\nSend? [Yes/No] -> Yes", IDYES, 0},
      {nullptr, std::nullopt, MB_OKCANCEL,
       "\n[Message] Changed.\nSend? [OK/Cancel] -> Cancel (default)", IDCANCEL, 1},
      // --yes answers Yes/No questions only.
      {nullptr, MessageButton::kYes, MB_OKCANCEL,
       "\n[Message] Changed.\nSend? [OK/Cancel] -> Cancel (default)", IDCANCEL, 1},
      {"Changed.\\nSend?=Yes", std::nullopt, MB_OKCANCEL,
       "\n[Message] Changed.\nSend? [OK/Cancel] -> OK", IDOK, 0},
      {nullptr, std::nullopt, MB_YESNOCANCEL,
       "\n[Message] Changed.\nSend? [Yes/No/Cancel] -> Cancel (default)", IDCANCEL, 1},
      {nullptr, MessageButton::kNo, MB_OK | MB_ICONINFORMATION,
       "\n[Information] Changed.\nSend? [OK] -> OK", IDOK, 0},
      // An answer the buttons lack is fitted to them.
      {"Changed.\\nSend?=No", std::nullopt, MB_OKCANCEL, "\n[Message] Changed.\nSend? [OK/Cancel] -> Cancel", IDCANCEL, 0},
      {"Changed.\\nSend?=Cancel", std::nullopt, kQuestion, "\n[Warning] Changed.\nSend? [Yes/No] -> No", IDNO, 0},
  };
  for (const Case& c : cases) {
    AnswerPolicy policy;
    std::string error;
    if (c.answer_option != nullptr) {
      ASSERT_TRUE(policy.AddAnswer(c.answer_option, &error));
    }
    policy.SetYesNoDefault(c.yes_no_default);
    Restart(policy);
    terminal_.out.clear();
    EXPECT_EQ(acedMessageBox("Changed.\nSend?", "", c.type), c.result);
    EXPECT_EQ(terminal_.out, c.printed);
    EXPECT_EQ(console().unanswered().size(), c.unanswered);
  }
}

// On a terminal the user answers until the answer fits; the end of input
// takes the default; an --answer option is not asked.
TEST_F(MessageBoxConsoleTest, OnATerminalTheUserAnswers) {
  terminal_.input_is_terminal = true;
  terminal_.typed = {"maybe", "y"};
  EXPECT_EQ(acedMessageBox("Send?", "", MB_YESNO | MB_ICONWARNING), IDYES);
  EXPECT_EQ(terminal_.out, "\n[Warning] Send? [Yes/No] <No>: [Yes/No] <No>: ");
  EXPECT_TRUE(console().unanswered().empty());

  terminal_.out.clear();
  EXPECT_EQ(acedMessageBox("Delete?", "Room List", MB_OKCANCEL), IDCANCEL);
  // The line end typed last stands for the next message's.
  EXPECT_EQ(terminal_.out, "[Room List] Delete? [OK/Cancel] <Cancel>:  -> Cancel (default)");
  ASSERT_EQ(console().unanswered().size(), 1u);
  EXPECT_EQ(console().unanswered()[0].text, "Delete?");

  AnswerPolicy policy;
  std::string error;
  ASSERT_TRUE(policy.AddAnswer("Send?=No", &error));
  Restart(policy);
  terminal_.typed = {"y"};
  EXPECT_EQ(acedMessageBox("Send?", "", MB_YESNO), IDNO);
  EXPECT_EQ(terminal_.typed.size(), 1u);
}

}  // namespace
}  // namespace fx::console
