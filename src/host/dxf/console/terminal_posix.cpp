#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "host/dxf/console/terminal.h"

namespace fx::console {
namespace {

// Turns the terminal's echo off for its lifetime, except for the line end
// (ECHONL), so the cursor moves on as after any typed line.
class EchoOff {
 public:
  explicit EchoOff(int fd) : fd_(fd) {
    if (tcgetattr(fd_, &saved_) != 0) return;
    termios quiet = saved_;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    quiet.c_lflag |= ECHONL;
    // TCSANOW: what the user typed ahead is kept.
    active_ = tcsetattr(fd_, TCSANOW, &quiet) == 0;
  }
  ~EchoOff() {
    if (active_) tcsetattr(fd_, TCSANOW, &saved_);
  }
  EchoOff(const EchoOff&) = delete;
  EchoOff& operator=(const EchoOff&) = delete;

 private:
  int fd_;
  termios saved_{};
  bool active_ = false;
};

class ProcessTerminal : public Terminal {
 public:
  void WriteOut(std::string_view text) override {
    std::fwrite(text.data(), 1, text.size(), stdout);
  }
  void WriteErr(std::string_view text) override {
    std::fflush(stdout);
    std::fwrite(text.data(), 1, text.size(), stderr);
  }
  bool ReadLine(std::string& line) override {
    std::fflush(stdout);
    return GetLine(line);
  }
  bool ReadSecretLine(std::string& line) override {
    if (!inputIsTerminal()) return ReadLine(line);
    // Echo goes off before the prompt shows, so nothing typed after it echoes.
    EchoOff echo_off(STDIN_FILENO);
    std::fflush(stdout);
    return GetLine(line);
  }
  bool inputIsTerminal() const override { return isatty(STDIN_FILENO) == 1; }
  bool errorIsTerminal() const override { return isatty(STDERR_FILENO) == 1; }

 private:
  static bool GetLine(std::string& line) {
    if (!std::getline(std::cin, line)) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
  }
};

}  // namespace

std::unique_ptr<Terminal> MakeProcessTerminal() { return std::make_unique<ProcessTerminal>(); }

}  // namespace fx::console
