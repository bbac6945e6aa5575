// The console editor's command line: the transcript it prints, the answers
// it reads (from the script, from a command run with answers, or typed by a
// user), message boxes answered by the answer policy, and the progress meter.
//
// Transcript: prompts are printed as the plug-in gives them; an answer that
// was not typed on the terminal is echoed after its prompt, so a batch log
// reads as if a user had typed it. On a terminal, the line end the user
// typed stands for the one that starts the next message. When the input runs out while a command
// waits, "*Cancel*" follows the prompt and the read reports it (RTCAN for
// the plug-in): a batch run never waits.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_CONSOLE_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_CONSOLE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/console/answer_policy.h"
#include "host/dxf/console/message_box.h"
#include "host/dxf/console/progress_meter.h"
#include "host/dxf/console/script_input.h"

namespace fx::console {

class Presenter;
class Terminal;

// What the transcript shows for a hidden answer, whatever its length.
inline constexpr std::string_view kHiddenAnswer = "********";

enum class ReadStatus { kOk, kRanOut };

// What running out of input means for a read: the command is cancelled;
// (for the further items of a list, as objects to select) the list ends;
// or (a dialog in a batch run) the reader takes its default. Only the first
// shows "*Cancel*".
enum class RunOut { kCancels, kEndsList, kTakesDefault };

// A message box that no --answer answered, with the answer used.
struct UnansweredQuestion {
  std::string text;
  MessageBoxAnswer answer;
};

class Console {
 public:
  // `terminal` must outlive the console.
  Console(Terminal& terminal, AnswerPolicy policy);
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  ScriptInput& script() { return script_; }
  // Interactive: once the script is used up, lines are read from the
  // terminal. Otherwise the end of the script is the end of the input.
  void SetInteractive(bool interactive);
  bool interactive() const { return interactive_; }

  // Prints exactly `text`.
  void Print(std::string_view text);
  // Ends the transcript with a line end unless it is empty or has one.
  void Finish();

  // Prints `prompt` and reads an answer; see the transcript rules above.
  // *origin, when given, tells whether the user typed it.
  ReadStatus ReadAnswer(std::string_view prompt, TokenEnd end, std::string& answer,
                        TokenOrigin* origin = nullptr, RunOut run_out = RunOut::kCancels);
  // As ReadAnswer for a line answer that must stay unseen (a password): a
  // line typed on the terminal is read without echo, and an answer from the
  // script shows in the transcript as kHiddenAnswer (an empty one as nothing).
  ReadStatus ReadSecretAnswer(std::string_view prompt, std::string& answer);
  // Reads the next command name without a prompt (the caller prints
  // "Command: " as it sees fit) and without echo.
  ReadStatus ReadCommandName(std::string& name, TokenOrigin& origin);

  // While an answer list is pushed, answers come from it instead of the
  // script; when it is used up the input has run out. Lists nest. Without
  // `echo`, the prompts read from the list and its answers are not shown
  // (a prompt still shows when the list runs out at it).
  void PushAnswers(std::vector<std::string> answers, bool echo = true);
  void PopAnswers();
  bool readingAnswerList() const { return !answer_lists_.empty(); }

  // CMDECHO: whether commands run with answers (acedCommandS) show their
  // prompts and answers. On at the start.
  bool commandEcho() const { return command_echo_; }
  void SetCommandEcho(bool echo) { command_echo_ = echo; }

  // Shows a message box and returns IDOK, IDCANCEL, IDYES or IDNO.
  int MessageBox(std::string_view text, std::string_view caption, unsigned type);
  const std::vector<UnansweredQuestion>& unanswered() const { return unanswered_; }

  ProgressMeter& progress() { return progress_; }

  // Dialogs, message boxes and progress go to `presenter` while it is set
  // (presenter.h); nullptr gives them back to the command line. The
  // presenter must outlive its use here.
  void SetPresenter(Presenter* presenter) { presenter_ = presenter; }
  Presenter* presenter() const { return presenter_; }

 private:
  struct AnswerList {
    std::vector<std::string> answers;
    size_t next = 0;
    bool echo = true;
  };
  bool NextToken(TokenEnd end, std::string& token, TokenOrigin& origin);
  bool Echoing() const { return answer_lists_.empty() || answer_lists_.back().echo; }
  bool ReadTypedLine(std::string& line);
  MessageBoxAnswer AskUser(const std::vector<MessageButton>& buttons);

  Terminal& terminal_;
  AnswerPolicy policy_;
  ScriptInput script_;
  ProgressMeter progress_;
  Presenter* presenter_ = nullptr;
  std::vector<AnswerList> answer_lists_;
  std::vector<UnansweredQuestion> unanswered_;
  bool interactive_ = false;
  bool printed_ = false;
  bool ends_with_line_end_ = false;
  bool after_typed_line_ = false;  // the cursor is at the start of a line
  bool reading_secret_ = false;    // a typed line is read without echo
  bool command_echo_ = true;
};

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_CONSOLE_H_
