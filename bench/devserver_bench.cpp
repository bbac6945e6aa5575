// devserver_bench: upload and download throughput of one large drawing
// through vantory-devserver over loopback, and the server's peak memory.
//
//   devserver_bench SERVER_PROGRAM [--mb N] [--rounds N]
//
// Starts the server on a fresh database in a temporary directory (with the
// demo seed, so floor 2 exists), then for each round stores an N MiB
// drawing with setDrawing and reads it back with getDWG through the
// plug-in's own client (src/server, MTOM: the binary goes as an attachment
// both ways). The first download is compared byte for byte with the upload.
// Prints the best and median rate of each direction in MiB/s, and the peak
// resident memory (VmHWM) of the server and of this client against the
// drawing's size.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "dev_server_process.h"
#include "server/client_cache.h"
#include "server/service_calls.h"
#include "server/service_errors.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr double kMiB = 1024.0 * 1024.0;
constexpr int kFloor = 2;  // "Level 2" of the demo seed

struct Options {
  std::string server;
  int mb = 20;
  int rounds = 5;
};

Options ParseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if ((arg == "--mb" || arg == "--rounds") && i + 1 < argc) {
      (arg == "--mb" ? options.mb : options.rounds) = std::max(1, std::atoi(argv[++i]));
    } else if (options.server.empty() && arg[0] != '-') {
      options.server = arg;
    } else {
      throw std::runtime_error("usage: devserver_bench SERVER_PROGRAM [--mb N] [--rounds N]");
    }
  }
  if (options.server.empty()) {
    throw std::runtime_error("usage: devserver_bench SERVER_PROGRAM [--mb N] [--rounds N]");
  }
  return options;
}

// CPU time `pid` has used, user and system, in seconds.
double CpuSeconds(pid_t pid) {
  std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
  // Fields after the parenthesised command name; utime and stime are the
  // 14th and 15th fields of the line.
  std::size_t at = text.rfind(')');
  std::vector<std::string> fields;
  for (std::size_t i = at + 2; i < text.size();) {
    const std::size_t end = std::min(text.find(' ', i), text.size());
    fields.push_back(text.substr(i, end - i));
    i = end + 1;
  }
  if (fields.size() < 13) return 0;
  return static_cast<double>(std::stoull(fields[11]) + std::stoull(fields[12])) /
         static_cast<double>(sysconf(_SC_CLK_TCK));
}

// Starts measuring the peak resident set (VmHWM) of `pid` afresh.
void ResetPeak(pid_t pid) { std::ofstream("/proc/" + std::to_string(pid) + "/clear_refs") << "5"; }

// Incompressible bytes (xorshift), as a compressed drawing would be.
std::vector<unsigned char> MakeDrawing(std::size_t size) {
  std::vector<unsigned char> data(size);
  std::uint64_t state = 0x9E3779B97F4A7C15ull;
  for (std::size_t i = 0; i < size; i += 8) {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    std::memcpy(data.data() + i, &state, std::min<std::size_t>(8, size - i));
  }
  return data;
}

// VmHWM of this process, in bytes.
std::uint64_t OwnPeakMemory() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind("VmHWM:", 0) == 0) return std::stoull(line.substr(6)) * 1024;
  }
  return 0;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

int Run(const Options& options) {
  const fs::path dir = fs::temp_directory_path() / ("devserver_bench." + std::to_string(getpid()));
  fs::create_directories(dir);
  struct Cleanup {
    fs::path dir;
    ~Cleanup() {
      std::error_code ignored;
      fs::remove_all(dir, ignored);
    }
  } cleanup{dir};

  fx::bench::DevServerProcess server(options.server, dir / "bench.db");
  const std::size_t size = static_cast<std::size_t>(options.mb) << 20;
  std::vector<unsigned char> drawing = MakeDrawing(size);
  const std::uint64_t idle_rss = server.Memory("VmRSS:");

  // The plug-in's own client, as floorxport send and open use it.
  const std::string server_key = server.url();
  std::vector<double> up;
  std::vector<double> down;
  std::uint64_t peak_up = 0;
  std::uint64_t peak_down = 0;
  double cpu_up = 0;
  double cpu_down = 0;
  for (int round = 0; round < options.rounds; ++round) {
    fx::server::Upload upload;
    upload.floor_id = kFloor;
    upload.drawing_file = drawing;
    upload.binary_format = "DXF";
    ResetPeak(server.pid());
    double cpu = CpuSeconds(server.pid());
    auto start = Clock::now();
    int result = fx::server::UploadDrawing(server_key, upload);
    if (result != 0) {
      throw std::runtime_error("setDrawing failed: " +
                               fx::server::CallErrorDetails(server_key, result, "send_to"));
    }
    up.push_back(std::chrono::duration<double>(Clock::now() - start).count());
    cpu_up += CpuSeconds(server.pid()) - cpu;
    peak_up = std::max(peak_up, server.Memory("VmHWM:"));
    fx::server::GetClient(server_key)->destroy();

    std::span<const unsigned char> received;
    ResetPeak(server.pid());
    cpu = CpuSeconds(server.pid());
    start = Clock::now();
    result = fx::server::DownloadDrawingFile(server_key, kFloor, received);
    if (result != 0) {
      throw std::runtime_error("getDWG failed: " +
                               fx::server::CallErrorDetails(server_key, result, "open_from"));
    }
    down.push_back(std::chrono::duration<double>(Clock::now() - start).count());
    cpu_down += CpuSeconds(server.pid()) - cpu;
    peak_down = std::max(peak_down, server.Memory("VmHWM:"));
    if (round == 0 && !std::equal(received.begin(), received.end(), drawing.begin(), drawing.end())) {
      throw std::runtime_error("the drawing read back differs from the one stored");
    }
    fx::server::GetClient(server_key)->destroy();
  }
  const std::uint64_t client_peak = OwnPeakMemory();

  const std::uint64_t peak = std::max(peak_up, peak_down);
  const int status = server.Stop();
  const double mib = static_cast<double>(size) / kMiB;
  const double best_up = mib / *std::min_element(up.begin(), up.end());
  const double best_down = mib / *std::min_element(down.begin(), down.end());
  std::printf("drawing of %.0f MiB, %d rounds, MTOM over loopback\n", mib, options.rounds);
  std::printf("upload   (setDrawing): best %7.1f MiB/s, median %7.1f MiB/s\n", best_up,
              mib / Median(up));
  std::printf("download (getDWG):     best %7.1f MiB/s, median %7.1f MiB/s\n", best_down,
              mib / Median(down));
  std::printf("server CPU time: %.0f ms per upload, %.0f ms per download\n",
              1000 * cpu_up / options.rounds, 1000 * cpu_down / options.rounds);
  std::printf("server resident memory: %.1f MiB idle; peak %.1f MiB in uploads, %.1f MiB in "
              "downloads: %.2f x the drawing\n",
              static_cast<double>(idle_rss) / kMiB, static_cast<double>(peak_up) / kMiB,
              static_cast<double>(peak_down) / kMiB,
              static_cast<double>(peak) / static_cast<double>(size));
  std::printf("client (this program) peak resident memory: %.1f MiB: %.2f x the drawing\n",
              static_cast<double>(client_peak) / kMiB,
              static_cast<double>(client_peak) / static_cast<double>(size));
  std::printf("server exit status after SIGTERM: %d\n", status);
  return status == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  signal(SIGPIPE, SIG_IGN);
  try {
    return Run(ParseOptions(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "devserver_bench: %s\n", error.what());
    return 1;
  }
}
