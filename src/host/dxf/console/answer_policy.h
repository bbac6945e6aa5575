// How a run answers message boxes without a user: answers given per question
// (--answer "QUESTION=Yes") and a default for Yes/No questions (--yes, --no).
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_ANSWER_POLICY_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_ANSWER_POLICY_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace fx::console {

enum class MessageButton { kOk, kCancel, kYes, kNo };

const char* ButtonName(MessageButton button);  // "OK", "Cancel", "Yes", "No"
// Reads a button name without regard to case.
std::optional<MessageButton> ParseButton(std::string_view name);

class AnswerPolicy {
 public:
  // Takes "QUESTION TEXT=ANSWER": the answer (Yes, No, OK or Cancel) follows
  // the last '='; the question is the box's exact text, in which "\n" stands
  // for a line break and "\\" for a backslash. A later answer to the same
  // question replaces an earlier one. False, with *error, when malformed.
  bool AddAnswer(std::string_view option, std::string* error);
  void SetYesNoDefault(std::optional<MessageButton> answer) { yes_no_default_ = answer; }

  // The answer given for exactly this question text, if any.
  std::optional<MessageButton> AnswerFor(std::string_view question) const;
  std::optional<MessageButton> yesNoDefault() const { return yes_no_default_; }

 private:
  std::map<std::string, MessageButton, std::less<>> answers_;
  std::optional<MessageButton> yes_no_default_;
};

// The question in the form AddAnswer takes, line breaks and backslashes
// escaped.
std::string EscapeQuestion(std::string_view question);
// The option that gives `answer` to `question`, quoted for a POSIX shell so
// that a report of the questions asked can be pasted back:
// --answer 'Drawing has been changed.\nSend updates?=No'
std::string AnswerOption(std::string_view question, MessageButton answer);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_ANSWER_POLICY_H_
