// The page as the console's presenter (host/dxf/console/presenter.h): a
// dialog model, a message box or a command's prompt becomes the state's
// "pending" question, and the host thread waits for the page's answers,
// running other jobs meanwhile (HostLoop::RunUntil). The models stay the
// only truth: each answer is applied to the model at once and the form is
// rebuilt from the model's fields.
//
// Questions nest (a button that validates shows a message box over its
// dialog); the page sees the innermost one. Every question has an id, and an
// answer meant for another question than the innermost is ignored, so a
// late click never lands in the wrong dialog. Passwords never leave the host
// side: a password field is sent with an empty value and a "set" flag.
#ifndef FLOORXPORT_STUDIO_STUDIO_PRESENTER_H_
#define FLOORXPORT_STUDIO_STUDIO_PRESENTER_H_

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/console/presenter.h"

namespace fx::console {
class Console;
}

namespace fx::studio {

class HostLoop;
class StudioState;

class StudioPresenter : public console::Presenter {
 public:
  // All three must outlive the presenter.
  StudioPresenter(HostLoop& loop, StudioState& state, console::Console& console);

  int ShowDialog(DialogModel& model) override;
  console::MessageButton AskMessageBox(std::string_view text, std::string_view caption, unsigned type,
                                       const std::vector<console::MessageButton>& buttons) override;
  void ProgressStarted(std::string_view label, int min_pos, int max_pos) override;
  void ProgressMoved(int pos) override;
  void ProgressStopped() override;

  // A prompt of a running command that the command line does not answer:
  // waits for the page's line. False when the page cancelled the prompt or
  // the studio is stopping.
  bool ReadLine(std::string_view prompt, std::string& line);

  // The page's answers, on the host thread. `id` names the question.
  void SetField(int id, size_t index, std::string value);
  void Press(int id, size_t index);
  void AnswerMessageBox(int id, std::string_view button);
  void AnswerPrompt(int id, const std::string& line);
  // Cancels a dialog or a prompt; a message box takes its default answer.
  void Cancel(int id);

  // Called after each button a dialog acted on (it may have zoomed or
  // changed the drawing).
  void SetAfterPress(std::function<void()> after_press) { after_press_ = std::move(after_press); }

 private:
  struct Question;
  Question* Innermost(int id);
  void Ask(Question& question);
  void Publish();

  HostLoop& loop_;
  StudioState& state_;
  console::Console& console_;
  std::function<void()> after_press_;
  std::vector<Question*> questions_;  // innermost last; each lives in its Ask frame
  int next_id_ = 1;
  int progress_min_ = 0;
  int progress_max_ = 100;
  int progress_percent_ = -1;
};

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_STUDIO_PRESENTER_H_
