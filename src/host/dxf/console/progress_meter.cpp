#include "host/dxf/console/progress_meter.h"

#include <algorithm>

#include "host/dxf/console/terminal.h"

namespace fx::console {
namespace {
constexpr std::string_view kClearLine = "\r\033[K";
}  // namespace

ProgressMeter::ProgressMeter(Terminal& terminal, Clock clock)
    : terminal_(terminal), clock_(std::move(clock)) {}

void ProgressMeter::Start(std::string_view label, int min_pos, int max_pos) {
  if (active_ && min_pos == min_ && max_pos == max_) {
    // A new label for the running meter (a transfer's bytes and rate): the
    // bar stays where it is and shows the label at its next position.
    label_ = label;
    drawn_percent_ = -1;
    return;
  }
  Hide();
  active_ = true;
  label_ = label;
  min_ = min_pos;
  max_ = max_pos;
  drawn_percent_ = -1;
  started_ = clock_();
}

void ProgressMeter::SetPosition(int pos) {
  if (!active_ || !terminal_.errorIsTerminal()) return;
  int percent = 0;
  if (max_ > min_) {
    long long done = static_cast<long long>(pos) - min_;
    percent = static_cast<int>(
        std::clamp(done * 100 / (static_cast<long long>(max_) - min_), 0LL, 100LL));
  }
  auto now = clock_();
  if (now - started_ < kShowAfter) return;
  if (shown_ && (percent == drawn_percent_ || now - drawn_at_ < kRedrawInterval)) return;
  drawn_at_ = now;
  Draw(percent);
}

void ProgressMeter::Stop() {
  Hide();
  active_ = false;
}

void ProgressMeter::Hide() {
  if (!shown_) return;
  terminal_.WriteErr(kClearLine);
  shown_ = false;
}

void ProgressMeter::Draw(int percent) {
  int filled = percent * kBarWidth / 100;
  std::string bar(kClearLine);
  bar += label_;
  bar += " [";
  bar.append(static_cast<size_t>(filled), '#');
  bar.append(static_cast<size_t>(kBarWidth - filled), ' ');
  bar += "] ";
  std::string number = std::to_string(percent);
  bar.append(3 - std::min<size_t>(3, number.size()), ' ');
  bar += number;
  bar += '%';
  terminal_.WriteErr(bar);
  shown_ = true;
  drawn_percent_ = percent;
}

}  // namespace fx::console
