// What the batch shows while it runs: on a terminal a progress bar (drawings
// done, failed, the rate) with a line above it for each drawing that did not
// end well; otherwise a plain line per drawing. Then the summary line.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_BATCH_PROGRESS_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_BATCH_PROGRESS_H_

#include <chrono>
#include <cstdio>
#include <string>

#include "batch_manifest.h"

namespace fx::cli {

struct BatchCounts {
  size_t total = 0;
  size_t ok = 0;
  size_t skipped = 0;
  size_t failed = 0;
  size_t timeout = 0;
  size_t crashed = 0;

  size_t ended() const { return ok + skipped + failed + timeout + crashed; }
  size_t bad() const { return failed + timeout + crashed; }
};

class BatchProgress {
 public:
  // Draws a bar when `stream` is a terminal.
  BatchProgress(size_t total, std::FILE* stream);

  // `detail`: the exit code or signal and the first problem, for a drawing
  // that did not end well.
  void Ended(const std::string& drawing, DrawingStatus status, double wall_seconds,
             const std::string& detail);
  void Tick(size_t running);
  // Clears the bar and prints the summary line; `stopped_by` is the signal
  // that interrupted the batch, or 0.
  void Finish(int jobs, const std::string& manifest, int stopped_by);

  const BatchCounts& counts() const { return counts_; }

 private:
  void DrawBar(size_t running);
  double Elapsed() const;

  std::FILE* stream_;
  bool terminal_;
  BatchCounts counts_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point last_draw_{};
  size_t running_ = 0;
};

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_BATCH_PROGRESS_H_
