// The command line of vantory-devserver: the server's options and the two
// maintenance commands, adduser and rooms.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_OPTIONS_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_OPTIONS_H_

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "server.h"

namespace fx::devserver {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct ServeOptions {
  std::string db;
  std::string users;           // empty: no authentication
  std::string generate_cert;   // make this certificate file and exit
  bool seed_demo = false;
  std::string sample_drawing;  // for --seed-demo; empty: look for the sample
  bool quiet = false;
  ServerConfig server;
};

struct AddUserOptions {
  std::string users;
  std::string name;
};

struct RoomsOptions {
  std::string db;
  int floor = 0;
  std::string json;  // "-": standard input
};

// Each throws UsageError naming the offending argument.
ServeOptions ParseServeOptions(const std::vector<std::string>& args);
AddUserOptions ParseAddUserOptions(const std::vector<std::string>& args);
RoomsOptions ParseRoomsOptions(const std::vector<std::string>& args);

extern const char* const kUsage;

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_OPTIONS_H_
