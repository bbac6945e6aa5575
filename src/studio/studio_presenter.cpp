#include "studio/studio_presenter.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "host/dialog.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/message_box.h"
#include "host/editor.h"
#include "studio/field_values.h"
#include "studio/host_loop.h"
#include "studio/studio_state.h"

namespace fx::studio {

struct StudioPresenter::Question {
  enum Kind { kDialog, kMessageBox, kPrompt };
  int id = 0;
  Kind kind = kDialog;
  DialogModel* model = nullptr;                  // kDialog
  std::vector<console::MessageButton> buttons;  // kMessageBox
  std::string text;                             // the message, or the prompt
  std::string caption;
  unsigned type = 0;
  std::string error;  // why the last answer was refused
  int error_field = -1;
  bool answered = false;
  int button = -1;   // the dialog button that closed it; -1 cancelled
  std::string line;  // kPrompt's answer
};

namespace {

const char* IconName(unsigned type) {
  switch (type & 0xF0) {
    case MB_ICONERROR: return "error";
    case MB_ICONQUESTION: return "question";
    case MB_ICONWARNING: return "warning";
    case MB_ICONINFORMATION: return "information";
    default: return "none";
  }
}

nlohmann::json FieldsJson(const DialogModel& model) {
  nlohmann::json fields = nlohmann::json::array();
  for (DialogField& field : model.fields()) {
    const bool password = field.kind == DialogField::kPassword;
    fields.push_back({{"label", field.label},
                      {"kind", FieldKindName(field.kind)},
                      {"value", password ? std::string() : field.value},
                      {"set", !field.value.empty()},
                      {"items", field.items},
                      {"shown_only", field.shown_only}});
    if (password) WipeText(field.value);
  }
  return fields;
}

}  // namespace

StudioPresenter::StudioPresenter(HostLoop& loop, StudioState& state, console::Console& console)
    : loop_(loop), state_(state), console_(console) {}

int StudioPresenter::ShowDialog(DialogModel& model) {
  console_.Print("\n" + model.title());
  Question question;
  question.kind = Question::kDialog;
  question.model = &model;
  Ask(question);
  return question.answered ? question.button : -1;
}

console::MessageButton StudioPresenter::AskMessageBox(std::string_view text, std::string_view caption,
                                                      unsigned type,
                                                      const std::vector<console::MessageButton>& buttons) {
  Question question;
  question.kind = Question::kMessageBox;
  question.text = text;
  question.caption = caption;
  question.type = type;
  question.buttons = buttons;
  Ask(question);
  if (!question.answered) return console::DefaultButton(buttons);
  return buttons[static_cast<size_t>(question.button)];
}

bool StudioPresenter::ReadLine(std::string_view prompt, std::string& line) {
  Question question;
  question.kind = Question::kPrompt;
  question.text = prompt;
  Ask(question);
  if (!question.answered || question.button < 0) return false;
  line = std::move(question.line);
  return true;
}

// Shows the question and runs the host's other jobs until it is answered or
// the studio stops.
void StudioPresenter::Ask(Question& question) {
  question.id = next_id_++;
  questions_.push_back(&question);
  Publish();
  loop_.RunUntil([&question] { return question.answered; });
  questions_.erase(std::find(questions_.begin(), questions_.end(), &question));
  Publish();
}

StudioPresenter::Question* StudioPresenter::Innermost(int id) {
  if (questions_.empty() || questions_.back()->id != id) return nullptr;
  return questions_.back();
}

void StudioPresenter::SetField(int id, size_t index, std::string value) {
  Question* question = Innermost(id);
  if (question == nullptr || question->kind != Question::kDialog) return;
  std::vector<DialogField> fields = question->model->fields();
  question->error_field = static_cast<int>(index);
  if (index >= fields.size()) {
    question->error = "No such field.";
  } else {
    question->error = CheckFieldValue(fields[index], value);
    if (question->error.empty()) question->error = question->model->SetField(index, value);
    if (question->error.empty()) question->error_field = -1;
  }
  for (DialogField& field : fields)
    if (field.kind == DialogField::kPassword) WipeText(field.value);
  WipeText(value);
  Publish();
}

void StudioPresenter::Press(int id, size_t index) {
  Question* question = Innermost(id);
  if (question == nullptr || question->kind != Question::kDialog) return;
  if (index >= question->model->buttons().size()) return;
  question->error.clear();
  question->error_field = -1;
  // The model may ask questions of its own while it acts (nested Ask).
  if (question->model->Press(index) == DialogAction::kClose) {
    question->answered = true;
    question->button = static_cast<int>(index);
  }
  if (after_press_) after_press_();
  Publish();
}

void StudioPresenter::AnswerMessageBox(int id, std::string_view button) {
  Question* question = Innermost(id);
  if (question == nullptr || question->kind != Question::kMessageBox) return;
  for (size_t i = 0; i < question->buttons.size(); ++i) {
    if (console::ButtonName(question->buttons[i]) == button) {
      question->answered = true;
      question->button = static_cast<int>(i);
    }
  }
}

void StudioPresenter::AnswerPrompt(int id, const std::string& line) {
  Question* question = Innermost(id);
  if (question == nullptr || question->kind != Question::kPrompt) return;
  question->line = line;
  question->answered = true;
  question->button = 0;
}

void StudioPresenter::Cancel(int id) {
  Question* question = Innermost(id);
  if (question == nullptr) return;
  question->answered = true;
  question->button = -1;
  if (question->kind == Question::kMessageBox) {
    const console::MessageButton fallback = console::DefaultButton(question->buttons);
    question->button = static_cast<int>(
        std::find(question->buttons.begin(), question->buttons.end(), fallback) - question->buttons.begin());
  }
}

void StudioPresenter::ProgressStarted(std::string_view label, int min_pos, int max_pos) {
  progress_min_ = min_pos;
  progress_max_ = max_pos;
  progress_percent_ = 0;
  state_.Update([&](nlohmann::json& fields) {
    fields["progress"] = {{"label", std::string(label)}, {"percent", 0}};
  });
}

void StudioPresenter::ProgressMoved(int pos) {
  if (progress_percent_ < 0) return;
  long long span = static_cast<long long>(progress_max_) - progress_min_;
  const int percent =
      span <= 0 ? 0 : static_cast<int>(std::clamp((pos - progress_min_) * 100LL / span, 0LL, 100LL));
  if (percent == progress_percent_) return;
  progress_percent_ = percent;
  state_.Update([&](nlohmann::json& fields) { fields["progress"]["percent"] = percent; });
}

void StudioPresenter::ProgressStopped() {
  progress_percent_ = -1;
  state_.Update([](nlohmann::json& fields) { fields["progress"] = nullptr; });
}

void StudioPresenter::Publish() {
  nlohmann::json pending = nullptr;
  if (!questions_.empty()) {
    const Question& question = *questions_.back();
    pending = {{"id", question.id}, {"error", question.error}, {"error_field", question.error_field}};
    switch (question.kind) {
      case Question::kDialog:
        pending["kind"] = "dialog";
        pending["title"] = question.model->title();
        pending["fields"] = FieldsJson(*question.model);
        pending["buttons"] = question.model->buttons();
        break;
      case Question::kMessageBox: {
        pending["kind"] = "message";
        pending["text"] = question.text;
        pending["caption"] = question.caption;
        pending["icon"] = IconName(question.type);
        nlohmann::json names = nlohmann::json::array();
        for (console::MessageButton button : question.buttons) names.push_back(console::ButtonName(button));
        pending["buttons"] = names;
        break;
      }
      case Question::kPrompt:
        pending["kind"] = "prompt";
        pending["text"] = question.text;
        break;
    }
  }
  state_.Update([&](nlohmann::json& fields) { fields["pending"] = std::move(pending); });
}

}  // namespace fx::studio
