// Dialog models on the console (fx::ShowDialog, host/dialog.h): the title,
// then each field as a prompt with its current value in angle brackets (an
// empty answer keeps it), then the buttons as a keyword prompt whose default
// is the first button. A refused value is explained and asked again; a
// button that keeps the dialog open starts the fields over.
//
//   Text, Integer:  "\nLabel <value>: "
//   Text with items (a drop-down that takes typed text too):
//                   "\nLabel (? to list) <value>: "   any text; "?" lists
//                   the items
//   Password:       "\nLabel <********>: "   never the value, nor the answer:
//                   typed without echo, a script's answer shows as ********
//   Choice:         "\nLabel [Blocks/Texts] <Texts>: "   (keywords)
//   Check:          "\nLabel [Yes/No] <Yes>: "
//   List:           "\nLabel (? to list) <A,B>: "   items separated by
//                   commas; "*" selects every item, "-" none, "?" lists them
//
// Text, list and password answers take the whole line (names may hold
// blanks); the others end at a blank.
//
// When the input runs out in a dialog of a batch run, the default button is
// pressed, as Enter would in the dialog, and the transcript says so:
//   "\nNo more input: pressed OK, the default button of \"Title\"."
// The fields keep the values given so far. When the model keeps the dialog
// open on that button (it refused the values), or the dialog asks for a
// password (no default stands for credentials), the command is cancelled
// instead, as it is on a terminal whose input ends.
#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <vector>

#include "host/dialog.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/keywords.h"
#include "host/dxf/console/presenter.h"
#include "host/dxf/console/text_case.h"

namespace fx::console {
namespace {

std::string Keyword(std::string_view label) {
  std::string keyword;
  for (char c : label) {
    if (c != '&' && c != ' ' && c != '\t') keyword += c;
  }
  return keyword;
}

std::string JoinKeywords(const std::vector<std::string>& labels, char separator) {
  std::string joined;
  for (const std::string& label : labels) {
    if (!joined.empty()) joined += separator;
    joined += Keyword(label);
  }
  return joined;
}

std::string Trim(std::string_view text) {
  size_t start = text.find_first_not_of(" \t");
  if (start == std::string_view::npos) return {};
  size_t end = text.find_last_not_of(" \t");
  return std::string(text.substr(start, end - start + 1));
}

// Labels that end in a colon ("Find:") get only the blank.
const char* Colon(std::string_view label) { return label.ends_with(':') ? " " : ": "; }

std::string FieldPrompt(const DialogField& field) {
  std::string prompt = "\n" + field.label;
  switch (field.kind) {
    case DialogField::kChoice: prompt += " [" + JoinKeywords(field.items, '/') + "]"; break;
    case DialogField::kCheck: prompt += " [Yes/No]"; break;
    case DialogField::kList: prompt += " (? to list)"; break;
    case DialogField::kText:
      if (!field.items.empty()) prompt += " (? to list)";
      break;
    case DialogField::kInteger:
    case DialogField::kPassword: break;
  }
  if (!field.value.empty()) {
    prompt += " <";
    prompt += field.kind == DialogField::kPassword ? std::string(kHiddenAnswer) : field.value;
    prompt += ">";
  }
  return prompt + Colon(prompt);
}

// The list value an answer selects, in the items' own spelling.
std::optional<std::string> SelectItems(const DialogField& field, const std::string& answer,
                                       std::string& error) {
  if (answer == "-") return std::string();
  std::string value;
  auto add = [&value](const std::string& item) {
    if (!value.empty()) value += ',';
    value += item;
  };
  if (answer == "*") {
    for (const std::string& item : field.items) add(item);
    return value;
  }
  size_t start = 0;
  while (start <= answer.size()) {
    size_t comma = answer.find(',', start);
    if (comma == std::string::npos) comma = answer.size();
    std::string name = Trim(std::string_view(answer).substr(start, comma - start));
    start = comma + 1;
    if (name.empty()) continue;
    auto it = std::find_if(field.items.begin(), field.items.end(),
                           [&](const std::string& item) { return EqualNoCase(item, name); });
    if (it == field.items.end()) {
      error = "No item \"" + name + "\".";
      return std::nullopt;
    }
    add(*it);
  }
  return value;
}

// The field's value for an answer, or nullopt with *error.
std::optional<std::string> ValueFor(const DialogField& field, const std::string& answer,
                                    std::string& error) {
  switch (field.kind) {
    case DialogField::kText:
    case DialogField::kPassword: return answer;
    case DialogField::kInteger: {
      long long number = 0;
      auto [end, failure] = std::from_chars(answer.data(), answer.data() + answer.size(), number);
      if (failure == std::errc() && end == answer.data() + answer.size())
        return std::to_string(number);
      error = "Requires an integer value.";
      return std::nullopt;
    }
    case DialogField::kChoice: {
      std::optional<std::string> keyword =
          KeywordList(JoinKeywords(field.items, ' ')).Match(answer);
      for (const std::string& item : field.items) {
        if (keyword && Keyword(item) == *keyword) return item;
      }
      error = "Invalid option keyword.";
      return std::nullopt;
    }
    case DialogField::kCheck: {
      std::optional<std::string> keyword = KeywordList("Yes No").Match(answer);
      if (keyword) return keyword;
      error = "Requires Yes or No.";
      return std::nullopt;
    }
    case DialogField::kList: return SelectItems(field, answer, error);
  }
  return std::nullopt;
}

bool ListsItems(const DialogField& field) {
  return field.kind == DialogField::kList ||
         (field.kind == DialogField::kText && !field.items.empty());
}

void ListItems(const DialogField& field) {
  std::string text;
  for (const std::string& item : field.items) text += "\n  " + item;
  text += field.kind == DialogField::kList
              ? "\nSeparate items with commas; * selects every item, - none."
              : "\nType one of them or any other text.";
  CurrentRunner().console().Print(text);
}

// Like AskField for a password; every copy of the answer is wiped once the
// model has taken it.
bool AskPassword(DialogModel& model, size_t index, const DialogField& field) {
  CommandRunner& runner = CurrentRunner();
  for (;;) {
    std::string answer;
    if (runner.ReadSecretAnswer(FieldPrompt(field), answer) != ReadStatus::kOk) return false;
    const std::string error = answer.empty() ? std::string() : model.SetField(index, answer);
    WipeText(answer);
    if (error.empty()) return true;
    runner.console().Print("\n" + error);
  }
}

// False when the input ran out.
bool AskField(DialogModel& model, size_t index, const DialogField& field, RunOut run_out) {
  if (field.kind == DialogField::kPassword) return AskPassword(model, index, field);
  CommandRunner& runner = CurrentRunner();
  if (field.shown_only) {
    // Empty values are left out: a group of a form shows nothing yet.
    if (!field.value.empty()) runner.console().Print("\n" + field.label + Colon(field.label) + field.value);
    return true;
  }
  const bool line = field.kind == DialogField::kText || field.kind == DialogField::kList;
  for (;;) {
    std::string answer;
    if (runner.ReadAnswer(FieldPrompt(field), line ? TokenEnd::kLineEnd : TokenEnd::kBlank, answer,
                          run_out) != ReadStatus::kOk) {
      return false;
    }
    if (answer.empty()) return true;
    if (ListsItems(field) && answer == "?") {
      ListItems(field);
      continue;
    }
    std::string error;
    std::optional<std::string> value = ValueFor(field, answer, error);
    if (value) error = model.SetField(index, *value);
    if (error.empty()) return true;
    runner.console().Print("\n" + error);
  }
}

// The index of the button chosen, or -1 when the input ran out.
int AskButton(const DialogModel& model, RunOut run_out) {
  const std::vector<std::string> labels = model.buttons();
  if (labels.empty()) return -1;
  const KeywordList keywords(JoinKeywords(labels, ' '));
  const std::string prompt =
      "\n[" + JoinKeywords(labels, '/') + "] <" + Keyword(labels.front()) + ">: ";
  CommandRunner& runner = CurrentRunner();
  for (;;) {
    std::string answer;
    if (runner.ReadAnswer(prompt, TokenEnd::kBlank, answer, run_out) != ReadStatus::kOk) return -1;
    if (answer.empty()) return 0;
    if (std::optional<std::string> keyword = keywords.Match(answer)) {
      for (size_t i = 0; i < labels.size(); ++i) {
        if (Keyword(labels[i]) == *keyword) return static_cast<int>(i);
      }
    }
    runner.console().Print("\nInvalid option keyword.");
  }
}

// What running out of input does in a dialog with `fields`.
RunOut RunOutIn(const std::vector<DialogField>& fields) {
  if (CurrentRunner().console().interactive()) return RunOut::kCancels;
  for (const DialogField& field : fields) {
    if (field.kind == DialogField::kPassword) return RunOut::kCancels;
  }
  return RunOut::kTakesDefault;
}

// The input ran out in `model`: presses its default button when `run_out`
// says so. Returns the button that closed the dialog, or -1.
int PressDefault(DialogModel& model, RunOut run_out) {
  if (run_out != RunOut::kTakesDefault) return -1;  // cancelled, and shown so
  const std::vector<std::string> labels = model.buttons();
  Console& console = CurrentRunner().console();
  if (!labels.empty()) {
    std::string label;
    for (char c : labels.front()) {
      if (c != '&') label += c;
    }
    console.Print("\nNo more input: pressed " + label + ", the default button of \"" + model.title() +
                  "\".");
    if (model.Press(0) == DialogAction::kClose) return 0;
  }
  console.Print("\n*Cancel*");
  CurrentRunner().CancelCommand();
  return -1;
}

}  // namespace
}  // namespace fx::console

int fx::ShowDialog(DialogModel& model) {
  if (console::Presenter* presenter = console::CurrentRunner().console().presenter())
    return presenter->ShowDialog(model);
  console::CurrentRunner().console().Print("\n" + model.title());
  // The copies of password values in the fields are wiped when replaced.
  struct Fields {
    ~Fields() { Wipe(); }
    void Wipe() {
      for (DialogField& field : list)
        if (field.kind == DialogField::kPassword) WipeText(field.value);
    }
    void Refresh(const DialogModel& from) {
      Wipe();
      list = from.fields();
    }
    std::vector<DialogField> list;
  } fields;
  fields.Refresh(model);
  const console::RunOut run_out = console::RunOutIn(fields.list);
  for (;;) {
    fields.Refresh(model);
    for (size_t i = 0; i < fields.list.size(); ++i) {
      if (!console::AskField(model, i, fields.list[i], run_out)) {
        return console::PressDefault(model, run_out);
      }
      fields.Refresh(model);  // a value may change the fields after it
    }
    const int button = console::AskButton(model, run_out);
    if (button < 0) return console::PressDefault(model, run_out);
    if (model.Press(static_cast<size_t>(button)) == DialogAction::kClose) return button;
  }
}
