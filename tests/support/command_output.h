// What a shell command prints on standard output, for tests that read a
// checker script's findings.
#ifndef FLOORXPORT_TESTS_SUPPORT_COMMAND_OUTPUT_H_
#define FLOORXPORT_TESTS_SUPPORT_COMMAND_OUTPUT_H_

#include <cstdio>
#include <optional>
#include <string>

namespace fx::testing {

// The whole standard output of `command` (run by the shell); nullopt when it
// cannot be started or exits non-zero.
inline std::optional<std::string> CommandOutput(const std::string& command) {
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return std::nullopt;
  std::string output;
  char buffer[4096];
  while (size_t n = fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, n);
  if (pclose(pipe) != 0) return std::nullopt;
  return output;
}

}  // namespace fx::testing

#endif  // FLOORXPORT_TESTS_SUPPORT_COMMAND_OUTPUT_H_
