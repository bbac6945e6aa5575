#include "host/dxf/console/progress_meter.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "console_fixture.h"

namespace fx::console {
namespace {

using std::chrono::milliseconds;

class ProgressMeterTest : public ::testing::Test {
 protected:
  // Moves the clock to `ms` after the start and sets the position.
  std::string At(int ms, int pos) {
    now_ = start_ + milliseconds(ms);
    terminal_.err.clear();
    meter_.SetPosition(pos);
    return terminal_.err;
  }
  FakeTerminal terminal_;
  std::chrono::steady_clock::time_point start_{};
  std::chrono::steady_clock::time_point now_{};
  ProgressMeter meter_{terminal_, [this] { return now_; }};
};

std::string Bar(const char* label, int hashes, const char* percent) {
  return std::string("\r\033[K") + label + " [" + std::string(hashes, '#') +
         std::string(ProgressMeter::kBarWidth - hashes, ' ') + "] " + percent + "%";
}

TEST_F(ProgressMeterTest, DrawsOnlyOnATerminalAfterAWhileAndThrottled) {
  terminal_.error_is_terminal = true;
  meter_.Start("Sending", 0, 200);
  EXPECT_EQ(At(100, 10), "");  // quick work shows nothing
  EXPECT_EQ(At(600, 100), Bar("Sending", 15, " 50"));
  EXPECT_EQ(At(650, 120), "");  // too soon to redraw
  EXPECT_EQ(At(750, 120), Bar("Sending", 18, " 60"));
  EXPECT_EQ(At(900, 120), "");                          // nothing changed
  EXPECT_EQ(At(1000, 999), Bar("Sending", 30, "100"));  // clamped
  terminal_.err.clear();
  meter_.Stop();
  EXPECT_EQ(terminal_.err, "\r\033[K");
  EXPECT_EQ(At(2000, 50), "");  // stopped
}

TEST_F(ProgressMeterTest, NothingWhenStandardErrorIsNotATerminalAndZeroForAnEmptyRange) {
  meter_.Start("Sending", 0, 100);
  EXPECT_EQ(At(5000, 50), "");
  terminal_.error_is_terminal = true;
  meter_.Start("Wait", 5, 5);
  EXPECT_EQ(At(5600, 5), Bar("Wait", 0, "  0"));
}

}  // namespace
}  // namespace fx::console
