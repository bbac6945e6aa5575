#include "batch_progress.h"

#include <unistd.h>

#include <csignal>
#include <cstring>

namespace fx::cli {
namespace {

constexpr int kBarWidth = 30;
constexpr char kClearLine[] = "\r\x1b[K";

}  // namespace

BatchProgress::BatchProgress(size_t total, std::FILE* stream)
    : stream_(stream), terminal_(isatty(fileno(stream)) != 0) {
  counts_.total = total;
}

void BatchProgress::Ended(const std::string& drawing, DrawingStatus status, double wall_seconds,
                          const std::string& detail) {
  switch (status) {
    case DrawingStatus::kOk: ++counts_.ok; break;
    case DrawingStatus::kSkipped: ++counts_.skipped; break;
    case DrawingStatus::kFailed: ++counts_.failed; break;
    case DrawingStatus::kTimeout: ++counts_.timeout; break;
    case DrawingStatus::kCrashed: ++counts_.crashed; break;
  }
  const bool well = status == DrawingStatus::kOk || status == DrawingStatus::kSkipped;
  if (terminal_ && well) return DrawBar(running_);
  const int width = static_cast<int>(std::to_string(counts_.total).size());
  std::fprintf(stream_, "%s[%*zu/%zu] %-7s %7.2f s  %s%s%s\n", terminal_ ? kClearLine : "", width,
               counts_.ended(), counts_.total, StatusName(status), wall_seconds, drawing.c_str(),
               detail.empty() ? "" : ": ", detail.c_str());
  if (terminal_) DrawBar(running_);
  std::fflush(stream_);
}

void BatchProgress::Tick(size_t running) {
  running_ = running;
  if (terminal_ && std::chrono::steady_clock::now() - last_draw_ >= std::chrono::milliseconds(100)) {
    DrawBar(running);
  }
}

void BatchProgress::DrawBar(size_t running) {
  last_draw_ = std::chrono::steady_clock::now();
  const size_t filled = counts_.total == 0 ? kBarWidth : counts_.ended() * kBarWidth / counts_.total;
  const std::string bar = std::string(filled, '#') + std::string(kBarWidth - filled, '.');
  const size_t run = counts_.ended() - counts_.skipped;
  std::fprintf(stream_, "%s[%s] %zu/%zu done, %zu failed, %.2f drawings/s, %zu running", kClearLine, bar.c_str(),
               counts_.ended(), counts_.total, counts_.bad(), Elapsed() > 0 ? run / Elapsed() : 0.0, running);
  std::fflush(stream_);
}

double BatchProgress::Elapsed() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

void BatchProgress::Finish(int jobs, const std::string& manifest, int stopped_by) {
  if (terminal_) std::fputs(kClearLine, stream_);
  const BatchCounts& c = counts_;
  std::string ended = std::to_string(c.total) + " drawings";
  if (stopped_by > 0) {
    ended = std::to_string(c.ended()) + " of " + ended + " ended, interrupted by SIG" + sigabbrev_np(stopped_by);
  } else if (stopped_by < 0) {
    ended = std::to_string(c.ended()) + " of " + ended + " ended, stopped";
  }
  std::fprintf(stream_,
               "Batch: %s in %.1f s with %d %s: %zu ok, %zu skipped, %zu failed, %zu timeout, %zu crashed; "
               "manifest %s\n",
               ended.c_str(), Elapsed(), jobs, jobs == 1 ? "job" : "jobs", c.ok, c.skipped, c.failed,
               c.timeout, c.crashed, manifest.c_str());
  std::fflush(stream_);
}

}  // namespace fx::cli
