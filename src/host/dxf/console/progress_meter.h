// The status-bar progress meter as a progress bar on standard error. It is
// drawn only when standard error is a terminal and the work has gone on for
// kShowAfter, and redrawn at most every kRedrawInterval: batch logs stay
// clean and quick work shows nothing.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_PROGRESS_METER_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_PROGRESS_METER_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace fx::console {

class Terminal;

class ProgressMeter {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;
  static constexpr std::chrono::milliseconds kShowAfter{500};
  static constexpr std::chrono::milliseconds kRedrawInterval{100};
  static constexpr int kBarWidth = 30;

  // `terminal` must outlive the meter.
  explicit ProgressMeter(Terminal& terminal, Clock clock = std::chrono::steady_clock::now);

  // Starts the meter; on a running meter with the same range it only
  // changes the label.
  void Start(std::string_view label, int min_pos, int max_pos);
  void SetPosition(int pos);
  // Ends the meter and clears the bar.
  void Stop();
  // Takes the bar off the screen before other output to the terminal; the
  // next position draws it again.
  void Hide();

 private:
  void Draw(int percent);

  Terminal& terminal_;
  Clock clock_;
  bool active_ = false;
  bool shown_ = false;
  std::string label_;
  int min_ = 0;
  int max_ = 0;
  int drawn_percent_ = -1;
  std::chrono::steady_clock::time_point started_;
  std::chrono::steady_clock::time_point drawn_at_;
};

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_PROGRESS_METER_H_
