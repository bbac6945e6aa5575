#include "host/dxf/console/message_box.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "console_fixture.h"
#include "host/editor.h"

namespace fx::console {
namespace {

TEST(AnswerPolicyTest, ReadsAnswerOptions) {
  struct Case {
    const char* option;
    const char* question;
    MessageButton answer;
  };
  const Case cases[] = {
      {"Continue?=Yes", "Continue?", MessageButton::kYes},
      {"Continue?=no", "Continue?", MessageButton::kNo},
      {"a=b=OK", "a=b", MessageButton::kOk},  // the last '=' separates
      {"Drawing has been changed.\\nSend?=cancel", "Drawing has been changed.\nSend?",
       MessageButton::kCancel},
      {"C:\\\\temp\\x=Yes", "C:\\temp\\x", MessageButton::kYes},
  };
  for (const Case& c : cases) {
    AnswerPolicy policy;
    std::string error;
    ASSERT_TRUE(policy.AddAnswer(c.option, &error)) << c.option << ": " << error;
    EXPECT_EQ(policy.AnswerFor(c.question), c.answer) << c.option;
  }
}

TEST(AnswerPolicyTest, RejectsMalformedOptions) {
  struct Case {
    const char* option;
    const char* error;
  };
  const Case cases[] = {
      {"no equals sign", "--answer needs QUESTION=ANSWER, got \"no equals sign\""},
      {"Continue?=Maybe", "--answer \"Continue?=Maybe\": the answer must be Yes, No, OK or Cancel"},
      {"=Yes", "--answer \"=Yes\": the question is empty"},
  };
  for (const Case& c : cases) {
    AnswerPolicy policy;
    std::string error;
    EXPECT_FALSE(policy.AddAnswer(c.option, &error));
    EXPECT_EQ(error, c.error);
  }
}

TEST(AnswerPolicyTest, EscapedQuestionsReadBack) {
  const std::string question = "Line one\nC:\\path";
  EXPECT_EQ(EscapeQuestion(question), "Line one\\nC:\\\\path");
  AnswerPolicy policy;
  std::string error;
  ASSERT_TRUE(policy.AddAnswer(EscapeQuestion(question) + "=Yes", &error));
  EXPECT_EQ(policy.AnswerFor(question), MessageButton::kYes);
}

TEST(AnswerPolicyTest, AnswerOptionsAreQuotedForTheShell) {
  EXPECT_EQ(AnswerOption("Changed.\nSend?", MessageButton::kNo), "--answer 'Changed.\\nSend?=No'");
  EXPECT_EQ(AnswerOption("Don't \"$HOME\"?", MessageButton::kYes),
            "--answer 'Don'\\''t \"$HOME\"?=Yes'");
}

TEST(MessageBoxTest, FormatNamesIconCaptionAndButtons) {
  struct Case {
    const char* text;
    const char* caption;
    unsigned type;
    const char* expected;
  };
  const Case cases[] = {
      {"Send?", "", MB_YESNO | MB_ICONWARNING, "\n[Warning] Send? [Yes/No]"},
      {"Delete?", "Room List", MB_OKCANCEL | MB_ICONQUESTION,
       "\n[Question: Room List] Delete? [OK/Cancel]"},
      {"Done.", "PlanVault", MB_OK, "\n[PlanVault] Done. [OK]"},
      {"Failed.", "", MB_OK | MB_ICONERROR, "\n[Error] Failed. [OK]"},
      {"Save?", "", MB_YESNOCANCEL | MB_ICONINFORMATION, "\n[Information] Save? [Yes/No/Cancel]"},
      {"Hello", "", MB_OK, "\n[Message] Hello [OK]"},
  };
  for (const Case& c : cases) EXPECT_EQ(FormatMessageBox(c.text, c.caption, c.type), c.expected);
}

TEST(MessageBoxTest, FittingAnswersToButtons) {
  using enum MessageButton;
  const std::vector<MessageButton> ok_cancel = {kOk, kCancel};
  const std::vector<MessageButton> yes_no = {kYes, kNo};
  EXPECT_EQ(FitButton(kYes, ok_cancel), kOk);
  EXPECT_EQ(FitButton(kNo, ok_cancel), kCancel);
  EXPECT_EQ(FitButton(kCancel, yes_no), kNo);
  EXPECT_EQ(FitButton(kNo, {kOk}), kOk);
  EXPECT_EQ(DefaultButton({kYes, kNo, kCancel}), kCancel);
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

TEST_F(MessageBoxConsoleTest, AsksTheUserOnATerminal) {
  terminal_.input_is_terminal = true;
  terminal_.typed = {"maybe", "y"};
  EXPECT_EQ(acedMessageBox("Send?", "", MB_YESNO | MB_ICONWARNING), IDYES);
  EXPECT_EQ(terminal_.out, "\n[Warning] Send? [Yes/No] <No>: [Yes/No] <No>: ");
  EXPECT_TRUE(console().unanswered().empty());
}

TEST_F(MessageBoxConsoleTest, EndOfTerminalInputTakesTheDefault) {
  terminal_.input_is_terminal = true;
  EXPECT_EQ(acedMessageBox("Delete?", "Room List", MB_OKCANCEL), IDCANCEL);
  EXPECT_EQ(terminal_.out, "\n[Room List] Delete? [OK/Cancel] <Cancel>:  -> Cancel (default)");
  ASSERT_EQ(console().unanswered().size(), 1u);
  EXPECT_EQ(console().unanswered()[0].text, "Delete?");
}

TEST_F(MessageBoxConsoleTest, AnswerOptionWinsOverTheTerminal) {
  AnswerPolicy policy;
  std::string error;
  ASSERT_TRUE(policy.AddAnswer("Send?=No", &error));
  Restart(policy);
  terminal_.input_is_terminal = true;
  terminal_.typed = {"y"};
  EXPECT_EQ(acedMessageBox("Send?", "", MB_YESNO), IDNO);
  EXPECT_EQ(terminal_.typed.size(), 1u);
}

}  // namespace
}  // namespace fx::console
