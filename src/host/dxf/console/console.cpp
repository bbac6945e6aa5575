#include "host/dxf/console/console.h"

#include <optional>
#include <utility>

#include "host/dxf/console/keywords.h"
#include "host/dxf/console/presenter.h"
#include "host/dxf/console/terminal.h"

namespace fx::console {
namespace {

std::string JoinButtons(const std::vector<MessageButton>& buttons, char separator) {
  std::string joined;
  for (MessageButton button : buttons) {
    if (!joined.empty()) joined += separator;
    joined += ButtonName(button);
  }
  return joined;
}

}  // namespace

Console::Console(Terminal& terminal, AnswerPolicy policy)
    : terminal_(terminal), policy_(std::move(policy)), progress_(terminal) {}

void Console::SetInteractive(bool interactive) {
  interactive_ = interactive;
  if (interactive) {
    script_.SetLineReader([this](std::string& line) { return ReadTypedLine(line); });
  } else {
    script_.SetLineReader(nullptr);
  }
}

bool Console::ReadTypedLine(std::string& line) {
  if (!(reading_secret_ ? terminal_.ReadSecretLine(line) : terminal_.ReadLine(line))) return false;
  after_typed_line_ = true;
  return true;
}

void Console::Print(std::string_view text) {
  if (text.empty()) return;
  if (std::exchange(after_typed_line_, false) && text.front() == '\n') {
    text.remove_prefix(1);
    if (text.empty()) return;
  }
  progress_.Hide();
  terminal_.WriteOut(text);
  printed_ = true;
  ends_with_line_end_ = text.back() == '\n';
}

void Console::Finish() {
  if (printed_ && !ends_with_line_end_) Print("\n");
}

bool Console::NextToken(TokenEnd end, std::string& token, TokenOrigin& origin) {
  origin = TokenOrigin::kScript;
  if (answer_lists_.empty()) return script_.Next(end, token, &origin);
  AnswerList& list = answer_lists_.back();
  if (list.next >= list.answers.size()) return false;
  token = list.answers[list.next++];
  return true;
}

ReadStatus Console::ReadAnswer(std::string_view prompt, TokenEnd end, std::string& answer,
                               TokenOrigin* origin, RunOut run_out) {
  const bool echo = Echoing();
  if (echo) Print(prompt);
  TokenOrigin from;
  if (!NextToken(end, answer, from)) {
    answer.clear();
    if (run_out == RunOut::kCancels) Print((echo ? "" : std::string(prompt)) + "*Cancel*");
    return ReadStatus::kRanOut;
  }
  if (echo && from != TokenOrigin::kTyped) Print(answer);
  if (origin != nullptr) *origin = from;
  return ReadStatus::kOk;
}

ReadStatus Console::ReadSecretAnswer(std::string_view prompt, std::string& answer) {
  const bool echo = Echoing();
  if (echo) Print(prompt);
  TokenOrigin from;
  reading_secret_ = true;
  const bool read = NextToken(TokenEnd::kLineEnd, answer, from);
  reading_secret_ = false;
  if (!read) {
    answer.clear();
    Print((echo ? "" : std::string(prompt)) + "*Cancel*");
    return ReadStatus::kRanOut;
  }
  if (echo && from != TokenOrigin::kTyped && !answer.empty()) Print(kHiddenAnswer);
  return ReadStatus::kOk;
}

ReadStatus Console::ReadCommandName(std::string& name, TokenOrigin& origin) {
  return NextToken(TokenEnd::kBlank, name, origin) ? ReadStatus::kOk : ReadStatus::kRanOut;
}

void Console::PushAnswers(std::vector<std::string> answers, bool echo) {
  answer_lists_.push_back({std::move(answers), 0, echo});
}

void Console::PopAnswers() {
  if (!answer_lists_.empty()) answer_lists_.pop_back();
}

int Console::MessageBox(std::string_view text, std::string_view caption, unsigned type) {
  std::vector<MessageButton> buttons = ButtonsOf(type);
  Print(FormatMessageBox(text, caption, type));
  std::optional<MessageBoxAnswer> answer;
  if (presenter_ != nullptr) {
    answer = MessageBoxAnswer{presenter_->AskMessageBox(text, caption, type, buttons), AnswerSource::kUser};
    Print(FormatAnswer(*answer, buttons));
    return ButtonId(answer->button);
  }
  if (buttons.size() == 1) {
    answer = MessageBoxAnswer{buttons.front(), AnswerSource::kDefault};
  } else {
    answer = PolicyAnswer(policy_, text, buttons);
  }
  if (!answer && terminal_.inputIsTerminal()) {
    answer = AskUser(buttons);
  } else {
    if (!answer) answer = MessageBoxAnswer{DefaultButton(buttons), AnswerSource::kDefault};
    Print(FormatAnswer(*answer, buttons));
  }
  if (buttons.size() > 1 && answer->source != AnswerSource::kAnswerOption &&
      answer->source != AnswerSource::kUser) {
    unanswered_.push_back({std::string(text), *answer});
  }
  return ButtonId(answer->button);
}

// Asks on the terminal: " <No>: "; Enter takes the default, the end of input
// too (then shown as such).
MessageBoxAnswer Console::AskUser(const std::vector<MessageButton>& buttons) {
  const MessageButton fallback = DefaultButton(buttons);
  const KeywordList keywords(JoinButtons(buttons, ' '));
  std::string prompt = std::string(" <") + ButtonName(fallback) + ">: ";
  for (;;) {
    Print(prompt);
    std::string line;
    if (!ReadTypedLine(line)) {
      MessageBoxAnswer answer{fallback, AnswerSource::kDefault};
      Print(FormatAnswer(answer, buttons));
      return answer;
    }
    if (line.empty()) return {fallback, AnswerSource::kUser};
    if (std::optional<std::string> name = keywords.Match(line)) {
      return {*ParseButton(*name), AnswerSource::kUser};
    }
    prompt = "\n[" + JoinButtons(buttons, '/') + "] <" + ButtonName(fallback) + ">: ";
  }
}

}  // namespace fx::console
