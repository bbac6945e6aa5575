// Message boxes on the console: which buttons a box type has, which answer
// the policy gives, and how question and answer read in the transcript:
//
//   [Warning] Drawing has been changed.
//   Would you like to send updates to Vantory? [Yes/No] -> No (default)
//
// The bracket names the icon (Error, Question, Warning, Information) and,
// after a colon, the caption when there is one ("[Warning: Room List]");
// "[Message]" stands for neither. The text is printed as given, then the
// buttons and the answer. How the answer was chosen follows it: nothing for
// an answer given with --answer or typed by the user, "(--yes)" or "(--no)"
// for the run's Yes/No default, "(default)" for the documented default. A box
// with only an OK button asks nothing: "[Information] Done. [OK] -> OK".
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_MESSAGE_BOX_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_MESSAGE_BOX_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/console/answer_policy.h"

namespace fx::console {

enum class AnswerSource { kAnswerOption, kYesNoDefault, kUser, kDefault };

struct MessageBoxAnswer {
  MessageButton button = MessageButton::kOk;
  AnswerSource source = AnswerSource::kDefault;
};

// The buttons of an acedMessageBox type, in the order shown: OK; OK, Cancel;
// Yes, No, Cancel; Yes, No. Types the console does not know show OK.
std::vector<MessageButton> ButtonsOf(unsigned type);
// The answer when nobody gives one: Cancel when the box has it, else No,
// else OK.
MessageButton DefaultButton(const std::vector<MessageButton>& buttons);
// The button of the box an answer stands for: itself when the box has it,
// otherwise Yes and OK stand for each other, as do No and Cancel; failing
// both, the box's first button.
MessageButton FitButton(MessageButton answer, const std::vector<MessageButton>& buttons);
int ButtonId(MessageButton button);  // IDOK, IDCANCEL, IDYES, IDNO

// The answer from the policy: the question's own answer, else the Yes/No
// default for a box with Yes and No; nullopt when the policy has none.
std::optional<MessageBoxAnswer> PolicyAnswer(const AnswerPolicy& policy, std::string_view text,
                                             const std::vector<MessageButton>& buttons);

// "\n[Warning] TEXT [Yes/No]"; the answer part follows.
std::string FormatMessageBox(std::string_view text, std::string_view caption, unsigned type);
// " -> No (default)"
std::string FormatAnswer(const MessageBoxAnswer& answer, const std::vector<MessageButton>& buttons);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_MESSAGE_BOX_H_
