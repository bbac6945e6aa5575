// Dialogs as models: a dialog's state and behaviour without widgets. Each
// host shows a model its own way: the headless host as a sequence of
// command-line prompts (as the editor's dash commands stand in for their
// dialogs, so a script answers a dialog like any prompt), a GUI host as a form.
#ifndef FLOORXPORT_HOST_DIALOG_H_
#define FLOORXPORT_HOST_DIALOG_H_

#include <cstddef>
#include <string>
#include <vector>

namespace fx {

// One field of a dialog as the host shows it. Values travel as text:
// kText any text (with `items`, a drop-down that also takes typed text: the
// items are offered, any text is accepted); kInteger a decimal integer;
// kChoice one of `items`; kCheck "Yes" or "No"; kList any number of `items`
// joined by "," (item texts contain no comma, as symbol names cannot);
// kPassword any text that is never shown: a host hides it while it is typed
// and never prints the value, neither as the answer nor as the current value.
struct DialogField {
  enum Kind { kText, kInteger, kChoice, kCheck, kList, kPassword };
  std::string label;
  Kind kind = kText;
  std::string value;
  std::vector<std::string> items;
  // Shown to the user but not asked for (a caption, a value the dialog
  // computes); SetField is never called for it.
  bool shown_only = false;
};

enum class DialogAction { kStay, kClose };

// Overwrites every character a string holds or held within its capacity,
// then empties it: for passwords, before their memory is released.
inline void WipeText(std::string& text) {
  text.resize(text.capacity());
  volatile char* bytes = text.data();
  for (size_t i = 0; i < text.size(); ++i) bytes[i] = '\0';
  text.clear();
}

class DialogModel {
 public:
  virtual ~DialogModel() = default;
  virtual std::string title() const = 0;
  // The fields in the order they are shown, with their current values.
  virtual std::vector<DialogField> fields() const = 0;
  // Sets field `index` to a value the host has already checked against the
  // field's kind and items. Returns an empty string when the value is taken,
  // otherwise the reason it is not (the host shows it and asks again).
  virtual std::string SetField(size_t index, const std::string& value) = 0;
  // Button labels; the first is the default. A host that types answers uses
  // the label without blanks and '&' as the keyword ("&Open room list" is
  // answered by "openroomlist" or an unambiguous prefix of it).
  virtual std::vector<std::string> buttons() const = 0;
  // The user pressed button `index`: kClose ends the dialog with it; kStay
  // keeps it open (the button acted in place, or validation failed and the
  // model told the user why, for example through acedMessageBox).
  virtual DialogAction Press(size_t index) = 0;
};

// Shows `model` until a button closes it. Returns that button's index, or -1
// when the user cancelled (in a batch run: the input ran out), in which case
// no button was pressed and the fields keep the values set so far.
int ShowDialog(DialogModel& model);

}  // namespace fx

#endif  // FLOORXPORT_HOST_DIALOG_H_
