#include "dev_server.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace fx::exchange_test {
namespace {

constexpr const char* kListening = "listening on ";

std::vector<char*> Argv(const std::string& program, const std::vector<std::string>& args) {
  std::vector<char*> argv{const_cast<char*>(program.c_str())};
  for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
  argv.push_back(nullptr);
  return argv;
}

}  // namespace

DevServer::DevServer(const std::string& folder, const std::vector<std::string>& extra) {
  std::vector<std::string> args = {"--db", folder + "/vantory.db", "--port", "0", "--seed-demo",
                                   "--quiet"};
  args.insert(args.end(), extra.begin(), extra.end());
  int out[2];
  if (::pipe(out) != 0) return;
  pid_ = ::fork();
  if (pid_ == 0) {
    ::dup2(out[1], 1);
    ::close(out[0]);
    const std::string program = FX_DEVSERVER;
    std::vector<char*> argv = Argv(program, args);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
  }
  ::close(out[1]);
  // The first line names the address; give the server 20 s to get there.
  std::string line;
  char c = 0;
  pollfd ready{out[0], POLLIN, 0};
  while (::poll(&ready, 1, 20000) > 0 && ::read(out[0], &c, 1) == 1 && c != '\n') line += c;
  ::close(out[0]);
  const size_t at = line.find(kListening);
  if (at != std::string::npos) address_ = line.substr(at + std::string(kListening).size());
}

DevServer::~DevServer() { Stop(); }

int DevServer::Stop() {
  if (pid_ <= 0) return -1;
  ::kill(pid_, SIGTERM);
  int status = 0;
  const pid_t ended = ::waitpid(pid_, &status, 0);
  pid_ = -1;
  return ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int RunDevServerTool(const std::vector<std::string>& args, const std::string& input) {
  int in[2];
  if (::pipe(in) != 0) return -1;
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::dup2(in[0], 0);
    ::close(in[1]);
    const std::string program = FX_DEVSERVER;
    std::vector<char*> argv = Argv(program, args);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
  }
  ::close(in[0]);
  [[maybe_unused]] const ssize_t written = ::write(in[1], input.data(), input.size());
  ::close(in[1]);
  int status = 0;
  return ::waitpid(pid, &status, 0) == pid && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace fx::exchange_test
