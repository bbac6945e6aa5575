// devserver_load: many users at once sending and opening drawings through
// vantory-devserver on loopback, with the real floorxport program.
//
//   devserver_load SERVER_PROGRAM FLOORXPORT SAMPLE_DXF [--clients N] [--seconds S]
//                  [--max-rss-mb M]
//
// Starts the server on a fresh database in a temporary folder and gives
// each client a floor of its own. Each client then, until the time is up,
// makes a new version of the analysed sample drawing (a comment naming the
// client and round), sends it with `floorxport send` and opens its floor
// back with `floorxport open`: the download must be the version last sent
// whole, byte for byte (FNV-1a checksums), so an upload lost, cut or given
// to another floor shows. Every run must succeed or fail with the service's
// error report. The server's resident memory is sampled from /proc during
// the run. Prints the figures; exits 1 when anything was lost or mixed up,
// a run ended any other way, or the server's peak memory passed the bound.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "dev_server_process.h"
#include "server/service_calls.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Options {
  std::string server;
  std::string floorxport;
  std::string sample;
  int clients = 20;
  int seconds = 60;
  int max_rss_mb = 256;
};

constexpr const char* kUsage =
    "usage: devserver_load SERVER_PROGRAM FLOORXPORT SAMPLE_DXF [--clients N] [--seconds S] "
    "[--max-rss-mb M]";

Options ParseOptions(int argc, char** argv) {
  Options options;
  std::vector<std::string> positional;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    int* number = arg == "--clients" ? &options.clients
                  : arg == "--seconds" ? &options.seconds
                  : arg == "--max-rss-mb" ? &options.max_rss_mb
                                          : nullptr;
    if (number != nullptr && i + 1 < argc) {
      *number = std::max(1, std::atoi(argv[++i]));
    } else if (arg[0] != '-') {
      positional.push_back(arg);
    } else {
      throw std::runtime_error(kUsage);
    }
  }
  if (positional.size() != 3) throw std::runtime_error(kUsage);
  options.server = positional[0];
  options.floorxport = positional[1];
  options.sample = positional[2];
  return options;
}

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::uint64_t Checksum(const std::string& bytes) {
  std::uint64_t hash = 0xcbf29ce484222325ull;
  for (unsigned char c : bytes) hash = (hash ^ c) * 0x100000001b3ull;
  return hash;
}

// Runs `args` (the program first) with standard input from /dev/null and
// standard output and error into `log`; the exit status, or 128 + signal.
int Run(std::vector<std::string> args, const fs::path& log) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
  std::vector<char*> argv;
  for (std::string& arg : args) argv.push_back(arg.data());
  argv.push_back(nullptr);
  pid_t pid = 0;
  const int rc = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (rc != 0) throw std::runtime_error(std::string("cannot start ") + argv[0] + ": " + std::strerror(rc));
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// Lines of the request log ("YYYY-MM-DD hh:mm:ss what"): one a request,
// but for the server's own stopping lines.
int Requests(const fs::path& log_path) {
  std::ifstream log(log_path);
  int count = 0;
  for (std::string line; std::getline(log, line);) {
    count += line.size() > 20 && line[4] == '-' && line[13] == ':' && line.find(" stopp") == std::string::npos;
  }
  return count;
}

struct Tally {
  std::mutex mutex;
  int sends = 0;
  int opens = 0;
  int refused = 0;       // failed with the service's error report
  int broken = 0;        // ended any other way
  int mixed_up = 0;      // a download that is not the version last sent
  std::uint64_t bytes_sent = 0;
  std::uint64_t bytes_opened = 0;
  std::vector<std::string> problems;

  void Problem(const std::string& text) {
    std::lock_guard lock(mutex);
    if (problems.size() < 20) problems.push_back(text);
  }
};

struct Client {
  int index = 0;
  int floor = 0;
  fs::path folder;
};

class LoadRun {
 public:
  LoadRun(const Options& options, const std::string& url, const std::string& plan)
      : options_(options), url_(url), plan_(plan) {}

  // Sends and opens until `deadline`.
  void Work(const Client& client, Clock::time_point deadline) {
    const fs::path drawing = client.folder / "plan.dxf";
    const fs::path downloads = client.folder / "downloads";
    fs::create_directories(downloads);
    std::uint64_t last_sent = 0;  // checksum of the version the server should hold
    std::uint64_t maybe_sent = 0;  // of a version whose send failed: held or not
    for (int round = 0; Clock::now() < deadline; ++round) {
      std::ofstream(drawing, std::ios::binary)
          << "999\nload client " << client.index << " round " << round << "\n" << plan_;
      const int sent = Floorxport(client, {"send", drawing.string(), "--server", url_, "--floor",
                                           std::to_string(client.floor)}, "send");
      const std::string bytes = ReadFile(drawing);  // as saved and sent
      if (sent == 0) {
        last_sent = Checksum(bytes);
        maybe_sent = 0;
        std::lock_guard lock(tally_.mutex);
        ++tally_.sends;
        tally_.bytes_sent += bytes.size();
      } else {
        maybe_sent = Checksum(bytes);
      }
      const int opened = Floorxport(client, {"open", "--server", url_, "--floor", std::to_string(client.floor),
                                             "-o", downloads.string()}, "open");
      if (opened != 0) continue;
      std::string download;
      for (const auto& entry : fs::directory_iterator(downloads)) {
        download = ReadFile(entry.path());
        fs::remove(entry.path());
      }
      const std::uint64_t checksum = Checksum(download);
      if (checksum == maybe_sent) last_sent = maybe_sent;
      std::lock_guard lock(tally_.mutex);
      ++tally_.opens;
      tally_.bytes_opened += download.size();
      if (last_sent != 0 && checksum != last_sent) {
        ++tally_.mixed_up;
        if (tally_.problems.size() < 20) {
          tally_.problems.push_back("client " + std::to_string(client.index) + " round " +
                                    std::to_string(round) + ": the download is not the version sent");
        }
      }
    }
  }

  Tally& tally() { return tally_; }

 private:
  // One floorxport run; a failure is counted as refused or broken.
  int Floorxport(const Client& client, std::vector<std::string> args, const char* what) {
    args.insert(args.begin(), {"/usr/bin/timeout", "120", options_.floorxport, "--settings",
                               (client.folder / "settings.reg").string()});
    const fs::path log = client.folder / (std::string(what) + ".log");
    const int status = Run(args, log);
    if (status == 0) return 0;
    const std::string output = ReadFile(log);
    const bool reported = status == 1 && output.find("Error details:") != std::string::npos;
    {
      std::lock_guard lock(tally_.mutex);
      ++(reported ? tally_.refused : tally_.broken);
    }
    if (!reported) {
      tally_.Problem("client " + std::to_string(client.index) + " " + what + ": status " +
                     std::to_string(status) + ": " + output.substr(0, 400));
    }
    return status;
  }

  const Options& options_;
  std::string url_;
  std::string plan_;
  Tally tally_;
};

std::string Megabytes(std::uint64_t bytes) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / 1e6);
  return text;
}

int Main(const Options& options) {
  const fs::path work = fs::temp_directory_path() / ("fx-load-" + std::to_string(getpid()));
  fs::remove_all(work);
  fs::create_directories(work / "temp");
  setenv("TEMP", (work / "temp").c_str(), 1);
  // Open imports the occupants, which logs in: any log-in opens this server.
  setenv("FLOORXPORT_USER", "load", 1);
  setenv("FLOORXPORT_PASSWORD", "load", 1);

  const fs::path plan = work / "plan.dxf";
  if (Run({options.floorxport, "--settings", (work / "settings.reg").string(), "analyze", options.sample,
           "--floor-layer", "FloorArea", "--contour-layer", "RoomContours", "--block", "ROOMTAG",
           "--name-tag", "NAME", "--category-tag", "CATEGORY", "--description-tag", "DESCRIPTION",
           "-o", plan.string()},
          work / "analyze.log") != 0) {
    throw std::runtime_error("analyze failed: " + ReadFile(work / "analyze.log"));
  }

  fx::bench::DevServerProcess server(options.server, work / "vantory.db", work / "server.log");
  std::vector<fx::server::BuildingEntry> buildings;
  if (fx::server::ListBuildingsAndFloors(server.url(), buildings) != 0 || buildings.empty()) {
    throw std::runtime_error("the server lists no building");
  }
  std::vector<Client> clients(static_cast<std::size_t>(options.clients));
  for (int i = 0; i < options.clients; ++i) {
    Client& client = clients[static_cast<std::size_t>(i)];
    client.index = i;
    client.folder = work / ("client" + std::to_string(i));
    fs::create_directories(client.folder);
    if (fx::server::CreateFloor(server.url(), buildings[0].id, "Load " + std::to_string(i), client.floor) != 0) {
      throw std::runtime_error("createFloor failed");
    }
  }

  LoadRun load(options, server.url(), ReadFile(plan));
  std::atomic<bool> done{false};
  std::uint64_t peak_rss = 0;
  std::thread sampler([&] {
    while (!done) {
      peak_rss = std::max(peak_rss, server.Memory("VmRSS:"));
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  });
  const auto start = Clock::now();
  const auto deadline = start + std::chrono::seconds(options.seconds);
  std::vector<std::thread> workers;
  for (const Client& client : clients) workers.emplace_back([&, &client = client] { load.Work(client, deadline); });
  for (std::thread& worker : workers) worker.join();
  const double elapsed = std::chrono::duration<double>(Clock::now() - start).count();
  done = true;
  sampler.join();
  peak_rss = std::max(peak_rss, server.Memory("VmHWM:"));
  server.Stop();
  const int requests = Requests(work / "server.log");

  Tally& tally = load.tally();
  const bool temp_empty = fs::is_empty(work / "temp");
  std::printf("clients %d for %.1f s: %d requests to the server, %d sends, %d opens\n", options.clients,
              elapsed, requests, tally.sends, tally.opens);
  std::printf("bytes: %s sent, %s opened\n", Megabytes(tally.bytes_sent).c_str(),
              Megabytes(tally.bytes_opened).c_str());
  std::printf("errors: %d refused with the service's report, %d ended otherwise, %d downloads not "
              "the version sent\n",
              tally.refused, tally.broken, tally.mixed_up);
  std::printf("server peak resident memory: %s (bound %d MB)\n", Megabytes(peak_rss).c_str(),
              options.max_rss_mb);
  for (const std::string& problem : tally.problems) std::printf("  %s\n", problem.c_str());
  if (!temp_empty) std::printf("temporary files left in %s\n", (work / "temp").c_str());
  const bool ok = tally.broken == 0 && tally.mixed_up == 0 && tally.sends > 0 && tally.opens > 0 &&
                  temp_empty && peak_rss <= static_cast<std::uint64_t>(options.max_rss_mb) * 1000000;
  if (ok) fs::remove_all(work);
  return ok ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Main(ParseOptions(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "devserver_load: %s\n", error.what());
    return 2;
  }
}
