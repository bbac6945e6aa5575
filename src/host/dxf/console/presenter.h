// A front end that shows the console's dialogs, message boxes and progress
// in a window of its own (the studio's page) instead of on the command line.
// While a console has a presenter, fx::ShowDialog and acedMessageBox hand
// their work to it and the transcript still records the message box and its
// answer; progress goes to the presenter as well as to the terminal meter.
// Without one, the console behaves exactly as before.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_PRESENTER_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_PRESENTER_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string_view>
#include <vector>

#include "host/dxf/console/answer_policy.h"

namespace fx {
class DialogModel;
}

namespace fx::console {

class Presenter {
 public:
  virtual ~Presenter() = default;
  // As fx::ShowDialog: the index of the button that closed the dialog, or
  // -1 when the user cancelled it.
  virtual int ShowDialog(DialogModel& model) = 0;
  // One of `buttons` (ButtonsOf(type)), as the user chose it.
  virtual MessageButton AskMessageBox(std::string_view text, std::string_view caption, unsigned type,
                                      const std::vector<MessageButton>& buttons) = 0;
  // The status-bar progress meter: started with a label and range, moved,
  // stopped.
  virtual void ProgressStarted(std::string_view label, int min_pos, int max_pos) = 0;
  virtual void ProgressMoved(int pos) = 0;
  virtual void ProgressStopped() = 0;
};

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_PRESENTER_H_
