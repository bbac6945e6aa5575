// vantory-devserver: a drawing service speaking the Vantory SOAP interface,
// for development, demos and tests. This file reads the command, runs the
// server until a signal stops it, and is the program's exception firewall.
#include <malloc.h>
#include <pthread.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "atomic_file.h"
#include "demo_seed.h"
#include "options.h"
#include "request_log.h"
#include "rooms_json.h"
#include "server.h"
#include "storage.h"
#include "tls.h"
#include "users.h"

namespace fx::devserver {
namespace {

constexpr const char* kProgram = "vantory-devserver";

// One line of standard input; without echo, asked twice, on a terminal.
std::string ReadPassword(const std::string& name) {
  if (!isatty(STDIN_FILENO)) {
    std::string line;
    std::getline(std::cin, line);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
  }
  termios saved{};
  tcgetattr(STDIN_FILENO, &saved);
  termios quiet = saved;
  quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  auto ask = [&](const std::string& prompt) {
    std::cerr << prompt << std::flush;
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
    std::string line;
    std::getline(std::cin, line);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &saved);
    std::cerr << '\n';
    return line;
  };
  const std::string first = ask("Password for " + name + ": ");
  if (ask("The same password again: ") != first) throw UsersFileError("the passwords differ");
  return first;
}

int AddUser(const std::vector<std::string>& args) {
  const AddUserOptions options = ParseAddUserOptions(args);
  UserStore::AddUser(options.users, options.name, ReadPassword(options.name));
  std::cout << kProgram << ": user " << options.name << " saved in " << options.users << '\n';
  return 0;
}

int ImportRooms(const std::vector<std::string>& args) {
  const RoomsOptions options = ParseRoomsOptions(args);
  std::string text;
  if (options.json == "-") {
    text.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  } else {
    text = ReadWholeFile(options.json);
  }
  const std::vector<Room> rooms = RoomsFromJson(text);
  Storage storage(options.db);
  if (!storage.ReplaceRooms(options.floor, rooms)) {
    std::cerr << kProgram << ": floor " << options.floor << " not found in " << options.db << '\n';
    return 1;
  }
  std::cout << kProgram << ": floor " << options.floor << ": " << rooms.size()
            << " rooms stored\n";
  return 0;
}

int Serve(const std::vector<std::string>& args) {
  const ServeOptions options = ParseServeOptions(args);
  if (!options.generate_cert.empty()) {
    GenerateSelfSignedCertificate(options.generate_cert);
    std::cout << kProgram << ": wrote a self-signed certificate for localhost to "
              << options.generate_cert << '\n';
    return 0;
  }

  Storage storage(options.db);
  if (options.seed_demo && storage.Empty()) {
    const std::string sample = FindSampleDrawing(options.sample_drawing);
    if (sample.empty()) {
      std::cerr << kProgram << ": examples/sample-floor.dxf not found; name it with "
                << "--sample-drawing FILE\n";
      return 1;
    }
    SeedDemo(storage, sample);
    std::cerr << kProgram << ": seeded " << options.db << " with the demo building from "
              << sample << '\n';
  }
  std::unique_ptr<UserStore> users;
  if (!options.users.empty()) {
    struct stat info {};
    if (stat(options.users.c_str(), &info) != 0) {
      std::cerr << kProgram << ": " << options.users << " not found; make it with \"" << kProgram
                << " adduser --users " << options.users << " NAME\"\n";
      return 1;
    }
    users = std::make_unique<UserStore>(options.users);
  }

  // The signals that stop the server are taken by one thread with
  // sigwait; every other thread, started after this, has them blocked.
  sigset_t stop_signals;
  sigemptyset(&stop_signals);
  sigaddset(&stop_signals, SIGINT);
  sigaddset(&stop_signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &stop_signals, nullptr);

  RequestLog log(!options.quiet);
  Server server(options.server, storage, users.get(), log);
  const std::string url = server.Bind();
  std::printf("%s: listening on %s\n", kProgram, url.c_str());
  std::fflush(stdout);

  std::thread watcher([&] {
    int signal = 0;
    sigwait(&stop_signals, &signal);
    log.Write(std::string("stopping on ") + (signal == SIGINT ? "SIGINT" : "SIGTERM"));
    server.Stop();
  });
  server.Run();
  watcher.join();
  log.Write("stopped");
  return 0;
}

}  // namespace
}  // namespace fx::devserver

int main(int argc, char** argv) {
  using namespace fx::devserver;
  std::signal(SIGPIPE, SIG_IGN);  // a client closing early must not end the server
  // Drawings are buffers of megabytes: have malloc map each one on its own
  // and give it back when freed. By default the threshold rises after the
  // first such free, and freed drawings would then stay resident in the
  // arenas of the connection threads.
  mallopt(M_MMAP_THRESHOLD, 1 << 20);
  std::vector<std::string> args(argv + 1, argv + argc);
  try {
    if (args.empty() || args[0] == "-h" || args[0] == "--help") {
      std::fputs(kUsage, args.empty() ? stderr : stdout);
      return args.empty() ? 2 : 0;
    }
    const std::string command = args[0];
    if (command == "adduser" || command == "rooms") {
      args.erase(args.begin());
      return command == "adduser" ? AddUser(args) : ImportRooms(args);
    }
    return Serve(args);
  } catch (const UsageError& error) {
    std::fprintf(stderr, "%s: %s\n\n%s", kProgram, error.what(), kUsage);
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", kProgram, error.what());
    return 1;
  }
}
