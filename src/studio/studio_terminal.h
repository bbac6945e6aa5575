// The console's terminal in the studio: the transcript goes to the state
// for the page's panel, and a command's prompt that its command line does
// not answer is asked on the page (the presenter). Neither stream is a
// terminal, so the console never draws its text progress bar here.
#ifndef FLOORXPORT_STUDIO_STUDIO_TERMINAL_H_
#define FLOORXPORT_STUDIO_STUDIO_TERMINAL_H_

#include <string>
#include <string_view>

#include "host/dxf/console/terminal.h"

namespace fx::studio {

class StudioPresenter;
class StudioState;

class StudioTerminal : public console::Terminal {
 public:
  // `state` must outlive the terminal.
  explicit StudioTerminal(StudioState& state) : state_(state) {}
  // Lines are read from the page once a presenter is set (it must outlive
  // its use); without one the input is at its end.
  void SetPresenter(StudioPresenter* presenter) { presenter_ = presenter; }

  void WriteOut(std::string_view text) override;
  void WriteErr(std::string_view text) override { WriteOut(text); }
  // The line answered on the page, echoed in the transcript.
  bool ReadLine(std::string& line) override;
  bool inputIsTerminal() const override { return false; }
  bool errorIsTerminal() const override { return false; }

 private:
  StudioState& state_;
  StudioPresenter* presenter_ = nullptr;
  std::string current_line_;  // the transcript since its last line end: the prompt
};

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_STUDIO_TERMINAL_H_
