#include "dev_server.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "program_runner.h"

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
  std::vector<std::string> piped = {"-c", "printf %s \"$0\" | \"$@\"", input, FX_DEVSERVER};
  piped.insert(piped.end(), args.begin(), args.end());
  return fx::cli_test::RunProgram("/bin/sh", piped, ::testing::TempDir()).exit_status;
}

}  // namespace fx::exchange_test
