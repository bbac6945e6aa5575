#include "host/dxf/console/answer_policy.h"

#include "host/dxf/console/text_case.h"

namespace fx::console {
namespace {

constexpr struct {
  MessageButton button;
  const char* name;
} kButtonNames[] = {
    {MessageButton::kOk, "OK"},
    {MessageButton::kCancel, "Cancel"},
    {MessageButton::kYes, "Yes"},
    {MessageButton::kNo, "No"},
};

// "\n" becomes a line break and "\\" a backslash; any other backslash stays.
std::string UnescapeQuestion(std::string_view text) {
  std::string question;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'n' || text[i + 1] == '\\')) {
      question += text[i + 1] == 'n' ? '\n' : '\\';
      ++i;
    } else {
      question += text[i];
    }
  }
  return question;
}

}  // namespace

const char* ButtonName(MessageButton button) {
  for (const auto& entry : kButtonNames) {
    if (entry.button == button) return entry.name;
  }
  return "?";
}

std::optional<MessageButton> ParseButton(std::string_view name) {
  for (const auto& entry : kButtonNames) {
    if (EqualNoCase(name, entry.name)) return entry.button;
  }
  return std::nullopt;
}

bool AnswerPolicy::AddAnswer(std::string_view option, std::string* error) {
  size_t equals = option.rfind('=');
  if (equals == std::string_view::npos) {
    *error = "--answer needs QUESTION=ANSWER, got \"" + std::string(option) + "\"";
    return false;
  }
  std::optional<MessageButton> answer = ParseButton(option.substr(equals + 1));
  if (!answer) {
    *error = "--answer \"" + std::string(option) + "\": the answer must be Yes, No, OK or Cancel";
    return false;
  }
  if (equals == 0) {
    *error = "--answer \"" + std::string(option) + "\": the question is empty";
    return false;
  }
  answers_.insert_or_assign(UnescapeQuestion(option.substr(0, equals)), *answer);
  return true;
}

std::optional<MessageButton> AnswerPolicy::AnswerFor(std::string_view question) const {
  auto it = answers_.find(question);
  if (it == answers_.end()) return std::nullopt;
  return it->second;
}

std::string EscapeQuestion(std::string_view question) {
  std::string escaped;
  for (char c : question) {
    if (c == '\n') {
      escaped += "\\n";
    } else if (c == '\\') {
      escaped += "\\\\";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string AnswerOption(std::string_view question, MessageButton answer) {
  std::string option = "--answer '";
  for (char c : EscapeQuestion(question) + "=" + ButtonName(answer)) {
    if (c == '\'') {
      option += "'\\''";  // close the quotes, a quoted quote, open them again
    } else {
      option += c;
    }
  }
  return option + "'";
}

}  // namespace fx::console
