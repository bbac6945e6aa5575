#include "batch_child.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

namespace fx::cli {

pid_t StartChild(const std::vector<std::string>& args, const std::string& log_path, std::string* error) {
  // Everything the child needs is prepared before fork: after it only
  // async-signal-safe calls are allowed.
  const int log = open(log_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  const int input = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (log < 0 || input < 0) {
    *error = "cannot write the log " + log_path + ": " + std::strerror(errno);
    if (log >= 0) close(log);
    if (input >= 0) close(input);
    return -1;
  }
  std::vector<char*> argv;
  static char kProgram[] = "/proc/self/exe";
  argv.push_back(kProgram);
  for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
  argv.push_back(nullptr);
  sigset_t none;
  sigemptyset(&none);

  const pid_t pid = fork();
  if (pid == 0) {
    setpgid(0, 0);
    signal(SIGINT, SIG_DFL);
    signal(SIGTERM, SIG_DFL);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    dup2(input, 0);
    dup2(log, 1);
    dup2(log, 2);
    execv(kProgram, argv.data());
    static const char kFailed[] = "floorxport batch: cannot run /proc/self/exe\n";
    (void)!write(2, kFailed, sizeof kFailed - 1);
    _exit(127);
  }
  const int fork_errno = errno;
  close(log);
  close(input);
  if (pid < 0) {
    *error = std::string("cannot start a process: ") + std::strerror(fork_errno);
    return -1;
  }
  setpgid(pid, pid);  // also here, so a signal sent right away reaches the group
  return pid;
}

void SignalChild(pid_t child, int signal) { kill(-child, signal); }

}  // namespace fx::cli
