#include "studio/studio_terminal.h"

#include "studio/studio_presenter.h"
#include "studio/studio_state.h"

namespace fx::studio {

void StudioTerminal::WriteOut(std::string_view text) {
  state_.AppendTranscript(text);
  const size_t line_end = text.rfind('\n');
  if (line_end == std::string_view::npos) {
    current_line_ += text;
  } else {
    current_line_ = text.substr(line_end + 1);
  }
}

bool StudioTerminal::ReadLine(std::string& line) {
  if (presenter_ == nullptr || !presenter_->ReadLine(current_line_, line)) return false;
  WriteOut(line);
  return true;
}

}  // namespace fx::studio
