// Runs the real floorxport program and captures what it did.
#ifndef FLOORXPORT_TESTS_SUPPORT_PROGRAM_RUNNER_H_
#define FLOORXPORT_TESTS_SUPPORT_PROGRAM_RUNNER_H_

#include <string>
#include <vector>

namespace fx::cli_test {

struct ProgramResult {
  int exit_status = -1;  // -1 when the program did not exit normally
  int signal = 0;        // the signal that ended it, if one did
  std::string out;
  std::string err;
};

// Runs `program` with `args`, standard input from /dev/null (so it never
// waits), standard output and error captured through files in `work_dir`.
// With `close_output`, standard output is a pipe whose reading end is
// already closed.
ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string& work_dir, bool close_output = false);

// Runs `program` on a pseudo-terminal, as a user at a terminal would: the
// terminal (standard input, output and error) receives `typed` and then the
// end of input (Ctrl-D). The output is what the terminal showed, the typed
// text echoed with it, line ends as "\r\n".
ProgramResult RunInTerminal(const std::string& program, const std::vector<std::string>& args,
                            const std::string& typed);

std::string ReadFile(const std::string& path);

// Sets an environment variable of this process, and so of the programs it
// runs, for its lifetime (a null value unsets it); then restores it.
class ScopedEnvironmentVariable {
 public:
  ScopedEnvironmentVariable(const char* name, const char* value);
  ~ScopedEnvironmentVariable();
  ScopedEnvironmentVariable(const ScopedEnvironmentVariable&) = delete;
  ScopedEnvironmentVariable& operator=(const ScopedEnvironmentVariable&) = delete;

 private:
  std::string name_;
  bool was_set_ = false;
  std::string old_value_;
};

}  // namespace fx::cli_test

#endif  // FLOORXPORT_TESTS_SUPPORT_PROGRAM_RUNNER_H_
