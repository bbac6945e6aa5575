#include "program_runner.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace fx::cli_test {

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

ScopedEnvironmentVariable::ScopedEnvironmentVariable(const char* name, const char* value) : name_(name) {
  if (const char* old = std::getenv(name)) {
    was_set_ = true;
    old_value_ = old;
  }
  if (value != nullptr) setenv(name, value, 1);
  else unsetenv(name);
}

ScopedEnvironmentVariable::~ScopedEnvironmentVariable() {
  if (was_set_) setenv(name_.c_str(), old_value_.c_str(), 1);
  else unsetenv(name_.c_str());
}

ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string& work_dir, bool close_output) {
  const std::string out_path = work_dir + "/stdout.txt";
  const std::string err_path = work_dir + "/stderr.txt";
  int pipe_fds[2] = {-1, -1};
  if (close_output) {
    if (pipe(pipe_fds) != 0) return {};
    close(pipe_fds[0]);  // nobody reads: every write of the program fails
  }
  pid_t pid = fork();
  if (pid == 0) {
    int in = open("/dev/null", O_RDONLY);
    int out =
        close_output ? pipe_fds[1] : open(out_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    int err = open(err_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (in < 0 || out < 0 || err < 0) _exit(127);
    dup2(in, 0);
    dup2(out, 1);
    dup2(err, 2);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  if (close_output) close(pipe_fds[1]);
  ProgramResult result;
  int status = 0;
  if (pid < 0 || waitpid(pid, &status, 0) != pid) return result;
  if (WIFEXITED(status)) result.exit_status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  if (!close_output) result.out = ReadFile(out_path);
  result.err = ReadFile(err_path);
  return result;
}

ProgramResult RunInTerminal(const std::string& program, const std::vector<std::string>& args,
                            const std::string& typed) {
  int master = -1;
  pid_t pid = forkpty(&master, nullptr, nullptr, nullptr);
  if (pid == 0) {
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  ProgramResult result;
  if (pid < 0) return result;
  // Typed ahead: the terminal's line discipline hands the program a line
  // per read, and takes Ctrl-D at the start of a line as the end of input.
  const std::string input = typed + "\x04";
  if (write(master, input.data(), input.size()) != static_cast<ssize_t>(input.size()))
    return result;
  char buffer[4096];
  for (;;) {
    ssize_t count = read(master, buffer, sizeof buffer);
    if (count > 0) {
      result.out.append(buffer, static_cast<size_t>(count));
    } else if (count < 0 && errno == EINTR) {
      continue;
    } else {
      break;  // EIO once the program has ended
    }
  }
  close(master);
  int status = 0;
  if (waitpid(pid, &status, 0) != pid) return result;
  if (WIFEXITED(status)) result.exit_status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  return result;
}

}  // namespace fx::cli_test
