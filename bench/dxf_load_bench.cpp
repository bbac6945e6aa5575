// Measures the DXF layer on one file: load and write throughput, peak memory of a loaded
// document relative to the file size, and whether writing reproduces the file.
//
//   dxf_load_bench FILE [ITERATIONS]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "host/dxf/dxf_document.h"
#include "host/dxf/dxf_file_io.h"
#include "host/dxf/dxf_writer.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) {
  return std::chrono::duration<double>(Clock::now() - since).count();
}

// A field of /proc/self/status in bytes: VmRSS (resident now) or VmHWM (resident at peak).
// VmHWM is exact where getrusage's maximum is updated late.
double StatusBytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  std::string key;
  double kib = 0;
  while (status >> key) {
    if (key == field + ":") {
      status >> kib;
      break;
    }
  }
  return kib * 1024;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s FILE [ITERATIONS]\n", argv[0]);
    return 2;
  }
  const std::string path = argv[1];
  const int iterations = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;

  // Memory first, in a process that has held nothing large yet.
  const double resident_before = StatusBytes("VmRSS");
  fx::dxf::LoadError error;
  std::unique_ptr<fx::dxf::Document> doc = fx::dxf::Document::Load(path, &error);
  if (!doc) {
    std::fprintf(stderr, "%s\n", error.message.c_str());
    return 1;
  }
  const double size_mb = static_cast<double>(doc->source_size()) / 1e6;
  const double peak_ratio =
      (StatusBytes("VmHWM") - resident_before) / static_cast<double>(doc->source_size());
  const size_t records = doc->record_count();
  doc.reset();

  double best_load = 1e30;
  for (int i = 0; i < iterations; ++i) {
    const Clock::time_point start = Clock::now();
    doc = fx::dxf::Document::Load(path, &error);
    best_load = std::min(best_load, Seconds(start));
  }

  double best_write = 1e30;
  std::string out;
  for (int i = 0; i < iterations; ++i) {
    out.clear();
    const Clock::time_point start = Clock::now();
    const fx::dxf::Status status = fx::dxf::WriteTo(*doc, &out);
    best_write = std::min(best_write, Seconds(start));
    if (!status.ok()) {
      std::fprintf(stderr, "%s\n", status.message().c_str());
      return 1;
    }
  }
  std::string original;
  std::string failure;
  fx::dxf::ReadWholeFile(path, &original, &failure);
  const bool identical = out == original;

  const fx::dxf::Encoding other = doc->encoding() == fx::dxf::Encoding::kAscii
                                      ? fx::dxf::Encoding::kBinary
                                      : fx::dxf::Encoding::kAscii;
  double best_convert = 1e30;
  for (int i = 0; i < iterations; ++i) {
    out.clear();
    const Clock::time_point start = Clock::now();
    const fx::dxf::Status status = fx::dxf::WriteTo(*doc, &out, other);
    best_convert = std::min(best_convert, Seconds(start));
    if (!status.ok()) std::fprintf(stderr, "%s\n", status.message().c_str());
  }

  // Saving: the same bytes through a temporary file, fsync and rename.
  const std::string save_path =
      (std::filesystem::temp_directory_path() / "dxf_load_bench_save.dxf").string();
  double best_save = 1e30;
  for (int i = 0; i < iterations; ++i) {
    const Clock::time_point start = Clock::now();
    const fx::dxf::Status status = fx::dxf::SaveAtomic(*doc, save_path);
    best_save = std::min(best_save, Seconds(start));
    if (!status.ok()) std::fprintf(stderr, "%s\n", status.message().c_str());
  }
  std::filesystem::remove(save_path);

  std::printf("file            %s\n", path.c_str());
  std::printf("size            %.2f MB, %zu records, %s\n", size_mb, records,
              doc->encoding() == fx::dxf::Encoding::kAscii ? "ASCII" : "binary");
  std::printf("load            %.1f MB/s (%.1f ms)\n", size_mb / best_load, best_load * 1e3);
  std::printf("write unchanged %.1f MB/s (%.1f ms), byte-identical: %s\n", size_mb / best_write,
              best_write * 1e3, identical ? "yes" : "NO");
  std::printf("save atomic     %.1f MB/s (%.1f ms, with fsync)\n", size_mb / best_save,
              best_save * 1e3);
  std::printf("write converted %.1f MB/s of input (%.1f ms, %.2f MB out)\n", size_mb / best_convert,
              best_convert * 1e3, static_cast<double>(out.size()) / 1e6);
  std::printf("peak memory     %.2f x file size (loaded document incl. its file buffer)\n",
              peak_ratio);
  return identical ? 0 : 1;
}
