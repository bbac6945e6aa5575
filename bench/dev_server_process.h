// vantory-devserver started for a benchmark on a free loopback port with a
// seeded database, and what the benchmarks read of it; stopped (SIGTERM)
// when destroyed.
#ifndef FLOORXPORT_BENCH_DEV_SERVER_PROCESS_H_
#define FLOORXPORT_BENCH_DEV_SERVER_PROCESS_H_

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace fx::bench {

class DevServerProcess {
 public:
  // The server's request log goes to `log`; without one the server is quiet.
  DevServerProcess(const std::string& program, const std::filesystem::path& db,
                   const std::filesystem::path& log = {}) {
    int out[2];
    if (pipe(out) != 0) throw std::runtime_error("pipe failed");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, out[0]);
    std::vector<std::string> args = {program, "--db", db.string(), "--seed-demo", "--port", "0"};
    if (log.empty()) {
      args.push_back("--quiet");
    } else {
      posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    }
    std::vector<char*> argv;
    for (std::string& arg : args) argv.push_back(arg.data());
    argv.push_back(nullptr);
    const int rc = posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(out[1]);
    if (rc != 0) {
      close(out[0]);
      throw std::runtime_error("cannot start " + program + ": " + std::strerror(rc));
    }
    // "vantory-devserver: listening on URL"
    std::string line;
    char c = 0;
    while (read(out[0], &c, 1) == 1 && c != '\n') line += c;
    close(out[0]);
    const auto at = line.find("listening on ");
    if (at == std::string::npos) throw std::runtime_error("the server did not start: " + line);
    url_ = line.substr(at + 13);
  }
  ~DevServerProcess() { Stop(); }
  DevServerProcess(const DevServerProcess&) = delete;
  DevServerProcess& operator=(const DevServerProcess&) = delete;

  const std::string& url() const { return url_; }
  pid_t pid() const { return pid_; }

  // A field of /proc/PID/status ("VmRSS:", "VmHWM:") in bytes.
  std::uint64_t Memory(const char* field) const {
    std::ifstream status("/proc/" + std::to_string(pid_) + "/status");
    for (std::string line; std::getline(status, line);) {
      if (line.rfind(field, 0) == 0) return std::strtoull(line.c_str() + std::strlen(field) + 1, nullptr, 10) * 1024;
    }
    return 0;
  }

  // The server's exit status; -1 when it was stopped before.
  int Stop() {
    if (pid_ <= 0) return -1;
    kill(pid_, SIGTERM);
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

 private:
  pid_t pid_ = 0;
  std::string url_;
};

}  // namespace fx::bench

#endif  // FLOORXPORT_BENCH_DEV_SERVER_PROCESS_H_
