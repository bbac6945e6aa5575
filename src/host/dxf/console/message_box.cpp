#include "host/dxf/console/message_box.h"

#include <algorithm>

#include "host/editor.h"

namespace fx::console {
namespace {

bool Has(const std::vector<MessageButton>& buttons, MessageButton button) {
  return std::find(buttons.begin(), buttons.end(), button) != buttons.end();
}

const char* IconName(unsigned type) {
  switch (type & 0xF0) {
    case MB_ICONERROR: return "Error";
    case MB_ICONQUESTION: return "Question";
    case MB_ICONWARNING: return "Warning";
    case MB_ICONINFORMATION: return "Information";
    default: return nullptr;
  }
}

MessageButton Counterpart(MessageButton button) {
  switch (button) {
    case MessageButton::kOk: return MessageButton::kYes;
    case MessageButton::kYes: return MessageButton::kOk;
    case MessageButton::kCancel: return MessageButton::kNo;
    case MessageButton::kNo: return MessageButton::kCancel;
  }
  return button;
}

}  // namespace

std::vector<MessageButton> ButtonsOf(unsigned type) {
  using enum MessageButton;
  switch (type & 0xF) {
    case MB_OKCANCEL: return {kOk, kCancel};
    case MB_YESNOCANCEL: return {kYes, kNo, kCancel};
    case MB_YESNO: return {kYes, kNo};
    default: return {kOk};
  }
}

MessageButton DefaultButton(const std::vector<MessageButton>& buttons) {
  if (Has(buttons, MessageButton::kCancel)) return MessageButton::kCancel;
  if (Has(buttons, MessageButton::kNo)) return MessageButton::kNo;
  return MessageButton::kOk;
}

MessageButton FitButton(MessageButton answer, const std::vector<MessageButton>& buttons) {
  if (Has(buttons, answer)) return answer;
  if (Has(buttons, Counterpart(answer))) return Counterpart(answer);
  return buttons.front();
}

int ButtonId(MessageButton button) {
  switch (button) {
    case MessageButton::kOk: return IDOK;
    case MessageButton::kCancel: return IDCANCEL;
    case MessageButton::kYes: return IDYES;
    case MessageButton::kNo: return IDNO;
  }
  return IDCANCEL;
}

std::optional<MessageBoxAnswer> PolicyAnswer(const AnswerPolicy& policy, std::string_view text,
                                             const std::vector<MessageButton>& buttons) {
  if (std::optional<MessageButton> given = policy.AnswerFor(text)) {
    return MessageBoxAnswer{FitButton(*given, buttons), AnswerSource::kAnswerOption};
  }
  if (policy.yesNoDefault() && Has(buttons, MessageButton::kYes) &&
      Has(buttons, MessageButton::kNo)) {
    return MessageBoxAnswer{*policy.yesNoDefault(), AnswerSource::kYesNoDefault};
  }
  return std::nullopt;
}

std::string FormatMessageBox(std::string_view text, std::string_view caption, unsigned type) {
  std::string line = "\n[";
  const char* icon = IconName(type);
  if (icon != nullptr) line += icon;
  if (icon != nullptr && !caption.empty()) line += ": ";
  line += caption;
  if (icon == nullptr && caption.empty()) line += "Message";
  line += "] ";
  line += text;
  line += " [";
  std::vector<MessageButton> buttons = ButtonsOf(type);
  for (size_t i = 0; i < buttons.size(); ++i) {
    if (i > 0) line += '/';
    line += ButtonName(buttons[i]);
  }
  line += ']';
  return line;
}

std::string FormatAnswer(const MessageBoxAnswer& answer,
                         const std::vector<MessageButton>& buttons) {
  std::string text = " -> ";
  text += ButtonName(answer.button);
  if (buttons.size() < 2) return text;
  switch (answer.source) {
    case AnswerSource::kYesNoDefault:
      text += answer.button == MessageButton::kYes ? " (--yes)" : " (--no)";
      break;
    case AnswerSource::kDefault: text += " (default)"; break;
    case AnswerSource::kAnswerOption:
    case AnswerSource::kUser: break;
  }
  return text;
}

}  // namespace fx::console
