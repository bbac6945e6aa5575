// vantory-devserver started for a test on a free loopback port, with its
// own database in a temporary folder; stopped (SIGTERM) when destroyed.
#ifndef FLOORXPORT_TESTS_EXCHANGE_DEV_SERVER_H_
#define FLOORXPORT_TESTS_EXCHANGE_DEV_SERVER_H_

#include <sys/types.h>

#include <string>
#include <vector>

namespace fx::exchange_test {

class DevServer {
 public:
  // `extra` are further options (--users FILE, --tls-cert FILE ...).
  DevServer(const std::string& folder, const std::vector<std::string>& extra = {});
  ~DevServer();
  DevServer(const DevServer&) = delete;
  DevServer& operator=(const DevServer&) = delete;

  bool started() const { return !address_.empty(); }
  // "http://127.0.0.1:PORT/" (or https), as the server printed it.
  const std::string& address() const { return address_; }
  // Sends SIGTERM and waits; the exit status, or -1.
  int Stop();

 private:
  pid_t pid_ = -1;
  std::string address_;
};

// Runs vantory-devserver with `args` and `input` on its standard input;
// its exit status.
int RunDevServerTool(const std::vector<std::string>& args, const std::string& input);

}  // namespace fx::exchange_test

#endif  // FLOORXPORT_TESTS_EXCHANGE_DEV_SERVER_H_
