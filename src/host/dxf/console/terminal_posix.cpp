#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "host/dxf/console/terminal.h"

namespace fx::console {
namespace {

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
    if (!std::getline(std::cin, line)) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
  }
  bool inputIsTerminal() const override { return isatty(STDIN_FILENO) == 1; }
  bool errorIsTerminal() const override { return isatty(STDERR_FILENO) == 1; }
};

}  // namespace

std::unique_ptr<Terminal> MakeProcessTerminal() { return std::make_unique<ProcessTerminal>(); }

}  // namespace fx::console
